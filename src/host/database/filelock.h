#pragma once

#include <QLockFile>
#include <QString>

/// A file by which programs agree that one of them at a time does something. It is there as long as one does.
///
/// A program that is killed leaves its lock behind. The next one takes it over: at once if the program is
/// named in it and does not run any more, else when it is three seconds old.
class FileLock {
public:
    /// How long a lock is held usually.
    enum class Held {
        /// For a moment.
        Briefly,
        /// For any time: the lock of a program that seems to run is not taken over at any age.
        Long
    };

    /// In a folder that is there already.
    explicit FileLock(const QString& fileName, Held held = Held::Briefly);

    /// Whether the lock is ours now. Waits for others at most so many milliseconds, from 0 on. Where there is
    /// no lock and no file can be made it is false at once.
    bool tryLock(int patience);
    /// Gives up a lock that is ours, as the destructor does.
    void unlock();

private:
    int takeoverAge() const;
    void letOldOnesBeRemoved() const;

    const QString m_fileName;
    const Held m_held;
    QLockFile m_file;
};
