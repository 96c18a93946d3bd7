#include "storagewriter.h"

#include "database/exception.h"
#include "database/sqlstorage.h"
#include "database/table.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

void writeCommit(Table& counter, Table& batches, int commit)
{
    if (counter.rowCount() == 0)
        counter.appendRows({counter.createRow()});
    counter.changeRows({counter.record(0)},
        [commit](const Record&, const Table::FieldAccess& field) { field(0).setInt32(commit); });

    QVector<Record> added;
    for (int i = 0; i < StorageWriter::rowsPerCommit; ++i) {
        added.append(batches.createRow());
        batches.value(added.last(), 0).setInt32(commit);
        batches.value(added.last(), 1).setInt32(i);
        batches.value(added.last(), 2).setText(QString(200, QChar(ushort('a' + commit % 26))));
    }
    batches.appendRows(added);

    QVector<Record> outdated;
    for (const Record& record : batches.masterIndex()) {
        if (record.value(0).toInt32() <= commit - StorageWriter::batchesKept)
            outdated.append(record);
    }
    batches.removeRows(outdated);
}

[[noreturn]] void writeForever(const QString& fileName)
{
    SqlStorage::Connection connection;
    connection.databaseName = fileName;
    SqlStorage storage(connection);
    storage.open();
    Table counter(StorageWriter::counterName(), StorageWriter::counterColumns());
    Table batches(StorageWriter::batchesName(), StorageWriter::batchesColumns());
    storage.attach(&counter);
    storage.attach(&batches);
    for (int commit = counter.rowCount() ? counter.record(0).value(0).toInt32() + 1 : 1;; ++commit) {
        writeCommit(counter, batches, commit);
        storage.commit();
        std::printf("%d\n", commit);
        std::fflush(stdout);
    }
}

}

/// Commits without end to the file of its argument and tells of each commit in a line with its number.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    try {
        writeForever(QCoreApplication::arguments().value(1));
    } catch (const Exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
    }
    return 1;
}
