#include "database/sqlstorage.h"

#include "database/exception.h"
#include "database/table.h"
#include "sqlschema_p.h"
#include "sqlsession_p.h"
#include "sqltablestore_p.h"

#include <QAtomicInt>

#include <algorithm>
#include <vector>

namespace {

QString uniqueName()
{
    static QAtomicInt count;
    return QStringLiteral("host_sql_storage_%1").arg(count.fetchAndAddRelaxed(1));
}

}

struct SqlStorage::Private {
    explicit Private(const Connection& parameters)
        : connection(parameters)
        , name(uniqueName())
    {
    }

    ~Private() { close(); }

    bool isSqliteFile() const
    {
        return connection.driver == QLatin1String("QSQLITE") && !connection.databaseName.isEmpty()
            && connection.databaseName != QLatin1String(":memory:");
    }

    QString place() const
    {
        return connection.hostName.isEmpty()
            ? connection.databaseName
            : connection.hostName + QLatin1Char('/') + connection.databaseName;
    }

    void openConnection();
    void close();
    const SqlSession& requireSession() const;
    std::vector<QPointer<SqlTableStore>> changedStores() const;

    const Connection connection;
    const QString name;
    std::unique_ptr<SqlSession> session;
    std::vector<std::unique_ptr<SqlTableStore>> stores;
};

void SqlStorage::Private::openConnection()
{
    QSqlDatabase database = QSqlDatabase::addDatabase(connection.driver, name);
    database.setDatabaseName(connection.databaseName);
    database.setHostName(connection.hostName);
    database.setPort(connection.port);
    database.setUserName(connection.userName);
    database.setPassword(connection.password);
    // A window that waits for another program's transaction longer than this seems to hang.
    const QString timeout = QStringLiteral("QSQLITE_BUSY_TIMEOUT");
    QString options = connection.options;
    if (connection.driver == QLatin1String("QSQLITE") && !options.contains(timeout))
        options += (options.isEmpty() ? QString() : QStringLiteral(";")) + timeout + QLatin1String("=2000");
    database.setConnectOptions(options);
    session = std::make_unique<SqlSession>(database, place());
    if (!database.open())
        session->fail(database.lastError());
}

void SqlStorage::Private::close()
{
    stores.clear();
    session.reset();
    if (QSqlDatabase::contains(name))
        QSqlDatabase::removeDatabase(name);
}

const SqlSession& SqlStorage::Private::requireSession() const
{
    if (!session)
        throw Exception(QStringLiteral("Database \"%1\": it is not open.").arg(place()));
    return *session;
}

std::vector<QPointer<SqlTableStore>> SqlStorage::Private::changedStores() const
{
    std::vector<QPointer<SqlTableStore>> changed;
    for (const auto& store : stores) {
        if (store->hasChanges())
            changed.emplace_back(store.get());
    }
    return changed;
}

SqlStorage::SqlStorage(const Connection& connection, QObject* parent)
    : TableStorage(parent)
    , d(new Private(connection))
{
}

SqlStorage::~SqlStorage() = default;

void SqlStorage::open()
{
    if (isOpen())
        return;
    if (!QSqlDatabase::isDriverAvailable(d->connection.driver))
        throw Exception(QStringLiteral("Database \"%1\": there is no driver \"%2\".")
                            .arg(d->place(), d->connection.driver));
    if (d->isSqliteFile())
        SqlSchema::checkSqliteFile(d->connection.databaseName);
    try {
        d->openConnection();
        SqlSchema::adopt(*d->session);
    } catch (...) {
        d->close();
        throw;
    }
}

bool SqlStorage::isOpen() const
{
    return d->session != nullptr;
}

void SqlStorage::attach(Table* table)
{
    const SqlSession& session = d->requireSession();
    const auto isGone = [](const std::unique_ptr<SqlTableStore>& store) { return !store->table(); };
    d->stores.erase(std::remove_if(d->stores.begin(), d->stores.end(), isGone), d->stores.end());

    SqlTableStore* known = nullptr;
    for (const auto& store : d->stores) {
        if (store->table() == table)
            known = store.get();
        else if (store->table()->name() == table->name())
            session.fail(QStringLiteral("another table \"%1\" is stored already").arg(table->name()));
    }
    QVector<TableColumnDef> columns;
    for (const TableColumnDef* column : table->fieldDefs())
        columns.append(*column);
    const QString obstacle = SqlSchema::obstacle(table->name(), columns);
    if (!obstacle.isEmpty())
        session.fail(obstacle);

    const SqlTableContent content = readSqlTable(session, table);
    if (!known) {
        d->stores.push_back(std::make_unique<SqlTableStore>(table, session));
        known = d->stores.back().get();
    }
    known->take(content);
}

bool SqlStorage::hasChanges() const
{
    return !d->changedStores().empty();
}

void SqlStorage::commit()
{
    const SqlSession& session = d->requireSession();
    Q_EMIT aboutToCommit();
    std::vector<SqlTableStore*> written;
    for (const auto& store : d->stores) {
        if (store->hasChanges() || store->lacksColumns())
            written.push_back(store.get());
    }
    if (written.empty())
        return;
    SqlTransaction transaction(session);
    for (SqlTableStore* store : written)
        store->write();
    transaction.commit();
    for (SqlTableStore* store : written)
        store->markWritten();
}

void SqlStorage::rollback()
{
    const SqlSession& session = d->requireSession();
    const std::vector<QPointer<SqlTableStore>> changed = d->changedStores();
    std::vector<SqlTableContent> contents;
    contents.reserve(changed.size());
    for (const auto& store : changed)
        contents.push_back(readSqlTable(session, store->table()));
    for (std::size_t i = 0; i < changed.size(); ++i) {
        // A listener of an earlier table may have destroyed this one.
        if (changed[i] && changed[i]->table())
            changed[i]->take(contents[i]);
    }
}
