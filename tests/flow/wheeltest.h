#pragma once

#include "flow/shownplot.h"
#include "flow/wheelfactors.h"

#include <QCursor>
#include <QWheelEvent>

#include <qwt_plot_layout.h>

enum class Place { Canvas, Prices, Values, Corner };
Q_DECLARE_METATYPE(Place)

/// The wheel over a plot that shows the prices 400 to 600 and the values 40 to 60.
class WheelTest : public QObject {
    Q_OBJECT

protected:
    static constexpr int notch = 120;

    /// The range about a centre that keeps its place in it, of another width.
    static QwtInterval zoomed(const QwtInterval& range, double centre, double factor)
    {
        return QwtInterval(
            centre - (centre - range.minValue()) * factor, centre + (range.maxValue() - centre) * factor);
    }

    /// Puts the cursor off the middle of a place, so that the middle is not taken for it.
    void putCursor(Place place)
    {
        const QwtPlotLayout* layout = m_plot->plotLayout();
        QPoint position(1, m_plot->height() - 2);
        if (place == Place::Canvas)
            position = layout->canvasRect().center().toPoint() + QPoint(40, -30);
        else if (place == Place::Prices)
            position = layout->scaleRect(QwtPlot::xBottom).center().toPoint() + QPoint(40, 0);
        else if (place == Place::Values)
            position = layout->scaleRect(QwtPlot::yLeft).center().toPoint() + QPoint(0, 30);
        putCursor(position);
        QCOMPARE(m_plot->mousePositionOnXScale(position), place == Place::Prices);
        QCOMPARE(m_plot->mousePositionOnYScale(position), place == Place::Values);
        QCOMPARE(layout->canvasRect().contains(position), place == Place::Canvas);
    }

    /// Puts the cursor at a point of the plot.
    void putCursor(const QPoint& position)
    {
        QCursor::setPos(m_plot->mapToGlobal(position));
        QCOMPARE(m_plot->mapFromGlobal(QCursor::pos()), position);
    }

    /// An event at a position that is not where the cursor is.
    QWheelEvent turned(const QPoint& angle, Qt::KeyboardModifiers modifiers) const
    {
        return QWheelEvent(QPointF(2.0, 2.0), m_plot->mapToGlobal(QPoint(2, 2)), QPoint(), angle,
            Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    }

    void turn(const QPoint& angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWheelEvent event = turned(angle, modifiers);
        m_plot->wheelEvent(&event);
    }
    void turn(int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        turn(QPoint(0, angle), modifiers);
    }

    /// What stands under a point of the plot, read as if it were one of the canvas.
    QPointF valueAt(const QPointF& point) const
    {
        return QPointF(m_plot->canvasMap(QwtPlot::xBottom).invTransform(point.x()),
            m_plot->canvasMap(QwtPlot::yLeft).invTransform(point.y()));
    }
    QPoint cursorOn(const QWidget* widget) const { return widget->mapFromGlobal(QCursor::pos()); }

    /// Sets ranges of any size and leaves no labels, which need room.
    void show(const QwtInterval& prices, const QwtInterval& values)
    {
        for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft})
            m_plot->axisScaleDraw(axis)->enableComponent(QwtAbstractScaleDraw::Labels, false);
        m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, prices.minValue(), prices.maxValue());
        m_plot->QwtPlot::setAxisScale(QwtPlot::yLeft, values.minValue(), values.maxValue());
        m_plot->replot();
        QCoreApplication::processEvents();
        m_plot->calls.clear();
    }

    QwtInterval prices() { return visible(*m_plot, QwtPlot::xBottom); }
    QwtInterval values() { return visible(*m_plot, QwtPlot::yLeft); }

    std::unique_ptr<TestPlot> m_plot;
    std::unique_ptr<QSignalSpy> m_labels;
    std::unique_ptr<QSignalSpy> m_autoScale;
    const QwtInterval m_prices{400.0, 600.0};
    const QwtInterval m_values{40.0, 60.0};

private Q_SLOTS:
    void initTestCase()
    {
        TestHost::createSecurities();
        TestHost::createBoards();
    }
    void cleanupTestCase()
    {
        TestHost::dropSecurities();
        TestHost::dropBoards();
    }
    void init()
    {
        m_plot = shownPlot();
        QVERIFY(m_plot);
        m_labels = std::make_unique<QSignalSpy>(m_plot.get(), SIGNAL(updateAxisLabels()));
        m_autoScale = std::make_unique<QSignalSpy>(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
    }
    void cleanup() { m_plot.reset(); }
};
