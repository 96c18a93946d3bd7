#pragma once

#include <QString>

class SqlSession;
class Table;

/// The layout of a database that several programs share.
///
/// Beside the tables of SqlSchema, "host_sharing" has one row of counters, which every commit writes first,
/// so that commits come one after the other: "revision" counts them, "next_row" the rows ever placed,
/// "next_number" the numbers given out, and "oldest" is the revision back to which removals are remembered.
/// "host_removed" remembers them, "host_writers" knows the last commit of each program, and "host_numbers"
/// numbers that were given back.
namespace SharedSchema {

/// The columns that a shared table has beside the host table's and SqlSchema::rowKey: a row's place, and the
/// revision that wrote it last.
extern const QString rowOrder;
extern const QString rowRevision;

/// What commits are announced under, with the revision as text.
extern const QString channel;

/// Makes the layout in an empty database. Does nothing where there is one already.
void createIfEmpty(const SqlSession& session);

/// Exception unless the database has the layout. Gives what tells this database from any other one.
QString requireIdentity(const SqlSession& session);

/// Makes the shared table of a host table, or adds the columns that it lacks. Exception if that is not
/// possible or the types do not fit.
void prepareTable(const SqlSession& session, const Table& table);

/// Exception if the layout of the stored table does not fit the host table.
void checkTable(const SqlSession& session, const Table& table);

}
