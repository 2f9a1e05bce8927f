#include "trackerfixture.h"

#include <string>

namespace {

class TypedTest : public TrackerTest {
protected:
    TypedTest() { band.SetStartPoint({1, 1}, true); }
    int types(std::wstring_view text)
    {
        type(text);
        return band.Track(&display, {0, 0});
    }
    [[nodiscard]] const Return_Struct& answer() const { return band.resBuffer(); }

    CVexDbEntityTracker band{&display, database.get(), true};
};

TEST_F(TypedTest, PointsAreAbsoluteOrPolarFromTheStart)
{
    struct Row {
        const wchar_t* typed;
        double x;
        double y;
    };
    const Row rows[] = {
        {L"12,5\n", 12, 5},
        {L"-3.5,0.25\n", -3.5, 0.25},
        {L"1e1,2\n", 10, 2},
        {L"5<90\n", 1, 6},
        {L"2<0\n", 3, 1},
        {L"2<-90\n", 1, -1},
        {L"1,2,3\n", 1, 2},
        {L"12,\n", 12, 0},
        {L"x,5\n", 0, 5},
        {L"1,5<90\n", 1, 5},
        {L"2<9,0\n", 2, 0},
        {L"4,5 ", 4, 5},
        {L"0.125,0.0625\n", 0.125, 0.0625},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(InputTypedPoint, types(row.typed)) << CString(row.typed).utf8();
        EXPECT_NEAR(row.x, lastPoint().x, 1e-12) << CString(row.typed).utf8();
        EXPECT_NEAR(row.y, lastPoint().y, 1e-12) << CString(row.typed).utf8();
        EXPECT_NEAR(row.x, answer().value.point.x, 1e-12);
        EXPECT_NEAR(row.y, answer().value.point.y, 1e-12);
    }
}

TEST_F(TypedTest, NumbersAreTextsWithoutLetters)
{
    struct Row {
        const wchar_t* typed;
        double number;
    };
    const Row rows[] = {{L"12.5\n", 12.5}, {L"-3\n", -3.0}, {L"+4 ", 4.0},
                        {L"12\b\n", 12.0}, {L"--\n", 0.0},  {L".5\n", 0.5}};
    for (const Row& row : rows) {
        EXPECT_EQ(InputNumber, types(row.typed)) << CString(row.typed).utf8();
        EXPECT_EQ(row.number, answer().value.number) << CString(row.typed).utf8();
        EXPECT_EQ(InputNumber, answer().type);
    }
}

TEST_F(TypedTest, AllElseIsText)
{
    database->setLastPoint({7, 7});
    struct Row {
        const wchar_t* typed;
        const wchar_t* text;
    };
    const Row rows[] = {{L"abx\n", L"ABX"}, {L"0<45\n", L"0<45"}, {L"-3<45\n", L"-3<45"},
                        {L",5\n", L",5"},   {L"<45\n", L"<45"},   {L"12m\n", L"12M"}};
    for (const Row& row : rows) {
        EXPECT_EQ(InputString, types(row.typed)) << CString(row.typed).utf8();
        EXPECT_EQ(std::wstring(row.text), answer().value.text);
        EXPECT_POINT(7.0, 7.0, lastPoint());
    }
}

TEST_F(TypedTest, ASnapLetterBeforeDigitsMakesTheValueText)
{
    type(L"c12");
    whileWaiting([this] { EXPECT_TRUE(settings().m_bSnapCenter); });
    EXPECT_EQ(InputString, types(L"\n"));
    EXPECT_STREQ(L"C12", answer().value.text);
}

TEST_F(TypedTest, EnterAloneCancelsAPlainBand)
{
    EXPECT_EQ(InputCancel, types(L"\n"));
    EXPECT_EQ(InputCancel, types(L" "));
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(TypedTest, EachTrackBeginsWithAnEmptyText)
{
    EXPECT_EQ(InputCancel, (type(L"12"), press(VK_ESCAPE), band.Track(&display, {0, 0})));
    EXPECT_EQ(InputNumber, types(L"3\n"));
    EXPECT_EQ(3.0, answer().value.number);
}

TEST_F(TypedTest, TheTextEndsAt255Characters)
{
    EXPECT_EQ(InputString, types(std::wstring(300, L'x') + L"\n"));
    EXPECT_EQ(255u, std::wstring(answer().value.text).size());
}

TEST_F(TypedTest, AKeywordEndsTheTrackWithItsLetter)
{
    band.SetKeyWords(L"CR");
    EXPECT_EQ(InputKeyword, types(L"7c"));
    EXPECT_EQ(L'C', answer().value.character);
    EXPECT_FALSE(settings().m_bSnapCenter) << "a keyword arms no snap";
    EXPECT_EQ(2, received(WM_CHAR)) << "the host echoes it";
    EXPECT_TRUE(leftOver().empty());
    expectReleased();
}

TEST_F(TypedTest, CodesBehindTheAlphabetAreFoldedToo)
{
    band.SetKeyWords(L"[");
    EXPECT_EQ(InputKeyword, types(L"{"));
    EXPECT_EQ(L'[', answer().value.character);
}

TEST_F(TypedTest, TypedPointsTakeTheBandOff)
{
    moveAt(10, 10);
    EXPECT_EQ(InputTypedPoint, types(L"3,4\n"));
    EXPECT_TRUE(leftOver().empty());
    expectReleased();
}

TEST_F(TypedTest, ATypedPointIsNotRoundedToTheGrid)
{
    settings().m_bGridSnap = true;
    EXPECT_EQ(InputTypedPoint, types(L"3.3,4.4\n"));
    EXPECT_POINT(3.3, 4.4, lastPoint());
}

class TextBand : public CVexDbEntityTracker {
public:
    TextBand(CWnd* window, CVexDbDatabase* database) : CVexDbEntityTracker(window, database, true)
    {
        m_type = TrackerText;
    }
};

TEST_F(TypedTest, ABlankNeverEndsADragOfText)
{
    TextBand text(&display, database.get());
    type(L" ");
    clickAt(12, 7);
    EXPECT_EQ(InputPoint, text.Track(&display, {0, 0}));
    EXPECT_EQ(1, received(WM_KEYDOWN)) << "the window gets the blank";
    type(L"\n");
    EXPECT_EQ(InputCancel, text.Track(&display, {0, 0}));
}

} // namespace
