#pragma once

#include "styledbackground_p.h"

#include <QObject>

class QwtScaleWidget;

/// Saves painting what an axis hides.
///
/// The widget of an axis paints the background that its style sheet gives it, but Qt does not count on that
/// and paints the plot's background below it as well: a fifth of a frame of a plot of few samples. This
/// object tells Qt, for as long as the axis hides all that lies below.
class OpaqueAxis : public QObject {
    Q_OBJECT

public:
    /// Lives as long as the axis. It looks at what the axis hides after each event that may change that; one
    /// comes before an axis is painted first, or with the style sheet of one that is shown already.
    explicit OpaqueAxis(QwtScaleWidget* axis);
    ~OpaqueAxis() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void update();

    QwtScaleWidget* m_axis;
    StyledBackground m_background;
};
