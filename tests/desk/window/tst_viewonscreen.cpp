#include "desktest.h"
#include "support/childrun.h"
#include "support/testmain.h"
#include "xsession.h"

#include <window/curvewalk.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/viewcontrol.h>

#include <QApplication>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

#include <qwt_plot_layout.h>

/// The view of the desk under a real mouse and keyboard, on an X server. Each function runs in a process of
/// its own there.
class tst_viewonscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();
    void wheelAndBack();
    void dragAndBack();
    void dragOfAnAxisAndEscape();
    void doubleClicks_data();
    void doubleClicks();
    void keys();
    void arrowsAlongThePoints();
    void button();

private:
    /// Runs the function on the server; true in the process that has done so.
    bool isDoneOnServer();
    void hands(const QStringList& arguments) const;
    void pointAt(const QPoint& position) const;
    QPoint middle(const QRectF& rectangle) const { return rectangle.center().toPoint(); }
    QPoint onCanvas() const { return middle(plot().plotLayout()->canvasRect()); }
    void key(const char* name) const { hands({"key", QLatin1String(name)}); }
    void zoomFreely() const;
    DeskPlot& plot() const { return *m_window->plot(); }
    View view() const { return plot().findChild<ViewControl*>()->view(); }
    double width() const { return view().prices.width(); }

    std::unique_ptr<XSession> m_session;
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
};

namespace {

constexpr int patience = 30000; // ms
const QwtInterval somePrices(90.0, 120.0);
const QwtInterval allPrices(58.4, 141.6);

bool isAbout(double a, double b)
{
    return std::abs(a - b) <= 1e-9 * std::abs(b);
}

/// When the wheel has turned. On a busy machine not even notches at once come as one gesture.
class WheelTimes : public QObject {
public:
    WheelTimes() { QApplication::instance()->installEventFilter(this); }

    int gestures() const
    {
        int count = m_times.isEmpty() ? 0 : 1;
        for (int i = 1; i < m_times.size(); ++i)
            count += m_times[i] - m_times[i - 1] > ViewHistory::longestPause ? 1 : 0;
        return count;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // A window hears of an event before the widgets in it do.
        if (watched->isWindowType() && event->type() == QEvent::Wheel)
            m_times.append(qint64(static_cast<const QWheelEvent*>(event)->timestamp()));
        return QObject::eventFilter(watched, event);
    }

private:
    QVector<qint64> m_times;
};

}

#define COMES_TRUE(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patience)

void tst_viewonscreen::initTestCase()
{
    if (TestSupport::isChild())
        return;
    if (!XServer::isPossible())
        QSKIP("Xvfb or xdotool is not there");
    m_session = std::make_unique<XSession>();
    QVERIFY(m_session->start());
}

void tst_viewonscreen::cleanupTestCase()
{
    m_session.reset();
}

void tst_viewonscreen::init()
{
    if (!TestSupport::isChild())
        return;
    m_data = std::make_unique<DeskData>(QString());
    const int futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->resize(900, 600);
    m_window->showSeries(futureIsinId, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get(), patience));
    // No window manager gives the window the focus.
    hands({"windowfocus", QString::number(m_window->winId())});
    QVERIFY(QTest::qWaitForWindowActive(m_window.get(), patience));
}

void tst_viewonscreen::cleanup()
{
    m_window.reset();
    m_data.reset();
}

bool tst_viewonscreen::isDoneOnServer()
{
    if (TestSupport::isChild())
        return false;
    const TestSupport::ChildRun run = TestSupport::repeatRowInChild(m_session->environment());
    if (!run.passed())
        QTest::qFail(run.output.constData(), __FILE__, __LINE__);
    return true;
}

void tst_viewonscreen::hands(const QStringList& arguments) const
{
    XSession::tool(arguments, QProcessEnvironment::systemEnvironment());
}

void tst_viewonscreen::pointAt(const QPoint& position) const
{
    const QPoint global = plot().mapToGlobal(position);
    hands({"mousemove", "--sync", QString::number(global.x()), QString::number(global.y())});
}

/// Goes where there is room to all sides, with auto-scale on.
void tst_viewonscreen::zoomFreely() const
{
    plot().setAxisScale(QwtPlot::xBottom, somePrices.minValue(), somePrices.maxValue(), 0.0);
    Q_EMIT plot().autoScaleEnabled(true);
    Q_EMIT plot().updateAxisLabels();
    plot().findChild<ViewControl*>()->forget();
}

void tst_viewonscreen::wheelAndBack()
{
    if (isDoneOnServer())
        return;
    zoomFreely();
    const View before = view();
    pointAt(onCanvas());
    const WheelTimes times;
    hands({"click", "--repeat", "3", "--delay", "0", "4"});
    COMES_TRUE(isAbout(width(), 0.9 * 0.9 * 0.9 * somePrices.width()));
    QVERIFY(!view().autoScale);
    const View zoomed = view();
    for (int i = 0; i < times.gestures(); ++i)
        key("BackSpace");
    COMES_TRUE(view() == before);
    for (int i = 0; i < times.gestures(); ++i)
        key("shift+BackSpace");
    COMES_TRUE(view() == zoomed);
    hands({"keydown", "ctrl", "click", "5", "keyup", "ctrl"});
    COMES_TRUE(isAbout(width(), 1.1 * zoomed.prices.width()));

    zoomFreely();
    const View again = view();
    pointAt(middle(plot().plotLayout()->scaleRect(QwtPlot::yLeft)));
    hands({"click", "4"});
    COMES_TRUE(isAbout(view().values.width(), 0.9 * again.values.width()));
    QCOMPARE(view().prices, again.prices);
    key("BackSpace");
    COMES_TRUE(view() == again);
}

void tst_viewonscreen::dragAndBack()
{
    if (isDoneOnServer())
        return;
    zoomFreely();
    const View before = view();
    const double canvasWidth = plot().canvas()->contentsRect().width();
    pointAt(onCanvas());
    hands({"mousedown", "1"});
    pointAt(onCanvas() + QPoint(50, 0));
    pointAt(onCanvas() + QPoint(80, 0));
    hands({"mouseup", "1"});
    const auto moved = [&] {
        return (before.prices.minValue() - view().prices.minValue()) / somePrices.width() * canvasWidth;
    };
    QTRY_VERIFY2_WITH_TIMEOUT(std::abs(moved() - 80.0) < 2.0, qPrintable(QString::number(moved())), patience);
    QVERIFY(!view().autoScale);
    key("BackSpace");
    COMES_TRUE(view() == before);

    // Farther than the data reaches.
    for (int i = 0; i < 8; ++i) {
        pointAt(onCanvas() - QPoint(300, 0));
        hands({"mousedown", "1"});
        pointAt(onCanvas());
        pointAt(onCanvas() + QPoint(300, 0));
        hands({"mouseup", "1"});
    }
    COMES_TRUE(view().prices.minValue() < 60.0);
    QVERIFY(view().prices.minValue() > 60.0 - 0.1 * somePrices.width());
}

void tst_viewonscreen::dragOfAnAxisAndEscape()
{
    if (isDoneOnServer())
        return;
    zoomFreely();
    const View before = view();
    const QPoint start = middle(plot().plotLayout()->scaleRect(QwtPlot::xBottom));
    pointAt(start);
    hands({"mousedown", "1"});
    pointAt(start - QPoint(5, 0));
    COMES_TRUE(width() < somePrices.width());
    const double narrower = width();
    pointAt(start + QPoint(5, 0));
    COMES_TRUE(width() > narrower);
    pointAt(start - QPoint(5, 0));
    hands({"mouseup", "1"});
    COMES_TRUE(width() < somePrices.width());
    key("BackSpace");
    COMES_TRUE(view() == before);

    // No double click.
    const QPoint elsewhere = start + QPoint(60, 0);
    pointAt(elsewhere);
    hands({"mousedown", "1"});
    pointAt(elsewhere - QPoint(5, 0));
    COMES_TRUE(width() < somePrices.width());
    key("Escape");
    COMES_TRUE(view() == before);
    pointAt(elsewhere - QPoint(10, 0));
    hands({"mouseup", "1"});
    key("plus");
    COMES_TRUE(isAbout(width(), 0.9 * somePrices.width()));
}

void tst_viewonscreen::doubleClicks_data()
{
    QTest::addColumn<int>("place");
    QTest::newRow("canvas") << -1;
    QTest::newRow("prices") << int(QwtPlot::xBottom);
    QTest::newRow("values") << int(QwtPlot::yLeft);
}

void tst_viewonscreen::doubleClicks()
{
    if (isDoneOnServer())
        return;
    QFETCH(int, place);
    zoomFreely();
    plot().resetAutoScale();
    plot().setAxisScale(QwtPlot::yLeft, 0.32, 0.33, 0.0);
    Q_EMIT plot().updateAxisLabels();
    const View before = view();
    pointAt(place < 0 ? onCanvas() : middle(plot().plotLayout()->scaleRect(place)));
    QApplication::setDoubleClickInterval(patience);
    hands({"click", "--repeat", "2", "--delay", "0", "1"});
    COMES_TRUE(view() != before);
    const bool fitsPrices = place != QwtPlot::yLeft;
    const bool fitsValues = place != QwtPlot::xBottom;
    COMES_TRUE(
        (view().prices != before.prices) == fitsPrices && (view().values != before.values) == fitsValues);
    if (fitsPrices)
        QVERIFY(isAbout(view().prices.minValue(), allPrices.minValue())
            && isAbout(view().prices.maxValue(), allPrices.maxValue()));
    const auto [low, high] = plot().minMaxYAtXRange();
    QCOMPARE(view().values == QwtInterval(low, high), fitsValues);
    key("BackSpace");
    COMES_TRUE(view() == before);
}

void tst_viewonscreen::keys()
{
    if (isDoneOnServer())
        return;
    zoomFreely();
    key("plus");
    COMES_TRUE(isAbout(width(), 0.9 * somePrices.width()));
    key("KP_Add");
    COMES_TRUE(isAbout(width(), 0.81 * somePrices.width()));
    key("equal");
    COMES_TRUE(isAbout(width(), 0.729 * somePrices.width()));
    key("minus");
    COMES_TRUE(isAbout(width(), 1.1 * 0.729 * somePrices.width()));
    double left = view().prices.minValue();
    key("Left");
    COMES_TRUE(view().prices.minValue() < left);
    left = view().prices.minValue();
    key("Right");
    COMES_TRUE(view().prices.minValue() > left);
    QVERIFY(view().autoScale);
    key("Home");
    COMES_TRUE(isAbout(view().prices.minValue(), allPrices.minValue()));
    key("BackSpace");
    COMES_TRUE(width() < somePrices.width());
    const double low = view().values.minValue();
    key("Up");
    COMES_TRUE(view().values.minValue() > low);
    QVERIFY(!view().autoScale);
}

void tst_viewonscreen::arrowsAlongThePoints()
{
    if (isDoneOnServer())
        return;
    zoomFreely();
    const View before = view();
    for (const char* const begin : {"F2", "Return", "KP_Enter"}) {
        key(begin);
        COMES_TRUE(plot().walk()->isActive());
        key("Right");
        key("Escape");
        COMES_TRUE(!plot().walk()->isActive());
        QVERIFY(view() == before);
    }
    key("Right");
    COMES_TRUE(view() != before);
}

void tst_viewonscreen::button()
{
    if (isDoneOnServer())
        return;
    zoomFreely();
    QWidget* autoScale = nullptr;
    const auto* const bar = m_window->findChild<QToolBar*>();
    const QList<QAction*> actions = bar->actions();
    for (QAction* const action : actions) {
        if (action->text().remove(QLatin1Char('&')) == QLatin1String("Auto-scale"))
            autoScale = bar->widgetForAction(action);
    }
    const auto* const button = qobject_cast<QToolButton*>(autoScale);
    QVERIFY(button && button->isChecked());
    pointAt(onCanvas());
    hands({"click", "4"});
    COMES_TRUE(!button->isChecked());
    QVERIFY(!view().autoScale);
    pointAt(plot().mapFromGlobal(button->mapToGlobal(button->rect().center())));
    hands({"click", "1"});
    COMES_TRUE(button->isChecked());
    QVERIFY(view().autoScale);
    // The button leaves the keyboard to the plot.
    key("Home");
    COMES_TRUE(isAbout(view().prices.minValue(), allPrices.minValue()));
}

PLOT2D_TEST_MAIN(tst_viewonscreen)
#include "tst_viewonscreen.moc"
