#include "window/platform.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QPalette>
#include <QScreen>
#include <QStyle>
#include <QVector>

#include <qwt_painter.h>

#include <algorithm>
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

// A screen of 96 points an inch, the usual ones, may say 95.9 or, without a desktop, 100: what is drawn at
// such a factor is blurred and not any larger.
constexpr double smallestScaledFactor = 1.1;

// Only an application knows its screens, and may not change its mind once it does.
double largestFactor(int argc, char** argv)
{
    constexpr double usualDotsPerInch = 96.0;
    QVector<char*> arguments(argv, argv + argc);
    arguments.append(nullptr);
    const QGuiApplication probe(argc, arguments.data());
    double factor = 1.0;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* const screen : screens)
        factor = std::max(factor, screen->logicalDotsPerInch() / usualDotsPerInch);
    return factor;
}

// Files are the same whatever display there is, and need none. What is no option all the same, as the value
// of another one, costs no more than that.
bool namesFiles(int argc, char** argv)
{
    return std::any_of(argv, argv + argc, [](const char* argument) {
        const QByteArray text(argument);
        return text.startsWith("--picture") || text.startsWith("--export");
    });
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

void Platform::prepare(int argc, char** argv)
{
    // Where files may not be that large a write shall fail instead of ending the desk.
    std::signal(SIGXFSZ, SIG_IGN);
    nameRuntimeFolder();
    displayMissing = qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    const bool writesFilesOnly = qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && namesFiles(argc, argv);
    if (displayMissing || writesFilesOnly)
        qputenv("QT_QPA_PLATFORM", offscreen.toLatin1());
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    if (!displayMissing && !writesFilesOnly && largestFactor(argc, argv) >= smallestScaledFactor)
        QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
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
