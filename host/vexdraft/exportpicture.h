#pragma once

#include <QString>

class CVexDbDatabase;

/// Writes what the current view shows, on white, as PNG (in the view's pixels), PDF or SVG (a page
/// of A4 width) by the extension of `path`. On a failure false, with the reason in `message`.
bool exportPicture(CVexDbDatabase& database, const QString& path, QString& message);
