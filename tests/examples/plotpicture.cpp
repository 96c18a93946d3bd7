#include "examples/plotpicture.h"

#include <QPixmap>

#include <qwt_plot.h>
#include <qwt_scale_widget.h>

PlotPicture::PlotPicture(QwtPlot& plot)
    : m_plot(plot)
    , m_image(plot.grab().toImage())
{
}

QRect PlotPicture::around(double price, double value, int reach) const
{
    const QPoint onCanvas(
        qRound(m_plot.transform(QwtPlot::xBottom, price)), qRound(m_plot.transform(QwtPlot::yLeft, value)));
    const QPoint center = m_plot.canvas()->mapTo(&m_plot, onCanvas);
    return QRect(center - QPoint(reach, reach), center + QPoint(reach, reach));
}

bool PlotPicture::isColored(double price, double value, const QColor& color, int reach) const
{
    return count(m_image, around(price, value, reach), color) > 0;
}

bool PlotPicture::isFilled(double price, double value, const QColor& color, int reach) const
{
    const QRect area = around(price, value, reach);
    return count(m_image, area, color) == area.width() * area.height();
}

int PlotPicture::onCanvas(const QColor& color) const
{
    return count(m_image, m_plot.canvas()->geometry(), color);
}

int PlotPicture::onPriceAxis(const QColor& color) const
{
    return count(m_image, m_plot.axisWidget(QwtPlot::xBottom)->geometry(), color);
}

int PlotPicture::inAll(const QColor& color) const
{
    return count(m_image, m_image.rect(), color);
}

int PlotPicture::count(const QImage& image, const QRect& area, const QColor& color)
{
    const QRect inside = area & image.rect();
    int found = 0;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            found += image.pixel(x, y) == color.rgb() ? 1 : 0;
    }
    return found;
}
