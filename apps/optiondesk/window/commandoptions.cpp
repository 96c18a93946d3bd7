#include "window/commandoptions.h"

#include "window/axismode.h"
#include "window/desktexts.h"
#include "window/smilemodels.h"

#include <translations/language.h>

namespace {

QString enumeration(QStringList names)
{
    const QString last = names.takeLast();
    return DeskTexts::tr("%1 or %2").arg(names.join(QStringLiteral(", ")), last);
}

QList<QCommandLineOption> dataOptions()
{
    const auto file = QStringLiteral("file");
    const auto date = QStringLiteral("date");
    return {
        {CommandOptions::chain, DeskTexts::tr("Import the option chain of a CSV <file> and show it."), file},
        {CommandOptions::forward,
            DeskTexts::tr("The forward <price> of the series shown; otherwise the file's, otherwise that of "
                          "put-call parity."),
            QStringLiteral("price")},
        {CommandOptions::asOf, DeskTexts::tr("The <date> of the prices, YYYY-MM-DD or YYYYMMDD."), date},
        {CommandOptions::expiry,
            DeskTexts::tr(
                "Show the series that expires on this <date>; the expiry of a chain that states none."),
            date},
        {CommandOptions::database,
            DeskTexts::tr(
                "Keep the chains in this SQLite <file>, or share them with other desks in a PostgreSQL "
                "database, postgresql://user@host:port/name; otherwise the files they came from are read "
                "again at the next start."),
            file}};
}

QList<QCommandLineOption> pictureOptions()
{
    return {{CommandOptions::view, DeskTexts::tr("What to draw, volatility, value or position."),
                QStringLiteral("view"), QStringLiteral("volatility")},
        {CommandOptions::axis,
            DeskTexts::tr("What the strikes are shown as, %1.").arg(CommandOptions::axisNames()),
            QStringLiteral("mode"), AxisModes::all().constFirst().name},
        {CommandOptions::smile,
            DeskTexts::tr("How the smile is fitted, %1.").arg(CommandOptions::smileNames()),
            QStringLiteral("model"), SmileModels::all().constFirst().key},
        {CommandOptions::picture,
            DeskTexts::tr("Save a picture of the window in this <file>, in the format of its suffix (PNG "
                          "without one), print its path and quit."),
            QStringLiteral("file")},
        {CommandOptions::exportFile,
            DeskTexts::tr(
                "Write the plot into this <file>, a picture (png), a drawing (svg), a page (pdf) or "
                "the curves' samples (csv) by its suffix, print its path and quit; also several "
                "times."),
            QStringLiteral("file")},
        {CommandOptions::scale,
            DeskTexts::tr("How many times larger an exported png is than its size, 1 to 4."),
            QStringLiteral("scale"), QStringLiteral("1")},
        {CommandOptions::size,
            DeskTexts::tr(
                "The <size> of window, picture or exported plot in pixels, 200x150 to 10000x10000."),
            QStringLiteral("size"), QStringLiteral("1000x640")}};
}

QList<QCommandLineOption> replayOptions()
{
    return {{CommandOptions::replay,
                DeskTexts::tr("Replay the recorded quotes of a CSV <file> (time, instrument, bid, ask, last) "
                              "into the window."),
                QStringLiteral("file")},
        {CommandOptions::speed, DeskTexts::tr("How fast to replay, 1, 10 or max."), QStringLiteral("speed"),
            QStringLiteral("1")}};
}

QList<QCommandLineOption> settingsOptions()
{
    return {{CommandOptions::language,
                DeskTexts::tr("The language of the window, %1; otherwise that of the locale.")
                    .arg(CommandOptions::languageNames()),
                QStringLiteral("code")},
        {CommandOptions::settings,
            DeskTexts::tr("Keep the choices made in the window in this <file> instead of the user's."),
            QStringLiteral("file")},
        {CommandOptions::positions, DeskTexts::tr("Keep the positions in this <file> instead of the user's."),
            QStringLiteral("file")},
        {CommandOptions::noSettings,
            DeskTexts::tr("Neither use nor keep choices made in the window, nor positions without "
                          "--positions.")}};
}

}

QString CommandOptions::axisNames()
{
    QStringList names;
    for (const AxisModes::Description& mode : AxisModes::all())
        names << mode.name;
    return enumeration(names);
}

QString CommandOptions::smileNames()
{
    QStringList names;
    for (const SmileModels::Description& model : SmileModels::all())
        names << model.key;
    return enumeration(names);
}

QString CommandOptions::languageNames()
{
    return enumeration(Language::codes());
}

QList<QCommandLineOption> CommandOptions::all()
{
    return dataOptions() + pictureOptions() + replayOptions() + settingsOptions();
}
