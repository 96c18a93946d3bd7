#include "choosingdesk.h"
#include "desktest.h"
#include "support/testmain.h"

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

#include <cmath>

Q_DECLARE_METATYPE(DeskView)

/// Which colours the user gives the curves, over series, views, live updates and restarts.
class tst_curvecolors : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_desk = std::make_unique<ChoosingDesk>(); }
    void cleanup() { m_desk.reset(); }
    void colors_data();
    void colors();
    void colorOfPoints();
    void colorOfAHiddenCurve();
    void colorOfTheForward();
    void noColorChosen();
    void strangeColors();
    void colorOfACurveThatWent();

private:
    void choose(const QString& title, const QColor& color);
    QImage entryPicture(const QString& title) const;

    std::unique_ptr<ChoosingDesk> m_desk;
};

namespace {

const QString smile = QStringLiteral("Smile");
const QString bid = QStringLiteral("Bid volatility");
const QString points = QStringLiteral("Implied volatility");
const QString forward = QStringLiteral("Forward");

const QColor violet(0x71, 0x35, 0xa8);

/// Also of the pixels at the edges of a circle.
int countVioletPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            count += pixel.saturation() > 60 && std::abs(pixel.hue() - violet.hue()) < 5 ? 1 : 0;
        }
    }
    return count;
}

}

void tst_curvecolors::choose(const QString& title, const QColor& color)
{
    m_desk->plot->choices().setColorQuestion(
        [color](const QString&, const QColor&, QWidget*) { return color; });
    Q_EMIT m_desk->legend->colorRequested(title);
}

QImage tst_curvecolors::entryPicture(const QString& title) const
{
    m_desk->plot->grab();
    const QVariant item = m_desk->plot->itemToInfo(m_desk->curve(title));
    return m_desk->legend->legendWidget(item)->grab().toImage();
}

void tst_curvecolors::colors_data()
{
    QTest::addColumn<DeskView>("view");
    QTest::addColumn<QString>("title");
    QTest::newRow("smile") << DeskView::Volatility << smile;
    QTest::newRow("bid") << DeskView::Volatility << bid;
    QTest::newRow("ask") << DeskView::Volatility << QStringLiteral("Ask volatility");
    QTest::newRow("points") << DeskView::Volatility << points;
    QTest::newRow("call") << DeskView::Value << QStringLiteral("Call value");
    QTest::newRow("put") << DeskView::Value << QStringLiteral("Put value");
    QTest::newRow("market") << DeskView::Value << QStringLiteral("Market price");
}

void tst_curvecolors::colors()
{
    QFETCH(DeskView, view);
    QFETCH(QString, title);
    m_desk->start(view);
    const QPen before = m_desk->curve(title)->pen();
    const auto isViolet = [&] {
        QPen expected = before;
        expected.setColor(violet);
        return m_desk->curve(title)->pen() == expected && m_desk->curve(title)->getColor() == violet
            && countVioletPixels(entryPicture(title)) > 12;
    };
    QVERIFY(before.color() != violet);
    QCOMPARE(DeskTest::countPixels(m_desk->plot->grab().toImage(), violet.rgb()), 0);
    choose(title, violet);
    QVERIFY(isViolet());
    QVERIFY(DeskTest::countPixels(m_desk->plot->grab().toImage(), violet.rgb()) > 60);

    ShownSeries series = m_desk->quotedSeries();
    for (OptionQuote& quote : series.data.options.quotes)
        quote.volume = 0;
    m_desk->plot->updateSeries(series);
    QVERIFY(isViolet());
    m_desk->show(view, m_desk->quoted);
    QVERIFY(isViolet());
    m_desk->start(view);
    QVERIFY(isViolet());
    const QList<PriceBased2dPlotCurve*> curves = m_desk->plot->attachedCurves(-1);
    for (const PriceBased2dPlotCurve* each : curves)
        QVERIFY(each->title().text() == title || each->pen().color() != violet);
}

void tst_curvecolors::colorOfPoints()
{
    m_desk->start(DeskView::Volatility);
    const QList<QwtPlotMarker*> before = m_desk->plot->attachedMarkers();
    QVERIFY(!before.isEmpty());
    choose(points, violet);
    const auto isViolet = [](const QwtSymbol* symbol) {
        return symbol->pen().color() == violet && symbol->brush().color() == violet
            && symbol->style() == QwtSymbol::Rect;
    };
    const QList<QwtPlotMarker*> after = m_desk->plot->attachedMarkers();
    QCOMPARE(after, before);
    for (const QwtPlotMarker* marker : after) {
        QVERIFY(isViolet(marker->symbol()));
        QCOMPARE(marker->symbol()->size(), QSize(4, 4));
        QCOMPARE(marker->symbol()->pen().widthF(), 4.0);
    }
    QVERIFY(isViolet(m_desk->curve(points)->symbol()));

    // Strikes without a trade have an empty circle, and fewer markers.
    ShownSeries series = m_desk->quotedSeries();
    for (OptionQuote& quote : series.data.options.quotes)
        quote.volume = quote.strike == decimal::fromUnits(90, 0) ? 1 : 0;
    for (Pricing::VolatilityPoint& point : series.analysis.points)
        point.traded = point.strike == 90.0;
    m_desk->plot->updateSeries(series);
    QCOMPARE(m_desk->plot->attachedMarkers().size(), 1);
    QVERIFY(isViolet(m_desk->plot->attachedMarkers().first()->symbol()));
    QCOMPARE(m_desk->curve(points)->symbol()->style(), QwtSymbol::Ellipse);
    QCOMPARE(m_desk->curve(points)->symbol()->pen().color(), violet);
    choose(points, Qt::darkGreen);
    QCOMPARE(m_desk->curve(points)->symbol()->style(), QwtSymbol::Ellipse);
    QCOMPARE(m_desk->curve(points)->symbol()->brush().color(), QColor(Qt::white));
    QCOMPARE(m_desk->curve(points)->symbol()->pen().color(), QColor(Qt::darkGreen));

    m_desk->legend->setCheckBoxChecked(points, false);
    choose(points, violet);
    QVERIFY(!m_desk->plot->attachedMarkers().first()->isVisible());
}

void tst_curvecolors::colorOfAHiddenCurve()
{
    m_desk->start(DeskView::Volatility);
    m_desk->legend->setCheckBoxChecked(smile, false);
    choose(smile, violet);
    QCOMPARE(DeskTest::countPixels(entryPicture(smile), violet.rgb()), 0);
    QVERIFY(DeskTest::countPixels(entryPicture(smile), QColor(Qt::gray).rgb()) > 20);
    QCOMPARE(m_desk->hidden(), QStringList(smile));
    m_desk->legend->setCheckBoxChecked(smile, true);
    QVERIFY(DeskTest::countPixels(entryPicture(smile), violet.rgb()) > 20);
}

void tst_curvecolors::colorOfTheForward()
{
    m_desk->start(DeskView::Volatility);
    choose(forward, violet);
    QCOMPARE(m_desk->curve(forward)->pen().color(), QColor(Qt::red));
    QVERIFY(m_desk->curve(forward)->isValid());
    m_desk->start(DeskView::Volatility);
    QCOMPARE(m_desk->curve(forward)->pen().color(), QColor(Qt::red));
    QCOMPARE(m_desk->hidden(), QStringList());
}

void tst_curvecolors::noColorChosen()
{
    m_desk->start(DeskView::Volatility);
    const QColor before = m_desk->curve(smile)->pen().color();
    QString asked;
    QColor current;
    QWidget* parent = nullptr;
    m_desk->plot->choices().setColorQuestion([&](const QString& title, const QColor& color, QWidget* widget) {
        asked = title;
        current = color;
        parent = widget;
        return QColor();
    });
    Q_EMIT m_desk->legend->colorRequested(smile);
    QCOMPARE(asked, smile);
    QCOMPARE(current, before);
    QCOMPARE(parent, m_desk->plot.get());
    QCOMPARE(m_desk->curve(smile)->pen().color(), before);
    QVERIFY(!m_desk->settings->value(QStringLiteral("curveColors/Smile")).isValid());
}

void tst_curvecolors::strangeColors()
{
    {
        Settings settings(m_desk->settingsFile());
        settings.setValue(QStringLiteral("curveColors/Smile"), QStringLiteral("no colour"));
        settings.setValue(QStringLiteral("curveColors/Bid volatility"), QStringLiteral("#007135a8"));
        settings.setValue(QStringLiteral("curveColors/Nobody"), QStringLiteral("#7135a8"));
    }
    m_desk->start(DeskView::Volatility);
    QCOMPARE(m_desk->curve(smile)->pen().color(), QColor(0x00, 0x72, 0xb2));
    // Never transparent.
    QCOMPARE(m_desk->curve(bid)->pen().color(), violet);
}

// While the user is asked, quotes and series change.
void tst_curvecolors::colorOfACurveThatWent()
{
    m_desk->start(DeskView::Volatility);
    m_desk->plot->choices().setColorQuestion([&](const QString&, const QColor&, QWidget*) {
        m_desk->show(DeskView::Value, m_desk->quoted);
        return violet;
    });
    Q_EMIT m_desk->legend->colorRequested(bid);
    QVERIFY(!m_desk->curve(bid));
    m_desk->show(DeskView::Volatility, m_desk->quoted);
    QCOMPARE(m_desk->curve(bid)->pen().color(), violet);
    m_desk->plot->choices().setColorQuestion([&](const QString&, const QColor&, QWidget*) {
        m_desk->plot.reset();
        return violet;
    });
    Q_EMIT m_desk->legend->colorRequested(bid);
    QVERIFY(!m_desk->plot);
}

PLOT2D_TEST_MAIN(tst_curvecolors)
#include "tst_curvecolors.moc"
