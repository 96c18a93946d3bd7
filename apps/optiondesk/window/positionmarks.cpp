#include "window/positionmarks.h"

#include <plot2d/plot2dcommon.h>
#include <plot2d/pricebased2dplot.h>

#include <QCoreApplication>
#include <QPen>

#include <qwt_interval.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_textlabel.h>
#include <qwt_text.h>

#include <algorithm>

namespace {

// Over the grid and under the curves.
constexpr double zeroLineZ = 12.0;
// Over the curves.
constexpr double markerZ = 45.0;

// Where the text at a marker crosses no profit that rises or falls there; the outermost ones stay clear of
// those between.
Qt::Alignment placeOf(int index, int count, bool rises)
{
    if (count > 1 && index == 0)
        return Qt::AlignLeft | (rises ? Qt::AlignTop : Qt::AlignBottom);
    if (count > 1 && index == count - 1)
        return Qt::AlignRight | (rises ? Qt::AlignBottom : Qt::AlignTop);
    return Qt::AlignTop | (rises ? Qt::AlignLeft : Qt::AlignRight);
}

Qt::Alignment opposite(Qt::Alignment place)
{
    return (place & Qt::AlignLeft ? Qt::AlignRight : Qt::AlignLeft)
        | (place & Qt::AlignTop ? Qt::AlignBottom : Qt::AlignTop);
}

bool risesAt(const Position::Profile& position, double price)
{
    const double step = position.forward() * 1e-4;
    return position.atExpiry(price + step).value_or(0.0)
        > position.atExpiry(std::max(price - step, step)).value_or(0.0);
}

std::unique_ptr<QwtPlotMarker> newZeroLine()
{
    auto line = std::make_unique<QwtPlotMarker>();
    line->setLineStyle(QwtPlotMarker::HLine);
    line->setLinePen(QPen(QColor(Qt::black), 1.0));
    line->setYValue(0.0);
    line->setZ(zeroLineZ);
    return line;
}

}

PositionMarks::PositionMarks(PriceBased2dPlot& plot)
    : m_plot(plot)
    , m_zeroLine(newZeroLine())
    , m_hint(std::make_unique<QwtPlotTextLabel>())
{
}

PositionMarks::~PositionMarks() = default;

void PositionMarks::hide()
{
    m_zeroLine->detach();
    m_hint->detach();
    m_places.clear();
}

void PositionMarks::showHint(const QString& text)
{
    QwtText hint(text, QwtText::PlainText);
    QFont font = m_plot.font();
    font.setPointSizeF(font.pointSizeF() * 1.2);
    hint.setFont(font);
    hint.setColor(QColor(Qt::black));
    hint.setRenderFlags(Qt::AlignCenter);
    hint.setBackgroundBrush(m_plot.canvasBackground());
    m_hint->setText(hint);
    m_hint->attach(&m_plot);
}

void PositionMarks::labelMarkers(const ShownSeries& series)
{
    const QList<QwtPlotMarker*> markers = m_plot.attachedMarkers();
    for (int i = 0; i < markers.size(); ++i) {
        const double price = markers[i]->xValue();
        QwtText text(
            Plot2dCommon::fromDoubleToSystemStringShort(price, series.data.decimals + 1), QwtText::PlainText);
        text.setBackgroundBrush(m_plot.canvasBackground());
        text.setColor(QColor(Qt::black));
        markers[i]->setLabel(text);
        m_places.append(placeOf(i, markers.size(), risesAt(series.position, price)));
        markers[i]->setSpacing(6);
        markers[i]->setZ(markerZ);
    }
    placeLabels();
}

// The opposite quadrant is as free of the profit as the first one.
void PositionMarks::placeLabels()
{
    if (m_places.isEmpty())
        return;
    // Of the canvas; more than the widest price.
    constexpr double width = 0.09;
    m_plot.updateAxes();
    const QwtInterval prices = m_plot.axisScaleDiv(QwtPlot::xBottom).interval();
    const double room = prices.width() * width;
    const QList<QwtPlotMarker*> markers = m_plot.attachedMarkers();
    for (int i = 0; i < std::min(markers.size(), m_places.size()); ++i) {
        const double price = markers[i]->xValue();
        const bool isCut = m_places[i] & Qt::AlignLeft ? price < prices.minValue() + room
                                                       : price > prices.maxValue() - room;
        markers[i]->setLabelAlignment(isCut ? opposite(m_places[i]) : m_places[i]);
    }
}

void PositionMarks::show(const ShownSeries& series, DeskView view)
{
    hide();
    if (view != DeskView::Position)
        return;
    const Position::Profile& position = series.position;
    if (!position.isEmpty())
        m_zeroLine->attach(&m_plot);
    labelMarkers(series);
    if (position.isEmpty())
        showHint(position.leftOut() == 0
                ? QCoreApplication::translate("PositionMarks",
                    "There is no position yet.\nPress Insert to add a leg,\nand edit it in the table below.")
                : QCoreApplication::translate("PositionMarks",
                    "The legs of this position cannot be valued:\ntheir series are not there."));
    else if (!position.atExpiry(position.forward()) && !position.today(position.forward()))
        showHint(QCoreApplication::translate("PositionMarks",
            "The position cannot be valued:\nthere are no prices to take a volatility from."));
}
