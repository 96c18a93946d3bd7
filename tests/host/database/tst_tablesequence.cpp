#include "sampletable.h"
#include "support/testmain.h"

#include <algorithm>
#include <deque>
#include <random>
#include <vector>

using namespace SampleTable;

namespace {

/// What the table is to hold: the ids of its rows and their names.
using Model = std::vector<std::pair<int, QString>>;

/// Drives a table and a plain vector through the same operations.
class Driver {
public:
    explicit Driver(quint64 seed)
        : m_engine(seed)
        , m_table(new Table(QStringLiteral("t"), columns()))
    {
    }

    void step()
    {
        hold();
        switch (m_engine() % 16) {
        case 0:
        case 1:
        case 2:
        case 3:
            insert();
            break;
        case 4:
        case 5:
        case 6:
            remove();
            break;
        case 7:
            reinsert();
            break;
        case 8:
            m_engine() % 8 == 0 ? clear() : reset();
            break;
        default:
            change();
        }
        release();
    }

    QString difference() const
    {
        if (m_table->rowCount() != int(m_model.size()))
            return QStringLiteral("the number of rows");
        int position = 0;
        for (const Record& record : m_table->masterIndex()) {
            const auto& [id, name] = m_model[std::size_t(position)];
            if (record.value(Id).toInt32() != id || record.value(Name).toText() != name
                || record != m_table->record(position) || !record.isInTable())
                return QStringLiteral("the row at %1").arg(position);
            ++position;
        }
        return heldDifference();
    }

    void destroyTable() { m_table.reset(); }

    QString heldDifference() const
    {
        for (const auto& [list, expected] : m_lists) {
            if (ids(list) != expected)
                return QStringLiteral("an older list");
        }
        for (const auto& [record, id] : m_records) {
            if (record.value(Id).toInt32() != id || record.value(Time).toMoment() != id * 1000LL
                || record.table() != m_table.get())
                return QStringLiteral("a record that was held");
            const bool isInModel = std::any_of(
                m_model.cbegin(), m_model.cend(), [id = id](const auto& row) { return row.first == id; });
            if (record.isInTable() != (m_table && isInModel))
                return QStringLiteral("the place of a record that was held");
        }
        return QString();
    }

private:
    std::size_t below(std::size_t end) { return end ? m_engine() % end : 0; }

    void insert()
    {
        const int count = int(1 + m_engine() % 8);
        const std::size_t position = below(m_model.size() + 1);
        Model added;
        for (int i = 0; i < count; ++i)
            added.emplace_back(m_nextId + i, QStringLiteral("row %1").arg(m_nextId + i));
        m_table->insertRows(int(position), makeRows(*m_table, m_nextId, count));
        m_model.insert(m_model.begin() + std::ptrdiff_t(position), added.begin(), added.end());
        m_nextId += count;
    }

    void remove()
    {
        QVector<Record> records;
        std::vector<int> gone;
        for (std::size_t count = m_engine() % 8; count > 0 && !m_model.empty(); --count) {
            const std::size_t position = below(m_model.size());
            records.append(m_table->record(int(position)));
            gone.push_back(m_model[position].first);
        }
        m_table->removeRows(records);
        const auto isGone = [&](const auto& row) {
            return std::find(gone.cbegin(), gone.cend(), row.first) != gone.cend();
        };
        m_model.erase(std::remove_if(m_model.begin(), m_model.end(), isGone), m_model.end());
    }

    void reinsert()
    {
        if (m_records.empty())
            return;
        const Record record = m_records[below(m_records.size())].first;
        const std::size_t position = below(m_model.size() + 1);
        if (!record.isInTable()) {
            m_model.emplace(m_model.begin() + std::ptrdiff_t(position), record.value(Id).toInt32(),
                record.value(Name).toText());
        }
        m_table->insertRows(int(position), {record});
    }

    void reset()
    {
        QVector<Record> kept;
        Model model;
        for (std::size_t i = 0; i < m_model.size(); ++i) {
            if (m_engine() % 4 == 0)
                continue;
            kept.append(m_table->record(int(i)));
            model.push_back(m_model[i]);
        }
        std::reverse(kept.begin(), kept.end());
        std::reverse(model.begin(), model.end());
        m_table->resetRows(kept);
        m_model = model;
    }

    void clear()
    {
        m_table->clear();
        m_model.clear();
    }

    void change()
    {
        QVector<Record> records;
        const QString name = QString::number(m_engine());
        for (std::size_t count = m_engine() % 4; count > 0 && !m_model.empty(); --count) {
            const std::size_t position = below(m_model.size());
            records.append(m_table->record(int(position)));
            m_model[position].second = name;
        }
        m_table->changeRows(
            records, [&](const Record&, const Table::FieldAccess& field) { field(Name).setText(name); });
    }

    void hold()
    {
        if (m_engine() % 3 == 0)
            m_lists.emplace_back(m_table->masterIndex(), ids(*m_table));
        if (m_engine() % 2 == 0 && !m_model.empty()) {
            const std::size_t position = below(m_model.size());
            m_records.emplace_back(m_table->record(int(position)), m_model[position].first);
        }
    }

    void release()
    {
        if (m_lists.size() > 6)
            m_lists.erase(m_lists.begin() + std::ptrdiff_t(below(m_lists.size())));
        if (m_records.size() > 30)
            m_records.erase(m_records.begin() + std::ptrdiff_t(below(m_records.size())));
    }

    std::mt19937_64 m_engine;
    std::unique_ptr<Table> m_table;
    Model m_model;
    int m_nextId = 1;
    std::deque<std::pair<IndexList, QVector<int>>> m_lists;
    std::deque<std::pair<Record, int>> m_records;
};

}

class tst_tablesequence : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void matchesPlainVector_data();
    void matchesPlainVector();
};

void tst_tablesequence::matchesPlainVector_data()
{
    QTest::addColumn<quint64>("seed");
    for (quint64 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %d", int(seed)) << seed;
}

void tst_tablesequence::matchesPlainVector()
{
    QFETCH(quint64, seed);
    Driver driver(seed);
    for (int step = 0; step < 3000; ++step) {
        driver.step();
        const QString difference = driver.difference();
        QVERIFY2(difference.isEmpty(),
            qPrintable(QStringLiteral("seed %1, step %2: %3 differs").arg(seed).arg(step).arg(difference)));
    }
    driver.destroyTable();
    QCOMPARE(driver.heldDifference(), QString());
}

PLOT2D_TEST_MAIN(tst_tablesequence)
#include "tst_tablesequence.moc"
