#include "support/testmain.h"

#include <window/viewhistory.h>

#include <random>

namespace {

using Gesture = ViewHistory::Gesture;

/// A view that its number tells from others.
View numbered(int number)
{
    return {QwtInterval(number, number + 1.0), QwtInterval(0.0, 1.0), true};
}

ViewHistory::Change change(int from, int to, Gesture gesture = Gesture::Single, qint64 time = 0)
{
    return {numbered(from), numbered(to), gesture, time};
}

/// The number of a view, -1 for none.
int number(const std::optional<View>& view)
{
    return view ? int(view->prices.minValue()) : -1;
}

}

Q_DECLARE_METATYPE(View)
Q_DECLARE_METATYPE(ViewHistory::Gesture)

/// The way back through the views of a plot.
class tst_viewhistory : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sameViews_data();
    void sameViews();
    void goesBackAndForth();
    void isBounded();
    void newStepLeavesNothingToRedo();
    void noChangeIsNoStep();
    void gestures_data();
    void gestures();
    void undoEndsTheGesture();
    void noChangeEndsTheGesture();
    void comesBackToTheCurrentView();
    void forgetsAll();
    void followsAModel();
};

void tst_viewhistory::sameViews_data()
{
    QTest::addColumn<View>("other");
    QTest::addColumn<bool>("same");
    QTest::addColumn<bool>("sameWithAutoScale");
    const QwtInterval prices(90.0, 110.0);
    const QwtInterval values(0.2, 0.3);
    QTest::newRow("the same") << View{prices, values, false} << true << true;
    QTest::newRow("other prices") << View{{90.0, 111.0}, values, false} << false << false;
    QTest::newRow("other values") << View{prices, {0.2, 0.31}, false} << false << true;
    QTest::newRow("other auto-scale") << View{prices, values, true} << false << false;
}

void tst_viewhistory::sameViews()
{
    QFETCH(View, other);
    View view{{90.0, 110.0}, {0.2, 0.3}, false};
    QTEST(view == other, "same");
    QTEST(!(view != other), "same");
    // The values follow the data then.
    view.autoScale = !view.autoScale;
    other.autoScale = !other.autoScale;
    QTEST(view == other, "sameWithAutoScale");
}

void tst_viewhistory::goesBackAndForth()
{
    ViewHistory history;
    QVERIFY(!history.canUndo() && !history.canRedo());
    QCOMPARE(number(history.undo(numbered(0))), -1);
    QCOMPARE(number(history.redo(numbered(0))), -1);
    history.add(change(0, 1));
    history.add(change(1, 2));
    QVERIFY(history.canUndo() && !history.canRedo());
    QCOMPARE(number(history.undo(numbered(2))), 1);
    QVERIFY(history.canUndo() && history.canRedo());
    QCOMPARE(number(history.undo(numbered(1))), 0);
    QVERIFY(!history.canUndo() && history.canRedo());
    QCOMPARE(number(history.undo(numbered(0))), -1);
    QCOMPARE(number(history.redo(numbered(0))), 1);
    QCOMPARE(number(history.redo(numbered(1))), 2);
    QVERIFY(history.canUndo() && !history.canRedo());
    QCOMPARE(number(history.redo(numbered(2))), -1);
    QCOMPARE(number(history.undo(numbered(2))), 1);
}

void tst_viewhistory::isBounded()
{
    ViewHistory history(3);
    for (int i = 0; i < 10; ++i)
        history.add(change(i, i + 1));
    for (const int expected : {9, 8, 7, -1})
        QCOMPARE(number(history.undo(numbered(expected + 1))), expected);
    ViewHistory smallest(-5);
    smallest.add(change(0, 1));
    smallest.add(change(1, 2));
    QCOMPARE(number(smallest.undo(numbered(2))), 1);
    QVERIFY(!smallest.canUndo());
}

void tst_viewhistory::newStepLeavesNothingToRedo()
{
    ViewHistory history;
    history.add(change(0, 1));
    history.add(change(1, 2));
    history.undo(numbered(2));
    history.add(change(1, 3));
    QVERIFY(!history.canRedo());
    QCOMPARE(number(history.undo(numbered(3))), 1);
    QCOMPARE(number(history.undo(numbered(1))), 0);
}

void tst_viewhistory::noChangeIsNoStep()
{
    ViewHistory history;
    history.add(change(0, 0));
    QVERIFY(!history.canUndo());
    history.add(change(0, 1));
    history.undo(numbered(1));
    history.add(change(0, 0));
    QVERIFY(history.canRedo());
}

void tst_viewhistory::gestures_data()
{
    QTest::addColumn<Gesture>("first");
    QTest::addColumn<Gesture>("second");
    QTest::addColumn<qint64>("pause");
    QTest::addColumn<bool>("oneStep");
    const qint64 longest = ViewHistory::longestPause;
    QTest::newRow("wheel") << Gesture::WheelTurn << Gesture::WheelTurn << longest << true;
    QTest::newRow("wheel after a pause") << Gesture::WheelTurn << Gesture::WheelTurn << longest + 1 << false;
    QTest::newRow("wheel, clock set back") << Gesture::WheelTurn << Gesture::WheelTurn << qint64(-1) << false;
    QTest::newRow("zoom key") << Gesture::ZoomKey << Gesture::ZoomKey << longest << true;
    QTest::newRow("zoom key after a pause") << Gesture::ZoomKey << Gesture::ZoomKey << longest + 1 << false;
    QTest::newRow("pan key") << Gesture::PanKey << Gesture::PanKey << qint64(0) << true;
    QTest::newRow("wheel, then key") << Gesture::WheelTurn << Gesture::ZoomKey << qint64(0) << false;
    QTest::newRow("two keys") << Gesture::ZoomKey << Gesture::PanKey << qint64(0) << false;
    QTest::newRow("two drags") << Gesture::Drag << Gesture::Drag << qint64(0) << false;
    QTest::newRow("two fits") << Gesture::Single << Gesture::Single << qint64(0) << false;
    QTest::newRow("click and double click") << Gesture::Drag << Gesture::DoubleClick << qint64(0) << true;
    QTest::newRow("two double clicks") << Gesture::DoubleClick << Gesture::DoubleClick << qint64(0) << false;
    QTest::newRow("wheel and double click")
        << Gesture::WheelTurn << Gesture::DoubleClick << qint64(0) << false;
}

void tst_viewhistory::gestures()
{
    QFETCH(Gesture, first);
    QFETCH(Gesture, second);
    QFETCH(qint64, pause);
    QFETCH(bool, oneStep);
    ViewHistory history;
    history.add(change(5, 0));
    history.add(change(0, 1, first, 1000));
    history.add(change(1, 2, second, 1000 + pause));
    if (!oneStep)
        QCOMPARE(number(history.undo(numbered(2))), 1);
    QCOMPARE(number(history.undo(numbered(2))), 0);
    QCOMPARE(number(history.undo(numbered(0))), 5);
    QVERIFY(!history.canUndo());
}

void tst_viewhistory::undoEndsTheGesture()
{
    ViewHistory history;
    history.add(change(0, 1, Gesture::WheelTurn));
    history.add(change(1, 2));
    history.undo(numbered(2));
    history.add(change(1, 3, Gesture::WheelTurn));
    QCOMPARE(number(history.undo(numbered(3))), 1);
    QCOMPARE(number(history.redo(numbered(1))), 3);
    history.add(change(3, 4, Gesture::WheelTurn));
    QCOMPARE(number(history.undo(numbered(4))), 3);
}

void tst_viewhistory::noChangeEndsTheGesture()
{
    ViewHistory history;
    history.add(change(0, 1, Gesture::Drag));
    history.add(change(1, 1, Gesture::Drag));
    history.add(change(1, 2, Gesture::DoubleClick));
    QCOMPARE(number(history.undo(numbered(2))), 1);
    QCOMPARE(number(history.undo(numbered(1))), 0);
}

void tst_viewhistory::comesBackToTheCurrentView()
{
    ViewHistory history;
    history.add(change(0, 1));
    // New data has moved the view meanwhile.
    QCOMPARE(number(history.undo(numbered(7))), 0);
    QCOMPARE(number(history.redo(numbered(8))), 7);
    QCOMPARE(number(history.undo(numbered(7))), 8);
}

void tst_viewhistory::forgetsAll()
{
    ViewHistory history;
    history.add(change(0, 1, Gesture::WheelTurn));
    history.add(change(1, 2));
    history.undo(numbered(2));
    history.clear();
    QVERIFY(!history.canUndo() && !history.canRedo());
    history.add(change(0, 1, Gesture::WheelTurn));
    history.clear();
    history.add(change(1, 2, Gesture::WheelTurn));
    QVERIFY(history.canUndo());
}

void tst_viewhistory::followsAModel()
{
    constexpr unsigned seed = 7;
    constexpr int most = 12;
    std::mt19937_64 engine(seed);
    ViewHistory history(most);
    // All views on the way, the first ones as far as they are kept, and where in them the user is.
    QVector<int> views{0};
    int position = 0;
    int last = 0;
    for (int i = 0; i < 5000; ++i) {
        const int current = views[position];
        const QByteArray where = "step " + QByteArray::number(i);
        switch (std::uniform_int_distribution<int>(0, 3)(engine)) {
        case 0: {
            const int expected = position > 0 ? views[--position] : -1;
            QVERIFY2(number(history.undo(numbered(current))) == expected, where);
            break;
        }
        case 1: {
            const int expected = position + 1 < views.size() ? views[++position] : -1;
            QVERIFY2(number(history.redo(numbered(current))) == expected, where);
            break;
        }
        default:
            history.add(change(current, ++last));
            views.resize(position + 1);
            views.append(last);
            if (views.size() > most + 1)
                views.removeFirst();
            position = views.size() - 1;
        }
        QVERIFY2(history.canUndo() == (position > 0), where);
        QVERIFY2(history.canRedo() == (position + 1 < views.size()), where);
    }
    QVERIFY(last > 1000);
}

PLOT2D_TEST_MAIN(tst_viewhistory)
#include "tst_viewhistory.moc"
