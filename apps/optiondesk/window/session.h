#pragma once

#include "window/commandline.h"
#include "window/deskdata.h"

#include <memory>

/// The data that a command line asks for, opened, and the series to show first.
struct Session {
    std::unique_ptr<DeskData> data;
    int futureIsinId = 0;
    SeriesFacts given;
};

/// Imports the chain of the command line, or, where it names none, takes the chains of its database, or the
/// bundled samples where that has none. Throws Exception (ChainError for a chain) where that fails; the
/// database is neither touched nor made before the chain has turned out to be good.
Session openSession(const CommandLine& options);
