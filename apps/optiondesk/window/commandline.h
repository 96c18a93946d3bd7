#pragma once

#include "window/axismode.h"

#include <QDate>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// What the plot shows over the strikes.
enum class DeskView { Volatility, Value };

/// What the user asks for on the command line; empty texts, invalid dates and empty optionals stand for
/// options that were not given.
struct CommandLine {
    QString chainFile;
    /// Positive, within the range of the host's prices.
    std::optional<double> forward;
    QDate asOf;
    QDate expiry;
    DeskView view = DeskView::Volatility;
    AxisMode axisMode = AxisMode::Price;
    /// A SQLite file, or the address of a PostgreSQL database.
    QString database;
    QString pictureFile;
    /// Of the desk's settings; the user's own file unless it is named.
    QString settingsFile;
    /// Whether there are settings at all.
    bool usesSettings = true;
    /// Recorded quotes to replay into the window.
    QString replayFile;
    /// A factor on the recording's time; empty for as fast as possible.
    std::optional<double> replaySpeed = 1.0;
    /// Of the window or picture, in pixels: 200x150 to 10000x10000.
    QSize size = QSize(1000, 640);
};

/// A command line, or what to say instead of running.
struct ParsedCommandLine {
    enum class Action { Run, PrintText, Fail };

    Action action = Action::Run;
    /// Of meaning for Action::Run.
    CommandLine options;
    /// The help or version to print, or the reason of the failure in one line.
    QString text;
};

/// Reads the arguments, the first of which is the program's name. The application object must exist: its
/// name and version go into the texts.
ParsedCommandLine parseCommandLine(const QStringList& arguments);

/// A date as YYYY-MM-DD or YYYYMMDD; invalid for anything else.
QDate dateFromOption(const QString& text);
