#include "window/hoverpicker.h"

#include "window/readoutitem.h"

#include <qwt_widget_overlay.h>

#include <algorithm>

/// The ring itself: moving it does not paint the curves anew.
class HoverRing : public QwtWidgetOverlay {
public:
    explicit HoverRing(QWidget* canvas)
        : QwtWidgetOverlay(canvas)
    {
    }

    void moveTo(const QPointF& center)
    {
        m_center = center;
        updateOverlay();
    }
    QPointF center() const { return m_center; }

protected:
    QRegion maskHint() const override { return ReadOutItem::ringBounds(m_center); }

    void drawOverlay(QPainter* painter) const override
    {
        painter->setRenderHint(QPainter::Antialiasing);
        ReadOutItem::paintRing(painter, m_center);
    }

private:
    QPointF m_center;
};

namespace {

constexpr int gap = 12;

// Around a point: to its right before its left, above before below.
QVector<QRect> placesAround(const QPoint& point, const QSize& size)
{
    const int right = point.x() + gap;
    const int left = point.x() - gap - size.width();
    const int above = point.y() - gap - size.height();
    const int below = point.y() + gap;
    return {QRect(QPoint(right, above), size), QRect(QPoint(right, below), size),
        QRect(QPoint(left, above), size), QRect(QPoint(left, below), size)};
}

QRect movedInto(const QRect& canvas, QRect box)
{
    box.moveRight(std::min(box.right(), canvas.right()));
    box.moveBottom(std::min(box.bottom(), canvas.bottom()));
    box.moveLeft(std::max(box.left(), canvas.left()));
    box.moveTop(std::max(box.top(), canvas.top()));
    return box;
}

}

HoverPicker::HoverPicker(QWidget* canvas)
    : PriceBased2dPlotPicker(canvas)
{
}

HoverPicker::~HoverPicker() = default;

std::optional<QPointF> HoverPicker::shownPoint() const
{
    return m_ring && m_ring->isVisible() ? std::optional<QPointF>(m_ring->center()) : std::nullopt;
}

void HoverPicker::hidePoint()
{
    m_point.reset();
    delete m_ring;
}

QRect HoverPicker::trackerRect(const QFont& font) const
{
    const QRect usual = PriceBased2dPlotPicker::trackerRect(font);
    if (usual.isEmpty() || !m_point)
        return usual;
    const QPoint cursor = trackerPosition();
    const QRect ring = ReadOutItem::ringBounds(*m_point);
    const QRect canvas = pickArea().boundingRect().toRect();
    const auto hidesNothing
        = [&](const QRect& box) { return !box.intersects(ring) && !box.contains(cursor); };
    const QVector<QRect> places = QVector<QRect>{usual} + placesAround(cursor, usual.size())
        + placesAround(ring.center(), usual.size());
    for (const QRect& place : places) {
        const QRect box = movedInto(canvas, place);
        if (hidesNothing(box))
            return box;
    }
    return usual;
}

void HoverPicker::updateDisplay()
{
    PriceBased2dPlotPicker::updateDisplay();
    const bool isShown = m_point && isEnabled() && !trackerRect(trackerFont()).isEmpty();
    if (!isShown) {
        delete m_ring;
        return;
    }
    if (!m_ring) {
        m_ring = new HoverRing(parentWidget());
        // Under the text, which is there already.
        m_ring->lower();
        m_ring->show();
    }
    m_ring->moveTo(*m_point);
}
