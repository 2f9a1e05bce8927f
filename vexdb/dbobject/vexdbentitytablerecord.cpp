#include "vexdb/dbobject/vexdbentitytablerecord.h"

CVexDbEntityTableRecord::CVexDbEntityTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kEntityTableRecord);
}

CVexDbEntityTableRecord::~CVexDbEntityTableRecord() = default;
