#include "choosingdesk.h"
#include "desktest.h"
#include "support/testmain.h"

#include <window/keptview.h>

/// A kept view: its texts, and which of them a plot shows.
class tst_keptview : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comesBack_data();
    void comesBack();
    void refusesOtherTexts_data();
    void refusesOtherTexts();
    void isShown_data();
    void isShown();
    void isNotShown_data();
    void isNotShown();
};

namespace {

KeptView kept(const QwtInterval& prices, const QwtInterval& values, bool autoScale)
{
    return {QStringLiteral("TEST"), QDate(2024, 4, 2), DeskView::Volatility, {prices, values, autoScale}};
}

View viewOf(const PriceBased2dPlot& plot)
{
    return {plot.axisScaleDiv(QwtPlot::xBottom).interval(), plot.axisScaleDiv(QwtPlot::yLeft).interval(),
        plot.autoScaleEnabled()};
}

}

void tst_keptview::comesBack_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("usual") << 81.3 << 112.7;
    QTest::newRow("thirds") << 1.0 / 3.0 << 2.0 / 3.0;
    QTest::newRow("neighbours") << 0.1 << std::nextafter(0.1, 1.0);
    QTest::newRow("extremes") << -1e300 << 5e-324;
}

void tst_keptview::comesBack()
{
    QFETCH(double, low);
    QFETCH(double, high);
    for (const bool autoScale : {true, false}) {
        KeptView before = kept({low, high}, {low, high}, autoScale);
        before.drawn = autoScale ? DeskView::Value : DeskView::Volatility;
        before.expiry = autoScale ? QDate() : before.expiry;
        const auto after = KeptView::fromTexts(before.toTexts());
        QVERIFY(after.has_value());
        QCOMPARE(after->baseCode, before.baseCode);
        QCOMPARE(after->expiry, before.expiry);
        QCOMPARE(after->drawn, before.drawn);
        QVERIFY(after->view.prices == before.view.prices);
        QVERIFY(after->view.values == before.view.values);
        QCOMPARE(after->view.autoScale, autoScale);
    }
}

void tst_keptview::refusesOtherTexts_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("text");
    QTest::newRow("view") << 2 << "gamma";
    QTest::newRow("no number") << 3 << "eighty";
    QTest::newRow("empty") << 3 << "";
    QTest::newRow("nan") << 4 << "nan";
    QTest::newRow("infinite") << 4 << "inf";
    QTest::newRow("too large for a number") << 6 << "1e999";
    QTest::newRow("no width") << 4 << "80";
    QTest::newRow("inverted") << 5 << "1";
    QTest::newRow("width beyond numbers") << 6 << "1.7e308";
    QTest::newRow("scaling") << 7 << "5";
    QTest::newRow("one less") << -1 << "";
    QTest::newRow("one more") << 8 << "more";
}

void tst_keptview::refusesOtherTexts()
{
    QFETCH(int, position);
    QFETCH(QString, text);
    QStringList texts = kept({80.0, 120.0}, {0.2, 0.4}, true).toTexts();
    QVERIFY(KeptView::fromTexts(texts).has_value());
    if (position < 0)
        texts.removeLast();
    else if (position == texts.size())
        texts << text;
    else
        texts[position] = text;
    if (text == QLatin1String("1.7e308"))
        texts[5] = QStringLiteral("-1.7e308");
    QVERIFY(!KeptView::fromTexts(texts).has_value());
    QVERIFY(!KeptView::fromTexts({}).has_value());
}

void tst_keptview::isShown_data()
{
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QwtInterval>("values");
    QTest::addColumn<bool>("autoScale");
    QTest::newRow("zoomed in") << QwtInterval(95.25, 104.75) << QwtInterval(0.25, 0.4) << true;
    QTest::newRow("fixed") << QwtInterval(95.25, 104.75) << QwtInterval(0.25, 0.4) << false;
    QTest::newRow("all") << QwtInterval(50.0, 150.0) << QwtInterval(0.1, 0.9) << false;
    QTest::newRow("one step") << QwtInterval(99.0, 101.5) << QwtInterval(0.29, 0.31) << false;
}

void tst_keptview::isShown()
{
    QFETCH(QwtInterval, prices);
    QFETCH(QwtInterval, values);
    QFETCH(bool, autoScale);
    ChoosingDesk desk;
    desk.start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    kept(prices, values, autoScale).show(*desk.plot);
    const View view = viewOf(*desk.plot);
    QVERIFY(view.prices == prices);
    QCOMPARE(view.autoScale, autoScale);
    QCOMPARE(view.values == values, !autoScale);
}

void tst_keptview::isNotShown_data()
{
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QwtInterval>("values");
    QTest::newRow("beside the data") << QwtInterval(200.0, 240.0) << QwtInterval(0.2, 0.4);
    QTest::newRow("above the data") << QwtInterval(90.0, 110.0) << QwtInterval(7.0, 8.0);
    QTest::newRow("narrower than a step") << QwtInterval(99.0, 100.0) << QwtInterval(0.2, 0.4);
    QTest::newRow("far too wide") << QwtInterval(0.0, 1e9) << QwtInterval(0.2, 0.4);
    QTest::newRow("far too high") << QwtInterval(90.0, 110.0) << QwtInterval(-1e9, 1e9);
}

void tst_keptview::isNotShown()
{
    QFETCH(QwtInterval, prices);
    QFETCH(QwtInterval, values);
    ChoosingDesk desk;
    desk.start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    const View before = viewOf(*desk.plot);
    kept(prices, values, false).show(*desk.plot);
    QVERIFY(viewOf(*desk.plot) == before);
    desk.plot->showNothing(QStringLiteral("nothing"));
    const View nothing = viewOf(*desk.plot);
    kept({90.0, 110.0}, {0.2, 0.4}, false).show(*desk.plot);
    QVERIFY(viewOf(*desk.plot) == nothing);
}

PLOT2D_TEST_MAIN(tst_keptview)
#include "tst_keptview.moc"
