#pragma once

#include "database/shared/sharedjournal_p.h"

#include <QMutex>
#include <QObject>
#include <QThread>
#include <QVector>

/// The commits of a program that the server has not taken yet, in their order, and in a journal should the
/// program end first.
///
/// The journal is written in a thread of its own: the window does not wait for it before the end, and it does
/// not wait for a server that does not answer. append() is for any other thread, the rest for one at a time.
class SharedOutbox {
public:
    SharedOutbox(const QString& folder, const QString& identity, const QString& writer);
    ~SharedOutbox();
    SharedOutbox(const SharedOutbox&) = delete;
    SharedOutbox& operator=(const SharedOutbox&) = delete;

    bool isEmpty() const;
    /// Of one that is not empty.
    SharedCommit first() const;

    /// Adds a commit, to be written soon. A warning tells if that is not possible.
    void append(const SharedCommit& commit);
    /// Takes the first one out; what is written stays as it is.
    void removeFirst();
    /// Lets the journal hold what is there now; false if it cannot.
    bool write();

private:
    void writeSoon();
    bool writeInThread();

    const QString m_folder;
    mutable QMutex m_mutex;
    QVector<SharedCommit> m_commits;
    /// Whether the thread has been told to write.
    bool m_isWriteDue = false;
    SharedJournal m_journal;
    QThread m_thread;
    /// What lives in the thread.
    QObject m_writer;
};
