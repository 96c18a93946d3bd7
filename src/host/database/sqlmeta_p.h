#pragma once

#include <QString>

class SqlSession;

/// The table "host_meta" of names and values, which marks a database as the host's.
namespace SqlMeta {

extern const QString table;

/// Makes the table and writes what the database is: a kind, and the version of its format. Within a
/// transaction.
void create(const SqlSession& session, const QString& kind, int format);

/// Throws an Exception that says what it is not unless the database is of this kind and format.
void require(const SqlSession& session, const QString& kind, int format);

/// An empty text where there is no such value.
QString value(const SqlSession& session, const QString& name);
void insert(const SqlSession& session, const QString& name, const QString& value);

}
