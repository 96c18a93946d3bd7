#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>

/// The options of the desk's command line.
namespace CommandOptions {

/// Their names.
const auto chain = QStringLiteral("chain");
const auto forward = QStringLiteral("forward");
const auto asOf = QStringLiteral("asof");
const auto expiry = QStringLiteral("expiry");
const auto view = QStringLiteral("view");
const auto axis = QStringLiteral("axis");
const auto smile = QStringLiteral("smile");
const auto database = QStringLiteral("database");
const auto picture = QStringLiteral("picture");
const auto exportFile = QStringLiteral("export");
const auto scale = QStringLiteral("scale");
const auto size = QStringLiteral("size");
const auto replay = QStringLiteral("replay");
const auto speed = QStringLiteral("speed");
const auto settings = QStringLiteral("settings");
const auto positions = QStringLiteral("positions");
const auto language = QStringLiteral("language");
const auto noSettings = QStringLiteral("no-settings");

/// "price, points or percent": what may stand after --axis, after --smile, and after --language.
QString axisNames();
QString smileNames();
QString languageNames();

/// All of them with what --help says of them.
QList<QCommandLineOption> all();

}
