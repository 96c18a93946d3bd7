#include "window/commandline.h"

#include "window/picture.h"

#include <database/exception.h>
#include <database/postgresaddress.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>

namespace {

// The host keeps prices with five decimals.
constexpr double lowestForward = 1e-5;
constexpr double highestForward = 1e9;

constexpr QSize smallestSize(200, 150);
constexpr QSize largestSize(10000, 10000);

const auto chainOption = QStringLiteral("chain");
const auto forwardOption = QStringLiteral("forward");
const auto asOfOption = QStringLiteral("asof");
const auto expiryOption = QStringLiteral("expiry");
const auto viewOption = QStringLiteral("view");
const auto axisOption = QStringLiteral("axis");
const auto databaseOption = QStringLiteral("database");
const auto pictureOption = QStringLiteral("picture");
const auto sizeOption = QStringLiteral("size");
const auto replayOption = QStringLiteral("replay");
const auto speedOption = QStringLiteral("speed");
const auto settingsOption = QStringLiteral("settings");
const auto noSettingsOption = QStringLiteral("no-settings");

Exception invalid(const QString& option, const QString& value, const QString& wanted)
{
    return Exception(QStringLiteral("--%1 \"%2\": %3").arg(option, value, wanted));
}

QString axisNames()
{
    QStringList names;
    for (const AxisModes::Description& mode : AxisModes::all())
        names << mode.name;
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

QList<QCommandLineOption> dataOptions()
{
    const auto file = QStringLiteral("file");
    const auto date = QStringLiteral("date");
    return {{chainOption, QStringLiteral("Import the option chain of a CSV <file> and show it."), file},
        {forwardOption,
            QStringLiteral("The forward <price> of the series shown; otherwise the file's, otherwise that of "
                           "put-call parity."),
            QStringLiteral("price")},
        {asOfOption, QStringLiteral("The <date> of the prices, YYYY-MM-DD or YYYYMMDD."), date},
        {expiryOption,
            QStringLiteral(
                "Show the series that expires on this <date>; the expiry of a chain that states none."),
            date},
        {databaseOption,
            QStringLiteral(
                "Keep the chains in this SQLite <file>, or share them with other desks in a PostgreSQL "
                "database, postgresql://user@host:port/name; otherwise they are forgotten at the end."),
            file}};
}

QList<QCommandLineOption> pictureOptions()
{
    return {{viewOption, QStringLiteral("What to draw, volatility or value."), QStringLiteral("view"),
                QStringLiteral("volatility")},
        {axisOption, QStringLiteral("What the strikes are shown as, ") + axisNames() + QLatin1Char('.'),
            QStringLiteral("mode"), AxisModes::all().constFirst().name},
        {pictureOption,
            QStringLiteral("Save a picture of the window in this <file>, in the format of its suffix (PNG "
                           "without one), print its path and quit."),
            QStringLiteral("file")},
        {sizeOption, QStringLiteral("The <size> of window or picture in pixels, 200x150 to 10000x10000."),
            QStringLiteral("size"), QStringLiteral("1000x640")}};
}

QList<QCommandLineOption> replayOptions()
{
    return {
        {replayOption,
            QStringLiteral("Replay the recorded quotes of a CSV <file> (time, instrument, bid, ask, last) "
                           "into the window."),
            QStringLiteral("file")},
        {speedOption, QStringLiteral("How fast to replay, 1, 10 or max."), QStringLiteral("speed"),
            QStringLiteral("1")}};
}

QList<QCommandLineOption> settingsOptions()
{
    return {{settingsOption,
                QStringLiteral("Keep the choices made in the window in this <file> instead of the user's."),
                QStringLiteral("file")},
        {noSettingsOption, QStringLiteral("Neither use nor keep choices made in the window.")}};
}

QString fileName(const QCommandLineParser& parser, const QString& option)
{
    QString name = parser.value(option);
    if (parser.isSet(option) && name.isEmpty())
        throw invalid(option, name, QStringLiteral("a file name is needed"));
    return name;
}

std::optional<double> forward(const QCommandLineParser& parser)
{
    if (!parser.isSet(forwardOption))
        return std::nullopt;
    const QString text = parser.value(forwardOption);
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !(value >= lowestForward && value <= highestForward))
        throw invalid(forwardOption, text, QStringLiteral("a price from 0.00001 to 1e9 is needed"));
    return value;
}

QDate date(const QCommandLineParser& parser, const QString& option)
{
    if (!parser.isSet(option))
        return QDate();
    const QDate value = dateFromOption(parser.value(option));
    if (!value.isValid())
        throw invalid(option, parser.value(option),
            QStringLiteral("a date of the calendar is needed, YYYY-MM-DD or YYYYMMDD"));
    return value;
}

DeskView view(const QCommandLineParser& parser)
{
    const QString text = parser.value(viewOption);
    if (text == QLatin1String("volatility"))
        return DeskView::Volatility;
    if (text == QLatin1String("value"))
        return DeskView::Value;
    throw invalid(viewOption, text, QStringLiteral("volatility or value is needed"));
}

AxisMode axisMode(const QCommandLineParser& parser)
{
    const QString text = parser.value(axisOption);
    if (const std::optional<AxisMode> mode = AxisModes::fromName(text))
        return *mode;
    throw invalid(axisOption, text, axisNames() + QStringLiteral(" is needed"));
}

QString pictureFile(const QCommandLineParser& parser)
{
    QString name = fileName(parser, pictureOption);
    if (!name.isEmpty() && Picture::formatOf(name).isEmpty())
        throw invalid(pictureOption, name,
            QStringLiteral("the suffix is none of ") + Picture::suffixes().join(QStringLiteral(", ")));
    return name;
}

QSize size(const QCommandLineParser& parser)
{
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{1,5})x([0-9]{1,5})\\z"));
    const QString text = parser.value(sizeOption);
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize value(match.captured(1).toInt(), match.captured(2).toInt());
    if (!match.hasMatch() || value.boundedTo(largestSize).expandedTo(smallestSize) != value)
        throw invalid(
            sizeOption, text, QStringLiteral("a size from 200x150 to 10000x10000 is needed, as 1000x640"));
    return value;
}

QString replayFile(const QCommandLineParser& parser)
{
    QString name = fileName(parser, replayOption);
    if (!name.isEmpty() && parser.isSet(pictureOption))
        throw invalid(
            replayOption, name, QStringLiteral("a window is needed, not a picture as of --picture"));
    return name;
}

std::optional<double> replaySpeed(const QCommandLineParser& parser)
{
    const QString text = parser.value(speedOption);
    if (parser.isSet(speedOption) && !parser.isSet(replayOption))
        throw invalid(speedOption, text, QStringLiteral("a recording to --replay is needed"));
    if (text == QLatin1String("max"))
        return std::nullopt;
    if (text == QLatin1String("1") || text == QLatin1String("10"))
        return text.toDouble();
    throw invalid(speedOption, text, QStringLiteral("1, 10 or max is needed"));
}

QString settingsFile(const QCommandLineParser& parser)
{
    QString name = fileName(parser, settingsOption);
    if (!name.isEmpty() && parser.isSet(noSettingsOption))
        throw invalid(settingsOption, name, QStringLiteral("contradicts --") + noSettingsOption);
    return name;
}

QString database(const QCommandLineParser& parser)
{
    QString name = fileName(parser, databaseOption);
    // An address that is not valid is refused before anything else is done.
    if (PostgresAddress::isAddress(name))
        PostgresAddress{name};
    return name;
}

CommandLine options(const QCommandLineParser& parser)
{
    const QStringList surplus = parser.positionalArguments();
    if (!surplus.isEmpty())
        throw Exception(QStringLiteral("unexpected argument \"%1\"").arg(surplus.first()));

    CommandLine result;
    result.chainFile = fileName(parser, chainOption);
    result.forward = forward(parser);
    result.asOf = date(parser, asOfOption);
    result.expiry = date(parser, expiryOption);
    if (result.asOf.isValid() && result.expiry.isValid() && result.expiry <= result.asOf)
        throw invalid(expiryOption, parser.value(expiryOption),
            QStringLiteral("a date after that of --asof is needed"));
    result.view = view(parser);
    result.axisMode = axisMode(parser);
    result.database = database(parser);
    result.pictureFile = pictureFile(parser);
    result.replayFile = replayFile(parser);
    result.replaySpeed = replaySpeed(parser);
    result.settingsFile = settingsFile(parser);
    result.usesSettings = !parser.isSet(noSettingsOption);
    result.size = size(parser);
    return result;
}

}

QDate dateFromOption(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{4})(-?)([0-9]{2})\\g2([0-9]{2})\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return QDate();
    return QDate(match.captured(1).toInt(), match.captured(3).toInt(), match.captured(4).toInt());
}

ParsedCommandLine parseCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws the volatility smile of an option chain."));
    parser.addOptions(dataOptions());
    parser.addOptions(pictureOptions());
    parser.addOptions(replayOptions());
    parser.addOptions(settingsOptions());
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();

    if (!parser.parse(arguments))
        return {ParsedCommandLine::Action::Fail, CommandLine(), parser.errorText()};
    if (parser.isSet(help))
        return {ParsedCommandLine::Action::PrintText, CommandLine(), parser.helpText()};
    if (parser.isSet(version))
        return {ParsedCommandLine::Action::PrintText, CommandLine(),
            QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion()
                + QLatin1Char('\n')};
    try {
        return {ParsedCommandLine::Action::Run, options(parser), QString()};
    } catch (const Exception& error) {
        return {ParsedCommandLine::Action::Fail, CommandLine(), error.text()};
    }
}
