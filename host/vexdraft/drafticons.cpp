#include "host/vexdraft/drafticons.h"

#include <QPainter>
#include <QPixmap>
#include <QString>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct Glyph {
    std::string_view name;
    const char* path; // on a field of 24 by 24, y down
};

constexpr std::array kGlyphs = {
    Glyph{"new", "M6 3h8l4 4v14H6zM14 3v4h4"},
    Glyph{"open", "M3 19V5h6l2 3h9v3M3 19l3-8h16l-3 8z"},
    Glyph{"save", "M4 4h13l3 3v13H4zM8 4v5h7V4M7 20v-7h10v7"},
    Glyph{"undo", "M8 4L4 8l4 4M4 8h10a5.5 5.5 0 0 1 0 11H9"},
    Glyph{"redo", "M16 4l4 4-4 4M20 8H10a5.5 5.5 0 0 0 0 11h5"},
    Glyph{"erase", "M4 7h16M10 7V4h4v3M6 7l1 13h10l1-13M10 11v6M14 11v6"},
    Glyph{"line",
          "M6.4 17.6L17.6 6.4M3 19a2 2 0 1 0 4 0a2 2 0 1 0-4 0M17 5a2 2 0 1 0 4 0a2 2 0 1 0-4 0"},
    Glyph{"arc", "M5 17A12 12 0 0 1 17 5M3 19a2 2 0 1 0 4 0a2 2 0 1 0-4 0"
                 "M17 5a2 2 0 1 0 4 0a2 2 0 1 0-4 0"},
    Glyph{"circle", "M4 12a8 8 0 1 0 16 0a8 8 0 1 0-16 0M11 12h2M12 11v2"},
    Glyph{"rectangle", "M3 6h18v12H3z"},
    Glyph{"box", "M9 3l12 7l-6 11L3 14z"},
    Glyph{"polyline", "M3 19h6a4 4 0 0 0 4-4V9a4 4 0 0 1 4-4h4"},
    Glyph{"arcpolyline", "M3 12a4.5 4.5 0 0 1 9 0a4.5 4.5 0 0 0 9 0"},
    Glyph{"polygon", "M12 3l7.8 4.5v9L12 21l-7.8-4.5v-9z"},
    Glyph{"star",
          "M12 3l2.6 6.2l6.7.6l-5.1 4.4l1.6 6.5l-5.8-3.5l-5.8 3.5l1.6-6.5l-5.1-4.4l6.7-.6z"},
    Glyph{"move", "M4 4h8v8H4zM14 14l6 6M20 15v5h-5"},
    Glyph{"copy", "M4 4h10v10H4zM10 10h10v10H10z"},
    Glyph{"rotate", "M19 12a7 7 0 1 1-3-5.7M16 2v5h-5"},
    Glyph{"scale", "M4 20V11h9v9zM13 11l7-7M15 4h5v5"},
    Glyph{"mirror", "M12 3v18M9 7L4 17h5zM15 7l5 10h-5z"},
    Glyph{"trim", "M3 12h8M14 3v18M17 12h1M20 12h1"},
    Glyph{"extend", "M3 12h13M20 3v18M13 9l3 3l-3 3"},
    Glyph{"offset", "M4 20V10a6 6 0 0 1 6-6h10M10 20v-6a4 4 0 0 1 4-4h6"},
    Glyph{"explode", "M8 3h8M8 21h8M3 8v8M21 8v8M10 10L7 7M14 10l3-3M10 14l-3 3M14 14l3 3"},
    Glyph{"editpolyline",
          "M5.2 16.2L9.3 8.3M12 8.3l5 5.4M3 16h4v4H3zM8.5 4.5h4v4h-4zM16.5 13.5h4v4h-4z"},
    Glyph{"fill", "M4 19L12 4l8 15zM8 19l6.1-11.2M12 19l4-7.3M16 19l1.9-3.6"},
    Glyph{"extents", "M3 8V3h5M16 3h5v5M21 16v5h-5M8 21H3v-5M8 8h8v8H8z"},
    Glyph{"window", "M4 10a6 6 0 1 0 12 0a6 6 0 1 0-12 0M14.5 14.5L21 21M7 8h6v4H7z"},
    Glyph{"in", "M4 10a6 6 0 1 0 12 0a6 6 0 1 0-12 0M14.5 14.5L21 21M7 10h6M10 7v6"},
    Glyph{"out", "M4 10a6 6 0 1 0 12 0a6 6 0 1 0-12 0M14.5 14.5L21 21M7 10h6"},
    Glyph{"previous", "M4 10a6 6 0 1 0 12 0a6 6 0 1 0-12 0M14.5 14.5L21 21M11.5 7l-3 3l3 3"},
    Glyph{"pan", "M12 3v18M3 12h18M9 6l3-3l3 3M9 18l3 3l3-3M6 9l-3 3l3 3M18 9l3 3l-3 3"},
};

QPixmap paint(const QByteArray& svg, int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(svg).render(&painter);
    return pixmap;
}

} // namespace

QIcon draftIcon(const char* name, const QColor& color)
{
    const auto glyph = std::ranges::find(kGlyphs, std::string_view(name), &Glyph::name);
    if (glyph == kGlyphs.end()) {
        return {};
    }
    const QByteArray svg =
        QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'><path d='%1' "
                       "fill='none' stroke='%2' stroke-width='1.6' stroke-linejoin='round' "
                       "stroke-linecap='round'/></svg>")
            .arg(QLatin1String(glyph->path), color.name())
            .toUtf8();
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 48, 64}) {
        icon.addPixmap(paint(svg, side));
    }
    return icon;
}
