#pragma once

#include "database/shared/sharedchanges_p.h"

class SqlSession;

/// A range of numbers, both ends included.
struct NumberRange {
    qint64 first = 1;
    qint64 last = 0;

    qint64 size() const { return last - first + 1; }
};

/// Writing into a shared database; each function is a transaction of its own.
namespace SharedWriting {

/// Applies a commit of a writer as a whole. One that was applied already, as the writer may not have come to
/// know, is passed over.
void apply(const SqlSession& session, const QString& writer, const SharedCommit& commit);

/// Takes numbers that nobody else gets, at least as many as are asked for, unless there are no more up to
/// 2^31 - 1: first those that were given back.
QVector<NumberRange> takeNumbers(const SqlSession& session, qint64 count);
void giveBack(const SqlSession& session, const NumberRange& numbers);

/// Forgets a writer all of whose commits have been applied.
void forgetWriter(const SqlSession& session, const QString& writer);

}
