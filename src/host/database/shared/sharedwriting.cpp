#include "database/shared/sharedwriting_p.h"

#include "database/shared/sharedschema_p.h"
#include "database/sqlschema_p.h"
#include "database/sqlsession_p.h"

#include <QMap>

#include <limits>

namespace {

// A statement of that many rows is short enough to be read at once and long enough for a slow network.
constexpr int rowsPerStatement = 500;

/// Removals are remembered for that many commits.
constexpr qint64 memoryOfRemovals = 100000;
constexpr qint64 commitsPerTidying = 1000;

const auto comma = QLatin1String(", ");

QString literals(const SqlSession& session, const QVariantList& values)
{
    QStringList texts;
    for (const QVariant& value : values)
        texts << session.literal(value);
    return texts.join(comma);
}

template <typename List, typename Action> void inBatches(const List& list, Action action)
{
    for (int i = 0; i < list.size(); i += rowsPerStatement)
        action(list.mid(i, rowsPerStatement));
}

/// Writes the changes of one table under a revision.
class TableWriting {
public:
    TableWriting(const SqlSession& session, const SharedTableChanges& changes, qint64 revision)
        : m_session(session)
        , m_changes(changes)
        , m_revision(revision)
        , m_table(session.quoted(changes.table))
        , m_key(session.quoted(SqlSchema::rowKey))
        , m_rowRevision(session.quoted(SharedSchema::rowRevision))
    {
    }

    void remove();
    /// Places rows one after the other from this number on.
    void place(qint64 firstOrder);
    /// Rows that others have removed stay removed.
    void update();

private:
    QString statementToPlace(const QStringList& rows) const;
    void forgetRemoval(const QVariantList& keys);
    void updateFields(const QVector<int>& columns, const QVector<SharedTableChanges::Updated>& rows);
    QString column(int position) const;

    const SqlSession& m_session;
    const SharedTableChanges& m_changes;
    const qint64 m_revision;
    const QString m_table;
    const QString m_key;
    const QString m_rowRevision;
};

QString TableWriting::column(int position) const
{
    if (position < 0 || position >= m_changes.columns.size())
        m_session.fail(QStringLiteral("a change of \"%1\" is not valid").arg(m_changes.table));
    return m_session.quoted(m_changes.columns[position].name);
}

void TableWriting::remove()
{
    inBatches(m_changes.removed, [&](const QStringList& keys) {
        QStringList removals;
        QVariantList values;
        for (const QString& key : keys) {
            values << key;
            removals << QLatin1Char('(') + literals(m_session, {m_changes.table, key, m_revision})
                    + QLatin1Char(')');
        }
        m_session.execute(QLatin1String("DELETE FROM ") + m_table + QLatin1String(" WHERE ") + m_key
            + QLatin1String(" IN (") + literals(m_session, values) + QLatin1Char(')'));
        m_session.execute(QLatin1String("INSERT INTO host_removed (table_name, row_key, revision) VALUES ")
            + removals.join(comma)
            + QLatin1String(" ON CONFLICT (table_name, row_key) DO UPDATE SET revision = EXCLUDED.revision"));
    });
}

QString TableWriting::statementToPlace(const QStringList& rows) const
{
    QStringList names{m_key, m_session.quoted(SharedSchema::rowOrder), m_rowRevision};
    for (int i = 0; i < m_changes.columns.size(); ++i)
        names << column(i);
    QStringList assignments;
    for (const QString& name : qAsConst(names))
        assignments << name + QLatin1String(" = EXCLUDED.") + name;
    return QLatin1String("INSERT INTO ") + m_table + QLatin1String(" (") + names.join(comma)
        + QLatin1String(") VALUES ") + rows.join(comma) + QLatin1String(" ON CONFLICT (") + m_key
        + QLatin1String(") DO UPDATE SET ") + assignments.join(comma);
}

void TableWriting::forgetRemoval(const QVariantList& keys)
{
    m_session.execute(QLatin1String("DELETE FROM host_removed WHERE table_name = ? AND row_key IN (")
            + literals(m_session, keys) + QLatin1Char(')'),
        {m_changes.table});
}

void TableWriting::place(qint64 firstOrder)
{
    qint64 order = firstOrder;
    inBatches(m_changes.placed, [&](const QVector<SharedTableChanges::Placed>& rows) {
        QStringList texts;
        QVariantList keys;
        for (const SharedTableChanges::Placed& row : rows) {
            keys << row.key;
            texts << QLatin1Char('(')
                    + literals(m_session, QVariantList{row.key, order++, m_revision} + row.values)
                    + QLatin1Char(')');
        }
        m_session.execute(statementToPlace(texts));
        forgetRemoval(keys);
    });
}

void TableWriting::update()
{
    QMap<QVector<int>, QVector<SharedTableChanges::Updated>> rowsByColumns;
    for (const SharedTableChanges::Updated& row : m_changes.updated) {
        QVector<int> columns;
        for (const auto& field : row.fields)
            columns << field.first;
        rowsByColumns[columns] << row;
    }
    for (auto group = rowsByColumns.cbegin(); group != rowsByColumns.cend(); ++group) {
        inBatches(group.value(),
            [&](const QVector<SharedTableChanges::Updated>& rows) { updateFields(group.key(), rows); });
    }
}

void TableWriting::updateFields(const QVector<int>& columns, const QVector<SharedTableChanges::Updated>& rows)
{
    QStringList names{QStringLiteral("row_key")};
    QStringList assignments{m_rowRevision + QStringLiteral(" = %1").arg(m_revision)};
    for (int i = 0; i < columns.size(); ++i) {
        const QString name = QStringLiteral("field%1").arg(i);
        names << name;
        // A column of nothing but nulls has no type of its own.
        assignments << column(columns[i]) + QLatin1String(" = new.") + name + QLatin1String("::")
                + SqlSchema::columnType(m_changes.columns[columns[i]].type);
    }
    QStringList texts;
    for (const SharedTableChanges::Updated& row : rows) {
        QVariantList values{row.key};
        for (const auto& field : row.fields)
            values << field.second;
        texts << QLatin1Char('(') + literals(m_session, values) + QLatin1Char(')');
    }
    m_session.execute(QLatin1String("UPDATE ") + m_table + QLatin1String(" SET ") + assignments.join(comma)
        + QLatin1String(" FROM (VALUES ") + texts.join(comma) + QLatin1String(") AS new (")
        + names.join(comma) + QLatin1String(") WHERE ") + m_table + QLatin1Char('.') + m_key
        + QLatin1String(" = new.row_key"));
}

struct Counters {
    qint64 revision = 0;
    qint64 nextRow = 0;
};

/// Takes the next revision and as many row numbers; until the end of the transaction no other commit does.
Counters nextCounters(const SqlSession& session, int rows)
{
    QSqlQuery query = session.execute(QStringLiteral("UPDATE host_sharing SET revision = revision + 1, "
                                                     "next_row = next_row + ? RETURNING revision, next_row"),
        {rows});
    if (!query.next())
        session.fail(QStringLiteral("its counters are gone"));
    return {query.value(0).toLongLong(), query.value(1).toLongLong() - rows};
}

qint64 lastCommit(const SqlSession& session, const QString& writer)
{
    QSqlQuery query
        = session.execute(QStringLiteral("SELECT last_commit FROM host_writers WHERE writer = ?"), {writer});
    return query.next() ? query.value(0).toLongLong() : 0;
}

void forgetOldRemovals(const SqlSession& session, qint64 revision)
{
    if (revision <= memoryOfRemovals || revision % commitsPerTidying != 0)
        return;
    const qint64 oldest = revision - memoryOfRemovals;
    session.execute(QStringLiteral("DELETE FROM host_removed WHERE revision < ?"), {oldest});
    session.execute(QStringLiteral("UPDATE host_sharing SET oldest = ?"), {oldest});
}

}

void SharedWriting::apply(const SqlSession& session, const QString& writer, const SharedCommit& commit)
{
    int placed = 0;
    for (const SharedTableChanges& changes : commit.tables)
        placed += int(changes.placed.size());

    SqlTransaction transaction(session);
    const Counters counters = nextCounters(session, placed);
    if (lastCommit(session, writer) >= commit.number)
        return;
    qint64 order = counters.nextRow;
    for (const SharedTableChanges& changes : commit.tables) {
        TableWriting writing(session, changes, counters.revision);
        writing.remove();
        writing.place(order);
        writing.update();
        order += changes.placed.size();
    }
    session.execute(QStringLiteral("INSERT INTO host_writers (writer, last_commit) VALUES (?, ?) "
                                   "ON CONFLICT (writer) DO UPDATE SET last_commit = EXCLUDED.last_commit"),
        {writer, commit.number});
    forgetOldRemovals(session, counters.revision);
    session.execute(QStringLiteral("SELECT pg_notify(?, ?)"),
        {SharedSchema::channel, QString::number(counters.revision)});
    transaction.commit();
}

QVector<NumberRange> SharedWriting::takeNumbers(const SqlSession& session, qint64 count)
{
    SqlTransaction transaction(session);
    QVector<NumberRange> result;
    qint64 missing = count;
    QSqlQuery query = session.execute(
        QStringLiteral("DELETE FROM host_numbers WHERE first IN (SELECT first FROM host_numbers "
                       "ORDER BY first LIMIT 8 FOR UPDATE SKIP LOCKED) RETURNING first, last"));
    while (query.next()) {
        result.append({query.value(0).toLongLong(), query.value(1).toLongLong()});
        missing -= result.last().size();
    }
    if (missing > 0) {
        query = session.execute(QStringLiteral("UPDATE host_sharing SET next_number = next_number + ? "
                                               "WHERE next_number <= ? RETURNING next_number"),
            {missing, std::numeric_limits<qint32>::max() - missing + 1});
        if (query.next()) {
            const qint64 next = query.value(0).toLongLong();
            result.append({next - missing, next - 1});
        }
    }
    transaction.commit();
    return result;
}

void SharedWriting::giveBack(const SqlSession& session, const NumberRange& numbers)
{
    if (numbers.size() > 0) {
        session.execute(QStringLiteral("INSERT INTO host_numbers (first, last) VALUES (?, ?)"),
            {numbers.first, numbers.last});
    }
}

void SharedWriting::forgetWriter(const SqlSession& session, const QString& writer)
{
    session.execute(QStringLiteral("DELETE FROM host_writers WHERE writer = ?"), {writer});
}
