#include "desktest.h"
#include "support/testmain.h"

#include <window/windowplace.h>

#include <QScreen>
#include <QWidget>

/// The place of a window on the screen, and places that are on none.
class tst_windowplace : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comesBack_data();
    void comesBack();
    void boundsTheSize_data();
    void boundsTheSize();
    void movesOnlyOntoAScreen_data();
    void movesOnlyOntoAScreen();
    void ignoresOtherTexts_data();
    void ignoresOtherTexts();
};

void tst_windowplace::comesBack_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("name");
    QTest::newRow("normal") << int(Qt::WindowNoState) << "normal";
    QTest::newRow("maximized") << int(Qt::WindowMaximized) << "maximized";
}

void tst_windowplace::comesBack()
{
    QFETCH(int, state);
    QWidget window;
    window.resize(310, 220);
    window.move(70, 50);
    window.show();
    const QStringList normal = WindowPlace::toTexts(window);
    window.setWindowState(Qt::WindowStates(state));
    QCoreApplication::processEvents();
    const QStringList texts = WindowPlace::toTexts(window);
    QTEST(texts.value(4), "name");
    QCOMPARE(texts.mid(0, 4), normal.mid(0, 4));

    QWidget again;
    WindowPlace::restore(again, texts);
    QCOMPARE(int(again.windowState()), state);
    QCOMPARE(
        again.normalGeometry().isValid() ? again.normalGeometry().size() : again.size(), QSize(310, 220));
    again.setWindowState(Qt::WindowNoState);
    again.show();
    QCOMPARE(again.pos(), QPoint(70, 50));
    QCOMPARE(again.size(), QSize(310, 220));
}

void tst_windowplace::boundsTheSize_data()
{
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QSize>("size");
    const QSize all = QGuiApplication::primaryScreen()->availableVirtualSize();
    QTest::newRow("fits") << "400"
                          << "300" << QSize(400, 300);
    QTest::newRow("largest number") << "2147483647"
                                    << "2147483647" << all;
    QTest::newRow("wide") << "100000"
                          << "300" << QSize(all.width(), 300);
    QTest::newRow("negative") << "-5"
                              << "0" << QSize(200, 150);
}

void tst_windowplace::boundsTheSize()
{
    QFETCH(QString, width);
    QFETCH(QString, height);
    QWidget window;
    WindowPlace::restore(window, {"10", "10", width, height, "normal"});
    QTEST(window.size(), "size");
}

void tst_windowplace::movesOnlyOntoAScreen_data()
{
    QTest::addColumn<QString>("x");
    QTest::addColumn<QString>("y");
    QTest::addColumn<bool>("moves");
    QTest::newRow("inside") << "40"
                            << "60" << true;
    QTest::newRow("a little to the left") << "-100"
                                          << "60" << true;
    QTest::newRow("a screen to the right that is gone") << "5000"
                                                        << "60" << false;
    QTest::newRow("all but a corner") << "-390"
                                      << "60" << false;
    QTest::newRow("title above the screen") << "40"
                                            << "-200" << false;
    QTest::newRow("below") << "40"
                           << "100000" << false;
    QTest::newRow("smallest number") << "-2147483648"
                                     << "-2147483648" << false;
    QTest::newRow("largest number") << "2147483647"
                                    << "2147483647" << false;
}

void tst_windowplace::movesOnlyOntoAScreen()
{
    QFETCH(QString, x);
    QFETCH(QString, y);
    QFETCH(bool, moves);
    QWidget window;
    const QPoint before = window.pos();
    WindowPlace::restore(window, {x, y, "400", "300", "normal"});
    QCOMPARE(window.size(), QSize(400, 300));
    QCOMPARE(window.pos(), moves ? QPoint(x.toInt(), y.toInt()) : before);
}

void tst_windowplace::ignoresOtherTexts_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList{"5"};
    QTest::newRow("no numbers") << QStringList{"1", "2", "wide", "high", "normal"};
    QTest::newRow("beyond numbers") << QStringList{"1", "2", "3000000000", "300", "normal"};
    QTest::newRow("fractions") << QStringList{"1.5", "2", "300", "300", "normal"};
    QTest::newRow("one more") << QStringList{"1", "2", "300", "300", "normal", "more"};
}

void tst_windowplace::ignoresOtherTexts()
{
    QFETCH(QStringList, texts);
    QWidget window;
    window.resize(333, 222);
    WindowPlace::restore(window, texts);
    QCOMPARE(window.size(), QSize(333, 222));
}

PLOT2D_TEST_MAIN(tst_windowplace)
#include "tst_windowplace.moc"
