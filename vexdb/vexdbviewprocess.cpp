#include "vexdb/vexdbviewprocess.h"

CVexDbViewProcess& CVexDbViewProcess::current()
{
    static CVexDbViewProcess process;
    return process;
}
