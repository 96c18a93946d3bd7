#pragma once

#include "database/shared/sharedchanges_p.h"

#include <QString>
#include <QVector>

#include <memory>
#include <vector>

class FileLock;

/// A file that keeps the commits which a program has made and the database has not, should the program end
/// first.
class SharedJournal {
public:
    /// Of a writer into a database. An empty folder keeps nothing.
    SharedJournal(const QString& folder, const QString& identity, const QString& writer);
    ~SharedJournal();

    /// The journals of the same database whose programs have ended. They are locked while the objects live.
    static std::vector<std::unique_ptr<SharedJournal>> abandoned(
        const QString& folder, const QString& identity);

    const QString& writer() const { return m_writer; }
    const QVector<SharedCommit>& commits() const { return m_commits; }

    /// Replaces what the file holds, as a whole; the file goes with the last commit. False if it cannot be
    /// written or removed.
    bool keep(const QVector<SharedCommit>& commits);

private:
    QString fileName() const;
    bool lock(int patience);
    bool read();

    const QString m_folder;
    const QString m_identity;
    const QString m_writer;
    QVector<SharedCommit> m_commits;
    std::unique_ptr<FileLock> m_lock;
};
