#pragma once

#include <QString>

#include <memory>

class CVexDbDatabase;
class DraftMachine;

/// A drawing that was read from a file.
struct OpenedDrawing {
    /// Null when nothing could be read.
    std::unique_ptr<CVexDbDatabase> database;
    /// The file was damaged: what was whole of it came, and must not be saved over it unasked.
    bool recovered = false;
    /// What went wrong, for the person.
    QString message{};
};

/// Reads a drawing. `_gpDatabase` is as before afterwards.
OpenedDrawing openDrawing(const QString& path, DraftMachine& machine);
/// Writes it, whole or not at all; on a failure false, with the reason in `message`.
bool saveDrawing(CVexDbDatabase& database, const QString& path, DraftMachine& machine,
                 QString& message);
