#include "desk/faults/smalldisk.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr char filler[] = "filler";
constexpr char size[] = "size=2m";

/// Whether what this process mounts from now on is its own affair.
bool isApart()
{
    static const bool done
        = ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return done;
}

unsigned long setLimit(__rlimit_resource resource, unsigned long value)
{
    rlimit limit{};
    getrlimit(resource, &limit);
    const unsigned long before = limit.rlim_cur;
    limit.rlim_cur = value;
    if (setrlimit(resource, &limit) != 0)
        qFatal("a limit cannot be set");
    return before;
}

}

SmallDisk::SmallDisk()
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    m_isMounted = isApart() && ::mount("tmpfs", folder.constData(), "tmpfs", 0, size) == 0;
    if (!m_isMounted)
        m_problem = QStringLiteral("this user may not mount a disk: %1")
                        .arg(QString::fromLocal8Bit(std::strerror(errno)));
}

SmallDisk::~SmallDisk()
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    if (m_isMounted && ::umount2(folder.constData(), MNT_DETACH) != 0)
        qFatal("the disk cannot be taken away");
}

QString SmallDisk::path(const QString& name) const
{
    return m_folder.filePath(name);
}

QStringList SmallDisk::files() const
{
    QStringList names = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    names.removeAll(QLatin1String(filler));
    return names;
}

void SmallDisk::fill(qint64 room)
{
    const QByteArray name = QFile::encodeName(path(QLatin1String(filler)));
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0)
        qFatal("the disk cannot be filled");
    constexpr qint64 page = 4096;
    const QByteArray block(int(page), 'x');
    qint64 written = 0;
    while (::write(file, block.constData(), std::size_t(page)) == page)
        written += page;
    if (errno != ENOSPC || ::ftruncate(file, written - room) != 0)
        qFatal("the disk cannot be filled");
    ::close(file);
}

void SmallDisk::free()
{
    QFile::remove(path(QLatin1String(filler)));
}

void SmallDisk::setReadOnly(bool readOnly)
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    const unsigned long flags = readOnly ? 0UL + MS_REMOUNT + MS_RDONLY : 0UL + MS_REMOUNT;
    if (::mount("tmpfs", folder.constData(), "tmpfs", flags, size) != 0)
        qFatal("the disk cannot be remounted: %s", std::strerror(errno));
}

FileSizeLimit::FileSizeLimit(unsigned long bytes)
    : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    , m_before(setLimit(RLIMIT_FSIZE, bytes))
{
}

FileSizeLimit::~FileSizeLimit()
{
    setLimit(RLIMIT_FSIZE, m_before);
    std::signal(SIGXFSZ, m_handler);
}

// The number of the next file would be the lowest free one.
NoMoreFiles::NoMoreFiles()
{
    const int next = ::dup(0);
    ::close(next);
    m_before = setLimit(RLIMIT_NOFILE, static_cast<unsigned long>(next));
}

NoMoreFiles::~NoMoreFiles()
{
    setLimit(RLIMIT_NOFILE, m_before);
}
