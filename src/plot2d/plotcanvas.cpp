#include "plotcanvas_p.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <qwt_painter.h>
#include <qwt_plot.h>

#include <algorithm>

namespace {

/// The colour of all pixels of an image; nothing where they differ or let something shine through.
std::optional<QRgb> uniformColor(const QImage& image)
{
    const QRgb first = image.pixel(0, 0);
    if (qAlpha(first) != 0xff)
        return std::nullopt;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (!std::all_of(line, line + image.width(), [first](QRgb pixel) { return pixel == first; }))
            return std::nullopt;
    }
    return first;
}

}

PlotCanvas::PlotCanvas(QwtPlot* plot)
    : QwtPlotCanvas(plot)
{
    setObjectName(QStringLiteral("QwtPlotCanvas"));
}

PlotCanvas::~PlotCanvas() = default;

void PlotCanvas::replot()
{
    m_storeIsCurrent = false;
    m_paintedSinceReplot = false;
    QwtPlotCanvas::replot();
}

bool PlotCanvas::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::PolishRequest:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
    case QEvent::Resize:
        m_background = Background::Unknown;
        m_storeIsCurrent = false;
        break;
    default:
        break;
    }
    return QwtPlotCanvas::event(event);
}

bool PlotCanvas::hasUniformBackground()
{
    if (m_background == Background::Unknown)
        findBackground();
    return m_background == Background::Uniform;
}

void PlotCanvas::findBackground()
{
    m_background = Background::Other;
    if (testAttribute(Qt::WA_StyledBackground)) {
        QImage image(size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QStyleOption option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
        painter.end();
        if (const auto color = uniformColor(image)) {
            m_color = QColor(*color);
            m_background = Background::Uniform;
        }
    } else if (autoFillBackground() && frameWidth() == 0 && borderRadius() <= 0.0) {
        const QBrush brush = palette().brush(backgroundRole());
        if (brush.style() == Qt::SolidPattern && brush.isOpaque()) {
            m_color = brush.color();
            m_background = Background::Uniform;
        }
    }
}

void PlotCanvas::drawContents(QPainter& painter)
{
    painter.fillRect(rect(), m_color);
    painter.setClipRect(contentsRect(), Qt::IntersectClip);
    plot()->drawCanvas(&painter);
}

bool PlotCanvas::isStored() const
{
    return m_storeIsCurrent && m_store.devicePixelRatio() == devicePixelRatioF();
}

void PlotCanvas::paintEvent(QPaintEvent* event)
{
    const bool focusIsShown = hasFocus() && focusIndicator() == CanvasFocusIndicator;
    if (!plot() || size().isEmpty() || focusIsShown || !testPaintAttribute(BackingStore)
        || !testAttribute(Qt::WA_OpaquePaintEvent) || !hasUniformBackground()) {
        QwtPlotCanvas::paintEvent(event);
        return;
    }

    QPainter painter(this);
    painter.setClipRegion(event->region());
    if (!m_paintedSinceReplot) {
        m_paintedSinceReplot = true;
        drawContents(painter);
        return;
    }
    if (!isStored()) {
        if (m_store.size() != size() * devicePixelRatioF())
            m_store = QwtPainter::backingStore(this, size());
        QPainter storePainter(&m_store);
        drawContents(storePainter);
        m_storeIsCurrent = true;
    }
    painter.drawPixmap(0, 0, m_store);
}
