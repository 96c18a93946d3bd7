#include "differential/agree.h"
#include "differential/realplot.h"
#include "support/testmain.h"

#include <QCursor>
#include <QMouseEvent>
#include <QWheelEvent>

#include <qwt_plot_layout.h>

using Differential::Findings;
using Differential::Random;
using Differential::RealPlot;
using Differential::told;

namespace {

QPoint randomPlace(Random& random, const QRectF& rectangle)
{
    return QPoint(random.whole(qRound(rectangle.left()), qRound(rectangle.right())),
        random.whole(qRound(rectangle.top()), qRound(rectangle.bottom())));
}

Plain::Place placeOf(const TestPlot& plot, const QPointF& position)
{
    const QwtPlotLayout* layout = plot.plotLayout();
    return {layout->scaleRect(QwtPlot::xBottom).contains(position),
        layout->scaleRect(QwtPlot::yLeft).contains(position), layout->canvasRect().contains(position)};
}

/// What stands under the cursor, whose place is read as one of the canvas.
QPointF underCursor(const TestPlot& plot, const Plain::Place& place)
{
    QPointF position = plot.mapFromGlobal(QCursor::pos());
    if (place.values)
        position = plot.axisWidget(QwtPlot::yLeft)->mapFromGlobal(QCursor::pos());
    else if (place.prices)
        position = plot.axisWidget(QwtPlot::xBottom)->mapFromGlobal(QCursor::pos());
    return QPointF(plot.canvasMap(QwtPlot::xBottom).invTransform(position.x()),
        plot.canvasMap(QwtPlot::yLeft).invTransform(position.y()));
}

Plain::Wheel randomTurn(Random& random, RealPlot& both)
{
    TestPlot& plot = both.plot();
    const QwtPlotLayout* layout = plot.plotLayout();
    QRectF around = layout->canvasRect();
    if (random.oneIn(3))
        around = layout->scaleRect(random.oneIn(2) ? QwtPlot::xBottom : QwtPlot::yLeft);
    if (random.oneIn(15))
        around = plot.rect();
    QCursor::setPos(plot.mapToGlobal(randomPlace(random, around)));

    Plain::Wheel wheel;
    wheel.prices = both.view().prices;
    wheel.values = both.view().values;
    wheel.curves = Plain::rectangleAround(both.view().curves);
    wheel.place = placeOf(plot, plot.mapFromGlobal(QCursor::pos()));
    wheel.cursor = underCursor(plot, wheel.place);
    wheel.shift = random.oneIn(4);
    wheel.control = random.oneIn(4);
    wheel.angle = random.oneOf({120, -120, 120, -120, 240, -360, 60, -119});
    wheel.minStep = both.minStep();
    wheel.labelsAreEqual = both.labelsAreEqual();
    return wheel;
}

void turn(TestPlot& plot, const Plain::Wheel& wheel, bool sideways)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, wheel.shift);
    modifiers.setFlag(Qt::ControlModifier, wheel.control);
    QWheelEvent event(QPointF(1.0, 1.0), plot.mapToGlobal(QPoint(1, 1)), QPoint(),
        sideways ? QPoint(wheel.angle, 8) : QPoint(-8, wheel.angle), Qt::NoButton, modifiers,
        Qt::NoScrollPhase, false);
    plot.wheelEvent(&event);
}

/// Applies a turn to the plain view and gives the signals that go with it.
QStringList apply(const Plain::Wheel& wheel, Plain::View& view)
{
    const std::optional<Plain::Zoom> zoom = Plain::zoomed(wheel);
    if (!zoom)
        return {};
    QStringList signalsSeen;
    if (zoom->leavesAutoScale && view.followsCurves)
        signalsSeen << QStringLiteral("auto-scale 0");
    if (zoom->prices)
        view.setAxis(QwtPlot::xBottom, zoom->prices->first, zoom->prices->second);
    if (zoom->values)
        view.setAxis(QwtPlot::yLeft, zoom->values->first, zoom->values->second);
    if (zoom->valuesFollow)
        view.fit();
    return signalsSeen << QStringLiteral("labels");
}

/// One move of a drag, applied to the plain view; what it takes stands before the library's move.
QStringList apply(Plain::AxisDrag& drag, const QPointF& place, RealPlot& both)
{
    Plain::View& view = both.view();
    const Plain::Place pressed = placeOf(both.plot(), drag.press);
    const bool isPrices = pressed.prices;
    if (drag.press.isNull() || !pressed.isScale())
        return {};
    const std::optional<bool> shrinks = drag.shrinks(isPrices, place);
    if (!shrinks)
        return {};
    const Plain::Bounds range = isPrices ? view.prices : view.values;
    if (*shrinks && isPrices && range.second - range.first < both.minStep())
        return {};
    if (*shrinks && !isPrices && both.labelsAreEqual())
        return {};
    const QRectF curves = Plain::rectangleAround(view.curves);
    if (curves.width() <= 0.0 || curves.height() < 0.0)
        return {};
    const Plain::Bounds data = isPrices ? Plain::Bounds(curves.left(), curves.left() + curves.width())
                                        : Plain::Bounds(curves.top(), curves.top() + curves.height());
    const std::optional<Plain::Bounds> bounds = Plain::draggedAxis(range, data, *shrinks);
    if (!bounds)
        return {};
    view.setAxis(isPrices ? QwtPlot::xBottom : QwtPlot::yLeft, bounds->first, bounds->second);
    if (isPrices)
        view.fit();
    drag.last = place;
    return !isPrices && view.followsCurves ? QStringList(QStringLiteral("auto-scale 0")) : QStringList();
}

}

class tst_differential_mouse : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void wheel();
    void drags();
};

void tst_differential_mouse::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_differential_mouse::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_differential_mouse::wheel()
{
    RealPlot both;
    QVERIFY(both.isReady());
    AGREE("turns of the wheel", 701, 40, ([&](Random& random, Findings& findings) {
        both.setUp(random);
        const bool zooms = !random.oneIn(25);
        both.plot().setZoomEnabled(zooms);
        const Plain::Wheel wheel = randomTurn(random, both);
        const QStringList signalsExpected = zooms ? apply(wheel, both.view()) : QStringList();
        turn(both.plot(), wheel, random.oneIn(6));
        both.compare(findings);
        findings.compare("signals", signalsExpected, both.seen());
        findings.given([&] {
            return QStringLiteral(
                       "prices %1, values %2, curves %3, cursor %4 (on prices: %5, on values: %6), angle %7, "
                       "shift %8, control %9; ")
                       .arg(told(wheel.prices), told(wheel.values), told(wheel.curves), told(wheel.cursor),
                           told(wheel.place.prices), told(wheel.place.values))
                       .arg(wheel.angle)
                       .arg(wheel.shift)
                       .arg(wheel.control)
                + both.inWords();
        });
    }));
}

void tst_differential_mouse::drags()
{
    RealPlot both;
    QVERIFY(both.isReady());
    AGREE("drags on the axes of a plot", 702, 60, ([&](Random& random, Findings& findings) {
        both.setUp(random);
        TestPlot& plot = both.plot();
        const int axis = random.oneIn(2) ? QwtPlot::xBottom : QwtPlot::yLeft;
        const bool isLeft = !random.oneIn(20);
        const bool isOff = random.oneIn(20);
        QPointF place = isOff ? plot.plotLayout()->canvasRect().center()
                              : randomPlace(random, plot.plotLayout()->scaleRect(axis));
        Plain::AxisDrag drag;
        if (isLeft && placeOf(plot, place).isScale())
            drag.press = place;
        const Qt::MouseButton button = isLeft ? Qt::LeftButton : Qt::RightButton;
        QMouseEvent press(
            QEvent::MouseButtonPress, place, place, QCursor::pos(), button, button, Qt::NoModifier);
        plot.mousePressEvent(&press);
        QString history = told(place);
        for (int moves = random.whole(1, 4); moves > 0 && !findings.differ(); --moves) {
            place += QPointF(random.whole(-3, 3), random.whole(-3, 3));
            history += QStringLiteral(" to ") + told(place);
            both.seen().clear();
            const QStringList signalsExpected = apply(drag, place, both);
            QMouseEvent move(
                QEvent::MouseMove, place, place, QCursor::pos(), Qt::NoButton, button, Qt::NoModifier);
            plot.mouseMoveEvent(&move);
            both.compare(findings);
            findings.compare("signals", signalsExpected, both.seen());
        }
        findings.given([&] { return history + QStringLiteral("; ") + both.inWords(); });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_mouse)
#include "tst_differential_mouse.moc"
