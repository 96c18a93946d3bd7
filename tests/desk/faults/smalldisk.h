#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A disk of two megabytes that only this process and its children see, for what happens when it is full or
/// may only be read: both also bind root.
///
/// It takes a user who may mount; a test without one is to be skipped.
class SmallDisk {
public:
    SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk();

    /// Why there is none; empty where there is.
    QString problem() const { return m_problem; }
    QString path(const QString& name) const;
    /// The names of its files, but for the one that fills it.
    QStringList files() const;

    /// Leaves so much room, in whole pages of 4096 bytes.
    void fill(qint64 room = 0);
    void free();
    void setReadOnly(bool readOnly);

private:
    QTemporaryDir m_folder;
    QString m_problem;
    bool m_isMounted = false;
};

/// While it lives, no file of this process grows beyond a size.
class FileSizeLimit {
public:
    explicit FileSizeLimit(unsigned long bytes);
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit();

private:
    void (*m_handler)(int);
    unsigned long m_before;
};

/// While it lives, this process can open no more files.
class NoMoreFiles {
public:
    NoMoreFiles();
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;
    ~NoMoreFiles();

private:
    unsigned long m_before;
};
