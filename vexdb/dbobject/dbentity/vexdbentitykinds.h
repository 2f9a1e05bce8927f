#pragma once

#include "platform/base/vexexport.h"
#include "vexdb/dbobject/vexdbclasstype.h"

class CVexDbCurve;
class CVexDbDatabase;
class CVexDbEntity;
class CVexGeLine2d;
class CVexGeMatrix2d;
class CVexGePoint2d;
class CVexGeVector2d;

/// The six transforms of a kind that is no curve (a curve's geometry has its own). One that is null
/// leaves the entity as it is.
struct VexDbEntityTransforms {
    void (*transformBy)(CVexDbEntity&, const CVexGeMatrix2d&) = nullptr;
    void (*translateBy)(CVexDbEntity&, const CVexGeVector2d&) = nullptr;
    void (*rotateBy)(CVexDbEntity&, double, const CVexGePoint2d&) = nullptr;
    void (*scaleBy)(CVexDbEntity&, double, const CVexGePoint2d&) = nullptr;
    void (*scaleByXY)(CVexDbEntity&, double, double, const CVexGePoint2d&) = nullptr;
    void (*mirror)(CVexDbEntity&, const CVexGeLine2d&) = nullptr;
};

/// What the library does by class of entity. A new class joins with a row in vexdbentitykinds.cpp.
struct VexDbEntityKind {
    VexDb::ClassType type = VexDb::kEntity;
    CVexDbEntity* (*make)(CVexDbDatabase*) = nullptr;
    CVexDbEntity* (*copy)(const CVexDbEntity&) = nullptr;
    bool (*isClosed)(const CVexDbCurve&) = nullptr; // null: never
    VexDbEntityTransforms transforms = {};
    /// Adds what the entity is made of to the drawing, each with its undo record, and leaves the
    /// entity itself to the command that asked; null for a kind that stays whole.
    void (*explode)(CVexDbEntity&) = nullptr;
};

/// The row of a class; an empty one, nothing but nulls, for a class without.
VEXDB_EXPORT const VexDbEntityKind& entityKind(VexDb::ClassType type);
/// A new entity for the file reader, the caller's; null for a class that cannot be made.
VEXDB_EXPORT CVexDbEntity* makeEntityOfClass(VexDb::ClassType type, CVexDbDatabase* database);
