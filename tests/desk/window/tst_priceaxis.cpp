#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotscaledraw.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>

#include <QRegularExpression>

#include <cmath>

Q_DECLARE_METATYPE(AxisMode)

namespace {

constexpr int xBottom = QwtPlot::xBottom;

QwtInterval prices(const DeskPlot& plot)
{
    return plot.axisScaleDiv(xBottom).interval();
}

// The texts of the labels that are painted.
QStringList labels(const DeskPlot& plot)
{
    const auto* const draw = dynamic_cast<const PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(xBottom));
    QStringList texts;
    for (const double tick : draw->getTicks(draw->scaleDiv()))
        texts.append(draw->label(tick).text());
    return texts;
}

// Whether the numbers of labels are multiples of their distance, which is 1, 2 or 5 and zeros.
bool areRound(const QStringList& labels)
{
    QVector<double> numbers;
    for (QString label : labels)
        numbers.append(label.remove(QRegularExpression(QStringLiteral("[+%\u03c3]"))).toDouble());
    const double step = numbers.value(1) - numbers.value(0);
    const double digit = step / std::pow(10.0, std::floor(std::log10(step) + 1e-6));
    bool all = std::abs(digit - 1.0) < 1e-3 || std::abs(digit - 2.0) < 1e-3 || std::abs(digit - 5.0) < 1e-3;
    for (const double number : numbers)
        all = all && std::abs(number / step - std::round(number / step)) < 1e-3;
    return all;
}

}

/// The price axis of the desk's plot in all its modes.
class tst_priceaxis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void modesKeepTheView();
    void labelsAreRoundWhereverTheQuoteIs_data();
    void labelsAreRoundWhereverTheQuoteIs();
    void deviationsFollowTheMarket();

private:
    void view(double low, double high) const
    {
        plot().setAxisScale(xBottom, low, high, 0.0);
        Q_EMIT plot().updateAxisLabels();
    }
    DeskPlot& plot() const { return *m_window->plot(); }

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
};

void tst_priceaxis::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->showSeries(m_data->import(DeskTest::chain(), 0), SeriesFacts());
    m_window->resize(1000, 640);
    m_window->show();
}

void tst_priceaxis::cleanup()
{
    m_window.reset();
    m_data.reset();
}

void tst_priceaxis::modesKeepTheView()
{
    view(85.0, 97.0);
    for (const AxisModes::Description& each : AxisModes::all()) {
        m_window->setAxisMode(each.mode);
        QCOMPARE(prices(plot()).minValue(), 85.0);
        QCOMPARE(prices(plot()).maxValue(), 97.0);
        plot().replot();
        QCOMPARE(prices(plot()).minValue(), 85.0);
    }
}

void tst_priceaxis::labelsAreRoundWhereverTheQuoteIs_data()
{
    QTest::addColumn<AxisMode>("mode");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    for (const AxisModes::Description& each : AxisModes::all()) {
        for (const auto& [low, high] : {std::pair(70.0, 131.0), {101.7, 133.0}, {66.3, 92.1}, {112.0, 113.5}})
            QTest::newRow(qPrintable(QStringLiteral("%1 from %2 to %3").arg(each.name).arg(low).arg(high)))
                << each.mode << low << high;
    }
}

void tst_priceaxis::labelsAreRoundWhereverTheQuoteIs()
{
    QFETCH(AxisMode, mode);
    QFETCH(double, low);
    QFETCH(double, high);
    // The forward of parity is about 100, but never quite.
    m_window->showSeries(m_data->firstSeries(SeriesFacts()), {98.37, QDate(), QDate()});
    m_window->setAxisMode(mode);
    view(low, high);
    QCOMPARE(prices(plot()).minValue(), low);
    QCOMPARE(prices(plot()).maxValue(), high);
    const QStringList texts = labels(plot());
    QVERIFY2(texts.size() >= 3 && texts.size() <= 21, qPrintable(texts.join(QLatin1Char(' '))));
    QVERIFY2(areRound(texts), qPrintable(texts.join(QLatin1Char(' '))));
}

void tst_priceaxis::deviationsFollowTheMarket()
{
    m_window->setAxisMode(AxisMode::Deviations);
    const auto tickOf = [this](const QString& label) {
        const auto* const draw
            = dynamic_cast<const PriceBased2dPlotScaleDraw*>(plot().axisScaleDraw(xBottom));
        for (const double tick : draw->getTicks(draw->scaleDiv())) {
            if (draw->label(tick).text() == label)
                return tick;
        }
        return 0.0;
    };
    const auto expected = [this](double deviations) {
        const ShownSeries& series = *m_window->shownSeries();
        const double volatility = series.smile->volatility(series.market.forward).value();
        return series.market.forward * std::exp(deviations * volatility * std::sqrt(series.market.time));
    };
    QCOMPARE(tickOf(QStringLiteral("+1\u03c3")), expected(1.0));
    QCOMPARE(tickOf(QStringLiteral("-2\u03c3")), expected(-2.0));
    const double before = expected(1.0);
    LiveTable::price(LiveTable::options(m_data->firstSeries(SeriesFacts())), 100.0, 0.05);
    QTRY_VERIFY(expected(1.0) > before + 2.0);
    QCOMPARE(tickOf(QStringLiteral("+1\u03c3")), expected(1.0));
}

PLOT2D_TEST_MAIN(tst_priceaxis)
#include "tst_priceaxis.moc"
