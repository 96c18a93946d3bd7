#include "support/testmain.h"

#include <window/platform.h>

#include <QPalette>
#include <QStyle>

/// What the desk does about the platform.
class tst_platform : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void staysLightUnderADarkDesktop();
    void leavesALightDesktop();
};

void tst_platform::staysLightUnderADarkDesktop()
{
    QPalette dark(QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    QVERIFY(QApplication::palette().color(QPalette::Window).lightnessF() < 0.5);
    Platform::setUp();
    const QPalette palette = QApplication::palette();
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base, QPalette::Button})
        QVERIFY2(palette.color(role).lightnessF() > 0.8, qPrintable(palette.color(role).name()));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        QVERIFY2(palette.color(role).lightnessF() < 0.3, qPrintable(palette.color(role).name()));
    QCOMPARE(QApplication::palette("QMenu").color(QPalette::Window), palette.color(QPalette::Window));
}

void tst_platform::leavesALightDesktop()
{
    QPalette light(QColor(250, 240, 220));
    QApplication::setPalette(light);
    Platform::setUp();
    QCOMPARE(QApplication::palette().color(QPalette::Window), light.color(QPalette::Window));
}

PLOT2D_TEST_MAIN(tst_platform)
#include "tst_platform.moc"
