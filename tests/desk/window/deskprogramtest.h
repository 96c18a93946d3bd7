#pragma once

#include "deskrun.h"
#include "desktest.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// A test that runs the option desk's program, in a new folder for each function, with a chain in "good.csv".
class DeskProgramTest : public QObject {
    Q_OBJECT

protected:
    DeskRun run(const QStringList& arguments) const { return runDesk(arguments, folder()); }
    QString folder() const { return m_folder->path(); }
    QString path(const char* name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    /// Empty where there is no such file.
    QByteArray content(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        DeskTest::write(path("good.csv"), DeskTest::csv());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};
