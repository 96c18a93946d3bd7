#include "canvasplot.h"
#include "pictures.h"

#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <QApplication>
#include <QTest>

#include <qwt_scale_widget.h>

using namespace CanvasPlot;

Q_DECLARE_METATYPE(CanvasPlot::Setup)

class tst_PlotCanvas : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void looksLikeQwts_data();
    void looksLikeQwts();
    void followsChangesOfLook();
    void showsItsFocusAsQwts();
    void isTheCanvasOfAPlot();
    void axesAreOpaqueWhereTheyHideThePlot();
    void axesOfAPlotThatIsShownAlreadyAreOpaque();
    void opaqueAxesLookTheSame();
};

void tst_PlotCanvas::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_PlotCanvas::looksLikeQwts_data()
{
    QTest::addColumn<Setup>("setUp");
    const auto sheet = [](const char* text) {
        return Setup([text](QwtPlot& plot) { plot.setStyleSheet(QLatin1String(text)); });
    };

    QTest::newRow("as it comes") << Setup([](QwtPlot&) {});
    QTest::newRow("without a frame") << Setup(
        [](QwtPlot& plot) { canvasOf(plot).setFrameStyle(QFrame::NoFrame); });
    QTest::newRow("coloured") << Setup([](QwtPlot& plot) {
        plot.setCanvasBackground(QColor(200, 220, 255));
        canvasOf(plot).setFrameStyle(QFrame::NoFrame);
    });
    QTest::newRow("gradient") << Setup([](QwtPlot& plot) {
        QLinearGradient gradient(0.0, 0.0, 100.0, 200.0);
        gradient.setColorAt(0.0, Qt::white);
        gradient.setColorAt(1.0, Qt::blue);
        plot.setCanvasBackground(gradient);
        canvasOf(plot).setFrameStyle(QFrame::NoFrame);
    });
    QTest::newRow("sheet") << sheet("QWidget { background-color: #f0fff0 }");
    QTest::newRow("sheet with a border")
        << sheet("QwtPlotCanvas { background-color: white; border: 3px solid red }");
    QTest::newRow("sheet, and a line that reaches into the frame") << Setup([](QwtPlot& plot) {
        plot.setStyleSheet(QStringLiteral("QWidget { background-color: #f0fff0 }"));
        const QwtPlotItemList curves = plot.itemList(QwtPlotItem::Rtti_PlotCurve);
        dynamic_cast<QwtPlotCurve&>(*curves.first()).setPen(Qt::blue, 40.0);
    });
    QTest::newRow("sheet with round corners")
        << sheet("QwtPlotCanvas { background-color: white; border: 1px solid red; border-radius: 30px }");
    QTest::newRow("sheet with a gradient") << sheet(
        "QwtPlotCanvas { background: qlineargradient(x1:0, y1:0, x2:1, y2:1, stop:0 red, stop:1 blue) }");
    QTest::newRow("sheet with a spot in its first line")
        << sheet("QwtPlotCanvas { background: qradialgradient(cx:1, cy:0, fx:1, fy:0, radius:0.004,"
                 " stop:0 red, stop:0.98 red, stop:1 white) }");
    QTest::newRow("translucent sheet") << sheet("QwtPlotCanvas { background-color: rgba(0, 0, 255, 60) }");
    QTest::newRow("round corners of its own") << Setup([](QwtPlot& plot) {
        canvasOf(plot).setFrameStyle(QFrame::NoFrame);
        canvasOf(plot).setBorderRadius(40.0);
    });
    QTest::newRow("not filled") << Setup([](QwtPlot& plot) {
        canvasOf(plot).setFrameStyle(QFrame::NoFrame);
        canvasOf(plot).setAutoFillBackground(false);
    });
    QTest::newRow("without a store") << Setup(
        [](QwtPlot& plot) { canvasOf(plot).setPaintAttribute(QwtPlotCanvas::BackingStore, false); });
    QTest::newRow("not opaque") << Setup([](QwtPlot& plot) { setTranslucent(canvasOf(plot)); });
    QTest::newRow("disabled") << Setup([](QwtPlot& plot) { plot.setEnabled(false); });
}

void tst_PlotCanvas::looksLikeQwts()
{
    QFETCH(Setup, setUp);
    const auto ours = ourPlot(setUp);
    const auto plain = plainPlot(setUp);
    for (const double scale : {1.0, 2.0}) {
        // Directly, from what is kept then, and after a replot.
        for (int paint = 0; paint < 3; ++paint) {
            if (paint == 2) {
                ours->replot();
                plain->replot();
            }
            QCOMPARE(Pictures::difference(picture(*ours, scale), picture(*plain, scale)), QString());
        }
    }
    ours->resize(200, 150);
    plain->resize(200, 150);
    QCOMPARE(Pictures::difference(picture(*ours), picture(*plain)), QString());
}

void tst_PlotCanvas::followsChangesOfLook()
{
    const auto ours = ourPlot([](QwtPlot&) {});
    const auto plain = plainPlot([](QwtPlot&) {});
    for (const char* sheet : {"QWidget { background-color: white }", "QWidget { background-color: yellow }",
             "QwtPlotCanvas { border-radius: 10px; background-color: blue }", ""}) {
        ours->setStyleSheet(QLatin1String(sheet));
        plain->setStyleSheet(QLatin1String(sheet));
        // Qwt's canvas shows its old picture until the next replot.
        ours->replot();
        plain->replot();
        QCOMPARE(Pictures::difference(picture(*ours), picture(*plain)), QString());
    }
}

void tst_PlotCanvas::showsItsFocusAsQwts()
{
    for (const auto indicator : {QwtPlotCanvas::NoFocusIndicator, QwtPlotCanvas::CanvasFocusIndicator,
             QwtPlotCanvas::ItemFocusIndicator}) {
        const auto focused = [indicator](const std::unique_ptr<QwtPlot>& plot) {
            canvasOf(*plot).setFocusIndicator(indicator);
            plot->canvas()->setFocusPolicy(Qt::StrongFocus);
            plot->show();
            QApplication::setActiveWindow(plot.get());
            plot->canvas()->setFocus();
            return plot->canvas()->hasFocus() ? picture(*plot) : QImage();
        };
        const QImage ours = focused(ourPlot([](QwtPlot&) {}));
        const QImage plain = focused(plainPlot([](QwtPlot&) {}));
        QVERIFY(!ours.isNull() && !plain.isNull());
        QCOMPARE(Pictures::difference(ours, plain), QString());
    }
}

void tst_PlotCanvas::isTheCanvasOfAPlot()
{
    TestPlot plot;
    QVERIFY(qobject_cast<PlotCanvas*>(plot.canvas()));
    QCOMPARE(plot.canvas()->objectName(), QStringLiteral("QwtPlotCanvas"));
}

void tst_PlotCanvas::axesAreOpaqueWhereTheyHideThePlot()
{
    TestPlot plot;
    plot.resize(400, 300);
    plot.show();
    const auto isOpaque
        = [&](int axis) { return plot.axisWidget(axis)->testAttribute(Qt::WA_OpaquePaintEvent); };
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        QVERIFY(isOpaque(axis));
        plot.axisWidget(axis)->setStyleSheet("QWidget { background-color: rgba(255, 255, 255, 100) }");
        QVERIFY(!isOpaque(axis));
        plot.axisWidget(axis)->setStyleSheet("QWidget { background-color: white; border-radius: 5px }");
        QVERIFY(!isOpaque(axis));
        plot.axisWidget(axis)->setStyleSheet("QWidget { background-color: yellow }");
        QVERIFY(isOpaque(axis));
        plot.axisWidget(axis)->setStyleSheet(
            "QWidget { background-color: yellow } QWidget:disabled { background-color: transparent }");
        QVERIFY(isOpaque(axis));
        plot.axisWidget(axis)->setEnabled(false);
        QVERIFY(!isOpaque(axis));
    }
}

void tst_PlotCanvas::axesOfAPlotThatIsShownAlreadyAreOpaque()
{
    TestPlot plot(false);
    plot.resize(400, 300);
    plot.enableAxis(QwtPlot::yLeft);
    plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plot));
    plot.initPlot();
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
        QVERIFY(plot.axisWidget(axis)->testAttribute(Qt::WA_OpaquePaintEvent));
}

void tst_PlotCanvas::opaqueAxesLookTheSame()
{
    TestPlot plot;
    plot.resize(400, 300);
    plot.setStyleSheet("QWidget { background-color: yellow }");
    const QImage opaque = picture(plot);
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        QVERIFY(plot.axisWidget(axis)->testAttribute(Qt::WA_OpaquePaintEvent));
        plot.axisWidget(axis)->setAttribute(Qt::WA_OpaquePaintEvent, false);
    }
    QCOMPARE(Pictures::difference(picture(plot), opaque), QString());
}

PLOT2D_TEST_MAIN(tst_PlotCanvas)
#include "tst_plotcanvas.moc"
