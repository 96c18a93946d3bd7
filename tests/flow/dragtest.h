#pragma once

#include "flow/shownplot.h"

#include <QMouseEvent>

#include <qwt_plot_layout.h>

Q_DECLARE_METATYPE(Qt::MouseButton)

/// A drag on the scales of a plot that shows the prices 400 to 600 and the values 40 to 60.
class DragTest : public QObject {
    Q_OBJECT

protected:
    void press(const QPointF& place, Qt::MouseButton button = Qt::LeftButton)
    {
        QMouseEvent event(
            QEvent::MouseButtonPress, place, place, QCursor::pos(), button, button, Qt::NoModifier);
        m_plot->mousePressEvent(&event);
    }
    void move(const QPointF& place, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        QMouseEvent event(
            QEvent::MouseMove, place, place, QCursor::pos(), Qt::NoButton, buttons, Qt::NoModifier);
        m_plot->mouseMoveEvent(&event);
    }

    QPointF onScale(int axis) const { return m_plot->plotLayout()->scaleRect(axis).center(); }
    QwtInterval range(int axis) { return visible(*m_plot, axis); }

    std::unique_ptr<TestPlot> m_plot;

protected Q_SLOTS:
    void init()
    {
        m_plot = shownPlot();
        QVERIFY(m_plot);
    }

private Q_SLOTS:
    void initTestCase()
    {
        TestHost::createSecurities();
        TestHost::createBoards();
    }
    void cleanupTestCase()
    {
        TestHost::dropSecurities();
        TestHost::dropBoards();
    }
    void cleanup() { m_plot.reset(); }
};
