#include "database/filelock.h"

#include <QFile>

namespace {

// A lock that no living program holds is taken over at this age, in milliseconds. QLockFile itself looks up
// whether the program runs that is named in the file; but a program may be killed before it is named, and its
// number may be another's today. For those there is the age, half a minute by default. It takes nothing from
// a program that runs and has not begun to unlock: QLockFile removes no file on which flock() is held, which
// ends with the program. So it need only be longer than it takes to call flock() on a new file, also where
// the times of files are rounded.
constexpr int forgotten = 3000;

}

FileLock::FileLock(const QString& fileName, Held held)
    : m_fileName(fileName)
    , m_held(held)
    , m_file(fileName)
{
}

// In the terms of QLockFile, where 0 is never.
int FileLock::takeoverAge() const
{
    qint64 program = 0;
    QString machine;
    QString name;
    // Not every folder of several machines shows here what is held there.
    const bool isNamed = m_file.getLockInfo(&program, &machine, &name);
    return isNamed && m_held == Held::Long ? 0 : forgotten;
}

// QLockFile locks the removal of an old file in the same way, and programs are killed there as well.
void FileLock::letOldOnesBeRemoved() const
{
    const QString removal = m_fileName + QLatin1String(".rmlock");
    if (!QFile::exists(removal))
        return;
    QLockFile left(removal);
    left.setStaleLockTime(forgotten);
    left.tryLock(0);
}

bool FileLock::tryLock(int patience)
{
    m_file.setStaleLockTime(takeoverAge());
    letOldOnesBeRemoved();
    if (m_file.tryLock(patience))
        return true;
    letOldOnesBeRemoved();
    return m_file.tryLock(0);
}

void FileLock::unlock()
{
    m_file.unlock();
}
