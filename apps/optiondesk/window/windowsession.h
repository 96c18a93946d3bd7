#pragma once

#include <QStringList>

class DeskData;
class DeskSession;
class DeskWindow;
struct CommandLine;

/// What of the desk's window comes back after a restart.
namespace WindowSession {

/// Puts the window's values on the session's list. Those that were stored and no longer fit (a series that is
/// not in the data or not of the command line's chain, a view of another series, a place on no screen) are
/// passed over. All must outlive the session.
void keep(DeskSession& session, DeskWindow& window, const DeskData& deskData, const CommandLine& options);

/// The keys of the values that are not given back, because the command line says what holds instead.
QStringList statedBy(const CommandLine& options);

}
