#include "storagefixture.h"

#include "database/exception.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <cstring>

QStringList StorageFixture::files() const
{
    return QDir(m_folder.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

SqlStorage::Connection StorageFixture::connection(const QString& fileName)
{
    SqlStorage::Connection result;
    result.databaseName = fileName;
    result.options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=20");
    return result;
}

std::unique_ptr<SqlStorage> StorageFixture::open(const QString& name) const
{
    auto storage = std::make_unique<SqlStorage>(connection(path(name)));
    storage->open();
    return storage;
}

QString thrownText(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.text();
    }
    return QString();
}

std::unique_ptr<Table> storedTable(const QString& fileName, const QString& tableName)
{
    auto table = std::make_unique<Table>(tableName, SampleTable::columns());
    SqlStorage storage(StorageFixture::connection(fileName));
    storage.open();
    storage.attach(table.get());
    return table;
}

QVector<QVariantList> contentOf(const Table& table)
{
    QVector<QVariantList> rows;
    for (const Record& record : table.masterIndex()) {
        QVariantList fields;
        for (int i = 0; i < table.columnCount(); ++i) {
            QVariant value = record.value(i).toVariant();
            if (value.userType() == QMetaType::Double) {
                const double number = value.toDouble();
                quint64 bits = 0;
                std::memcpy(&bits, &number, sizeof bits);
                value = bits;
            }
            fields << value;
        }
        rows << fields;
    }
    return rows;
}

QByteArray readFile(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& fileName, const QByteArray& content)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QVariantList runSql(const QString& fileName, const QString& statement)
{
    const QString name = QStringLiteral("test");
    QVariantList result;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(fileName);
        if (database.open()) {
            QSqlQuery query(database);
            query.exec(statement);
            while (query.next())
                result << query.value(0);
        }
    }
    QSqlDatabase::removeDatabase(name);
    return result;
}
