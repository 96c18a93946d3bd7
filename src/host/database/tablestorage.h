#pragma once

#include <QObject>
#include <QVector>

/// What keeps the rows of tables: the changes of the tables that are attached to it are gathered until
/// commit() or rollback().
class TableStorage : public QObject {
    Q_OBJECT

public:
    /// Keeps nothing yet.
    explicit TableStorage(QObject* parent = nullptr);
    ~TableStorage() override;

    /// Whether a change of a table's rows waits for commit().
    virtual bool hasChanges() const = 0;

    /// Keeps all changes since the last commit, all of them or, with an Exception, none.
    virtual void commit() = 0;

    /// Drops the changes since the last commit.
    virtual void rollback() = 0;

    /// Whether other programs write the same data meanwhile.
    virtual bool isShared() const;

    /// As many different numbers from 1 to 2^31 - 1 as are asked for that no other program on the same data
    /// has got or will get, for the ids of new rows. Of a shared storage only; Exception if they are not to
    /// be had.
    virtual QVector<qint32> takeNumbers(int count);

Q_SIGNALS:
    /// The last moment to take values back that must not be stored: comes at the start of commit().
    void aboutToCommit();
};
