#include "plotcanvas_p.h"

#include "pixelpainter_p.h"

#include <QPaintEvent>
#include <QPainter>

#include <qwt_plot.h>

PlotCanvas::PlotCanvas(QwtPlot* plot)
    : QwtPlotCanvas(plot)
{
    setObjectName(QStringLiteral("QwtPlotCanvas"));
}

PlotCanvas::~PlotCanvas() = default;

void PlotCanvas::replot()
{
    m_isPainted = false;
    QwtPlotCanvas::replot();
}

bool PlotCanvas::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::PolishRequest:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
    case QEvent::EnabledChange:
        m_styledBackground.forget();
        invalidateBackingStore();
        break;
    case QEvent::Resize:
        m_isPainted = false;
        invalidateBackingStore();
        break;
    default:
        break;
    }
    return QwtPlotCanvas::event(event);
}

bool PlotCanvas::isForQwt() const
{
    const bool focusIsShown = hasFocus() && focusIndicator() == CanvasFocusIndicator;
    return !plot() || size().isEmpty() || focusIsShown || !backingStore()
        || !testAttribute(Qt::WA_OpaquePaintEvent);
}

std::optional<QColor> PlotCanvas::backgroundColor()
{
    if (testAttribute(Qt::WA_StyledBackground))
        return m_styledBackground.colorOf(*this);
    const QBrush& brush = palette().brush(backgroundRole());
    const bool isPlain = autoFillBackground() && frameWidth() == 0 && borderRadius() <= 0.0
        && brush.style() == Qt::SolidPattern && brush.isOpaque();
    return isPlain ? std::optional<QColor>(brush.color()) : std::nullopt;
}

void PlotCanvas::drawContents(QPainter& painter, const QColor& background)
{
    painter.fillRect(rect(), background);
    painter.setClipRect(contentsRect(), Qt::IntersectClip);
    plot()->drawCanvas(&painter);
}

bool PlotCanvas::isStored() const
{
    const QPixmap& picture = *backingStore();
    return picture.devicePixelRatio() == devicePixelRatioF()
        && picture.size() == size() * picture.devicePixelRatio();
}

void PlotCanvas::store(const QColor& background)
{
    // Qwt's painters that draw new samples onto a canvas draw into its store as well, in the same way.
    QPixmap& picture = const_cast<QPixmap&>(*backingStore());
    picture = QPixmap(size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&picture);
    drawContents(painter, background);
}

void PlotCanvas::paintEvent(QPaintEvent* event)
{
    const std::optional<QColor> background = isForQwt() ? std::nullopt : backgroundColor();
    if (!background) {
        QwtPlotCanvas::paintEvent(event);
        return;
    }
    QPainter painter(this);
    if (!isStored() && !m_isPainted && isOnPixelsOf(*this, painter)) {
        m_isPainted = true;
        drawContents(painter, *background);
        return;
    }
    if (!isStored()) {
        store(*background);
        // Curves may have changed since the rest was painted: the whole is of one moment.
        if (!QRegion(rect()).subtracted(event->region()).isEmpty())
            update();
    }
    painter.drawPixmap(0, 0, *backingStore());
}
