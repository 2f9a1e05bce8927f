#include "guifixture.h"
#include "platform/device/cdc.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QTest>

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

/// The grips of each kind by mouse, in the real view.
class GripsInTheWindow : public GuiTest {
protected:
    template <class Shape>
    Shape* add(Shape* made)
    {
        made->setDatabase(&window().database());
        CVexDbObjectId id;
        window().database().addEntity(made, id);
        window().session().redraw();
        return made;
    }
    /// Presses at a grip, goes to `to` on a way round, and lets go; the picture is then the one
    /// that is drawn anew.
    void drags(CVexGePoint2d from, CVexGePoint2d to)
    {
        holds(from.x, from.y).moves(from.x + 0.5, from.y + 1.0).moves(to.x, to.y);
        releases(to.x, to.y).run();
        EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
    }
    void undoes()
    {
        presses(Qt::Key_Z, Qt::ControlModifier).run();
        EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
    }
    /// A drag that Escape ends leaves the picture as it was before the press.
    void givesUp(CVexGePoint2d from, CVexGePoint2d to)
    {
        const QImage before = picture();
        QImage during;
        holds(from.x, from.y).moves(to.x, to.y).then([&] { during = picture(); });
        presses(Qt::Key_Escape).releases(to.x, to.y).run();
        EXPECT_LT(60, differingPixels(before, during));
        EXPECT_EQ(0, differingPixels(before, picture()));
    }
};

TEST_F(GripsInTheWindow, MoveAndSizeACircle)
{
    CVexDbCircle* const circle = add(new CVexDbCircle({4, 4}, 2.0));
    clicks(5.2, 5.6).run();
    ASSERT_EQ(1u, handler().selectedEntities().size());
    givesUp({6, 4}, {7, 5});
    drags({6, 4}, {7, 4});
    EXPECT_DOUBLE_EQ(3.0, circle->Radius());
    drags({4, 4}, {3.5, 4.5});
    EXPECT_AT(3.5, 4.5, circle->Center());
    undoes();
    undoes();
    EXPECT_AT(4.0, 4.0, circle->Center());
    EXPECT_DOUBLE_EQ(2.0, circle->Radius());
}

TEST_F(GripsInTheWindow, TurnSizeAndMoveAnArc)
{
    CVexDbArc* const arc = add(new CVexDbArc(CVexGePoint2d(3, 2), 3.0, 0.0, 0.5 * kPi));
    clicks(4.8, 4.4).run();
    ASSERT_EQ(1u, handler().selectedEntities().size());
    givesUp({6, 2}, {5, 1});
    drags({3, 5}, {1, 2});
    EXPECT_NEAR(kPi, arc->EndAngle(), 1e-12);
    drags({3, 5}, {3, 4}); // the middle of the sweep is there now
    EXPECT_NEAR(2.0, arc->Radius(), 1e-12);
    drags({5, 2}, {5, 4});
    EXPECT_NEAR(0.25 * kPi, arc->StartAngle(), 1e-12);
    undoes();
    undoes();
    undoes();
    EXPECT_NEAR(3.0, arc->Radius(), 1e-12);
    EXPECT_NEAR(0.5 * kPi, arc->EndAngle(), 1e-12);
}

TEST_F(GripsInTheWindow, PullAndTurnABox)
{
    CVexDbBox* const box = add(new CVexDbBox({2, 2}, CVexGeVector2d(4, 2)));
    clicks(3.4, 4.0).run();
    ASSERT_EQ(1u, handler().selectedEntities().size());
    givesUp({6, 2}, {5, 5});
    drags({6, 4}, {7, 5});
    EXPECT_DOUBLE_EQ(5.0, box->Width());
    EXPECT_DOUBLE_EQ(3.0, box->Height());
    drags({7, 2}, {2, 6});
    EXPECT_NEAR(0.5 * kPi, box->Rotation(), 1e-12);
    drags({2, 4.5}, {3, 4.5}); // its bottom lies to the right now
    EXPECT_NEAR(4.0, box->Height(), 1e-12);
    undoes();
    undoes();
    undoes();
    EXPECT_AT(2.0, 2.0, box->BasePoint());
    EXPECT_DOUBLE_EQ(4.0, box->Width());
    EXPECT_DOUBLE_EQ(0.0, box->Rotation());
}

TEST_F(GripsInTheWindow, PullSidesAndCornersOfARectangle)
{
    CVexDbRect* const rect = add(new CVexDbRect({2, 2}, {6, 4}));
    clicks(3.4, 4.0).run();
    ASSERT_EQ(1u, handler().selectedEntities().size());
    givesUp({6, 4}, {7, 6});
    drags({6, 3}, {7, 3});
    EXPECT_AT(7.0, 4.0, rect->RightBottom());
    drags({2, 2}, {1, 1});
    EXPECT_AT(1.0, 1.0, rect->LeftTop());
    undoes();
    undoes();
    EXPECT_AT(2.0, 2.0, rect->LeftTop());
    EXPECT_AT(6.0, 4.0, rect->RightBottom());
}

/// Which pixels of a widget are repainted.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget* watched) : QObject(watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            painted |= static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    QRegion painted;
};

TEST_F(GripsInTheWindow, AreRepaintedWhereverAStrokeLiesAmongTheOthers)
{
    CDC& dc = *window().database().displays().getCurrentRecord()->GetCurrentDC();
    auto* const watch = new PaintWatch(window().view().widget());
    QTest::qWait(50); // what was waiting to be painted
    watch->painted = {};
    dc.MoveTo(200, 200);
    for (const CPoint to : {CPoint(600, 200), {600, 500}, {200, 500}, {200, 200}}) {
        dc.LineTo(to); // the last two lie within the box of the first two
    }
    ASSERT_TRUE(QTest::qWaitFor([watch] { return !watch->painted.isEmpty(); }));
    for (const QPoint middle : {pixelAt(4, 2), pixelAt(6, 3.5), pixelAt(4, 5), pixelAt(2, 3.5)}) {
        EXPECT_TRUE(watch->painted.contains(middle)) << middle.x() << ", " << middle.y();
    }
}

} // namespace
