#include "replay/quotereplay.h"
#include "replay/replayfile.h"
#include "window/commandline.h"
#include "window/curvechoices.h"
#include "window/deskplot.h"
#include "window/desksettings.h"
#include "window/deskwindow.h"
#include "window/picture.h"
#include "window/platform.h"
#include "window/session.h"
#include "window/sharingstatus.h"
#include "window/texts.h"

#include <chain/chaintables.h>
#include <database/exception.h>
#include <database/settings.h>

#include <QApplication>
#include <QFileInfo>
#include <QStatusBar>

#include <cstdio>
#include <memory>

namespace {

constexpr int success = 0;
constexpr int failedOutput = 1;
constexpr int badInput = 2;

void say(const QString& text)
{
    std::fprintf(stderr, "optiondesk: %s\n", QFile::encodeName(Texts::oneLine(text)).constData());
}

int fail(const QString& reason, int exitCode)
{
    say(reason);
    return exitCode;
}

int savePicture(DeskWindow& window, const CommandLine& options)
{
    try {
        Picture::save(Picture::take(window, options.size), options.pictureFile);
    } catch (const Exception& error) {
        return fail(error.text(), failedOutput);
    }
    std::printf("%s\n", QFile::encodeName(QFileInfo(options.pictureFile).absoluteFilePath()).constData());
    return success;
}

void tellOfUnsent(DeskData& data)
{
    const QString reason = data.close();
    if (!reason.isEmpty())
        say(reason);
}

void tellOfUnknown(const QStringList& names, int quotes)
{
    constexpr int mostNames = 10;
    const QString more = names.size() > mostNames ? QStringLiteral(", ...") : QString();
    say(QStringLiteral("the replay had %1 quotes of %2 unknown instruments: %3")
            .arg(quotes)
            .arg(names.size())
            .arg(names.mid(0, mostNames).join(QStringLiteral(", ")) + more));
}

std::unique_ptr<QuoteReplay> startReplay(
    std::unique_ptr<QuoteStream> quotes, int futureIsinId, std::optional<double> speed, QMainWindow& window)
{
    auto replay = std::make_unique<QuoteReplay>(
        ChainTables::find().securities, std::move(quotes), futureIsinId, speed);
    QObject::connect(replay.get(), &QuoteReplay::unknownInstruments, tellOfUnknown);
    QObject::connect(replay.get(), &QuoteReplay::failed, &window, [&window](const QString& reason) {
        const QString text = QStringLiteral("the replay has ended: ") + reason;
        say(text);
        window.statusBar()->showMessage(Texts::oneLine(text));
    });
    replay->start();
    return replay;
}

// A null pointer where the user wants no settings.
std::unique_ptr<DeskSettings> openSettings(const CommandLine& options)
{
    if (!options.usesSettings)
        return nullptr;
    auto settings = std::make_unique<DeskSettings>(
        options.settingsFile.isEmpty() ? DeskSettings::userFileName() : options.settingsFile);
    if (!settings->problem().isEmpty())
        say(settings->problem());
    return settings;
}

int run(const CommandLine& options)
{
    std::unique_ptr<QuoteStream> quotes;
    if (!options.replayFile.isEmpty())
        quotes = std::make_unique<ReplayFile>(options.replayFile);
    const Session session = openSession(options);
    const std::unique_ptr<DeskSettings> settings = openSettings(options);
    DeskWindow window(*session.data, options.view);
    if (settings)
        window.plot()->choices().setSettings(settings->host());
    window.setAxisMode(options.axisMode);
    window.showSeries(session.futureIsinId, session.given);
    const QString notice = Texts::notice(*window.shownSeries());
    if (!notice.isEmpty())
        say(notice);
    if (!options.pictureFile.isEmpty()) {
        const int exitCode = savePicture(window, options);
        tellOfUnsent(*session.data);
        return exitCode;
    }
    if (SharedStorage* const shared = session.data->shared())
        window.statusBar()->addPermanentWidget(new SharingStatus(*shared, &window));
    window.resize(options.size);
    window.show();
    std::unique_ptr<QuoteReplay> replay;
    if (quotes)
        replay = startReplay(std::move(quotes), session.futureIsinId, options.replaySpeed, window);
    const int exitCode = QApplication::exec();
    tellOfUnsent(*session.data);
    if (settings && !settings->save())
        say(QStringLiteral("%1: the settings could not be written").arg(settings->host()->fileName()));
    return exitCode;
}

}

int main(int argc, char** argv)
{
    Platform::prepare();
    QApplication application(argc, argv);
    Platform::setUp();
    QApplication::setApplicationName(QStringLiteral("optiondesk"));
    QApplication::setApplicationDisplayName(QStringLiteral("Option desk"));
    QApplication::setApplicationVersion(QStringLiteral(OPTIONDESK_VERSION));

    const ParsedCommandLine commandLine = parseCommandLine(QCoreApplication::arguments());
    if (commandLine.action == ParsedCommandLine::Action::PrintText) {
        std::fputs(qPrintable(commandLine.text), stdout);
        return success;
    }
    if (commandLine.action == ParsedCommandLine::Action::Fail)
        return fail(commandLine.text, badInput);
    if (Platform::isInvisible() && commandLine.options.pictureFile.isEmpty())
        return fail(
            QStringLiteral("there is no display; --picture draws the window into a file"), failedOutput);
    try {
        return run(commandLine.options);
    } catch (const Exception& error) {
        return fail(error.text(), badInput);
    }
}
