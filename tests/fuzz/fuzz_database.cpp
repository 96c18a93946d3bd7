#include "fuzzinput.h"
#include "host/database/sampletable.h"

#include <database/exception.h>
#include <database/sqlstorage.h>
#include <database/table.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

namespace {

const QString& tableName()
{
    static const QString name = QStringLiteral("samples");
    return name;
}

/// Where files are in memory, if there is such a place.
QString place()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath())
        + QStringLiteral("/plot2d-fuzz-XXXXXX");
}

/// One file that every input is written to.
class DatabaseFile {
public:
    DatabaseFile()
        : m_folder(place())
        , m_path(m_folder.filePath(QStringLiteral("host.db")))
        , m_journal(m_path + QStringLiteral("-journal"))
    {
        FUZZ_EXPECT(m_folder.isValid());
        makeGood();
    }

    const QByteArray& good() const { return m_good; }

    void write(const QByteArray& content) const
    {
        QFile::remove(m_journal);
        QFile file(m_path);
        FUZZ_EXPECT(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QByteArray read() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<SqlStorage> storage() const
    {
        SqlStorage::Connection connection;
        connection.databaseName = m_path;
        connection.options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=20");
        return std::make_unique<SqlStorage>(connection);
    }

private:
    void makeGood()
    {
        {
            Table table(tableName(), SampleTable::columns());
            const auto stored = storage();
            stored->open();
            stored->attach(&table);
            table.appendRows(SampleTable::makeRows(table, 1, 20));
            stored->commit();
        }
        m_good = read();
    }

    QTemporaryDir m_folder;
    QString m_path;
    QString m_journal;
    QByteArray m_good;
};

DatabaseFile& file()
{
    // On the stack of nobody, so that the folder goes with the process.
    static int argc = 1;
    static char name[] = "fuzz_database";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
    static DatabaseFile instance;
    return instance;
}

/// The bytes themselves; or a good file with some of its bytes replaced, so that what is behind its header
/// and its sums is reached.
QByteArray takeFile(FuzzInput& input)
{
    if (!input.takeFlag()) {
        const auto* const bytes = reinterpret_cast<const char*>(input.data());
        return QByteArray(bytes, int(input.size()));
    }
    QByteArray content = file().good();
    while (!input.isEmpty()) {
        int offset = input.take<std::uint16_t>() % content.size();
        for (int count = 1 + input.takeBelow(16); count > 0 && !input.isEmpty(); --count)
            content[offset++ % content.size()] = char(input.take<std::uint8_t>());
    }
    return content;
}

QVector<QVariantList> contentOf(const Table& table)
{
    QVector<QVariantList> rows;
    for (const Record& record : table.masterIndex()) {
        QVariantList fields;
        for (int i = 0; i < table.columnCount(); ++i)
            fields << record.field(i).toString();
        rows << fields;
    }
    return rows;
}

void expectExplained(const Exception& exception)
{
    FUZZ_EXPECT(!exception.text().isEmpty() && !exception.text().contains(QLatin1Char('\n')));
}

/// What is committed is read back, in its order.
void expectStored(SqlStorage& storage, Table& table)
{
    table.appendRows({SampleTable::makeRow(table, 1000)});
    try {
        storage.commit();
    } catch (const Exception& exception) {
        expectExplained(exception);
        return;
    }
    FUZZ_EXPECT(!storage.hasChanges());
    const auto other = file().storage();
    Table again(tableName(), SampleTable::columns());
    other->open();
    other->attach(&again);
    FUZZ_EXPECT(contentOf(again) == contentOf(table));
}

}

/// A damaged database is refused in a line and left as it is, or read as a whole and written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QByteArray content = takeFile(input);
    file().write(content);

    Table table(tableName(), SampleTable::columns());
    table.appendRows(SampleTable::makeRows(table, 7, 1));
    const auto storage = file().storage();
    try {
        storage->open();
    } catch (const Exception& exception) {
        expectExplained(exception);
        FUZZ_EXPECT(!storage->isOpen() && file().read() == content);
        return 0;
    }
    try {
        storage->attach(&table);
    } catch (const Exception& exception) {
        expectExplained(exception);
        FUZZ_EXPECT(SampleTable::ids(table) == QVector<int>{7});
        return 0;
    }
    FUZZ_EXPECT(!storage->hasChanges());
    expectStored(*storage, table);
    return 0;
}
