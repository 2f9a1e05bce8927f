#include "vexge/gemath/vexgematrix3d.h"

CVexGeMatrix3d::~CVexGeMatrix3d() = default;
