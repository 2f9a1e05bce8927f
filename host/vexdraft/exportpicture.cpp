#include "host/vexdraft/exportpicture.h"

#include "platform/device/cdc.h"
#include "platform/qt/vexqtpicture.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbpagemapping.h"

#include <QFileInfo>
#include <QObject>
#include <QSaveFile>

#include <optional>

namespace {

constexpr double kPageWidth = 297.0; // millimetres

std::optional<VexQtPictureFormat> formatOf(const QString& path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == "png") {
        return VexQtPictureFormat::kPng;
    }
    if (extension == "pdf") {
        return VexQtPictureFormat::kPdf;
    }
    return extension == "svg" ? std::optional(VexQtPictureFormat::kSvg) : std::nullopt;
}

QSizeF sizeOf(VexQtPictureFormat format, const CRect& client)
{
    const QSizeF pixels(client.Width(), client.Height());
    return format == VexQtPictureFormat::kPng
               ? pixels
               : QSizeF(kPageWidth, kPageWidth * pixels.height() / pixels.width());
}

/// The grid is for drawing by, not for the picture.
class GridOff {
public:
    explicit GridOff(CVexDbDatabase& database)
        : m_visible(database.settings().m_bGridVisible), m_before(m_visible)
    {
        m_visible = false;
    }
    ~GridOff() { m_visible = m_before; }
    GridOff(const GridOff&) = delete;
    GridOff& operator=(const GridOff&) = delete;

private:
    bool& m_visible;
    bool m_before;
};

bool refuse(QString& message, const QString& why)
{
    message = why;
    return false;
}

} // namespace

bool exportPicture(CVexDbDatabase& database, const QString& path, QString& message)
{
    CVexDbDisplayTableRecord& view = *database.displays().getCurrentRecord();
    const std::optional<VexQtPictureFormat> format = formatOf(path);
    if (!format || view.client().IsRectEmpty()) {
        return refuse(message, QObject::tr("The name of a picture ends in .png, .pdf or .svg."));
    }
    const std::unique_ptr<CVexQtPicture> picture =
        CVexQtPicture::create({*format, sizeOf(*format, view.client())});
    QByteArray bytes;
    if (picture != nullptr) {
        const GridOff gridOff(database);
        CDC& dc = *picture->dc();
        setWindowMapping(dc, view.window(),
                         CRect(0, 0, dc.GetDeviceCaps(HORZRES), dc.GetDeviceCaps(VERTRES)));
        view.DrawEntities(&dc);
    }
    if (picture == nullptr || !picture->finish(bytes)) {
        return refuse(message, QObject::tr("The picture could not be made."));
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        return refuse(message,
                      QObject::tr("%1 cannot be written: %2").arg(path, file.errorString()));
    }
    return true;
}
