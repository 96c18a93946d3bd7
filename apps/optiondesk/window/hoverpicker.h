#pragma once

#include <plot2d/pricebased2dplotpicker.h>

#include <QPointer>

#include <optional>

class HoverRing;

/// A picker that marks the point its text speaks of with a ring, and keeps the text beside ring and cursor
/// where the canvas has room for that.
class HoverPicker : public PriceBased2dPlotPicker {
    Q_OBJECT

public:
    explicit HoverPicker(QWidget* canvas);
    ~HoverPicker() override;

    /// The point in pixels of the canvas; none for no ring. What is shown changes with the next move of the
    /// mouse that the picker sees.
    void setPoint(const std::optional<QPointF>& point) { m_point = point; }

    /// The ring's centre while it is on the canvas.
    std::optional<QPointF> shownPoint() const;

    QRect trackerRect(const QFont& font) const override;

public Q_SLOTS:
    /// Takes the ring away until there is another point.
    void hidePoint();

protected:
    void updateDisplay() override;

private:
    std::optional<QPointF> m_point;
    QPointer<HoverRing> m_ring;
};
