#pragma once

#include "flow/shownplot.h"
#include "flow/viewrandom.h"
#include "support/qtversions.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <QCursor>
#include <QWheelEvent>
#include <QWindow>

#include <qwt_plot_layout.h>

/// A shown plot of random size, view, data and settings, and a user who works on its window.
class RandomPlot : public QObject {
    Q_OBJECT

public:
    /// The ends of what is visible, and the signals that have come so far.
    struct State {
        ViewZoom::Range prices;
        ViewZoom::Range values;
        int labels = 0;
        int autoScale = 0;

        bool operator==(const State& other) const
        {
            return showsSame(other) && labels == other.labels && autoScale == other.autoScale;
        }
        bool showsSame(const State& other) const
        {
            return prices.lower == other.prices.lower && prices.upper == other.prices.upper
                && values.lower == other.values.lower && values.upper == other.values.upper;
        }
    };

    explicit RandomPlot(ViewRandom& random)
        : m_random(random)
        , m_plot(shownPlot())
    {
        m_plot->resize(random.integer(250, 700), random.integer(180, 500));
        convert(QwtPlot::xBottom);
        convert(QwtPlot::yLeft);
        m_prices = random.range(6.0);
        m_values = random.range(6.0);
        if (random.chance(2))
            m_plot->setRescaleFactor(decimal::fromDouble(std::clamp(m_prices.lower, -1e6, 1e6), 4));
        m_plot->setAutoScaleEnabled(random.chance(2));
        PriceInterval interval;
        interval.minStep = random.chance(4) ? m_prices.width() * random.power(-3.0, 0.2) : 0.0;
        m_plot->setPriceInterval(interval);
        m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, m_prices.lower, m_prices.upper);
        m_plot->QwtPlot::setAxisScale(QwtPlot::yLeft, m_values.lower, m_values.upper);
        settle();
        connect(m_plot.get(), SIGNAL(updateAxisLabels()), this, SLOT(onLabels()));
        connect(m_plot.get(), SIGNAL(autoScaleEnabled(bool)), this, SLOT(onAutoScale()));
        if (random.chance(2))
            connect(
                m_plot.get(), SIGNAL(autoScaleEnabled(bool)), m_plot.get(), SLOT(setAutoScaleEnabled(bool)));
    }

    TestPlot& plot() { return *m_plot; }
    /// What the plot was made to show.
    const ViewZoom::Range& prices() const { return m_prices; }
    const ViewZoom::Range& values() const { return m_values; }

    /// Curves that reach from end to end of the data together.
    void addCurves(const ViewZoom::Range& prices, const ViewZoom::Range& values)
    {
        const double middle = 0.5 * prices.lower + 0.5 * prices.upper;
        addData(*m_plot, prices.lower, prices.upper, values.lower, values.upper);
        for (int i = m_random.integer(0, 2); i > 0; --i)
            addCurve(*m_plot, 9 + i, {{middle, values.lower}, {prices.upper, values.upper}},
                QStringLiteral("part %1").arg(i));
        settle();
    }

    State state()
    {
        const QwtInterval prices = visible(*m_plot, QwtPlot::xBottom);
        const QwtInterval values = visible(*m_plot, QwtPlot::yLeft);
        return {{prices.minValue(), prices.maxValue()}, {values.minValue(), values.maxValue()}, m_labels,
            m_autoScale};
    }

    QRect area(int axis) const { return m_plot->plotLayout()->scaleRect(axis).toRect(); }
    QRect canvas() const { return m_plot->plotLayout()->canvasRect().toRect(); }
    QPoint pointIn(const QRect& area)
    {
        return QPoint(m_random.integer(area.left() + 1, area.right() - 1),
            m_random.integer(area.top() + 1, area.bottom() - 1));
    }

    /// Turns the wheel over a point of the plot.
    void turn(const QPoint& point, int angle, Qt::KeyboardModifiers modifiers)
    {
        const QPoint global = m_plot->mapToGlobal(point);
        QCursor::setPos(global);
        QWheelEvent event(
            point, global, QPoint(), QPoint(0, angle), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(m_plot->windowHandle(), &event);
    }

    /// Presses the left button at a point, moves in steps, and lets go at another point.
    void drag(const QPoint& from, const QPoint& to, int steps = 1)
    {
        QWindow* window = m_plot->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
        for (int i = 1; i <= steps; ++i)
            QTest::mouseMove(window, from + (to - from) * i / steps);
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, to);
    }

    /// Paints what is left to paint, so that the layout fits the scales.
    void settle()
    {
        m_plot->replot();
        QCoreApplication::processEvents();
    }

    /// Whether the prices have more than half of the canvas, where labels can take it away from them.
    bool hasRoomForPrices() const
    {
        const QwtScaleMap map = m_plot->canvasMap(QwtPlot::xBottom);
        return !TestVersions::labelsSqueezeScales || map.p2() - map.p1() > 0.5 * canvas().width();
    }

    QString text() const
    {
        return QStringLiteral("window %1 by %2, prices %3, values %4, data %5 and %6")
            .arg(QString::number(m_plot->width()), QString::number(m_plot->height()),
                ViewProperty::text(m_prices), ViewProperty::text(m_values),
                ViewProperty::text({m_plot->curvesRectangle().left(), m_plot->curvesRectangle().right()}),
                ViewProperty::text({m_plot->curvesRectangle().top(), m_plot->curvesRectangle().bottom()}));
    }

    /// What was done in this plot, and what came of it.
    QString text(const QString& what, const State& before, const State& after) const
    {
        return QStringLiteral("seed %1, %2: %3; %4 and %5 became %6 and %7, %8 and %9 signals")
            .arg(QString::number(m_random.seed()), text(), what, ViewProperty::text(before.prices),
                ViewProperty::text(before.values), ViewProperty::text(after.prices),
                ViewProperty::text(after.values), QString::number(after.labels - before.labels),
                QString::number(after.autoScale - before.autoScale));
    }

private Q_SLOTS:
    /// The plot leaves it to its host to paint.
    void onLabels()
    {
        ++m_labels;
        m_plot->replot();
    }
    void onAutoScale() { ++m_autoScale; }

private:
    /// Ten times as much, less a tenth.
    class Stretched : public Conversion {
    public:
        double forward(double value) const override { return 10.0 * value - 0.1; }
        double backward(double value) const override { return (value + 0.1) / 10.0; }
    };

    void convert(int axis)
    {
        auto* draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(m_plot->axisScaleDraw(axis));
        if (!draw || !m_random.chance(3))
            return;
        draw->setConvertionObject(new Stretched);
        draw->setConversionMethod(&Conversion::forward);
        draw->setConversionEnabled(true);
        draw->setMetricUnit(QStringLiteral("%"));
    }

    ViewRandom& m_random;
    std::unique_ptr<TestPlot> m_plot;
    ViewZoom::Range m_prices;
    ViewZoom::Range m_values;
    int m_labels = 0;
    int m_autoScale = 0;
};
