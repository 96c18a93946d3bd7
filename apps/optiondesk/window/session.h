#pragma once

#include "window/commandline.h"
#include "window/deskdata.h"

#include <QStringList>

#include <memory>

/// The data that a command line asks for, opened, and the series to show first.
struct Session {
    std::unique_ptr<DeskData> data;
    int futureIsinId = 0;
    SeriesFacts given;
    /// Those that chains were read from, the bundled samples too; none of a database.
    QStringList chainFiles;
    /// What the user should know of those that could not be read, a line each.
    QStringList problems;
};

/// Imports the chain of the command line, or, where it names none, takes the chains of its database, or,
/// without a database, those of the files of the last session. The bundled samples stand in where there are
/// none. Throws Exception (ChainError for a chain) where that fails; the database is neither touched nor made
/// before the chain has turned out to be good.
Session openSession(const CommandLine& options, const QStringList& lastFiles = {});
