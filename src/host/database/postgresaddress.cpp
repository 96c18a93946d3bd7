#include "database/postgresaddress.h"

#include "database/exception.h"

#include <libpq-fe.h>

#include <memory>

namespace {

struct FreeOptions {
    void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};
using Options = std::unique_ptr<PQconninfoOption, FreeOptions>;

/// Null for a text that is no address. The library's reason quotes parts of the text, so it is not told.
Options parsed(const QString& text)
{
    char* reason = nullptr;
    Options options(PQconninfoParse(text.toUtf8().constData(), &reason));
    PQfreemem(reason);
    return options;
}

bool isSecret(const PQconninfoOption& option)
{
    return option.dispchar && *option.dispchar == '*';
}

}

bool PostgresAddress::isAddress(const QString& text)
{
    return text.startsWith(QLatin1String("postgresql://")) || text.startsWith(QLatin1String("postgres://"));
}

PostgresAddress::PostgresAddress(const QString& text)
{
    const Options options = isAddress(text) && !text.contains(QChar::Null) ? parsed(text) : nullptr;
    if (!options)
        throw Exception(QStringLiteral("The address of the PostgreSQL database is not valid; "
                                       "postgresql://user@host:port/name is needed."));
    for (const PQconninfoOption* option = options.get(); option->keyword; ++option) {
        if (!option->val || !*option->val)
            continue;
        const QString value = QString::fromUtf8(option->val);
        m_parameters.append({QString::fromLatin1(option->keyword), value});
        if (isSecret(*option))
            m_secrets << value;
    }
    const QString fromEnvironment = qEnvironmentVariable("PGPASSWORD");
    if (!fromEnvironment.isEmpty())
        m_secrets << fromEnvironment;
}

QString PostgresAddress::parameter(const QString& name) const
{
    for (const auto& [key, value] : m_parameters) {
        if (key == name)
            return value;
    }
    return QString();
}

QString PostgresAddress::place() const
{
    QString host = parameter(QStringLiteral("host"));
    if (host.isEmpty())
        host = parameter(QStringLiteral("hostaddr"));
    const QString port = parameter(QStringLiteral("port"));
    if (!port.isEmpty())
        host += QLatin1Char(':') + port;
    QString database = parameter(QStringLiteral("dbname"));
    const QString service = parameter(QStringLiteral("service"));
    if (database.isEmpty() && !service.isEmpty())
        database = QLatin1String("service ") + service;
    if (!host.isEmpty() && !database.isEmpty())
        host += QLatin1Char('/');
    const QString place = host + database;
    return withoutSecrets(place.isEmpty() ? QStringLiteral("PostgreSQL") : place).simplified();
}

QString PostgresAddress::withoutSecrets(const QString& text) const
{
    QString result = text;
    for (const QString& secret : m_secrets)
        result.replace(secret, QLatin1String("***"));
    return result;
}
