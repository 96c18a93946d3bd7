#include "contender.h"
#include "hostplot.h"

#include <QImage>
#include <QPainter>

#include <qwt_scale_map.h>

#include <algorithm>

namespace {

QVector<double> copied(const QVector<double>& numbers)
{
    QVector<double> copy(numbers.size());
    std::copy(numbers.cbegin(), numbers.cend(), copy.begin());
    return copy;
}

class PainterContender : public Contender {
public:
    explicit PainterContender(const BenchLook& look)
        : m_look(look)
    {
    }

    /// Copies the points of each curve and looks at each once.
    void feed(const BenchData& data) override
    {
        m_prices.clear();
        m_data.values.clear();
        for (const QVector<double>& values : data.values) {
            m_prices.push_back(copied(data.prices));
            m_data.values.push_back(copied(values));
        }
        m_data.prices = data.prices;
        m_view = viewOf(m_data, data.prices.first(), data.prices.last());
    }

    void show(double left, double right) override { m_view = viewOf(m_data, left, right); }

    void paint(QImage& image) override
    {
        QPainter painter(&image);
        painter.fillRect(image.rect(), Qt::white);
        drawAxes(painter);
        painter.setClipRect(m_canvas);
        QwtScaleMap xMap;
        xMap.setScaleInterval(m_view.left, m_view.right);
        xMap.setPaintInterval(m_canvas.left(), m_canvas.right());
        QwtScaleMap yMap;
        yMap.setScaleInterval(m_view.low, m_view.high);
        yMap.setPaintInterval(m_canvas.bottom(), m_canvas.top());
        painter.setRenderHint(QPainter::Antialiasing, m_look.isSoft);
        for (int i = 0; i < m_look.curves; ++i) {
            painter.setPen(QPen(curveColor(i), m_look.penWidth));
            drawCurve(painter, m_data.values[std::size_t(i)], xMap, yMap);
        }
        painter.setPen(Qt::red);
        const double quote = xMap.transform(HostPlot::quote);
        painter.drawLine(QPointF(quote, m_canvas.top()), QPointF(quote, m_canvas.bottom()));
    }

    void pick(double, double) override { }
    void findRange(double, double) override { }

private:
    void drawAxes(QPainter& painter) const
    {
        constexpr int labels = 6;
        painter.setPen(Qt::black);
        painter.drawLine(m_canvas.left() - 1, m_canvas.top(), m_canvas.left() - 1, m_canvas.bottom());
        painter.drawLine(m_canvas.left(), m_canvas.bottom() + 1, m_canvas.right(), m_canvas.bottom() + 1);
        for (int i = 0; i < labels; ++i) {
            const int x = m_canvas.left() + i * m_canvas.width() / labels;
            const int y = m_canvas.bottom() - i * m_canvas.height() / labels;
            const double part = double(i) / labels;
            painter.drawText(QRect(x - 30, m_canvas.bottom() + 4, 60, 18), Qt::AlignCenter,
                QString::number(m_view.left + part * (m_view.right - m_view.left), 'g', 5));
            painter.drawText(QRect(0, y - 9, 55, 18), Qt::AlignRight | Qt::AlignVCenter,
                QString::number(m_view.low + part * (m_view.high - m_view.low), 'g', 4));
        }
    }

    /// The samples, or the lowest and the highest of each column of pixels.
    void drawCurve(
        QPainter& painter, const QVector<double>& values, const QwtScaleMap& xMap, const QwtScaleMap& yMap)
    {
        const auto begin = std::lower_bound(m_data.prices.cbegin(), m_data.prices.cend(), m_view.left);
        const auto end = std::upper_bound(begin, m_data.prices.cend(), m_view.right);
        int i = int(begin - m_data.prices.cbegin());
        const int behind = int(end - m_data.prices.cbegin());
        m_line.clear();
        if (behind - i <= 2 * m_canvas.width()) {
            for (; i < behind; ++i)
                m_line.append(QPointF(xMap.transform(m_data.prices[i]), yMap.transform(values[i])));
        }
        for (int column = m_canvas.left(); i < behind; ++column) {
            const double edge = xMap.invTransform(column + 1.0);
            double low = values[i];
            double high = low;
            for (; i < behind && (m_data.prices[i] < edge || column >= m_canvas.right()); ++i) {
                low = std::min(low, values[i]);
                high = std::max(high, values[i]);
            }
            m_line.append(QPointF(column + 0.5, yMap.transform(column % 2 ? low : high)));
            m_line.append(QPointF(column + 0.5, yMap.transform(column % 2 ? high : low)));
        }
        painter.drawPolyline(m_line);
    }

    BenchLook m_look;
    BenchData m_data;
    std::vector<QVector<double>> m_prices;
    BenchView m_view;
    QRect m_canvas = QRect(60, 20, 1200, 670);
    QPolygonF m_line;
};

}

std::unique_ptr<Contender> createPainterContender(const BenchLook& look)
{
    return std::make_unique<PainterContender>(look);
}
