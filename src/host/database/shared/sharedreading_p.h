#pragma once

#include "database/shared/sharedchanges_p.h"

class SqlSession;
class Table;

/// How far the server has got, as one moment shows it.
struct SharedProgress {
    qint64 revision = 0;
    /// Of what was removed before this revision nothing is remembered.
    qint64 oldest = 0;
    /// The last commit of the writer asked for.
    qint64 acknowledged = 0;
};

/// Reading what others have written, within a transaction of begin().
namespace SharedReading {

/// Makes the transaction see the moment of its first reading.
void begin(const SqlSession& session);

SharedProgress progress(const SqlSession& session, const QString& writer);

/// What has changed in a table since a revision, all rows for a negative one. Only columns and name of the
/// host table count. Exception if a stored value does not fit.
SharedTableNews news(const SqlSession& session, Table& layout, qint64 since);

}
