#pragma once

#include <QLabel>
#include <QPointer>

class SharedStorage;

/// Tells in the status bar whether the database that several desks share answers, and how many changes wait
/// for it.
class SharingStatus : public QLabel {
    Q_OBJECT

public:
    /// Shows nothing once the storage is gone.
    explicit SharingStatus(SharedStorage& storage, QWidget* parent = nullptr);

private Q_SLOTS:
    void tell();

private:
    QPointer<SharedStorage> m_storage;
};
