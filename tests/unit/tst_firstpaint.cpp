#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <QHash>
#include <QImage>
#include <QPaintEvent>
#include <QPixmap>

#include <qwt_scale_widget.h>

#include <algorithm>

namespace {

/// Keeps the values as they are and notes which ones it is asked for.
class Recorder : public Conversion {
public:
    double forward(double value) const override
    {
        ++asked[value];
        return value;
    }
    double backward(double value) const override { return value; }

    mutable QHash<double, int> asked;
};

/// A plot that is laid out but was never painted, with far more prices on its axis than fit side by side.
class CrowdedPlot : public TestPlot {
public:
    CrowdedPlot()
    {
        resize(500, 300);
        QwtPlot::updateLayout();
        setAxisMaxMinor(xBottom, 0);
        setAxisScale(xBottom, 100000.0, 100100.0, 1.0);
        updateAxes();
        updateScaleLabels();
    }

    PriceBased2dPlotScaleDraw& prices()
    {
        return dynamic_cast<PriceBased2dPlotScaleDraw&>(*axisScaleDraw(xBottom));
    }

    /// Converts the prices' labels from now on; none of them is made yet.
    const Recorder& record()
    {
        auto* recorder = new Recorder;
        prices().setConvertionObject(recorder);
        prices().setConversionMethod(&Conversion::forward);
        prices().setConversionEnabled(true);
        prices().invalidateCache();
        return *recorder;
    }

    /// The answer of the event filter to an event; nobody is painted.
    bool filters(QObject* watched, QEvent::Type type)
    {
        if (type == QEvent::Paint) {
            QPaintEvent event(rect());
            return eventFilter(watched, &event);
        }
        QEvent event(type);
        return eventFilter(watched, &event);
    }

    void updateLayout() override
    {
        ++layouts;
        TestPlot::updateLayout();
    }

    int layouts = 0;
};

constexpr int allPrices = 101;

bool isBlank(const QImage& image)
{
    const QRgb background = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != background)
                return false;
        }
    }
    return true;
}

}

/// What the plot does when its price axis is painted for the first time.
class tst_firstpaint : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void nothingIsPaintedAtFirst();
    void paintsOfOthersDoNotCount();
    void firstPaintThinsTheLabels();
    void labelsAreChosenOnceAtTheFirstPaint();
    void laterPaintsChooseNothing();
    void paintedAxisIsNotChosenAnew();
    void otherEventsDoNotCount_data();
    void otherEventsDoNotCount();
    void otherWatchedObjectsDoNotCount();
    void paintIsNotConsumed();
    void answerIsThatOfQwtsFilter();
    void withoutAScaleDrawNothingHappens();
};

void tst_firstpaint::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_firstpaint::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_firstpaint::nothingIsPaintedAtFirst()
{
    CrowdedPlot plot;
    QVERIFY(!plot.prices().isPaintedOnce());
    QCOMPARE(plot.prices().labelTicks().size(), allPrices);
    plot.updateScaleLabels();
    plot.updateAxisWidgets();
    QVERIFY(!plot.prices().isPaintedOnce());
    QCOMPARE(plot.prices().labelTicks().size(), allPrices);
}

void tst_firstpaint::paintsOfOthersDoNotCount()
{
    CrowdedPlot plot;
    QVERIFY(!plot.axisWidget(QwtPlot::yLeft)->grab().isNull());
    QVERIFY(!plot.prices().isPaintedOnce());
    QVERIFY(!plot.canvas()->grab().isNull());
    QVERIFY(!plot.prices().isPaintedOnce());
    QCOMPARE(plot.prices().labelTicks().size(), allPrices);
}

void tst_firstpaint::firstPaintThinsTheLabels()
{
    CrowdedPlot plot;
    const auto* values = dynamic_cast<const PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(QwtPlot::yLeft));
    plot.axisWidget(QwtPlot::xBottom)->grab();
    QVERIFY(plot.prices().isPaintedOnce());
    QVERIFY(!values->isPaintedOnce());

    const QList<double> labels = plot.prices().labelTicks();
    QVERIFY(labels.size() > 1 && labels.size() < 20);
    const QList<QRect> rectangles = plot.prices().getBoundingRects(labels);
    for (int i = 1; i < rectangles.size(); ++i)
        QVERIFY(!rectangles[i].intersects(rectangles[i - 1]));
}

void tst_firstpaint::labelsAreChosenOnceAtTheFirstPaint()
{
    CrowdedPlot plot;
    const Recorder& recorder = plot.record();
    plot.filters(plot.axisWidget(QwtPlot::xBottom), QEvent::Paint);
    QVERIFY(plot.prices().isPaintedOnce());
    QCOMPARE(plot.prices().labelMargin(), 4);
    const QList<double> labels = plot.prices().labelTicks();
    QVERIFY(!labels.isEmpty());
    // Most labels are not even made.
    QVERIFY(recorder.asked.size() < allPrices);
    // A choice drops the labels it has made, so that a second one would ask again.
    for (const double price : labels)
        QCOMPARE(recorder.asked.value(price), 1);
    QCOMPARE(*std::max_element(recorder.asked.cbegin(), recorder.asked.cend()), 1);
    plot.prices().updateLabels();
    QCOMPARE(*std::max_element(recorder.asked.cbegin(), recorder.asked.cend()), 2);
}

void tst_firstpaint::laterPaintsChooseNothing()
{
    CrowdedPlot plot;
    QwtScaleWidget* widget = plot.axisWidget(QwtPlot::xBottom);
    plot.filters(widget, QEvent::Paint);
    const QList<double> labels = plot.prices().labelTicks();

    const Recorder& recorder = plot.record();
    plot.filters(widget, QEvent::Paint);
    QVERIFY(recorder.asked.isEmpty());
    // The wider scale has other labels, but nobody has asked for them.
    plot.setAxisScale(QwtPlot::xBottom, 100000.0, 100200.0, 1.0);
    plot.updateAxes();
    plot.filters(widget, QEvent::Paint);
    QCOMPARE(plot.prices().labelTicks(), labels);
    plot.prices().updateLabels();
    QVERIFY(plot.prices().labelTicks() != labels);
}

void tst_firstpaint::paintedAxisIsNotChosenAnew()
{
    CrowdedPlot plot;
    plot.prices().setPaintedOnce();
    const Recorder& recorder = plot.record();
    plot.filters(plot.axisWidget(QwtPlot::xBottom), QEvent::Paint);
    QVERIFY(recorder.asked.isEmpty());
    QCOMPARE(plot.prices().labelTicks().size(), allPrices);
}

void tst_firstpaint::otherEventsDoNotCount_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("user") << int(QEvent::User);
    QTest::newRow("show") << int(QEvent::Show);
    QTest::newRow("update request") << int(QEvent::UpdateRequest);
    QTest::newRow("layout request") << int(QEvent::LayoutRequest);
}

void tst_firstpaint::otherEventsDoNotCount()
{
    QFETCH(int, type);
    CrowdedPlot plot;
    QVERIFY(!plot.filters(plot.axisWidget(QwtPlot::xBottom), static_cast<QEvent::Type>(type)));
    QVERIFY(!plot.prices().isPaintedOnce());
    QCOMPARE(plot.prices().labelTicks().size(), allPrices);
}

void tst_firstpaint::otherWatchedObjectsDoNotCount()
{
    CrowdedPlot plot;
    QObject* const others[] = {plot.axisWidget(QwtPlot::yLeft), plot.axisWidget(QwtPlot::yRight),
        plot.axisWidget(QwtPlot::xTop), plot.canvas(), &plot};
    for (QObject* other : others) {
        QVERIFY(!plot.filters(other, QEvent::Paint));
        QVERIFY(!plot.prices().isPaintedOnce());
    }
    QVERIFY(!plot.filters(plot.axisWidget(QwtPlot::xBottom), QEvent::Paint));
    QVERIFY(plot.prices().isPaintedOnce());
}

void tst_firstpaint::paintIsNotConsumed()
{
    CrowdedPlot plot;
    QwtScaleWidget* widget = plot.axisWidget(QwtPlot::xBottom);
    const QImage first = widget->grab().toImage();
    QVERIFY(!isBlank(first));
    // The labels were chosen before the axis painted them.
    QCOMPARE(widget->grab().toImage(), first);
}

void tst_firstpaint::answerIsThatOfQwtsFilter()
{
    CrowdedPlot plot;
    QwtScaleWidget* widget = plot.axisWidget(QwtPlot::xBottom);
    QPaintEvent paint(widget->rect());
    const bool answer = plot.QwtPlot::eventFilter(widget, &paint);
    QVERIFY(!plot.prices().isPaintedOnce());
    QCOMPARE(plot.eventFilter(widget, &paint), answer);
    QCOMPARE(plot.eventFilter(widget, &paint), answer);

    // Qwt lays the plot out when its canvas gets another frame.
    plot.layouts = 0;
    plot.filters(plot.canvas(), QEvent::ContentsRectChange);
    QCOMPARE(plot.layouts, 1);
}

void tst_firstpaint::withoutAScaleDrawNothingHappens()
{
    TestPlot plot(false);
    QwtScaleWidget* widget = plot.axisWidget(QwtPlot::xBottom);
    QPaintEvent paint(widget->rect());
    QVERIFY(!plot.eventFilter(widget, &paint));
}

PLOT2D_TEST_MAIN(tst_firstpaint)
#include "tst_firstpaint.moc"
