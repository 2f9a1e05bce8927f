#pragma once

#include "vexdb/dbobject/vexdbrefset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"

/// All entities of one kind in a drawing. Its name is the key of the kind, "LINE".
class VEXDB_EXPORT CVexDbEntityTableRecord : public CVexDbTableRecord, public CVexDbRefSet {
public:
    explicit CVexDbEntityTableRecord(CVexDbDatabase* database);
    ~CVexDbEntityTableRecord() override;
};
