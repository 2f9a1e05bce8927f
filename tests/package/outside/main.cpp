#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <iostream>
#include <memory>

// Makes a line through the installed headers and libraries, and asks the drawing about it.
int main()
{
    CVexDbDatabase drawing(false);
    auto line = std::make_unique<CVexDbLine>(&drawing);
    line->set(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(30.0, 40.0));
    CVexDbObjectId id;
    CVexDbLine& added = *line;
    drawing.addEntity(line.release(), id);
    std::cout << "length " << added.length() << ", faults " << drawing.selfCheck().size() << '\n';
    return added.length() == 50.0 && drawing.selfCheck().empty() ? 0 : 1;
}
