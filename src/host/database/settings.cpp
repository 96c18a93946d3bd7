#include "database/settings.h"

#include "database/filelock.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>
#include <QVector>

#include <algorithm>

namespace {

QString userFileName()
{
    const QString application = QCoreApplication::applicationName();
    const QString organization = QCoreApplication::organizationName();
    const QString group = organization.isEmpty() ? application : organization;
    return QSettings(QSettings::IniFormat, QSettings::UserScope,
        group.isEmpty() ? QStringLiteral("host") : group, application)
        .fileName();
}

QString normalized(const QString& key)
{
    return key.split(QLatin1Char('/'), Qt::SkipEmptyParts).join(QLatin1Char('/'));
}

enum class Place { Usable, Broken, Unknown };

/// What stands there: a settings file or nothing yet, something else, or what cannot be found out now.
///
/// QSettings reports a malformed file once, takes it for an empty one from then on and replaces it. So what
/// stands there is tried on a copy.
Place placeOf(const QString& fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        return Place::Usable;
    if (!info.isFile())
        return Place::Broken;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return Place::Unknown;
    const QByteArray content = file.readAll();
    if (content.isEmpty())
        return Place::Usable;
    if (content.contains('\0'))
        return Place::Broken;
    QTemporaryFile copy;
    if (!copy.open() || copy.write(content) != content.size() || !copy.flush())
        return Place::Unknown;
    const QSettings trial(copy.fileName(), QSettings::IniFormat);
    trial.allKeys(); // The lines of a section are read on demand.
    return trial.status() == QSettings::NoError ? Place::Usable : Place::Broken;
}

/// Whether so many bytes can be written beside a file. QSettings does not notice where the last ones find no
/// room, and replaces the file all the same.
bool hasRoom(const QString& fileName, qint64 size)
{
    const QFileInfo info(fileName);
    QTemporaryFile trial(info.absoluteFilePath() + QStringLiteral(".XXXXXX"));
    return QDir().mkpath(info.absolutePath()) && trial.open()
        && trial.write(QByteArray(static_cast<int>(size), ' ')) == size && trial.flush();
}

/// Whether a file's lock, under the name that QSettings gives it, is or becomes free: QSettings waits without
/// end for one, and half a minute for that of a program which was killed before it was named in it.
bool canBeLocked(const QString& fileName)
{
    constexpr int patience = 5000; // milliseconds
    return FileLock(fileName + QLatin1String(".lock")).tryLock(patience);
}

}

struct Settings::Private {
    struct Change {
        QString key;
        QVariant value;
        bool isRemoval = false;
    };

    explicit Private(const QString& file)
        : fileName(file)
        , stored(new QSettings(file, QSettings::IniFormat))
    {
    }
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;
    ~Private() { write(); }

    /// The last change that decides about a key, null if there is none.
    const Change* changeOf(const QString& key) const
    {
        const auto decides = [&](const Change& change) {
            return change.key == key || (change.isRemoval && key.startsWith(change.key + QLatin1Char('/')));
        };
        const auto found = std::find_if(changes.crbegin(), changes.crend(), decides);
        return found == changes.crend() ? nullptr : &*found;
    }

    void add(const Change& change)
    {
        const auto isOutdated
            = [&](const Change& earlier) { return !earlier.isRemoval && earlier.key == change.key; };
        changes.erase(std::remove_if(changes.begin(), changes.end(), isOutdated), changes.end());
        changes.append(change);
        if (!isWriteDue)
            QMetaObject::invokeMethod(
                &context,
                [this] {
                    isWriteDue = false;
                    write();
                },
                Qt::QueuedConnection);
        isWriteDue = true;
    }

    bool write();
    /// The bytes that the file will take at the most with the changes.
    qint64 largestSize() const;

    const QString fileName;
    std::unique_ptr<QSettings> stored;
    /// What is not written yet, in order.
    QVector<Change> changes;
    /// Whether the next round of the event loop writes.
    bool isWriteDue = false;
    QObject context;
};

qint64 Settings::Private::largestSize() const
{
    QByteArray packed;
    QDataStream stream(&packed, QIODevice::WriteOnly);
    for (const Change& change : changes)
        stream << change.key << change.value;
    // The format writes a byte in four letters at the most; another program may have added something, and a
    // lock takes room as well.
    constexpr qint64 others = 16384;
    return QFileInfo(fileName).size() + qint64{4} * packed.size() + others;
}

bool Settings::Private::write()
{
    if (placeOf(fileName) != Place::Usable)
        return false;
    if (!changes.isEmpty() && !(hasRoom(fileName, largestSize()) && canBeLocked(fileName)))
        return false;
    // A QSettings keeps its first error for good; hence a new one for each attempt.
    auto attempt = std::make_unique<QSettings>(fileName, QSettings::IniFormat);
    for (const Change& change : qAsConst(changes)) {
        if (change.isRemoval)
            attempt->remove(change.key);
        else
            attempt->setValue(change.key, change.value);
    }
    attempt->sync();
    const bool isWritten = attempt->status() == QSettings::NoError;
    stored = std::move(attempt);
    if (isWritten)
        changes.clear();
    return isWritten;
}

Settings::Settings()
    : Settings(userFileName())
{
}

Settings::Settings(const QString& fileName)
    : d(new Private(fileName))
{
}

Settings::Settings(const Settings& whole, const QString& group)
    : d(whole.d)
    , m_group(normalized(whole.m_group + QLatin1Char('/') + group))
{
}

Settings::~Settings() = default;

// Empty for a key that holds nothing.
QString Settings::pathOf(const QString& key) const
{
    const QString path = normalized(key);
    return path.isEmpty() || m_group.isEmpty() ? path : m_group + QLatin1Char('/') + path;
}

QVariant Settings::value(const QString& key, const QVariant& defaultValue) const
{
    const QString path = pathOf(key);
    if (path.isEmpty())
        return defaultValue;
    if (const Private::Change* const change = d->changeOf(path))
        return change->isRemoval ? defaultValue : change->value;
    return d->stored->value(path, defaultValue);
}

void Settings::setValue(const QString& key, const QVariant& value)
{
    const QString path = pathOf(key);
    if (!path.isEmpty())
        d->add({path, value, false});
}

void Settings::remove(const QString& key)
{
    const QString path = pathOf(key);
    if (!path.isEmpty())
        d->add({path, QVariant(), true});
}

bool Settings::sync()
{
    return d->write();
}

bool Settings::isBroken(const QString& fileName)
{
    return placeOf(fileName) == Place::Broken;
}

QString Settings::fileName() const
{
    return d->fileName;
}
