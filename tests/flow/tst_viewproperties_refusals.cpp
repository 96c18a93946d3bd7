#include "flow/randomplot.h"
#include "support/testmain.h"

#include <functional>

namespace {

constexpr int notch = 120;

/// What a user tries anywhere on a plot that refuses it.
class Attempts {
public:
    Attempts(RandomPlot& plot, ViewRandom& random, int number)
        : m_plot(plot)
        , m_random(random)
        , m_number(number)
        , m_sign(random.chance(2) ? 1 : -1)
    {
    }

    /// The direction of the wheel.
    int sign() const { return m_sign; }
    int lessThanANotch() { return m_random.integer(0, notch - 1); }

    void turn(int angle) { turnAnywhere(m_sign * angle); }
    void turnIn() { turnAnywhere(notch); }
    void dragAxis()
    {
        m_plot.drag(m_plot.pointIn(m_plot.area(m_random.chance(2) ? QwtPlot::xBottom : QwtPlot::yLeft)),
            m_plot.pointIn(m_plot.plot().rect()), 3);
    }
    void pan() { m_plot.drag(m_plot.pointIn(m_plot.canvas()), m_plot.pointIn(m_plot.canvas())); }

    /// Fails the test where an action changes anything.
    void check(const char* what, const std::function<void()>& action)
    {
        m_plot.settle();
        const RandomPlot::State before = m_plot.state();
        action();
        const RandomPlot::State after = m_plot.state();
        HOLDS(after == before,
            m_plot.text(QStringLiteral("plot %1 %2").arg(m_number).arg(what), before, after));
    }

private:
    void turnAnywhere(int angle)
    {
        const QRect places[] = {m_plot.canvas(), m_plot.area(QwtPlot::xBottom), m_plot.area(QwtPlot::yLeft)};
        m_plot.turn(m_plot.pointIn(places[m_random.integer(0, 2)]), angle, Qt::NoModifier);
    }

    RandomPlot& m_plot;
    ViewRandom& m_random;
    const int m_number;
    const int m_sign;
};

}

/// What holds of the mouse's and the wheel's events that a shown plot refuses, whatever the view and the
/// data.
class tst_viewproperties_refusals : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void leaveEverything();

private:
    static void refusesWithoutData(Attempts& attempts);
    static void refusesBySetting(Attempts& attempts, RandomPlot& plot);
    static void refusesPans(Attempts& attempts, RandomPlot& plot);
};

void tst_viewproperties_refusals::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_viewproperties_refusals::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_viewproperties_refusals::refusesWithoutData(Attempts& attempts)
{
    attempts.check("wheel without data", [&] { attempts.turn(notch); });
    attempts.check("axis drag without data", [&] { attempts.dragAxis(); });
    attempts.check("pan without data", [&] { attempts.pan(); });
}

void tst_viewproperties_refusals::refusesBySetting(Attempts& attempts, RandomPlot& plot)
{
    attempts.check("less than a notch", [&] { attempts.turn(attempts.lessThanANotch()); });
    // Wide labels may leave no corner.
    const QPoint corner(1, plot.plot().height() - 2);
    if (!plot.plot().mousePositionOnScale(corner))
        attempts.check(
            "wheel in the corner", [&] { plot.turn(corner, attempts.sign() * notch, Qt::NoModifier); });
    plot.plot().setZoomEnabled(false);
    attempts.check("wheel with zoom off", [&] { attempts.turn(notch); });
    attempts.check("axis drag with zoom off", [&] { attempts.dragAxis(); });
    plot.plot().setZoomEnabled(true);
    PriceInterval steps;
    steps.minStep = 2.0 * plot.prices().width();
    plot.plot().setPriceInterval(steps);
    attempts.check("in below the smallest step", [&] { attempts.turnIn(); });
    attempts.check("axis narrowed below the smallest step", [&] {
        const QRect axis = plot.area(QwtPlot::xBottom);
        plot.drag(axis.center(), axis.center() - QPoint(20, 0));
    });
}

void tst_viewproperties_refusals::refusesPans(Attempts& attempts, RandomPlot& plot)
{
    plot.plot().enableAxis(QwtPlot::xBottom, false);
    attempts.check("pan without a price axis", [&] { attempts.pan(); });
    plot.plot().enableAxis(QwtPlot::xBottom, true);
    plot.plot().detachItems(QwtPlotItem::Rtti_PlotCurve, true);
    addData(plot.plot(), plot.prices().lower - plot.prices().width(),
        plot.prices().upper - 0.1 * plot.prices().width(), plot.values().lower, plot.values().upper);
    const QRect canvas = plot.canvas();
    attempts.check("pan past all data", [&] {
        plot.drag(
            QPoint(canvas.right() - 2, canvas.center().y()), QPoint(canvas.left() + 2, canvas.top() + 3));
    });
}

/// Whatever is refused for a known reason leaves both scales as they are, to the last bit, and is silent.
void tst_viewproperties_refusals::leaveEverything()
{
    ViewRandom random(20261125);
    for (int i = 0; i < 80; ++i) {
        RandomPlot plot(random);
        Attempts attempts(plot, random, i);
        refusesWithoutData(attempts);
        plot.addCurves(
            ViewRandom::dataAround(plot.prices(), 5.0), ViewRandom::dataAround(plot.values(), 5.0));
        refusesBySetting(attempts, plot);
        refusesPans(attempts, plot);
        if (QTest::currentTestFailed())
            return;
    }
}

PLOT2D_TEST_MAIN(tst_viewproperties_refusals)
#include "tst_viewproperties_refusals.moc"
