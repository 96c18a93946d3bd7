#include "window/platform.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QPalette>
#include <QStyle>

#include <qwt_painter.h>

#include <csignal>

#include <unistd.h>

namespace {

const auto offscreen = QStringLiteral("offscreen");
bool displayMissing = false;

// Outside of a session, as in a container, Qt would complain of this in a line of its own.
void nameRuntimeFolder()
{
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR",
            QFile::encodeName(QStringLiteral("%1/runtime-%2").arg(QDir::tempPath()).arg(::geteuid())));
}

// The plot is white, and the colours of the curves are chosen for that. A style of a dark desktop may draw
// dark whatever the palette.
void stayLight()
{
    const QPalette palette = QApplication::palette();
    if (palette.color(QPalette::Window).lightnessF() >= palette.color(QPalette::WindowText).lightnessF())
        return;
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(QApplication::style()->standardPalette());
}

}

void Platform::prepare()
{
    // Where files may not be that large a write shall fail instead of ending the desk.
    std::signal(SIGXFSZ, SIG_IGN);
    nameRuntimeFolder();
    displayMissing = qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    if (displayMissing)
        qputenv("QT_QPA_PLATFORM", offscreen.toLatin1());
    // Whatever the screen's scale is, also a quarter more.
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void Platform::setUp()
{
    stayLight();
    constexpr int usualPointSize = 10;
    if (QApplication::platformName() == offscreen) {
        QFont font = QApplication::font();
        font.setPointSize(usualPointSize);
        QApplication::setFont(font);
    }
    // Samples rounded to pixels would let a curve waver, pieces drawn one by one would begin its dashes anew.
    QwtPainter::setRoundingAlignment(false);
    QwtPainter::setPolylineSplitting(false);
}

bool Platform::isInvisible()
{
    return displayMissing && QApplication::platformName() == offscreen;
}
