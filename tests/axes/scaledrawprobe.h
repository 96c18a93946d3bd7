#pragma once

#include <plot2d/pricebased2dplotscaledraw.h>

#include <QHash>
#include <QPainter>
#include <QPen>

#include <functional>
#include <optional>

/// A scale draw that stands alone, with texts of the test's choice, and that notes what it is asked and told
/// to draw.
class ScaleDrawProbe : public PriceBased2dPlotScaleDraw {
public:
    struct Label {
        double value;
        QColor color;
    };
    struct Tick {
        double value;
        double length;
    };

    explicit ScaleDrawProbe(int axis)
        : PriceBased2dPlotScaleDraw(axis)
    {
        setAlignment(axis == 0 ? LeftScale : BottomScale);
        move(0.0, 0.0);
    }

    /// The texts of the labels; those of the library until it is set.
    std::function<QString(double)> text;
    /// The pen that drawing a tick leaves in the painter, if it is to leave one.
    std::optional<QPen> penLeftByTicks;

    /// Candidates on a bottom scale from 0 on where a unit is a pixel.
    void setPixelTicks(const QList<double>& candidates, double width = 1000.0)
    {
        setLength(width);
        setScaleDiv(QwtScaleDiv(0.0, width, {}, {}, candidates));
    }

    QString convertedValue(double value) const override
    {
        ++asked[value];
        return text ? text(value) : PriceBased2dPlotScaleDraw::convertedValue(value);
    }

    mutable QHash<double, int> asked;
    mutable QList<Label> labels;
    mutable QList<Tick> ticks;
    mutable QList<QPen> linePens;
    mutable int backbones = 0;

protected:
    void drawLabel(QPainter* painter, double value) const override
    {
        labels.append({value, painter->pen().color()});
        PriceBased2dPlotScaleDraw::drawLabel(painter, value);
    }

    void drawTick(QPainter* painter, double value, double length) const override
    {
        ticks.append({value, length});
        linePens.append(painter->pen());
        PriceBased2dPlotScaleDraw::drawTick(painter, value, length);
        if (penLeftByTicks)
            painter->setPen(*penLeftByTicks);
    }

    void drawBackbone(QPainter* painter) const override
    {
        ++backbones;
        linePens.append(painter->pen());
        PriceBased2dPlotScaleDraw::drawBackbone(painter);
    }
};
