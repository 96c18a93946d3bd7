#pragma once

#include <QDateTime>
#include <QFile>

namespace TestSupport {

/// For how long QLockFile by itself keeps a lock that leaveLock() has left, in milliseconds.
inline constexpr int keptByItself = 20000;

/// Makes a lock some time old, in milliseconds, and an empty one first where there is none; whether that was
/// possible.
inline bool ageLock(const QString& fileName, int age)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadWrite)
        && file.setFileTime(
            QDateTime::currentDateTimeUtc().addMSecs(-age), QFileDevice::FileModificationTime);
}

/// Leaves the lock that a program leaves which is killed between making it and putting its name in it.
inline bool leaveLock(const QString& fileName)
{
    constexpr int longest = 30000;
    return !QFile::exists(fileName) && ageLock(fileName, longest - keptByItself);
}

}
