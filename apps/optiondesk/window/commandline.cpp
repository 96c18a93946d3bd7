#include "window/commandline.h"

#include "output/picture.h"
#include "output/plotexport.h"
#include "window/commandoptions.h"
#include "window/desktexts.h"

#include <database/exception.h>
#include <database/postgresaddress.h>
#include <translations/language.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>

namespace {

// The host keeps prices with five decimals.
constexpr double lowestForward = 1e-5;
constexpr double highestForward = 1e9;

constexpr QSize smallestSize(200, 150);
constexpr QSize largestSize(10000, 10000);

Exception invalid(const QString& option, const QString& value, const QString& wanted)
{
    return Exception(QStringLiteral("--%1 \"%2\": %3").arg(option, value, wanted));
}

Exception unexpected(const QString& argument)
{
    return Exception(DeskTexts::tr("unexpected argument \"%1\"").arg(argument));
}

QString fileName(const QCommandLineParser& parser, const QString& option)
{
    QString name = parser.value(option);
    if (parser.isSet(option) && name.isEmpty())
        throw invalid(option, name, DeskTexts::tr("a file name is needed"));
    return name;
}

// An argument that is no option's is a chain's file, as file managers give it.
QString chainFile(const QCommandLineParser& parser)
{
    QStringList arguments = parser.positionalArguments();
    if (!parser.isSet(CommandOptions::chain) && !arguments.isEmpty() && !arguments.constFirst().isEmpty())
        return arguments.size() == 1 ? arguments.constFirst() : throw unexpected(arguments.at(1));
    if (!arguments.isEmpty())
        throw unexpected(arguments.constFirst());
    return fileName(parser, CommandOptions::chain);
}

std::optional<double> forward(const QCommandLineParser& parser)
{
    if (!parser.isSet(CommandOptions::forward))
        return std::nullopt;
    const QString text = parser.value(CommandOptions::forward);
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !(value >= lowestForward && value <= highestForward))
        throw invalid(CommandOptions::forward, text, DeskTexts::tr("a price from 0.00001 to 1e9 is needed"));
    return value;
}

QDate date(const QCommandLineParser& parser, const QString& option)
{
    if (!parser.isSet(option))
        return QDate();
    const QDate value = dateFromOption(parser.value(option));
    if (!value.isValid())
        throw invalid(option, parser.value(option),
            DeskTexts::tr("a date of the calendar is needed, YYYY-MM-DD or YYYYMMDD"));
    return value;
}

DeskView view(const QCommandLineParser& parser)
{
    const QString text = parser.value(CommandOptions::view);
    if (const std::optional<DeskView> named = viewFromName(text))
        return *named;
    throw invalid(CommandOptions::view, text, DeskTexts::tr("volatility, value or position is needed"));
}

AxisMode axisMode(const QCommandLineParser& parser)
{
    const QString text = parser.value(CommandOptions::axis);
    if (const std::optional<AxisMode> mode = AxisModes::fromName(text))
        return *mode;
    throw invalid(CommandOptions::axis, text, DeskTexts::tr("%1 is needed").arg(CommandOptions::axisNames()));
}

Pricing::SmileModel smileModel(const QCommandLineParser& parser)
{
    const QString text = parser.value(CommandOptions::smile);
    if (const std::optional<Pricing::SmileModel> model = SmileModels::fromKey(text))
        return *model;
    throw invalid(
        CommandOptions::smile, text, DeskTexts::tr("%1 is needed").arg(CommandOptions::smileNames()));
}

QString pictureFile(const QCommandLineParser& parser)
{
    QString name = fileName(parser, CommandOptions::picture);
    if (!name.isEmpty() && Picture::formatOf(name).isEmpty())
        throw invalid(CommandOptions::picture, name,
            DeskTexts::tr("the suffix is none of %1").arg(Picture::suffixes().join(QStringLiteral(", "))));
    return name;
}

QStringList exportFiles(const QCommandLineParser& parser)
{
    QStringList names = parser.values(CommandOptions::exportFile);
    for (const QString& name : qAsConst(names)) {
        if (!PlotExport::formatOf(name))
            throw invalid(CommandOptions::exportFile, name,
                DeskTexts::tr("the suffix is none of %1")
                    .arg(PlotExport::suffixes().join(QStringLiteral(", "))));
    }
    return names;
}

int exportScale(const QCommandLineParser& parser)
{
    const QString text = parser.value(CommandOptions::scale);
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < PlotExport::smallestScale || value > PlotExport::largestScale)
        throw invalid(CommandOptions::scale, text, DeskTexts::tr("a whole number from 1 to 4 is needed"));
    if (parser.isSet(CommandOptions::scale) && !parser.isSet(CommandOptions::exportFile))
        throw invalid(CommandOptions::scale, text, DeskTexts::tr("a file to --export is needed"));
    return value;
}

QSize size(const QCommandLineParser& parser)
{
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{1,5})x([0-9]{1,5})\\z"));
    const QString text = parser.value(CommandOptions::size);
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize value(match.captured(1).toInt(), match.captured(2).toInt());
    if (!match.hasMatch() || value.boundedTo(largestSize).expandedTo(smallestSize) != value)
        throw invalid(CommandOptions::size, text,
            DeskTexts::tr("a size from 200x150 to 10000x10000 is needed, as 1000x640"));
    return value;
}

QString replayFile(const QCommandLineParser& parser)
{
    QString name = fileName(parser, CommandOptions::replay);
    for (const QString& output : {CommandOptions::picture, CommandOptions::exportFile}) {
        if (!name.isEmpty() && parser.isSet(output))
            throw invalid(CommandOptions::replay, name,
                DeskTexts::tr("a window is needed, no file as of --%1").arg(output));
    }
    return name;
}

std::optional<double> replaySpeed(const QCommandLineParser& parser)
{
    const QString text = parser.value(CommandOptions::speed);
    if (parser.isSet(CommandOptions::speed) && !parser.isSet(CommandOptions::replay))
        throw invalid(CommandOptions::speed, text, DeskTexts::tr("a recording to --replay is needed"));
    if (text == QLatin1String("max"))
        return std::nullopt;
    if (text == QLatin1String("1") || text == QLatin1String("10"))
        return text.toDouble();
    throw invalid(CommandOptions::speed, text, DeskTexts::tr("1, 10 or max is needed"));
}

QString language(const QCommandLineParser& parser)
{
    if (!parser.isSet(CommandOptions::language))
        return Language::ofUser();
    QString code = parser.value(CommandOptions::language);
    if (!Language::codes().contains(code))
        throw invalid(CommandOptions::language, code,
            DeskTexts::tr("%1 is needed").arg(CommandOptions::languageNames()));
    return code;
}

QString settingsFile(const QCommandLineParser& parser)
{
    QString name = fileName(parser, CommandOptions::settings);
    if (!name.isEmpty() && parser.isSet(CommandOptions::noSettings))
        throw invalid(CommandOptions::settings, name,
            DeskTexts::tr("contradicts --%1").arg(CommandOptions::noSettings));
    return name;
}

QString database(const QCommandLineParser& parser)
{
    QString name = fileName(parser, CommandOptions::database);
    // An address that is not valid is refused before anything else is done.
    if (PostgresAddress::isAddress(name))
        PostgresAddress{name};
    return name;
}

CommandLine options(const QCommandLineParser& parser)
{
    CommandLine result;
    result.chainFile = chainFile(parser);
    result.forward = forward(parser);
    result.asOf = date(parser, CommandOptions::asOf);
    result.expiry = date(parser, CommandOptions::expiry);
    if (result.asOf.isValid() && result.expiry.isValid() && result.expiry <= result.asOf)
        throw invalid(CommandOptions::expiry, parser.value(CommandOptions::expiry),
            DeskTexts::tr("a date after that of --asof is needed"));
    result.view = view(parser);
    result.axisMode = axisMode(parser);
    result.smileModel = smileModel(parser);
    result.database = database(parser);
    result.pictureFile = pictureFile(parser);
    result.exportFiles = exportFiles(parser);
    result.exportScale = exportScale(parser);
    result.replayFile = replayFile(parser);
    result.replaySpeed = replaySpeed(parser);
    result.language = language(parser);
    result.settingsFile = settingsFile(parser);
    result.positionsFile = fileName(parser, CommandOptions::positions);
    result.usesSettings = !parser.isSet(CommandOptions::noSettings);
    result.size = size(parser);
    result.statesView = parser.isSet(CommandOptions::view);
    result.statesAxisMode = parser.isSet(CommandOptions::axis);
    result.statesSmileModel = parser.isSet(CommandOptions::smile);
    result.statesSize = parser.isSet(CommandOptions::size);
    return result;
}

}

QString viewName(DeskView view)
{
    switch (view) {
    case DeskView::Volatility:
        return QStringLiteral("volatility");
    case DeskView::Value:
        return QStringLiteral("value");
    case DeskView::Position:
        break;
    }
    return QStringLiteral("position");
}

std::optional<DeskView> viewFromName(const QString& name)
{
    for (const DeskView view : {DeskView::Volatility, DeskView::Value, DeskView::Position}) {
        if (name == viewName(view))
            return view;
    }
    return std::nullopt;
}

QString languageFor(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.addOptions(CommandOptions::all());
    parser.parse(arguments);
    const QString named = parser.value(CommandOptions::language);
    return Language::codes().contains(named) ? named : Language::ofUser();
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
    parser.setApplicationDescription(DeskTexts::tr("Draws the volatility smile of an option chain."));
    parser.addOptions(CommandOptions::all());
    parser.addPositionalArgument(
        QStringLiteral("file"), DeskTexts::tr("The same as --chain <file>."), QStringLiteral("[file]"));
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
