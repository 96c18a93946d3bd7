#pragma once

#include "database/sqlstorage.h"
#include "sampletable.h"

#include <QTemporaryDir>

#include <functional>
#include <memory>

/// A folder with SQLite files for one test.
class StorageFixture {
public:
    QString path(const QString& name = QStringLiteral("host.db")) const { return m_folder.filePath(name); }
    /// The names of all files in the folder.
    QStringList files() const;

    /// A storage on a file that gives a lock up at once, open.
    std::unique_ptr<SqlStorage> open(const QString& name = QStringLiteral("host.db")) const;
    static SqlStorage::Connection connection(const QString& fileName);

private:
    QTemporaryDir m_folder;
};

/// The text of the Exception that an action throws, empty if there is none.
QString thrownText(const std::function<void()>& action);

/// A table of SampleTable's columns with the rows that are stored.
std::unique_ptr<Table> storedTable(const QString& fileName, const QString& tableName);

/// The fields of all rows, also what two equal variants hide: the bits of a double.
QVector<QVariantList> contentOf(const Table& table);

QByteArray readFile(const QString& fileName);
bool writeFile(const QString& fileName, const QByteArray& content);

/// Runs SQL on a file through a connection of its own; the first column of the result.
QVariantList runSql(const QString& fileName, const QString& statement);
