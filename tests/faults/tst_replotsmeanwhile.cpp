#include "faults/market.h"
#include "support/testmain.h"

#include <qwt_scale_div.h>

#include <functional>
#include <memory>

namespace {

/// A call that ends in replots, and how many there are of the host's on the way: without automatic ones, and
/// with them.
struct DrawingCall {
    const char* name;
    std::function<void(Market&)> act;
    int replots;
    int automaticReplots;

    int replotsOf(bool byItself) const { return byItself ? automaticReplots : replots; }
};

const QVector<DrawingCall>& drawingCalls()
{
    static const QVector<DrawingCall> all{
        {"auto-scale", [](Market& market) { market.plot->updateYAxisScale(); }, 2, 4},
        {"no auto-scale",
            [](Market& market) {
                market.plot->setAutoScaleEnabled(false);
                market.plot->updateYAxisScale();
            },
            2, 3},
        {"labels", [](Market& market) { market.plot->updateScaleLabels(); }, 1, 1},
        {"axis widgets", [](Market& market) { market.plot->updateAxisWidgets(); }, 2, 2},
        {"vertical scale", [](Market& market) { market.plot->setAxisScale(QwtPlot::yLeft, 0.0, 5.0, 0.0); },
            0, 2},
        {"horizontal scale",
            [](Market& market) { market.plot->setAxisScale(QwtPlot::xBottom, 90.0, 150.0, 0.0); }, 0, 1},
        {"hides the quote", [](Market& market) { market.curve(QStringLiteral("quote"))->setVisible(false); },
            2, 3},
        {"shows the quote", [](Market& market) { market.curve(QStringLiteral("quote"))->setVisible(true); },
            2, 3},
        {"hides marked points",
            [](Market& market) { market.curve(QStringLiteral("curve 13"))->setVisible(false); }, 0, 3},
        {"unchecks a curve",
            [](Market& market) { market.legend->setCheckBoxChecked(QStringLiteral("curve 9"), false); }, 2,
            5},
        {"unchecks the quote",
            [](Market& market) { market.legend->setCheckBoxChecked(QStringLiteral("quote"), false); }, 3, 4},
        {"polishes",
            [](Market& market) {
                QEvent polish(QEvent::PolishRequest);
                QCoreApplication::sendEvent(market.plot, &polish);
            },
            1, 1}};
    return all;
}

/// A market before a call that draws: nothing is on its way to the plot, and a quote that is to be shown is
/// hidden.
std::unique_ptr<Market> marketBefore(const DrawingCall& call, bool replotsByItself)
{
    auto market = std::make_unique<Market>();
    if (QByteArray(call.name) == "shows the quote")
        market->curve(QStringLiteral("quote"))->QwtPlotItem::setVisible(false);
    QCoreApplication::sendPostedEvents();
    market->plot->setAutoReplot(replotsByItself);
    return market;
}

/// What a market shows, for a comparison.
QStringList shownBy(const Market& market)
{
    QStringList shown = market.parts();
    if (!market.plot)
        return shown;
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        const QwtInterval scale = market.plot->axisScaleDiv(axis).interval();
        shown
            << QStringLiteral("axis %1 from %2 to %3").arg(axis).arg(scale.minValue()).arg(scale.maxValue());
    }
    const QList<PriceBased2dPlotCurve*> curves = market.plot->attachedCurves(-1);
    for (const PriceBased2dPlotCurve* curve : curves) {
        const QString title = curve->title().text();
        bool hasEntry = false;
        const bool isChecked = market.legend && market.legend->isCheckBoxChecked(title, &hasEntry);
        shown << QStringLiteral("%1 visible %2 checked %3 in %4 to %5")
                     .arg(title)
                     .arg(curve->isVisible())
                     .arg(isChecked)
                     .arg(curve->minYValue())
                     .arg(curve->maxYValue());
    }
    const QList<QwtPlotMarker*> markers = market.plot->attachedMarkers();
    for (const QwtPlotMarker* marker : markers)
        shown << QStringLiteral("marker at %1 visible %2").arg(marker->xValue()).arg(marker->isVisible());
    return shown;
}

/// What a market without a part shows once all that waits is done, and once it is told to scale itself anew.
QStringList shownAfterAll(Market& market, Market::Part gone)
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    // Curves and the flag of the panner, which goes with the canvas, make the vertical scale, which may not
    // have been found before they went.
    const bool isScaled = gone != Market::Curves && gone != Market::Panner && gone != Market::Canvas;
    QStringList shown = isScaled ? shownBy(market) : QStringList();
    if (market.plot)
        market.plot->updateYAxisScale();
    return shown + shownBy(market);
}

/// Makes a call, takes a part away at one of its replots, and answers how many there were.
int actAndRemove(Market& market, const DrawingCall& call, Market::Part part, int when)
{
    int replots = 0;
    // A replot that has lost its plot must not go on in the base class: it is over for the host as well.
    market.plot->replacesReplot = [&] {
        if (++replots != when)
            return false;
        market.remove(part);
        return part == Market::Plot;
    };
    call.act(market);
    if (market.plot)
        market.plot->replacesReplot = nullptr;
    return replots;
}

}

/// A host whose replot() deletes what the library is just drawing.
class tst_replotsmeanwhile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_market.reset(); }

    void replotsOfACall_data();
    void replotsOfACall();
    void duringAReplot_data();
    void duringAReplot();
    void itemsOutliveThePlot();

private:
    std::unique_ptr<Market> m_market;
};

void tst_replotsmeanwhile::replotsOfACall_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<bool>("replotsByItself");
    for (int call = 0; call < drawingCalls().size(); ++call) {
        for (const bool byItself : {false, true})
            QTest::addRow("%s%s", drawingCalls().at(call).name, byItself ? ", automatic" : "")
                << call << byItself;
    }
}

// At each of them a host may do what it should not: duringAReplot() goes through them.
void tst_replotsmeanwhile::replotsOfACall()
{
    QFETCH(int, call);
    QFETCH(bool, replotsByItself);
    const DrawingCall& drawing = drawingCalls().at(call);
    m_market = marketBefore(drawing, replotsByItself);
    int replots = 0;
    m_market->plot->onReplot = [&] { ++replots; };
    drawing.act(*m_market);
    QCOMPARE(replots, drawing.replotsOf(replotsByItself));
}

void tst_replotsmeanwhile::duringAReplot_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("when");
    QTest::addColumn<bool>("replotsByItself");
    for (int call = 0; call < drawingCalls().size(); ++call) {
        const DrawingCall& drawing = drawingCalls().at(call);
        for (int part = 0; part < Market::PartCount; ++part) {
            for (const bool byItself : {false, true}) {
                for (int when = 1; when <= drawing.replotsOf(byItself); ++when)
                    QTest::addRow("%s: %s at replot %d%s", drawing.name, Market::nameOf(Market::Part(part)),
                        when, byItself ? ", automatic" : "")
                        << call << part << when << byItself;
            }
        }
    }
}

// What is left is as if the part had gone after the call.
void tst_replotsmeanwhile::duringAReplot()
{
    QFETCH(int, call);
    QFETCH(int, part);
    QFETCH(int, when);
    QFETCH(bool, replotsByItself);
    const DrawingCall& drawing = drawingCalls().at(call);
    m_market = marketBefore(drawing, replotsByItself);
    drawing.act(*m_market);
    m_market->remove(Market::Part(part));
    QStringList expected = shownAfterAll(*m_market, Market::Part(part));
    // But a curve that has gone hides no further marker.
    if (QByteArray(drawing.name) == "hides marked points" && part == Market::Curves && when == 1)
        expected.replaceInStrings(
            QStringLiteral("marker at 140 visible 0"), QStringLiteral("marker at 140 visible 1"));

    m_market.reset();
    m_market = marketBefore(drawing, replotsByItself);
    const int replots = actAndRemove(*m_market, drawing, Market::Part(part), when);
    QCOMPARE(m_market->parts(), Market::partsWithout({Market::Part(part)}));
    QVERIFY2(part == Market::Plot ? replots == when : replots >= when, qPrintable(QString::number(replots)));
    QCOMPARE(shownAfterAll(*m_market, Market::Part(part)), expected);
}

// Qwt can be told to leave items alone that belong to the host.
void tst_replotsmeanwhile::itemsOutliveThePlot()
{
    m_market = std::make_unique<Market>();
    Market& market = *m_market;
    market.plot->setAutoDelete(false);
    market.plot->setAutoReplot(true);
    const QwtPlotItemList items = market.plot->itemList();
    PriceBased2dPlotCurve* const curve = market.curve(QStringLiteral("curve 13"));
    QVERIFY(market.plot->attachedMarkers().size() > 1);
    market.plot->replacesReplot = [&] {
        market.remove(Market::Plot);
        return true;
    };
    curve->setVisible(false);
    QVERIFY(!market.plot);
    QVERIFY(!curve->isVisible() && !curve->plot());
    qDeleteAll(items);
}

PLOT2D_TEST_MAIN(tst_replotsmeanwhile)
#include "tst_replotsmeanwhile.moc"
