#include "tests/cli/toolrun.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72.0;
constexpr double kPaperTolerance = 0.1; // millimetres

/// A stroke of a page, millimetres of paper.
struct Stroke {
    std::vector<std::pair<double, double>> points;

    [[nodiscard]] double length() const
    {
        return std::hypot(points.back().first - points.front().first,
                          points.back().second - points.front().second);
    }
    [[nodiscard]] double width() const
    {
        const auto [least, most] =
            std::ranges::minmax_element(points, {}, [](const auto& point) { return point.first; });
        return most->first - least->first;
    }
};

/// The program of the first page: the longest stream of the file, unpacked.
std::string pageProgram(const std::string& pdf)
{
    std::string longest;
    for (std::size_t at = pdf.find("\nstream\n"); at != std::string::npos;
         at = pdf.find("\nstream\n", at)) {
        at += 8;
        const std::size_t end = std::min(pdf.find("endstream", at), pdf.size());
        QByteArray packed = QByteArray::fromRawData("\0\1\0\0", 4); // a guess of the size in front
        packed.append(pdf.data() + at, static_cast<qsizetype>(end - at));
        const QByteArray program = qUncompress(packed);
        if (static_cast<std::size_t>(program.size()) > longest.size()) {
            longest = program.toStdString();
        }
    }
    return longest;
}

/// The strokes of the page, by its path operators; curves count by their ends.
std::vector<Stroke> strokesOf(const std::string& pdf)
{
    std::istringstream words(pageProgram(pdf));
    std::vector<Stroke> strokes;
    std::vector<double> operands;
    double scale = kMillimetresPerPoint;
    for (std::string word; words >> word;) {
        char* end = nullptr;
        const double number = std::strtod(word.c_str(), &end);
        if (*end == '\0') {
            operands.push_back(number);
            continue;
        }
        const std::size_t count = operands.size();
        if (word == "cm" && count >= 6) {
            scale *= operands[count - 6];
        } else if ((word == "m" || word == "l" || word == "c") && count >= 2) {
            if (word == "m") {
                strokes.emplace_back();
            }
            strokes.back().points.emplace_back(operands[count - 2] * scale,
                                               operands[count - 1] * scale);
        }
        operands.clear();
    }
    return strokes;
}

class PrintTest : public ToolTest {
protected:
    std::vector<Stroke> print(const std::string& scale, const std::string& paper = "297 210")
    {
        write("a.jsonl", R"({"kind":"line","start":[10,10],"end":[110,10]})"
                         "\n"
                         R"({"kind":"line","start":[10,20],"end":[10,120]})"
                         "\n"
                         R"({"kind":"line","start":[20,20],"end":[80,100]})"
                         "\n"
                         R"({"kind":"circle","center":[60,60],"radius":50})"
                         "\n");
        EXPECT_EQ(run("new a.zpl --from a.jsonl").code, 0);
        EXPECT_EQ(run("render a.zpl -o a.pdf --size " + paper + " --scale " + scale).code, 0);
        return strokesOf(content(path("a.pdf")));
    }
};

TEST_F(PrintTest, AHundredUnitsAreAHundredMillimetresOfPaperAtOneToOne)
{
    const std::vector<Stroke> strokes = print("1:1");
    ASSERT_EQ(strokes.size(), 4u);
    EXPECT_NEAR(strokes[0].length(), 100.0, kPaperTolerance); // across
    EXPECT_NEAR(strokes[1].length(), 100.0, kPaperTolerance); // upwards
    EXPECT_NEAR(strokes[2].length(), 100.0, kPaperTolerance); // slanted
    EXPECT_NEAR(strokes[3].width(), 100.0, kPaperTolerance);  // a diameter
}

TEST_F(PrintTest, TheScaleIsPaperToDrawing)
{
    const std::vector<Stroke> half = print("1:2");
    ASSERT_EQ(half.size(), 4u);
    EXPECT_NEAR(half[0].length(), 50.0, kPaperTolerance);
    EXPECT_NEAR(half[3].width(), 50.0, kPaperTolerance);
    const std::vector<Stroke> twice = print("2:1", "420 297");
    EXPECT_NEAR(twice[2].length(), 200.0, kPaperTolerance);
}

TEST_F(PrintTest, ThePageIsThePaperThatWasAskedFor)
{
    print("1:1");
    const std::string pdf = content(path("a.pdf"));
    const std::string key = "/MediaBox [0 0 ";
    const std::size_t box = pdf.find(key);
    ASSERT_NE(box, std::string::npos);
    double width = 0.0;
    double height = 0.0;
    std::istringstream(pdf.substr(box + key.size(), 40)) >> width >> height;
    // The writer rounds a page to whole points, a third of a millimetre.
    EXPECT_NEAR(width * kMillimetresPerPoint, 297.0, 0.2);
    EXPECT_NEAR(height * kMillimetresPerPoint, 210.0, 0.2);
}

} // namespace
