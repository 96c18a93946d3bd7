#include "sqlmeta_p.h"

#include "sqlsession_p.h"

const QString SqlMeta::table = QStringLiteral("host_meta");

namespace {

QString kindName()
{
    return QStringLiteral("kind");
}

QString formatName()
{
    return QStringLiteral("format");
}

}

void SqlMeta::create(const SqlSession& session, const QString& kind, int format)
{
    session.execute(QStringLiteral("CREATE TABLE host_meta (name TEXT PRIMARY KEY, value TEXT NOT NULL)"));
    insert(session, kindName(), kind);
    insert(session, formatName(), QString::number(format));
}

void SqlMeta::require(const SqlSession& session, const QString& kind, int format)
{
    if (value(session, kindName()) != kind)
        session.fail(QStringLiteral("it is a database of something else"));
    const QString version = value(session, formatName());
    if (version != QString::number(format))
        session.fail(QStringLiteral("its format \"%1\" is not known").arg(version.simplified()));
}

QString SqlMeta::value(const SqlSession& session, const QString& name)
{
    QSqlQuery query = session.execute(QStringLiteral("SELECT value FROM host_meta WHERE name = ?"), {name});
    return query.next() ? query.value(0).toString() : QString();
}

void SqlMeta::insert(const SqlSession& session, const QString& name, const QString& value)
{
    session.execute(QStringLiteral("INSERT INTO host_meta (name, value) VALUES (?, ?)"), {name, value});
}
