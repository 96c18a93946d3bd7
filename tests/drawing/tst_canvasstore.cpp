#include "canvasplot.h"

#include "support/testmain.h"

#include <QApplication>
#include <QPaintEvent>
#include <QTest>

using namespace CanvasPlot;

Q_DECLARE_METATYPE(CanvasPlot::Setup)

/// The regions that a widget was asked to paint.
class PaintedRegions : public QObject {
public:
    explicit PaintedRegions(QWidget& widget) { widget.installEventFilter(this); }
    const QVector<QRegion>& all() const { return m_all; }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_all.append(static_cast<QPaintEvent*>(event)->region());
        return false;
    }

private:
    QVector<QRegion> m_all;
};

/// When a canvas paints directly, when it keeps its picture, and when it leaves both to Qwt.
class tst_CanvasStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsItsPictureForASecondPaint();
    void paintsAnewAfterAReplot();
    void paintsPartsAlike();
    void paintsAllOfOneMoment();
    void paintsPlainOnesItself_data();
    void paintsPlainOnesItself();
    void paintsItselfAfterAResize();
    void showsAChangeOfLookAtOnce();
};

void tst_CanvasStore::keepsItsPictureForASecondPaint()
{
    const auto plot
        = ourPlot([](QwtPlot& made) { made.setStyleSheet("QWidget { background-color: white }"); });
    QwtPlotCanvas& canvas = canvasOf(*plot);
    picture(*plot);
    plot->replot();
    const QImage first = picture(canvas);
    QVERIFY(canvas.backingStore()->isNull());
    const QImage second = picture(canvas);
    QCOMPARE(canvas.backingStore()->size(), canvas.size() * canvas.devicePixelRatioF());
    QCOMPARE(second, first);
    // What a painter of new samples draws into the store is shown.
    const_cast<QPixmap*>(canvas.backingStore())->fill(Qt::green);
    QCOMPARE(picture(canvas).pixelColor(50, 50), QColor(Qt::green));
    plot->replot();
    QVERIFY(canvas.backingStore()->isNull());
    QCOMPARE(picture(canvas), first);
}

void tst_CanvasStore::paintsAnewAfterAReplot()
{
    const auto plot
        = ourPlot([](QwtPlot& made) { made.setStyleSheet("QWidget { background-color: white }"); });
    const QImage before = picture(*plot);
    picture(*plot);
    plot->setAxisScale(QwtPlot::yLeft, -20.0, 20.0);
    plot->replot();
    QVERIFY(picture(*plot) != before);
}

void tst_CanvasStore::paintsPartsAlike()
{
    const auto plot
        = ourPlot([](QwtPlot& made) { made.setStyleSheet("QWidget { background-color: white }"); });
    const QImage whole = picture(canvasOf(*plot));
    const QRect part(30, 20, 57, 41);
    for (int paint = 0; paint < 2; ++paint) {
        plot->replot();
        QImage image(whole.size(), QImage::Format_RGB32);
        image.setDevicePixelRatio(whole.devicePixelRatio());
        image.fill(Qt::magenta);
        canvasOf(*plot).render(&image, part.topLeft(), part);
        const int pixelRatio = qRound(whole.devicePixelRatio());
        const QRect pixels(part.topLeft() * pixelRatio, part.size() * pixelRatio);
        QCOMPARE(image.copy(pixels), whole.copy(pixels));
        QCOMPARE(image.pixelColor(pixels.right() + 1, pixels.top()), QColor(Qt::magenta));
    }
}

void tst_CanvasStore::paintsAllOfOneMoment()
{
    const auto plot
        = ourPlot([](QwtPlot& made) { made.setStyleSheet("QWidget { background-color: white }"); });
    QwtPlotCanvas& canvas = canvasOf(*plot);
    plot->show();
    QCoreApplication::processEvents();
    plot->replot();
    QCoreApplication::processEvents();
    PaintedRegions painted(canvas);
    const QRegion part(30, 20, 57, 41);
    canvas.update(part);
    QCoreApplication::processEvents();
    // A curve may have changed since the replot, so that the rest is shown anew as well, once.
    const QVector<QRegion> expected{part, QRegion(canvas.rect())};
    QTRY_COMPARE(painted.all(), expected);
    canvas.update(part);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(painted.all().size(), 3);
}

void tst_CanvasStore::paintsPlainOnesItself_data()
{
    QTest::addColumn<Setup>("setUp");
    QTest::addColumn<bool>("byItself");
    const auto canvas = [](const std::function<void(QwtPlotCanvas&)>& change) {
        return Setup([change](QwtPlot& plot) {
            canvasOf(plot).setFrameStyle(QFrame::NoFrame);
            change(canvasOf(plot));
        });
    };
    const auto focus = [](bool hasFocus, QwtPlotCanvas::FocusIndicator indicator) {
        return Setup([=](QwtPlot& plot) {
            canvasOf(plot).setFrameStyle(QFrame::NoFrame);
            canvasOf(plot).setFocusIndicator(indicator);
            plot.canvas()->setFocusPolicy(Qt::StrongFocus);
            plot.show();
            QApplication::setActiveWindow(&plot);
            hasFocus ? plot.canvas()->setFocus() : plot.canvas()->clearFocus();
        });
    };
    QTest::newRow("no frame") << canvas([](QwtPlotCanvas&) {}) << true;
    QTest::newRow("frame") << Setup([](QwtPlot&) {}) << false;
    QTest::newRow("narrow frame") << canvas([](QwtPlotCanvas& changed) {
        changed.setFrameStyle(QFrame::Plain | QFrame::Box);
        changed.setLineWidth(1);
    }) << false;
    QTest::newRow("slightly round") << canvas([](QwtPlotCanvas& changed) { changed.setBorderRadius(0.5); })
                                    << false;
    QTest::newRow("not filled") << canvas([](QwtPlotCanvas& changed) {
        changed.setAutoFillBackground(false);
    }) << false;
    QTest::newRow("not opaque") << canvas(setTranslucent) << false;
    QTest::newRow("gradient") << Setup([](QwtPlot& plot) {
        canvasOf(plot).setFrameStyle(QFrame::NoFrame);
        plot.setCanvasBackground(QLinearGradient(0.0, 0.0, 100.0, 200.0));
    }) << false;
    QTest::newRow("translucent") << Setup([](QwtPlot& plot) {
        canvasOf(plot).setFrameStyle(QFrame::NoFrame);
        plot.setCanvasBackground(QColor(0, 0, 255, 100));
    }) << false;
    QTest::newRow("plain sheet") << Setup([](QwtPlot& plot) {
        plot.setStyleSheet("QWidget { background-color: white }");
    }) << true;
    QTest::newRow("sheet with a border") << Setup([](QwtPlot& plot) {
        plot.setStyleSheet("QwtPlotCanvas { background-color: white; border: 1px solid red }");
    }) << false;
    QTest::newRow("focus, shown") << focus(true, QwtPlotCanvas::CanvasFocusIndicator) << false;
    QTest::newRow("focus, not shown") << focus(true, QwtPlotCanvas::NoFocusIndicator) << true;
    QTest::newRow("focus of an item") << focus(true, QwtPlotCanvas::ItemFocusIndicator) << true;
    QTest::newRow("no focus, to be shown") << focus(false, QwtPlotCanvas::CanvasFocusIndicator) << true;
}

void tst_CanvasStore::paintsPlainOnesItself()
{
    QFETCH(Setup, setUp);
    QFETCH(bool, byItself);
    const auto plot = ourPlot(setUp);
    QCoreApplication::processEvents();
    plot->replot();
    picture(canvasOf(*plot));
    // Qwt's canvas paints into its store at once.
    QCOMPARE(canvasOf(*plot).backingStore()->isNull(), byItself);
}

void tst_CanvasStore::paintsItselfAfterAResize()
{
    const auto plot
        = ourPlot([](QwtPlot& made) { made.setStyleSheet("QWidget { background-color: white }"); });
    QwtPlotCanvas& canvas = canvasOf(*plot);
    picture(*plot);
    picture(*plot);
    QVERIFY(!canvas.backingStore()->isNull());
    plot->resize(200, 150);
    picture(*plot);
    QVERIFY(canvas.backingStore()->isNull());
    picture(*plot);
    QCOMPARE(canvas.backingStore()->size(), canvas.size() * canvas.devicePixelRatioF());
}

void tst_CanvasStore::showsAChangeOfLookAtOnce()
{
    const auto plot
        = ourPlot([](QwtPlot& made) { made.setStyleSheet("QWidget { background-color: white }"); });
    picture(*plot);
    picture(*plot);
    QVERIFY(!canvasOf(*plot).backingStore()->isNull());
    plot->setStyleSheet("QWidget { background-color: yellow }");
    const QImage image = picture(canvasOf(*plot));
    QCOMPARE(image.pixelColor(image.width() - 2, 2), QColor(Qt::yellow));
}

PLOT2D_TEST_MAIN(tst_CanvasStore)
#include "tst_canvasstore.moc"
