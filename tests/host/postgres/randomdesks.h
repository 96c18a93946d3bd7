#pragma once

#include "sharingdesk.h"

#include <QMap>

#include <memory>
#include <random>
#include <vector>

/// Desks that write at random, with a record of what must be there in the end: each has rows of its own,
/// which nobody else removes or counts, and changes the ratio of rows of all.
class RandomDesks {
public:
    RandomDesks(std::vector<std::unique_ptr<SharingDesk>> desks, quint64 seed);

    /// Any of the desks adds, changes and removes rows, and commits.
    void write();

    const std::vector<std::unique_ptr<SharingDesk>>& all() const { return m_desks; }
    int commits() const { return m_commits; }
    /// How many desks have commits that the server has not taken yet.
    int waitingCount() const;
    bool areSettled() const;

    /// The counts of all rows that must be there, by their ids.
    QMap<int, qlonglong> expectedCounts() const;

private:
    void writeOwn(std::size_t number);
    void changeAny(SharingDesk& desk);
    int random(int bound) { return int(m_engine() % quint64(bound)); }

    std::vector<std::unique_ptr<SharingDesk>> m_desks;
    std::mt19937_64 m_engine;
    /// By desk.
    std::vector<QMap<int, qlonglong>> m_own;
    int m_nextId = 1;
    int m_commits = 0;
};
