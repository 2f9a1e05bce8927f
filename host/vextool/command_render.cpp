#include "host/vextool/commands.h"
#include "host/vextool/drawingio.h"
#include "host/vextool/picturing.h"
#include "host/vextool/progress.h"
#include "platform/device/cdc.h"
#include "platform/qt/vexqtpicture.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/vexdbdrawpass.h"
#include "vexdb/vexdbpagemapping.h"

#include <QByteArray>

#include <array>
#include <charconv>
#include <filesystem>
#include <set>

namespace {

constexpr double kMarginShare = 0.03;      // free space around a drawing that is fitted
constexpr double kFarthest = 1e7;          // drawing units; no picture reaches beyond
constexpr double kSmallestWindow = 0.1;    // drawing units, ten logical ones
constexpr double kLeastExtent = 1.0;       // drawing units; a single point still gets an area
constexpr double kDotsPerMillimetre = 100; // device units of PDF and SVG pages
constexpr std::array kPaper{420.0, 297.0}; // millimetres, where no size is asked for

// What the options ask for, checked once before the first drawing is read.
struct Request {
    VexQtPictureOptions picture;
    std::optional<double> millimetresPerUnit;
    std::optional<VexExtents> window;
    std::optional<int> monoIndex;
};

bool formatOf(const std::string& output, VexQtPictureFormat& format)
{
    struct Row {
        const char* extension;
        VexQtPictureFormat format;
    };
    static constexpr std::array kRows{Row{".png", VexQtPictureFormat::kPng},
                                      Row{".pdf", VexQtPictureFormat::kPdf},
                                      Row{".svg", VexQtPictureFormat::kSvg}};
    const std::string extension = std::filesystem::path(output).extension().string();
    for (const Row& row : kRows) {
        if (extension == row.extension) {
            format = row.format;
            return true;
        }
    }
    return false;
}

bool colorOf(const std::string& text, COLORREF& color)
{
    if (text == "black" || text == "white") {
        color = text == "white" ? RGB(255, 255, 255) : RGB(0, 0, 0);
        return true;
    }
    unsigned value = 0;
    const char* const end = text.data() + text.size();
    const bool good = text.size() == 7 && text[0] == '#' &&
                      std::from_chars(text.data() + 1, end, value, 16).ptr == end;
    color = RGB(value >> 16, value >> 8, value);
    return good;
}

// "1:50" is 1/50 millimetre of paper a drawing unit; "2:1" is 2.
bool scaleOf(const std::string& text, double& millimetresPerUnit)
{
    double paper = 0.0;
    double drawing = 0.0;
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, paper);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != ':') {
        return false;
    }
    const auto second = std::from_chars(first.ptr + 1, end, drawing);
    millimetresPerUnit = paper / drawing;
    return second.ec == std::errc() && second.ptr == end && std::isfinite(millimetresPerUnit) &&
           millimetresPerUnit > 0.0;
}

// White turns black on white paper by the drawing's own rule; on other light grounds a dark grey
// is what stands against them.
int monoIndexFor(COLORREF background)
{
    const unsigned brightness =
        (GetRValue(background) * 299 + GetGValue(background) * 587 + GetBValue(background) * 114) /
        1000;
    const bool needsGrey = brightness >= 128 && background != RGB(255, 255, 255);
    return needsGrey ? 250 : 7;
}

bool refuse(const std::string& why)
{
    complain("render: " + why);
    return false;
}

bool checkPage(const Options& options, bool sizeGiven, Request& request)
{
    const bool isPng = request.picture.format == VexQtPictureFormat::kPng;
    request.picture.size = isPng || sizeGiven ? QSizeF(options.size[0], options.size[1])
                                              : QSizeF(kPaper[0], kPaper[1]);
    if (request.picture.format == VexQtPictureFormat::kPdf) {
        request.picture.background = RGB(255, 255, 255);
    }
    if (!options.scale.empty()) {
        double scale = 0.0;
        if (isPng || !scaleOf(options.scale, scale)) {
            return refuse("--scale wants PDF or SVG and two numbers like 1:50");
        }
        request.millimetresPerUnit = scale;
    }
    return true;
}

bool checkWindow(const Options& options, Request& request)
{
    const auto& [left, bottom, right, top] = options.window;
    if (!(left < right && bottom < top)) {
        return refuse("--window is left bottom right top, left < right and bottom < top");
    }
    if (std::max({-left, -bottom, right, top}) > kFarthest ||
        std::max(right - left, top - bottom) < kSmallestWindow) {
        return refuse("--window lies within 10000000 units and is at least 0.1 units large");
    }
    request.window = VexExtents{left, bottom, right, top};
    return true;
}

bool checkRequest(const Options& options, Request& request)
{
    if (!formatOf(options.output, request.picture.format)) {
        return refuse("the output's extension is .png, .pdf or .svg");
    }
    if (options.inputs.size() > 1 && options.output.find('%') == std::string::npos) {
        return refuse("many drawings want a % in the output's name");
    }
    if (!colorOf(options.background, request.picture.background)) {
        return refuse("--background is black, white or #rrggbb");
    }
    if (!checkPage(options, options.sizeGiven, request)) {
        return false;
    }
    if (options.windowGiven && !checkWindow(options, request)) {
        return false;
    }
    if (options.mono) {
        request.monoIndex = monoIndexFor(request.picture.background);
    }
    return true;
}

// What is shown: the window asked for, else the drawing with a margin, else the drawing limits.
VexExtents shownArea(CVexDbDatabase& database, const Request& request)
{
    if (request.window) {
        return *request.window;
    }
    const VexDbDrawingSettings_tag& settings = database.settings();
    VexExtents area = drawingExtents(database, kFarthest)
                          .value_or(VexExtents{settings.m_ptLimitsMin.x, settings.m_ptLimitsMin.y,
                                               settings.m_ptLimitsMax.x, settings.m_ptLimitsMax.y});
    const double margin =
        kMarginShare * std::max({area.right - area.left, area.top - area.bottom, kLeastExtent});
    return {area.left - margin, area.bottom - margin, area.right + margin, area.top + margin};
}

CRect logicalRect(const VexExtents& area)
{
    return {toLogical(area.left), toLogical(area.bottom), toLogical(area.right),
            toLogical(area.top)};
}

// The area in the middle of the picture, both axes at one scale.
void fitMapping(CDC& dc, VexExtents area)
{
    const double width = dc.GetDeviceCaps(HORZRES);
    const double height = dc.GetDeviceCaps(VERTRES);
    const double aspect = height / width;
    const double missing = (area.right - area.left) * aspect - (area.top - area.bottom);
    if (missing > 0) {
        area.bottom -= missing / 2;
        area.top += missing / 2;
    } else {
        area.left -= -missing / aspect / 2;
        area.right += -missing / aspect / 2;
    }
    setWindowMapping(dc, logicalRect(area),
                     CRect(0, 0, static_cast<int>(width), static_cast<int>(height)));
}

void draw(CVexDbDatabase& database, CDC& dc, const Request& request)
{
    const VexExtents area = shownArea(database, request);
    if (request.millimetresPerUnit) {
        const double page =
            dc.GetDeviceCaps(HORZRES) / kDotsPerMillimetre / *request.millimetresPerUnit;
        const double high =
            dc.GetDeviceCaps(VERTRES) / kDotsPerMillimetre / *request.millimetresPerUnit;
        const CVexGePoint2d corner((area.left + area.right - page) / 2,
                                   (area.bottom + area.top - high) / 2);
        setPageMapping(dc, corner, *request.millimetresPerUnit);
    } else {
        fitMapping(dc, area);
    }
    const CVexDbDrawPassScope pass(database.drawPass(), request.monoIndex);
    database.displays().getCurrentRecord()->DrawEntities(&dc);
}

ExitCode picture(const std::string& input, const std::string& output, Request request, bool quiet)
{
    const LoadedDrawing drawing = loadDrawing(input, quiet);
    if (!drawing.database) {
        return drawing.code;
    }
    const Progress progress("picturing " + input, quiet);
    request.picture.title = QString::fromStdString(std::filesystem::path(input).stem().string());
    const std::unique_ptr<CVexQtPicture> target = CVexQtPicture::create(request.picture);
    if (!target) {
        complain("render: a picture of that size cannot be made");
        return kExitUsage;
    }
    draw(*drawing.database, *target->dc(), request);
    QByteArray bytes;
    if (!target->finish(bytes)) {
        complain("render: '" + output + "' could not be made");
        return kExitUnwritable;
    }
    const ExitCode written = writeWhole(
        output,
        std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
    return written != kExitGood ? written : drawing.code;
}

std::string outputFor(const std::string& input, std::string output)
{
    if (const std::size_t at = output.find('%'); at != std::string::npos) {
        output.replace(at, 1, std::filesystem::path(input).stem().string());
    }
    return output;
}

// Two drawings of one title would leave one picture of the second.
bool outputsDiffer(const Options& options)
{
    std::set<std::string> outputs;
    for (const std::string& input : options.inputs) {
        if (!outputs.insert(outputFor(input, options.output)).second) {
            return refuse("two drawings would be pictured as '" + outputFor(input, options.output) +
                          "'");
        }
    }
    return true;
}

} // namespace

ExitCode runRender(const Options& options)
{
    Request request;
    if (!checkRequest(options, request) || !outputsDiffer(options)) {
        return kExitUsage;
    }
    ToolMachine machine(options.quiet);
    const CVexMachineScope scope(machine);
    ExitCode worst = kExitGood;
    for (const std::string& input : options.inputs) {
        worst = std::max(worst,
                         picture(input, outputFor(input, options.output), request, options.quiet));
    }
    return worst;
}
