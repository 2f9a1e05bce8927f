#pragma once

#include <QColor>
#include <QIcon>

/// The icon of that name, thin strokes of `color`, sharp at every size; the empty icon for a name
/// that there is none for.
QIcon draftIcon(const char* name, const QColor& color);
