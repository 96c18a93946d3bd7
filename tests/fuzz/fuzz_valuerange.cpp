#include "fuzzinput.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/quoteline_p.h>
#include <plot2d/scalerange_p.h>
#include <plot2d/valuerange_p.h>

#include <c_api/common.h>

#include <qwt_plot.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int curveCount = 3;
constexpr int mostSamples = 45;

/// Samples that are asked one by one, as a host's own series are.
class PlainSeries : public QwtSeriesData<QPointF> {
public:
    explicit PlainSeries(const QVector<QPointF>& samples)
        : m_samples(samples)
    {
    }

    size_t size() const override { return size_t(m_samples.size()); }
    QPointF sample(size_t i) const override { return m_samples[int(i)]; }
    QRectF boundingRect() const override { return qwtBoundingRect(*this); }

private:
    const QVector<QPointF>& m_samples;
};

/// Curves of samples that serve all inputs; the one of each pair has an index of them, the other has none.
struct Curves {
    QVector<QPointF> samples[curveCount];
    PriceBased2dPlotCurve* indexed[curveCount];
    PriceBased2dPlotCurve* plain[curveCount];
    QList<PriceBased2dPlotCurve*> allIndexed;
    QList<PriceBased2dPlotCurve*> allPlain;

    Curves()
    {
        for (int i = 0; i < curveCount; ++i) {
            samples[i].reserve(mostSamples);
            allIndexed.append(indexed[i] = create());
            allPlain.append(plain[i] = create());
            plain[i]->setData(new PlainSeries(samples[i]));
        }
    }

    static PriceBased2dPlotCurve* create()
    {
        auto* const curve = new PriceBased2dPlotCurve(nullptr, QStringLiteral("curve"));
        curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
        curve->setPen(Qt::red, 1.0);
        return curve;
    }

    void take(int i, FuzzInput& input)
    {
        const auto flags = input.take<std::uint8_t>();
        samples[i].clear();
        double x = (flags & 1) != 0 ? input.takePrice() : input.takeDouble();
        for (int left = input.takeBelow(mostSamples); left > 0 && !input.isEmpty(); --left) {
            x = (flags & 2) != 0 ? x + input.take<std::uint8_t>() / 8.0 : input.takeDouble();
            samples[i].append(QPointF(x, (flags & 4) != 0 ? input.take<std::int8_t>() : input.takeDouble()));
        }
        indexed[i]->setSamples(samples[i]);
        for (PriceBased2dPlotCurve* const curve : {indexed[i], plain[i]}) {
            curve->QwtPlotItem::setVisible((flags & 8) == 0);
            curve->setDataType(9 + (flags >> 4 & 3));
        }
    }

    bool isConsidered(int i) const { return plain[i]->isValid() && plain[i]->isVisible(); }
};

Curves& curves()
{
    static auto* const instance = new Curves;
    return *instance;
}

void expectTight(const ValueRange::Range& range, double x1, double x2)
{
    if (range == ValueRange::none || range.first > range.second)
        return;
    FUZZ_EXPECT(std::isfinite(range.first) && std::isfinite(range.second));
    bool isLow = false;
    bool isHigh = false;
    bool any = false;
    for (int i = 0; i < curveCount; ++i) {
        any = any || curves().isConsidered(i);
        for (const QPointF& sample : qAsConst(curves().samples[i])) {
            if (!curves().isConsidered(i))
                break;
            isLow = isLow || sample.y() == range.first;
            isHigh = isHigh || sample.y() == range.second;
            if (sample.x() >= x1 && sample.x() < x2)
                FUZZ_EXPECT(range.first <= sample.y() && sample.y() <= range.second);
            // The walk ends behind the first sample beyond the range.
            if (sample.x() > x2)
                break;
        }
    }
    FUZZ_EXPECT(any ? isLow && isHigh : range == ValueRange::Range(0.0, 0.0));
}

void expectQuoteLine(double low, double high, double price)
{
    const auto ends = QuoteLine::ends(low, high, price);
    const bool isNowhere = std::isinf(low) && low == high;
    FUZZ_EXPECT(ends.has_value() == (low <= high && !isNowhere && std::isfinite(price)));
    if (!ends)
        return;
    const double lower = (*ends)[0].y();
    const double upper = (*ends)[1].y();
    FUZZ_EXPECT((*ends)[0].x() == price && (*ends)[1].x() == price);
    FUZZ_EXPECT(std::isfinite(lower) && std::isfinite(upper) && std::isfinite(upper - lower));
    constexpr double limit = std::numeric_limits<double>::max() / 2.0;
    FUZZ_EXPECT(lower <= upper || low > limit || high < -limit);
    FUZZ_EXPECT((lower <= low || low < -limit) && (upper >= high || high > limit));
}

void expectShown(double low, double high)
{
    const auto values = ScaleRange::shown(QwtPlot::yLeft, low, high);
    const auto prices = ScaleRange::shown(QwtPlot::xBottom, low, high);
    const bool isEmpty = commonFuzzyCompare(low, high);
    FUZZ_EXPECT(prices.has_value() == !isEmpty);
    if (values && !isEmpty)
        FUZZ_EXPECT(values->minValue() == low && values->maxValue() == high && high - low > 1e-8);
    if (values && isEmpty)
        FUZZ_EXPECT(values->minValue() <= low && values->maxValue() >= high);
}

}

/// The vertical range is the same with an index of the samples and without one, and spans the visible
/// samples.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const bool near = input.takeFlag();
    const double x1 = near ? input.takePrice() : input.takeDouble();
    const double x2 = near ? input.takePrice() : input.takeDouble();
    expectShown(x1, x2);
    expectQuoteLine(x1, x2, input.takeDouble());
    for (int i = 0; i < curveCount; ++i)
        curves().take(i, input);

    const ValueRange::Range range = ValueRange::ofCurves(curves().allIndexed, x1, x2);
    FUZZ_EXPECT(range == ValueRange::ofCurves(curves().allPlain, x1, x2));
    expectTight(range, x1, x2);

    const QRectF rectangle = ValueRange::boundingRectangle(curves().allIndexed);
    FUZZ_EXPECT(!(rectangle.width() < 0.0) && !(rectangle.height() < 0.0));
    FUZZ_EXPECT(!ValueRange::canBeViewed(QRectF()));
    return 0;
}
