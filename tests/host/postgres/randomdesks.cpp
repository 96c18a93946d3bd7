#include "randomdesks.h"

#include <algorithm>

RandomDesks::RandomDesks(std::vector<std::unique_ptr<SharingDesk>> desks, quint64 seed)
    : m_desks(std::move(desks))
    , m_engine(seed)
    , m_own(m_desks.size())
{
}

void RandomDesks::write()
{
    const auto number = std::size_t(random(int(m_desks.size())));
    writeOwn(number);
    changeAny(*m_desks[number]);
    m_desks[number]->storage.commit();
    ++m_commits;
}

void RandomDesks::writeOwn(std::size_t number)
{
    constexpr int added = 20;
    SharingDesk& desk = *m_desks[number];
    QMap<int, qlonglong>& own = m_own[number];
    desk.append(m_nextId, added);
    for (int i = 0; i < added; ++i, ++m_nextId)
        own.insert(m_nextId, qlonglong(m_nextId) * 10000000000);
    const QList<int> ids = own.keys();
    for (int i = 0; i < 5; ++i) {
        const int id = ids[random(ids.size())];
        const qlonglong value = random(1000000);
        desk.set(id, SampleTable::Count, value);
        own[id] = value;
    }
    const int gone = ids[random(ids.size())];
    desk.remove(gone);
    own.remove(gone);
}

void RandomDesks::changeAny(SharingDesk& desk)
{
    for (int i = 0; i < 3 && desk.table.rowCount() > 0; ++i) {
        const Record any = desk.table.record(random(desk.table.rowCount()));
        desk.table.changeRows({any}, [this](const Record&, const Table::FieldAccess& field) {
            field(SampleTable::Ratio).setDouble(random(1000));
        });
    }
}

int RandomDesks::waitingCount() const
{
    return int(std::count_if(m_desks.cbegin(), m_desks.cend(),
        [](const std::unique_ptr<SharingDesk>& desk) { return desk->storage.waitingCommits() > 0; }));
}

bool RandomDesks::areSettled() const
{
    return std::all_of(m_desks.cbegin(), m_desks.cend(),
        [](const std::unique_ptr<SharingDesk>& desk) { return desk->isSettled(); });
}

QMap<int, qlonglong> RandomDesks::expectedCounts() const
{
    QMap<int, qlonglong> all;
    for (const QMap<int, qlonglong>& own : m_own) {
        for (auto count = own.cbegin(); count != own.cend(); ++count)
            all.insert(count.key(), count.value());
    }
    return all;
}
