#include "output/picture.h"
#include "output/plotexport.h"
#include "quotes/quotesdock.h"
#include "replay/quotereplay.h"
#include "replay/replayfile.h"
#include "seriestree/seriesdock.h"
#include "window/chainfiles.h"
#include "window/commandline.h"
#include "window/curvechoices.h"
#include "window/curvelook.h"
#include "window/deskplot.h"
#include "window/desksession.h"
#include "window/desksettings.h"
#include "window/desktexts.h"
#include "window/deskwindow.h"
#include "window/importactions.h"
#include "window/platform.h"
#include "window/positiondesk.h"
#include "window/session.h"
#include "window/sharingstatus.h"
#include "window/texts.h"
#include "window/windowsession.h"

#include <chain/chaintables.h>
#include <database/exception.h>
#include <database/settings.h>
#include <translations/language.h>

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
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

void printPath(const QString& fileName)
{
    std::printf("%s\n", QFile::encodeName(QFileInfo(fileName).absoluteFilePath()).constData());
}

void exportPlot(DeskWindow& window, const CommandLine& options, const QString& fileName)
{
    const ExportOptions how{options.size, options.exportScale, window.plot()->priceTitle(), &CurveLook::key};
    PlotExport::save(*window.plot(), *PlotExport::formatOf(fileName), how, fileName);
    printPath(fileName);
}

int writeFiles(DeskWindow& window, const CommandLine& options)
{
    try {
        if (!options.pictureFile.isEmpty()) {
            Picture::save(Picture::take(window, options.size), options.pictureFile);
            printPath(options.pictureFile);
        }
        for (const QString& fileName : options.exportFiles)
            exportPlot(window, options, fileName);
    } catch (const Exception& error) {
        return fail(error.text(), failedOutput);
    }
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
    say(DeskTexts::tr("the replay had %1 quotes of %2 unknown instruments: %3")
            .arg(quotes)
            .arg(names.size())
            .arg(names.mid(0, mostNames).join(QStringLiteral(", ")) + more));
}

std::unique_ptr<QuoteReplay> startReplay(
    std::unique_ptr<QuoteStream> quotes, int futureIsinId, std::optional<double> speed, DeskWindow& window)
{
    auto replay = std::make_unique<QuoteReplay>(
        ChainTables::find().securities, std::move(quotes), futureIsinId, speed);
    QObject::connect(replay.get(), &QuoteReplay::unknownInstruments, tellOfUnknown);
    QObject::connect(replay.get(), &QuoteReplay::failed, &window, [&window](const QString& reason) {
        const QString text = DeskTexts::tr("the replay has ended: %1").arg(reason);
        say(text);
        window.say(text);
    });
    replay->start();
    return replay;
}

// A null pointer where the user wants no settings.
std::unique_ptr<DeskSettings> openSettings(const CommandLine& options)
{
    if (!options.usesSettings)
        return nullptr;
    // A run that shows no window changes nothing.
    return std::make_unique<DeskSettings>(
        options.settingsFile.isEmpty() ? DeskSettings::userFileName() : options.settingsFile,
        asksForFiles(options) ? DeskSettings::Broken::Leave : DeskSettings::Broken::SetAside);
}

// What is wrong with the file of the positions; empty where all is well.
QString openPositions(const CommandLine& options, PositionDesk& position)
{
    QString file = options.positionsFile;
    if (file.isEmpty() && options.usesSettings)
        file = Position::PositionFile::userFileName();
    return file.isEmpty() ? QString() : position.setFile(file);
}

void keepSession(DeskSession& kept, DeskWindow& window, const DeskData& data, SeriesDock& seriesDock,
    ChainFiles& chainFiles, const CommandLine& options)
{
    WindowSession::keep(kept, window, data, options);
    kept.keep(
        QStringLiteral("expiriesNotBeside"), [&seriesDock] { return seriesDock.unchecked(); },
        [&seriesDock](const QVariant& value) { seriesDock.setUnchecked(value.toStringList()); });
    // They are read before there is a window. A database has its chains without them.
    if (options.database.isEmpty())
        kept.keep(
            ChainFiles::key(), [&chainFiles] { return chainFiles.names(); }, [](const QVariant&) {});
}

// The window's part of a run that has one.
int showWindow(DeskWindow& window, const Session& session, std::unique_ptr<QuoteStream> quotes,
    const CommandLine& options, const QStringList& problems)
{
    if (SharedStorage* const shared = session.data->shared())
        window.statusBar()->addPermanentWidget(new SharingStatus(*shared, &window));
    window.show();
    window.say(problems.join(QStringLiteral(" \u00b7 ")));
    std::unique_ptr<QuoteReplay> replay;
    if (quotes)
        replay = startReplay(std::move(quotes), window.futureIsinId(), options.replaySpeed, window);
    return QApplication::exec();
}

int run(const CommandLine& options)
{
    std::unique_ptr<QuoteStream> quotes;
    if (!options.replayFile.isEmpty())
        quotes = std::make_unique<ReplayFile>(options.replayFile);
    const std::unique_ptr<DeskSettings> settings = openSettings(options);
    const Session session
        = openSession(options, ChainFiles::ofLastSession(settings ? settings->host() : nullptr));
    QStringList problems = session.problems;
    if (settings)
        problems.prepend(settings->problem());
    DeskWindow window(*session.data, options.view);
    if (settings)
        window.plot()->choices().setSettings(settings->host());
    problems.append(openPositions(options, *window.position()));
    window.setAxisMode(options.axisMode);
    // The window's, like all its parts.
    auto* const seriesDock = new SeriesDock(&window);
    new QuotesDock(&window);
    window.setSmileModel(options.smileModel);
    window.showSeries(session.futureIsinId, session.given);
    window.resize(options.size);
    ChainFiles chainFiles(session.chainFiles);
    QObject::connect(
        window.imports()->importer(), SIGNAL(imported(QString)), &chainFiles, SLOT(add(QString)));
    DeskSession kept(settings ? settings->host() : nullptr);
    keepSession(kept, window, *session.data, *seriesDock, chainFiles, options);
    kept.restore(WindowSession::statedBy(options));
    problems.removeAll(QString());
    for (const QString& problem : qAsConst(problems))
        say(problem);
    const QString notice = Texts::notice(*window.shownSeries());
    if (!notice.isEmpty())
        say(notice);
    if (asksForFiles(options)) {
        seriesDock->finish();
        const int exitCode = writeFiles(window, options);
        tellOfUnsent(*session.data);
        return exitCode;
    }
    kept.watch(&window);
    const int exitCode = showWindow(window, session, std::move(quotes), options, problems);
    tellOfUnsent(*session.data);
    if (settings && !settings->save())
        say(DeskTexts::tr("%1: the settings could not be written").arg(settings->host()->fileName()));
    return exitCode;
}

}

int main(int argc, char** argv)
{
    Platform::prepare(argc, argv);
    QApplication application(argc, argv);
    Language::use(languageFor(QCoreApplication::arguments()));
    Platform::setUp();
    QApplication::setApplicationName(QStringLiteral("optiondesk"));
    QApplication::setApplicationDisplayName(DeskTexts::tr("Option desk"));
    QApplication::setDesktopFileName(QStringLiteral("optiondesk"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/desktop/optiondesk.svg")));
    QApplication::setApplicationVersion(QStringLiteral(OPTIONDESK_VERSION));

    const ParsedCommandLine commandLine = parseCommandLine(QCoreApplication::arguments());
    if (commandLine.action == ParsedCommandLine::Action::PrintText) {
        std::fputs(qPrintable(commandLine.text), stdout);
        return success;
    }
    if (commandLine.action == ParsedCommandLine::Action::Fail)
        return fail(commandLine.text, badInput);
    if (Platform::isInvisible() && !asksForFiles(commandLine.options))
        return fail(DeskTexts::tr("there is no display; --picture and --export write files without one"),
            failedOutput);
    try {
        return run(commandLine.options);
    } catch (const Exception& error) {
        return fail(error.text(), badInput);
    }
}
