#pragma once

#include <QLockFile>
#include <QString>

/// A file by which programs agree that one of them at a time does something. It is there as long as one does.
///
/// A program that is killed leaves its lock behind, and it may not even have put its name in it yet. The next
/// one takes such a lock over as soon as it is a second old.
class FileLock {
public:
    /// In a folder that is there already.
    explicit FileLock(const QString& fileName);

    /// Whether the lock is ours now. Others are waited for so long, in milliseconds, with 0 not at all. Where
    /// no file can be made it is false at once.
    bool tryLock(int patience);
    /// Gives up a lock that is ours, as the destructor does.
    void unlock();

private:
    QLockFile m_file;
};
