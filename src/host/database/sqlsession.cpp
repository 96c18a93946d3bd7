#include "sqlsession_p.h"

#include "database/exception.h"
#include "database/qtversions_p.h"

#include <QSqlDriver>

#include <algorithm>

namespace {

QString explanation(const QSqlError& error, bool isSqlite)
{
    // SQLite's extended codes carry the primary one in their lowest byte.
    enum { Busy = 5, Locked = 6, Corrupt = 11, NotADatabase = 26 };
    bool isNumber = false;
    const int code = error.nativeErrorCode().toInt(&isNumber) & 0xff;
    if (isSqlite && isNumber) {
        if (code == Busy || code == Locked)
            return QStringLiteral("it is in use by another program");
        if (code == Corrupt || code == NotADatabase)
            return QStringLiteral("it is damaged");
    }
    const QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    // A server's further lines quote the statement.
    return (isSqlite ? text : text.section(QLatin1Char('\n'), 0, 0)).simplified();
}

/// The statement with the texts in the place of its question marks outside of quotes.
QString filledIn(const QString& statement, const QStringList& texts)
{
    QString result;
    int used = 0;
    QChar quote;
    for (const QChar character : statement) {
        if (!quote.isNull()) {
            if (character == quote)
                quote = QChar();
        } else if (character == QLatin1Char('"') || character == QLatin1Char('\'')) {
            quote = character;
        } else if (character == QLatin1Char('?')) {
            result += texts.value(used++);
            continue;
        }
        result += character;
    }
    return result;
}

}

SqlSession::SqlSession(const QSqlDatabase& connection, const QString& place)
    : m_connection(connection)
    , m_place(place)
{
}

bool SqlSession::isSqlite() const
{
    return m_connection.driver()->dbmsType() == QSqlDriver::SQLite;
}

QString SqlSession::quoted(const QString& name) const
{
    // The drivers take a point for the end of a schema's name, quotes and brackets for an identifier that is
    // quoted already, and they leave an empty name bare.
    const auto isSpecial = [](QChar character) { return QStringLiteral(".\"`[]").contains(character); };
    if (!name.isEmpty() && std::none_of(name.cbegin(), name.cend(), isSpecial))
        return m_connection.driver()->escapeIdentifier(name, QSqlDriver::FieldName);
    QString escaped = name;
    escaped.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QSqlQuery SqlSession::prepared(const QString& statement) const
{
    QSqlQuery query(m_connection);
    query.setForwardOnly(true);
    if (!query.prepare(statement))
        fail(query.lastError());
    return query;
}

void SqlSession::run(QSqlQuery& query, const QVariantList& values) const
{
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values[i]);
    if (!query.exec())
        fail(query.lastError());
}

void SqlSession::requireConnection() const
{
    if (!m_connection.isOpen())
        fail(QStringLiteral("the server has closed the connection"));
}

QString SqlSession::literal(const QVariant& value) const
{
    return m_connection.driver()->formatValue(QtVersions::fieldOf(value));
}

QSqlQuery SqlSession::execute(const QString& statement, const QVariantList& values) const
{
    if (!isSqlite()) {
        requireConnection();
        QStringList texts;
        for (const QVariant& value : values)
            texts << literal(value);
        QSqlQuery query(m_connection);
        if (!query.exec(filledIn(statement, texts)))
            fail(query.lastError());
        return query;
    }
    QSqlQuery query = prepared(statement);
    run(query, values);
    return query;
}

void SqlSession::fail(const QString& what) const
{
    throw Exception(QStringLiteral("Database \"%1\": %2.").arg(m_place.simplified(), what));
}

void SqlSession::fail(const QSqlError& error) const
{
    fail(explanation(error, isSqlite()));
}

SqlTransaction::SqlTransaction(const SqlSession& session)
    : m_session(session)
    , m_connection(session.connection())
{
    session.requireConnection();
    m_isOpen = m_connection.transaction();
    if (!m_isOpen)
        m_session.fail(m_connection.lastError());
}

SqlTransaction::~SqlTransaction()
{
    // A connection that is lost has none to roll back any more.
    if (m_isOpen && m_connection.isOpen())
        m_connection.rollback();
}

void SqlTransaction::commit()
{
    m_session.requireConnection();
    if (!m_connection.commit())
        m_session.fail(m_connection.lastError());
    m_isOpen = false;
}
