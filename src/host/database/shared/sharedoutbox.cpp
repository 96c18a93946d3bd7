#include "database/shared/sharedoutbox_p.h"

#include <QMutexLocker>

SharedOutbox::SharedOutbox(const QString& folder, const QString& identity, const QString& writer)
    : m_folder(folder)
    , m_journal(folder, identity, writer)
{
    m_writer.moveToThread(&m_thread);
    m_thread.start();
}

SharedOutbox::~SharedOutbox()
{
    write();
    m_thread.quit();
    m_thread.wait();
}

bool SharedOutbox::isEmpty() const
{
    const QMutexLocker locker(&m_mutex);
    return m_commits.isEmpty();
}

SharedCommit SharedOutbox::first() const
{
    const QMutexLocker locker(&m_mutex);
    return m_commits.first();
}

void SharedOutbox::append(const SharedCommit& commit)
{
    {
        const QMutexLocker locker(&m_mutex);
        m_commits.append(commit);
    }
    writeSoon();
}

void SharedOutbox::removeFirst()
{
    const QMutexLocker locker(&m_mutex);
    m_commits.removeFirst();
}

bool SharedOutbox::write()
{
    bool isWritten = false;
    QMetaObject::invokeMethod(
        &m_writer, [&] { isWritten = writeInThread(); }, Qt::BlockingQueuedConnection);
    return isWritten;
}

// Commits that come while one is written are written together.
void SharedOutbox::writeSoon()
{
    const QMutexLocker locker(&m_mutex);
    if (!m_isWriteDue)
        QMetaObject::invokeMethod(
            &m_writer, [this] { writeInThread(); }, Qt::QueuedConnection);
    m_isWriteDue = true;
}

bool SharedOutbox::writeInThread()
{
    QVector<SharedCommit> commits;
    {
        const QMutexLocker locker(&m_mutex);
        m_isWriteDue = false;
        commits = m_commits;
    }
    const bool isWritten = m_journal.keep(commits);
    if (!isWritten && !commits.isEmpty() && !m_folder.isEmpty())
        qWarning("Changes cannot be kept in \"%s\".", qUtf8Printable(m_folder));
    return isWritten;
}
