#include "axes/axisrandom.h"
#include "support/childrun.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <QLocale>

#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <algorithm>
#include <cmath>
#include <memory>

using Values = QList<double>;

namespace {

constexpr int casesPerChild = 16;

/// Points from a reference price.
class PointsFrom : public Conversion {
public:
    explicit PointsFrom(double reference)
        : m_reference(reference)
    {
    }

    double forward(double value) const override { return value - m_reference; }
    double backward(double value) const override { return value + m_reference; }

private:
    double m_reference;
};

/// What an axis is made of.
struct Setting {
    double lower = 0.0;
    double upper = 0.0;
    int width = 0;
    int fontSize = 0;
    bool converted = false;
    bool quoteEnabled = false;
    double quote = -1.0;
    decimal factor;

    QByteArray text() const
    {
        return QStringLiteral("[%1, %2] %3 px, %4 pt, converted %5, quote %6 %7, factor %8")
            .arg(lower, 0, 'g', 17)
            .arg(upper, 0, 'g', 17)
            .arg(width)
            .arg(fontSize)
            .arg(converted)
            .arg(quoteEnabled)
            .arg(quote, 0, 'g', 17)
            .arg(TestHost::text(factor))
            .toUtf8();
    }
};

double rounded(double value, int decimals)
{
    const double unit = std::pow(10.0, decimals);
    return std::round(value * unit) / unit;
}

Setting randomSetting(AxisRandom& random)
{
    Setting setting;
    const double size = std::pow(10.0, random.uniform(-2.0, 6.0));
    const double width = size * std::pow(10.0, random.uniform(-4.0, 1.0));
    setting.lower = random.chance(6) ? -width * random.uniform(0.0, 1.0) : size;
    setting.upper = setting.lower + width;
    setting.width = static_cast<int>(40.0 * std::pow(100.0, random.uniform(0.0, 1.0)));
    setting.fontSize = random.integer(6, 24);
    setting.converted = random.chance(2);

    const int decimals = static_cast<int>(std::ceil(2.0 - std::log10(width)));
    setting.quoteEnabled = random.chance(2);
    switch (random.integer(0, 3)) {
    case 0:
        break;
    case 1:
        setting.quote = setting.upper + width * random.uniform(0.0, 0.3);
        break;
    case 2:
        setting.quote = rounded(setting.lower + width * 0.5, decimals - 2);
        break;
    default:
        setting.quote = rounded(random.uniform(setting.lower, setting.upper), decimals);
    }
    if (setting.quote <= 0.0)
        setting.quoteEnabled = false;
    if (random.chance(2))
        setting.factor = decimal::fromDouble(random.uniform(setting.lower, setting.upper), 4);
    return setting;
}

PriceBased2dPlotScaleDraw* bottomDraw(const TestPlot& plot)
{
    return dynamic_cast<PriceBased2dPlotScaleDraw*>(
        const_cast<QwtScaleDraw*>(plot.axisScaleDraw(QwtPlot::xBottom)));
}

/// A plot that was shown and painted, so that its labels are chosen.
std::unique_ptr<TestPlot> paintedPlot(const Setting& setting)
{
    QFont font = QApplication::font();
    font.setPointSize(setting.fontSize);
    QApplication::setFont(font);
    auto plot = std::make_unique<TestPlot>();
    plot->setAxisFont(QwtPlot::xBottom, font);
    PriceBased2dPlotScaleDraw* draw = bottomDraw(*plot);
    if (setting.converted) {
        draw->setConvertionObject(new PointsFrom(setting.lower + 0.25 * (setting.upper - setting.lower)));
        draw->setConversionMethod(&Conversion::forward);
        draw->setPlusSignShown(true);
        draw->setMetricUnit(QStringLiteral("p"));
        draw->setConversionEnabled(true);
    }
    plot->setCurKotirEnabled(setting.quoteEnabled);
    plot->setCurKotirValue(setting.quote);
    plot->setRescaleFactor(setting.factor);
    plot->setAxisScale(QwtPlot::xBottom, setting.lower, setting.upper, 0.0);
    // The vertical axis would take all the width of the narrowest plots.
    plot->enableAxis(QwtPlot::yLeft, setting.width > 200);
    plot->resize(setting.width, 120);
    plot->replot();
    plot->show();
    // Deterministic on a platform without a window system: showing leaves the exposure in the queue.
    QCoreApplication::processEvents();
    return plot;
}

/// The first two labels that overlap among the ticks', or an empty text.
QByteArray overlapOf(const PriceBased2dPlotScaleDraw& draw, const Values& values)
{
    const QList<QRect> rectangles = draw.getBoundingRects(values);
    for (int i = 0; i < values.size(); ++i) {
        for (int j = 0; j < i; ++j) {
            if (rectangles[i].intersects(rectangles[j]))
                return QByteArray::number(values[j], 'g', 17) + " and "
                    + QByteArray::number(values[i], 'g', 17);
        }
    }
    return QByteArray();
}

/// Whether the quote's label is no wider than any other. A wider one can reach past the neighbour that gives
/// way to it, to a label that nobody compares it with.
bool quoteIsNarrow(const PriceBased2dPlotScaleDraw& draw)
{
    const int width = draw.tickLabelBoundingRect(draw.curKotirValue()).width();
    const Values candidates = draw.getTicks(draw.scaleDiv());
    return std::all_of(candidates.cbegin(), candidates.cend(),
        [&](double tick) { return width <= draw.tickLabelBoundingRect(tick).width(); });
}

/// Whether something dark is painted about a place of a widget, given in its own coordinates.
bool isPainted(const QImage& image, const QPointF& place)
{
    const double ratio = image.devicePixelRatioF();
    const int y = static_cast<int>(place.y() * ratio);
    const int reach = static_cast<int>(std::ceil(ratio));
    const int x = static_cast<int>(std::lround(place.x() * ratio));
    for (int i = std::max(x - reach, 0); i <= x + reach && i < image.width(); ++i) {
        if (qGray(image.pixel(i, y)) < 128)
            return true;
    }
    return false;
}

}

class tst_axisproperties : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void labels_data() { childRows(); }
    void labels();
    void ticks_data() { childRows(); }
    void ticks();

private:
    void childRows();
    void runInChild(const std::function<void(const Setting&)>& check);
    void checkLabels(const Setting& setting);
    void checkTicks(const Setting& setting);

    int m_thinned = 0;
    int m_withoutLabel = 0;
    int m_anchored = 0;
};

void tst_axisproperties::initTestCase()
{
    TestHost::createSecurities();
}

void tst_axisproperties::cleanupTestCase()
{
    TestHost::dropSecurities();
}

void tst_axisproperties::childRows()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("scale");
    for (const char* locale : {"C", "de_DE", "ar_EG", "hi_IN"}) {
        for (const char* scale : {"1", "1.25", "1.5", "2"})
            QTest::addRow("%s %s", locale, scale)
                << QString::fromLatin1(locale) << QString::fromLatin1(scale);
    }
}

void tst_axisproperties::runInChild(const std::function<void(const Setting&)>& check)
{
    QFETCH(QString, locale);
    QFETCH(QString, scale);
    if (!TestSupport::isChild()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), locale + QLatin1String(".UTF-8"));
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
        environment.insert(QStringLiteral("QT_SCALE_FACTOR_ROUNDING_POLICY"), QStringLiteral("PassThrough"));
        const TestSupport::ChildRun run = TestSupport::repeatRowInChild(environment);
        QVERIFY2(run.passed(), run.output.constData());
        return;
    }
    QCOMPARE(QLocale::system().name(), locale);
    QCOMPARE(qApp->devicePixelRatio(), scale.toDouble());
    AxisRandom random(qHash(locale + scale));
    for (int i = 0; i < casesPerChild && !QTest::currentTestFailed(); ++i)
        check(randomSetting(random));
}

void tst_axisproperties::labels()
{
    runInChild([this](const Setting& setting) { checkLabels(setting); });
    if (TestSupport::isChild())
        QVERIFY(m_thinned > 0);
}

void tst_axisproperties::checkLabels(const Setting& setting)
{
    const auto plot = paintedPlot(setting);
    PriceBased2dPlotScaleDraw& draw = *bottomDraw(*plot);
    const QByteArray text = setting.text();
    QVERIFY2(draw.isPaintedOnce(), text);

    const Values labels = draw.labelTicks();
    const Values candidates = draw.getTicks(draw.scaleDiv());
    m_thinned += labels.size() < candidates.size();
    QVERIFY2(std::is_sorted(labels.cbegin(), labels.cend()), text);
    QVERIFY2(std::includes(candidates.cbegin(), candidates.cend(), labels.cbegin(), labels.cend()), text);

    QByteArray overlap = overlapOf(draw, labels);
    QVERIFY2(overlap.isEmpty(), text + ": " + overlap);
    const bool quoteIsShown = draw.isCurKotirEnabled() && draw.isCurKotirInside();
    if (quoteIsShown && quoteIsNarrow(draw)) {
        overlap = overlapOf(draw, labels + Values{draw.curKotirValue()});
        QVERIFY2(overlap.isEmpty(), text + ": " + overlap);
    }

    draw.updateLabels();
    QCOMPARE(draw.labelTicks(), labels);
    plot->updateAxisWidgets();
    QCOMPARE(draw.labelTicks(), labels);
    QCOMPARE(bottomDraw(*paintedPlot(setting))->labelTicks(), labels);
}

void tst_axisproperties::ticks()
{
    runInChild([this](const Setting& setting) { checkTicks(setting); });
    if (TestSupport::isChild()) {
        QVERIFY(m_withoutLabel > 0);
        QVERIFY(m_anchored > 0);
    }
}

void tst_axisproperties::checkTicks(const Setting& setting)
{
    const auto plot = paintedPlot(setting);
    const PriceBased2dPlotScaleDraw& draw = *bottomDraw(*plot);
    const QByteArray text = setting.text();

    const Values majorTicks = draw.scaleDiv().ticks(QwtScaleDiv::MajorTick);
    const double factor = setting.factor.toDouble();
    if (setting.factor != decimal::zero && setting.lower < factor && factor < setting.upper) {
        const Values plain
            = QwtLinearScaleEngine(10)
                  .divideScale(setting.lower, setting.upper, plot->axisMaxMajor(QwtPlot::xBottom),
                      plot->axisMaxMinor(QwtPlot::xBottom), 0.0)
                  .ticks(QwtScaleDiv::MajorTick);
        const bool wasTick = std::any_of(plain.cbegin(), plain.cend(),
            [factor](double tick) { return std::abs(tick - factor) <= 1e-12 * std::abs(factor); });
        QVERIFY2(wasTick || majorTicks.contains(factor), text);
        m_anchored += !wasTick;
    }

    // At this height reach major and medium ticks alone, and no label. Of screens whose pixels are no whole
    // ones the last pixel of a minor tick may be the next one.
    const QImage image = plot->axisWidget(QwtPlot::xBottom)->grab().toImage();
    const double y = draw.pos().y() + draw.tickLength(QwtScaleDiv::MinorTick) + 1.4;
    const Values candidates = draw.getTicks(draw.scaleDiv());
    double last = -100.0;
    for (const double tick : candidates) {
        const double x = draw.scaleMap().transform(tick);
        if (!draw.scaleDiv().contains(tick) || x < 1.0
            || x > plot->axisWidget(QwtPlot::xBottom)->width() - 1.0)
            continue;
        QVERIFY2(isPainted(image, QPointF(x, y)), text + ": " + QByteArray::number(tick, 'g', 17));
        if (x - last > 8.0 && last > 0.0)
            QVERIFY2(!isPainted(image, QPointF(0.5 * (x + last), y)), text);
        last = x;
        m_withoutLabel += !draw.labelTicks().contains(tick);
    }
}

PLOT2D_TEST_MAIN(tst_axisproperties)

#include "tst_axisproperties.moc"
