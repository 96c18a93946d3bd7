#pragma once

#include "support/testhost.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotpanner.h>

#include <QtTest>

#include <qwt_plot_canvas.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <cmath>
#include <memory>

/// A plot on the screen, 600 by 400 pixels, with a picker, that shows the prices 400 to 600 and the values 40
/// to 60; null if it does not come up.
template <class Plot = TestPlot> std::unique_ptr<Plot> shownPlot()
{
    auto plot = std::make_unique<Plot>();
    plot->createPicker();
    plot->resize(600, 400);
    plot->show();
    if (!QTest::qWaitForWindowExposed(plot.get()))
        return nullptr;
    plot->QwtPlot::setAxisScale(QwtPlot::xBottom, 400.0, 600.0);
    plot->QwtPlot::setAxisScale(QwtPlot::yLeft, 40.0, 60.0);
    plot->replot();
    QCoreApplication::processEvents();
    return plot;
}

/// A curve whose bounding rectangle has these sides.
inline PriceBased2dPlotCurve* addData(
    PriceBased2dPlot& plot, double left, double right, double bottom, double top)
{
    return addCurve(plot, 9, {{left, bottom}, {right, top}}, QStringLiteral("data"));
}

/// The visible range of an axis after pending changes.
inline QwtInterval visible(QwtPlot& plot, int axis)
{
    plot.updateAxes();
    return plot.axisScaleDiv(axis).interval();
}

/// Where a scale's range goes when its image is moved by pixels.
inline QwtInterval moved(const QwtPlot& plot, int axis, double pixels)
{
    const QwtScaleMap map = plot.canvasMap(axis);
    const QwtScaleDiv& scale = plot.axisScaleDiv(axis);
    return QwtInterval(map.invTransform(map.transform(scale.lowerBound()) - pixels),
        map.invTransform(map.transform(scale.upperBound()) - pixels));
}

inline bool isAbout(const QwtInterval& range, const QwtInterval& expected)
{
    const double tolerance = 1e-9 * expected.width();
    return std::abs(range.minValue() - expected.minValue()) <= tolerance
        && std::abs(range.maxValue() - expected.maxValue()) <= tolerance;
}

#define COMPARE_RANGES(range, expected)                                                                      \
    do {                                                                                                     \
        const QwtInterval actualRange = (range);                                                             \
        const QwtInterval expectedRange = (expected);                                                        \
        QVERIFY2(isAbout(actualRange, expectedRange),                                                        \
            qPrintable(QStringLiteral("%1 to %2 instead of %3 to %4")                                        \
                           .arg(actualRange.minValue(), 0, 'g', 17)                                          \
                           .arg(actualRange.maxValue(), 0, 'g', 17)                                          \
                           .arg(expectedRange.minValue(), 0, 'g', 17)                                        \
                           .arg(expectedRange.maxValue(), 0, 'g', 17)));                                     \
    } while (false)
