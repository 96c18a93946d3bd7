#pragma once

#include "window/chainimporter.h"

#include <QString>

class QAction;
class QMainWindow;
class QMenu;
class WorkBar;

/// The commands that bring chains into a window: its menu's entries, and files that are dropped on it. What
/// is imported goes on beside all else, with its progress in the status bar; closing the window cancels it.
class ImportActions : public QObject {
    Q_OBJECT

public:
    /// Asks for the file to read; empty if the user wants none.
    using FileQuestion = std::function<QString(const QString& folder, QWidget* parent)>;

    /// Puts the entries at the end of a menu; the window becomes the parent.
    ImportActions(const ChainImporter::Store& store, WorkBar* bar, QMainWindow* window, QMenu* menu);

    /// Where the user's last chain came from; empty before that. A folder that is not there is ignored.
    QString folder() const { return m_folder; }
    void setFolder(const QString& folder);

    /// How to ask; with a dialog unless this is called.
    void setFileQuestion(const FileQuestion& question) { m_fileQuestion = question; }

    ChainImporter* importer() const { return m_importer; }

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /// Begins with a file, or says that another import runs.
    void import(const QString& fileName);

Q_SIGNALS:
    /// Something that the user should know, in one line.
    void said(const QString& text);
    void failed(const QString& title, const QString& reason);

private Q_SLOTS:
    void onImport();
    void onFailed(const QString& reason);
    void onCancelled();
    void onImported(const QString& fileName);

private:
    QMainWindow* m_window;
    ChainImporter* m_importer;
    QString m_folder;
    FileQuestion m_fileQuestion;
};
