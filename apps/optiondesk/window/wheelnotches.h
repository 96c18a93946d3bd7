#pragma once

#include <QPoint>

/// Gathers the small angles by which a touchpad or a finely divided wheel turns into whole notches, which are
/// all that the plot's zoom knows.
///
/// What is left of a notch belongs to one direction of one axis of the wheel, over one part of the plot, with
/// the same modifier keys held, and to one movement of the hand: it is dropped where any of these changes,
/// and after a pause.
class WheelNotches {
public:
    /// The angle of a notch, in eighths of a degree.
    static constexpr int notch = 120;
    /// What is left is kept this long, in milliseconds.
    static constexpr qint64 longestPause = 500;

    /// A turn of the wheel.
    struct Turn {
        /// In eighths of a degree; the axis that it is larger along counts, the vertical one of two equals.
        QPoint angle;
        Qt::KeyboardModifiers modifiers;
        /// Which part of the plot, in any numbering.
        int place = 0;
        /// In milliseconds.
        qint64 time = 0;
    };

    /// The whole notches that this turn completes, as an angle along its axis: a multiple of a notch, (0, 0)
    /// where none is complete.
    QPoint add(const Turn& turn);

private:
    bool continuesLast(const Turn& turn) const;

    /// Of a notch, along the horizontal and the vertical axis.
    QPoint m_rest;
    Turn m_last;
};
