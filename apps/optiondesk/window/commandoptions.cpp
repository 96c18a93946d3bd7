#include "window/commandoptions.h"

#include "window/axismode.h"
#include "window/smilemodels.h"

namespace {

QString enumeration(QStringList names)
{
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

QList<QCommandLineOption> dataOptions()
{
    const auto file = QStringLiteral("file");
    const auto date = QStringLiteral("date");
    return {
        {CommandOptions::chain, QStringLiteral("Import the option chain of a CSV <file> and show it."), file},
        {CommandOptions::forward,
            QStringLiteral("The forward <price> of the series shown; otherwise the file's, otherwise that of "
                           "put-call parity."),
            QStringLiteral("price")},
        {CommandOptions::asOf, QStringLiteral("The <date> of the prices, YYYY-MM-DD or YYYYMMDD."), date},
        {CommandOptions::expiry,
            QStringLiteral(
                "Show the series that expires on this <date>; the expiry of a chain that states none."),
            date},
        {CommandOptions::database,
            QStringLiteral("Keep the chains in this SQLite <file>; otherwise they are forgotten at the end."),
            file}};
}

QList<QCommandLineOption> pictureOptions()
{
    return {{CommandOptions::view, QStringLiteral("What to draw, volatility, value or position."),
                QStringLiteral("view"), QStringLiteral("volatility")},
        {CommandOptions::axis,
            QStringLiteral("What the strikes are shown as, ") + CommandOptions::axisNames()
                + QLatin1Char('.'),
            QStringLiteral("mode"), AxisModes::all().constFirst().name},
        {CommandOptions::smile,
            QStringLiteral("How the smile is fitted, ") + CommandOptions::smileNames() + QLatin1Char('.'),
            QStringLiteral("model"), SmileModels::all().constFirst().key},
        {CommandOptions::picture,
            QStringLiteral("Save a picture of the window in this <file>, in the format of its suffix (PNG "
                           "without one), print its path and quit."),
            QStringLiteral("file")},
        {CommandOptions::exportFile,
            QStringLiteral(
                "Write the plot into this <file>, a picture (png), a drawing (svg), a page (pdf) or "
                "the curves' samples (csv) by its suffix, print its path and quit; also several "
                "times."),
            QStringLiteral("file")},
        {CommandOptions::scale,
            QStringLiteral("How many times larger an exported png is than its size, 1 to 4."),
            QStringLiteral("scale"), QStringLiteral("1")},
        {CommandOptions::size,
            QStringLiteral(
                "The <size> of window, picture or exported plot in pixels, 200x150 to 10000x10000."),
            QStringLiteral("size"), QStringLiteral("1000x640")}};
}

QList<QCommandLineOption> replayOptions()
{
    return {
        {CommandOptions::replay,
            QStringLiteral("Replay the recorded quotes of a CSV <file> (time, instrument, bid, ask, last) "
                           "into the window."),
            QStringLiteral("file")},
        {CommandOptions::speed, QStringLiteral("How fast to replay, 1, 10 or max."), QStringLiteral("speed"),
            QStringLiteral("1")}};
}

QList<QCommandLineOption> settingsOptions()
{
    return {{CommandOptions::settings,
                QStringLiteral("Keep the choices made in the window in this <file> instead of the user's."),
                QStringLiteral("file")},
        {CommandOptions::positions,
            QStringLiteral("Keep the positions in this <file> instead of the user's."),
            QStringLiteral("file")},
        {CommandOptions::noSettings,
            QStringLiteral("Neither use nor keep choices made in the window, nor positions without "
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

QList<QCommandLineOption> CommandOptions::all()
{
    return dataOptions() + pictureOptions() + replayOptions() + settingsOptions();
}
