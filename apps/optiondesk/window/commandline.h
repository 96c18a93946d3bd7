#pragma once

#include "window/axismode.h"
#include "window/smilemodels.h"

#include <QDate>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// What the plot shows over the strikes.
enum class DeskView { Volatility, Value, Position };

/// Its name on the command line and in settings.
QString viewName(DeskView view);
std::optional<DeskView> viewFromName(const QString& name);

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
    Pricing::SmileModel smileModel = Pricing::SmileModel::Spline;
    /// Whether view, axis mode, smile model and size are the user's words, and not what holds without any.
    bool statesView = false;
    bool statesAxisMode = false;
    bool statesSmileModel = false;
    bool statesSize = false;
    /// A SQLite file, or the address of a PostgreSQL database.
    QString database;
    QString pictureFile;
    /// To write the plot into, in the formats of their suffixes.
    QStringList exportFiles;
    /// Pixels of an exported picture for each of its size: PlotExport::smallestScale to largestScale.
    int exportScale = 1;
    /// Of the desk's settings; the user's own file unless it is named.
    QString settingsFile;
    /// Whether there are settings at all.
    bool usesSettings = true;
    /// Of the positions; the user's own file unless it is named, and none without settings.
    QString positionsFile;
    /// Recorded quotes to replay into the window.
    QString replayFile;
    /// A factor on the recording's time; empty for as fast as possible.
    std::optional<double> replaySpeed = 1.0;
    /// Of the texts, one of Language::codes(): the user's, unless it is named.
    QString language;
    /// Of the window, picture or exported plot, in pixels: 200x150 to 10000x10000.
    QSize size = QSize(1000, 640);
};

/// Whether the command line asks for files instead of a window.
inline bool asksForFiles(const CommandLine& options)
{
    return !options.pictureFile.isEmpty() || !options.exportFiles.isEmpty();
}

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

/// The language that the arguments name, or the user's where they name none that is there: for the texts of
/// parseCommandLine() itself.
QString languageFor(const QStringList& arguments);

/// A date as YYYY-MM-DD or YYYYMMDD; invalid for anything else.
QDate dateFromOption(const QString& text);
