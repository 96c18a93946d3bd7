#include "chaincheck.h"
#include "chaincolumns.h"

#include <chain/chainerror.h>
#include <chain/chainimport.h>
#include <chain/chainreader.h>
#include <chain/chainstore.h>
#include <chain/chaintables.h>

#include <database/sqlstorage.h>
#include <database/table.h>

#include <QBuffer>
#include <QCoreApplication>

namespace {

/// The host's tables over a database in memory, which serve all inputs.
class Tables {
public:
    Tables()
        : m_storage(inMemory())
        , m_tables(ChainTables::make())
    {
        m_storage.open();
        m_storage.attach(m_tables.securities);
        m_storage.attach(m_tables.boards);
    }

    SqlStorage& storage() { return m_storage; }
    Table& securities() { return *m_tables.securities; }

private:
    static SqlStorage::Connection inMemory()
    {
        SqlStorage::Connection connection;
        connection.databaseName = QStringLiteral(":memory:");
        return connection;
    }

    SqlStorage m_storage;
    ChainTables m_tables;
};

Tables& tables()
{
    static int argc = 1;
    static char name[] = "fuzz_chainimport";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
    static auto* const instance = new Tables;
    return *instance;
}

int quoteCount(const OptionChain& chain)
{
    int count = 0;
    for (const OptionSeries& series : chain.series)
        count += series.quotes.size();
    return count;
}

/// Forwards below a thousandth are rounded to 18 decimals.
bool isExact(const OptionChain& chain)
{
    for (const OptionSeries& series : chain.series) {
        if (series.forward && *series.forward < 1e-3)
            return false;
    }
    return true;
}

void expectStored(const OptionChain& chain)
{
    const std::optional<OptionChain> stored = ChainStore::chain(chain.baseCode);
    FUZZ_EXPECT(stored && !tables().storage().hasChanges());
    FUZZ_EXPECT(tables().securities().rowCount() == quoteCount(chain) + chain.series.size());
    if (isExact(chain))
        ChainCheck::expectSame(chain, *stored);
}

}

/// A chain that was read is stored, and read back from the tables as the same chain, however often.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    QBuffer device;
    device.setData(TableInput(input, chainColumns, int(std::size(chainColumns))).take());
    device.open(QIODevice::ReadOnly);
    OptionChain chain;
    try {
        chain = readChain(device, QStringLiteral("test.csv"));
    } catch (const ChainError&) {
        return 0;
    }
    for (int times = 0; times < 2; ++times) {
        ChainImport(tables().storage()).import(chain);
        expectStored(chain);
    }
    tables().securities().clear();
    tables().storage().commit();
    return 0;
}
