#include "database/shared/sharedjournal_p.h"

#include "database/filelock.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <filesystem>

namespace {

const auto suffix = QStringLiteral(".unsent");

QByteArray mark()
{
    return QByteArrayLiteral("unsent changes of host tables, 1");
}

QByteArray hashOf(const QByteArray& content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

QByteArray packed(const QString& identity, const QVector<SharedCommit>& commits)
{
    QByteArray content;
    QDataStream stream(&content, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << mark() << identity << qint32(commits.size());
    for (const SharedCommit& commit : commits)
        stream << commit;
    return hashOf(content) + content;
}

/// Nothing for what is damaged or of another database.
QVector<SharedCommit> unpacked(const QString& identity, const QByteArray& file)
{
    const int hashSize = int(hashOf(QByteArray()).size());
    const QByteArray content = file.mid(hashSize);
    if (content.isEmpty() || hashOf(content) != file.left(hashSize))
        return {};
    QDataStream stream(content);
    stream.setVersion(QDataStream::Qt_5_15);
    QByteArray fileMark;
    QString fileIdentity;
    qint32 count = 0;
    stream >> fileMark >> fileIdentity >> count;
    if (fileMark != mark() || fileIdentity != identity)
        return {};
    QVector<SharedCommit> commits;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        SharedCommit commit;
        stream >> commit;
        commits.append(commit);
    }
    return stream.status() == QDataStream::Ok ? commits : QVector<SharedCommit>();
}

}

SharedJournal::SharedJournal(const QString& folder, const QString& identity, const QString& writer)
    : m_folder(folder)
    , m_identity(identity)
    , m_writer(writer)
{
}

SharedJournal::~SharedJournal() = default;

QString SharedJournal::fileName() const
{
    return m_folder + QLatin1Char('/') + m_writer + suffix;
}

bool SharedJournal::lock(int patience)
{
    if (m_lock)
        return true;
    auto lock = std::make_unique<FileLock>(fileName() + QLatin1String(".lock"), FileLock::Held::Long);
    if (!lock->tryLock(patience))
        return false;
    m_lock = std::move(lock);
    return true;
}

bool SharedJournal::read()
{
    QFile file(fileName());
    if (file.open(QIODevice::ReadOnly))
        m_commits = unpacked(m_identity, file.readAll());
    return !m_commits.isEmpty();
}

std::vector<std::unique_ptr<SharedJournal>> SharedJournal::abandoned(
    const QString& folder, const QString& identity)
{
    std::vector<std::unique_ptr<SharedJournal>> result;
    if (folder.isEmpty())
        return result;
    const QStringList files = QDir(folder).entryList({QLatin1Char('*') + suffix}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        auto journal = std::make_unique<SharedJournal>(folder, identity, file.chopped(suffix.size()));
        if (journal->lock(0) && journal->read())
            result.push_back(std::move(journal));
    }
    return result;
}

bool SharedJournal::keep(const QVector<SharedCommit>& commits)
{
    if (m_folder.isEmpty())
        return commits.isEmpty();
    if (commits.isEmpty()) {
        // In a folder that cannot be reached now a file only seems to be gone.
        std::error_code error;
        if (m_lock)
            std::filesystem::remove(QFile::encodeName(fileName()).toStdString(), error);
        if (error)
            return false;
        m_commits.clear();
        m_lock.reset();
        return true;
    }
    // With another program that looks whether this one has ended, in milliseconds.
    constexpr int patience = 5000;
    if (!QDir().mkpath(m_folder) || !lock(patience))
        return false;
    QSaveFile file(fileName());
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const QByteArray bytes = packed(m_identity, commits);
    // What only the closing of the file writes may fail unnoticed, and then replace the old one.
    if (file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        return false;
    m_commits = commits;
    return true;
}
