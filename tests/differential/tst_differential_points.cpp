#include "differential/agree.h"
#include "differential/plainnumbers.h"
#include "differential/plainpoints.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotpointmanager.h>
#include <plot2d/pricepoints_p.h>

#include <basic_models/strikebybasecodemodel.h>

#include <algorithm>
#include <cmath>
#include <tuple>

using Differential::Findings;
using Differential::Random;
using Differential::told;

namespace {

QString inWords(const PriceInterval& interval)
{
    return QStringLiteral("%1 to %2 by %3, valid: %4")
        .arg(told(interval.minPrice), told(interval.maxPrice), told(interval.minStep), told(interval.valid));
}

QString inWords(const QList<decimal>& strikes)
{
    QStringList texts;
    for (const decimal& strike : strikes)
        texts << TestHost::text(strike);
    return texts.join(QLatin1Char(' '));
}

void compareIntervals(Findings& findings, const PriceInterval& plain, const PriceInterval& library)
{
    findings.compare("same interval", true, plain == library);
    if (plain != library)
        findings.note("interval", inWords(plain), inWords(library));
}

/// Strikes at a distance, some of them missing, now and then with others in between or not above zero.
QList<decimal> randomStrikes(Random& random, int count)
{
    const auto distance
        = decimal::fromDouble(random.oneOf({1.0, 2.5, 5.0, 10.0, 0.5, 0.01, 0.00001, 250.0, 1000.0, 1e7}), 5);
    decimal strike = decimal::fromDouble(std::abs(random.price()), 5);
    if (random.oneIn(8))
        strike = random.oneIn(2) ? decimal::zero : decimal::fromDouble(-2.0 * distance.toDouble(), 5);
    QList<decimal> strikes;
    for (int i = 0; i < count; ++i) {
        strikes << strike;
        strike = TestHost::sum(strike, distance);
        while (random.oneIn(6))
            strike = TestHost::sum(strike, distance);
        if (random.oneIn(15))
            strike = TestHost::sum(
                strike, decimal::fromDouble(distance.toDouble() * random.between(0.0, 1.0), 5));
    }
    if (count > 1 && random.oneIn(25))
        strikes.move(0, random.whole(0, count - 1));
    return strikes;
}

double smallestDistance(const QList<decimal>& strikes)
{
    double smallest = 0.0;
    for (int i = 1; i < strikes.size(); ++i) {
        const double distance = (strikes[i] - strikes[i - 1]).toDouble();
        if (i == 1 || distance < smallest)
            smallest = distance;
    }
    return smallest;
}

/// A view about some strikes, within two neighbours, over all of them, or beside them.
std::pair<double, double> randomView(Random& random, const QList<decimal>& strikes)
{
    const double first = strikes.first().toDouble();
    const double last = strikes.last().toDouble();
    const double one = strikes[random.whole(0, strikes.size() - 1)].toDouble();
    const double other = strikes[random.whole(0, strikes.size() - 1)].toDouble();
    const double width = last - first;
    switch (random.whole(0, 5)) {
    case 0:
        return {random.about(std::min(one, other)), random.about(std::max(one, other))};
    case 1:
        return {random.about(first - width * 0.1), random.about(last + width * 0.1)};
    case 2:
        return {one + 0.001 * width, one + random.between(0.002, 0.1) * width};
    case 3:
        return {last + random.between(-0.1, 0.2) * width, last + width};
    case 4:
        return {first - width, first + random.between(-0.2, 0.1) * width};
    default:
        return {random.between(first, one), random.between(other, last)};
    }
}

double randomPriceStep(Random& random, double visible)
{
    if (random.oneIn(5))
        return random.about(std::abs(visible) / 100.0);
    return random.oneOf({0.01, 0.5, 1.0, 10.0, 0.0, -1.0, 1e-12, 1.01e-12, 1e-5, 100.0});
}

/// The host's tables with a future and an option of each strike.
class StrikeTable {
public:
    StrikeTable(const QList<decimal>& strikes, int decimals)
        : m_strikes(strikes)
    {
        TestHost::createSecurities();
        TestHost::createBoards();
        TestHost::addBoard(1, 2, true);
        m_future = TestHost::addSecurity(TestHost::future());
        int id = 1000;
        for (const decimal& strike : strikes) {
            TestHost::addSecurity({{"stock_id", 1}, {"board_id", 2}, {"sec_id", id}, {"isin_id", id},
                {"base_code", "Amber"}, {"sectype", "O"}, {"strike", TestHost::text(strike)},
                {"decimals", decimals}, {"sess_id", 7}});
            ++id;
        }
    }
    StrikeTable(const StrikeTable&) = delete;
    StrikeTable& operator=(const StrikeTable&) = delete;
    ~StrikeTable()
    {
        m_future = Record();
        TestHost::dropSecurities();
        TestHost::dropBoards();
    }

    /// As a model lists them: ascending, each once.
    QList<decimal> strikes() const
    {
        QList<decimal> sorted = m_strikes;
        std::sort(sorted.begin(), sorted.end());
        sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
        return sorted;
    }

    /// The step as the table holds it.
    double setPriceStep(double step)
    {
        const decimal held = decimal::fromDouble(step, 5);
        TestHost::changeRow(m_future, {{"price_step", TestHost::text(held)}});
        return held.toDouble();
    }

private:
    QList<decimal> m_strikes;
    Record m_future;
};

}

class tst_differential_points : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void intervals();
    void progressions();
    void brackets();
    void densities();
    void plotPoints();
};

void tst_differential_points::intervals()
{
    AGREE("intervals", 201, 1, ([](Random& random, Findings& findings) {
        Plain::Strikes strikes{randomStrikes(random, random.whole(0, 4)), 0.0};
        if (random.oneIn(20))
            strikes.all = QList<decimal>{decimal::minimum, decimal::maximum};
        if (random.oneIn(20))
            strikes.all << TestHost::number(QStringLiteral("0.000000000001"))
                        << TestHost::number(QStringLiteral("0.000000000002"));
        const int decimals = random.whole(-2, 19);
        strikes.smallestDistance = smallestDistance(strikes.all);
        if (random.oneIn(2))
            strikes.smallestDistance
                = random.oneIn(3) ? random.nasty() : random.about(strikes.smallestDistance);
        PricePoints::StrikeRange range;
        range.count = strikes.all.size();
        if (range.count > 0) {
            range.lowest = strikes.all.first();
            range.highest = strikes.all.last();
        }
        range.minStep = strikes.smallestDistance;
        compareIntervals(
            findings, Plain::strikeInterval(strikes, decimals), PricePoints::interval(range, decimals));
        findings.given([&] {
            return inWords(strikes.all) + QStringLiteral("; distance ") + told(strikes.smallestDistance)
                + QStringLiteral(", decimals ") + told(decimals);
        });
    }));
}

void tst_differential_points::progressions()
{
    AGREE("progressions", 202, 4, ([](Random& random, Findings& findings) {
        const double from = random.rarelyBad(random.oneIn(6) ? random.nasty() : random.price(), 60);
        const double width = random.oneIn(5) ? std::abs(random.nasty()) : std::abs(random.price());
        const double to = random.oneIn(4) ? random.about(from) : from + width;
        double step = (to - from) / random.oneOf({1.0, 2.0, 3.0, 7.0, 50.0, 300.0});
        if (random.oneIn(3))
            step = random.oneIn(3) ? random.nasty() : std::abs(random.price());
        if (random.oneIn(100))
            step = random.about((to - from) / 100000.0);
        step = random.about(step);
        findings.compare("prices", Plain::steps(from, to, step), PricePoints::progression(from, to, step));
        findings.given([&] { return told(from) + " to " + told(to) + " by " + told(step); });
    }));
}

void tst_differential_points::brackets()
{
    AGREE("brackets", 203, 2, ([](Random& random, Findings& findings) {
        const QList<decimal> strikes = randomStrikes(random, random.whole(1, 12));
        const auto [low, high] = randomView(random, strikes);
        const Plain::Neighbours plain = Plain::neighbours(strikes, low, high);
        const auto library = PricePoints::bracket(strikes.toVector(), {low, high});
        findings.compare("known", plain.known, library.has_value());
        if (plain.known && library) {
            findings.compare("left", TestHost::text(plain.left), TestHost::text(library->first));
            findings.compare("right", TestHost::text(plain.right), TestHost::text(library->second));
        }
        findings.given([&strikes, from = low, to = high] {
            return inWords(strikes) + "; view " + told(from) + " to " + told(to);
        });
    }));
}

void tst_differential_points::densities()
{
    AGREE("densities", 204, 8, ([](Random& random, Findings& findings) {
        const double step = std::abs(random.price());
        const double first = std::abs(random.price());
        const QList<double> points = Plain::steps(first, first + step * random.whole(1, 130), step);
        if (points.isEmpty())
            return;
        double left = points[random.whole(0, points.size() - 1)];
        double right = left + step * random.whole(1, 110);
        if (random.oneIn(4)) {
            left = random.about(left);
            right = random.about(right);
        }
        if (left >= right)
            return;
        findings.compare("points", Plain::cut(points, left, right, step),
            PricePoints::densified(points, left, right, step));
        findings.given(
            [&] { return told(points) + told(left) + " to " + told(right) + " by " + told(step); });
    }));
}

/// The manager of a real plot over the host's table: a case are some strikes and three views of them.
void tst_differential_points::plotPoints()
{
    AGREE("plot points", 205, 60, ([](Random& random, Findings& findings) {
        const int decimals = random.oneOf({2, 2, 0, 5});
        const QList<decimal> strikes = randomStrikes(random, random.whole(0, 8));
        StrikeTable table(strikes, decimals);
        TestPlot plot;
        plot.createPicker();
        plot.setBaseCode(QStringLiteral("Amber"));
        PriceBased2dPlotPointManager manager(false, &plot);
        Plain::PlotPoints plain;
        plain.strikes = table.strikes();
        plain.interval = Plain::strikeInterval({plain.strikes, smallestDistance(plain.strikes)}, decimals);
        compareIntervals(findings, plain.interval, manager.interval());
        for (int view = 0; !strikes.isEmpty() && view < 3 && !findings.differ(); ++view) {
            std::tie(plain.viewLow, plain.viewHigh) = randomView(random, plain.strikes);
            const double width = plain.viewHigh - plain.viewLow;
            if (!(width > 1e-6))
                continue;
            plain.priceStep = table.setPriceStep(randomPriceStep(random, width));
            plain.force = random.oneIn(2);
            plot.picker()->setPriceStep();
            plot.QwtPlot::setAxisScale(QwtPlot::xBottom, plain.viewLow, plain.viewHigh);
            plot.updateAxes();
            findings.compare("points", plain.answer(), manager.calcPlotPoints(plain.force));
        }
        findings.given([&] {
            return inWords(plain.strikes)
                + QStringLiteral("; view %1 to %2, price step %3, forced: %4")
                      .arg(told(plain.viewLow), told(plain.viewHigh), told(plain.priceStep),
                          told(plain.force));
        });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_points)
#include "tst_differential_points.moc"
