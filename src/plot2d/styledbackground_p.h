#pragma once

#include <QColor>
#include <QSize>

#include <optional>

class QStyleOption;
class QWidget;

/// What a style, mostly for the sake of a style sheet, paints behind a whole widget: one opaque colour, or
/// something else. Finding that out takes a picture of it, so it is remembered.
class StyledBackground {
public:
    /// The one opaque colour; nothing where the style paints nothing, or more than one colour, or lets
    /// something shine through.
    std::optional<QColor> colorOf(const QWidget& widget);

    /// To be called when the style, its sheet or the palette has changed.
    void forget() { m_known.reset(); }

private:
    /// The colour of a widget in a state, and of a size up to this one: a smaller widget shows a part.
    struct Known {
        int state = 0;
        QSize size;
        std::optional<QColor> color;
    };

    static std::optional<QColor> painted(
        const QWidget& widget, const QStyleOption& option, const QSize& size);

    std::optional<Known> m_known;
};
