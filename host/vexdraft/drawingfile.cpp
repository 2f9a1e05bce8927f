#include "host/vexdraft/drawingfile.h"

#include "host/vexdraft/draftmachine.h"
#include "platform/base/carchive.h"
#include "platform/base/cfile.h"
#include "platform/qt/vexqttext.h"
#include "vexdb/vexdbdatabase.h"

#include <QObject>

#include <cstring>
#include <utility>

OpenedDrawing openDrawing(const QString& path, DraftMachine& machine)
{
    OpenedDrawing drawing;
    CFile file;
    if (!file.Open(toCString(path), CFile::modeRead)) {
        drawing.message = QObject::tr("%1 cannot be read: %2")
                              .arg(path, QString::fromUtf8(std::strerror(file.error())));
        return drawing;
    }
    CVexDbDatabase* const before = _gpDatabase;
    drawing.database = std::make_unique<CVexDbDatabase>(false);
    _gpDatabase = drawing.database.get();
    CArchive archive(&file, CArchive::load);
    const bool whole = drawing.database->Read(archive);
    archive.Close();
    _gpDatabase = before;
    drawing.database->setFile(nullptr); // it ends with this call
    if (!whole) {
        drawing.recovered = drawing.database->lastReport().objectsKept > 0;
        drawing.message = toQString(machine.takeLast());
        if (!drawing.recovered) {
            drawing.database.reset();
        }
    }
    return drawing;
}

bool saveDrawing(CVexDbDatabase& database, const QString& path, DraftMachine& machine,
                 QString& message)
{
    if (database.SaveAs(toCString(path))) {
        return true;
    }
    message = toQString(machine.takeLast());
    return false;
}
