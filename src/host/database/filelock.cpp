#include "database/filelock.h"

FileLock::FileLock(const QString& fileName)
    : m_file(fileName)
{
    // QLockFile asks the program's name in the file whether that still runs, and where there is none yet, or
    // the number is another program's now, the file's age alone. The age that it takes by itself is half a
    // minute. A second is enough for a name to be written, and takes nothing from a program that runs: that
    // also holds the file's flock(), without which QLockFile never removes a file, however old.
    constexpr int nameless = 1000;
    m_file.setStaleLockTime(nameless);
}

bool FileLock::tryLock(int patience)
{
    return m_file.tryLock(patience);
}

void FileLock::unlock()
{
    m_file.unlock();
}
