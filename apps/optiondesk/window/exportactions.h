#pragma once

#include "output/plotexport.h"

#include <QObject>
#include <QPointer>

#include <functional>

class DeskPlot;
class QAction;
class QMenu;
class QPrinter;
class QWidget;
struct MenuEntry;

/// The commands that bring the plot out of the desk, as entries of a menu with their keys: into files, onto
/// the clipboard, onto paper.
class ExportActions : public QObject {
    Q_OBJECT

public:
    /// Asks for the file to write, with one to begin with; empty if the user wants none.
    using FileQuestion
        = std::function<QString(const QString& suggestion, ExportFormat format, QWidget* parent)>;
    /// Lets the user choose printer and paper; false if nothing shall be printed.
    using PrintQuestion = std::function<bool(QPrinter* printer, QWidget* parent)>;

    /// Puts the entries at the end of a menu, which becomes the parent.
    ExportActions(DeskPlot* plot, QMenu* menu);

    /// What the files are called after; characters that no file's name can have are replaced.
    void setDocumentName(const QString& name) { m_documentName = name; }

    /// Where the last file was written; empty before that.
    QString folder() const { return m_folder; }
    /// A folder that is not there is ignored.
    void setFolder(const QString& folder);

    /// Of PNG pictures; one that is not offered is ignored.
    void setScale(int scale);
    int scale() const { return m_scale; }

    /// How to ask; with dialogs unless these are called.
    void setFileQuestion(const FileQuestion& question) { m_fileQuestion = question; }
    void setPrintQuestion(const PrintQuestion& question) { m_printQuestion = question; }

Q_SIGNALS:
    /// What has been done, in one line.
    void done(const QString& message);
    /// What could not be done, and why.
    void failed(const QString& title, const QString& reason);

private Q_SLOTS:
    void onExport(QAction* action);
    void onCopy(QAction* action);
    void onPrint();
    void onScaleChosen(QAction* action);

private:
    void addExports(QMenu& menu);
    void addCopies(QMenu& menu);
    void addScales(QMenu& menu);
    void exportAs(ExportFormat format);
    QString suggestion(ExportFormat format) const;
    ExportOptions options() const;
    template <typename Work> void attempt(const QString& title, const Work& work);

    QPointer<DeskPlot> m_plot;
    QString m_documentName;
    QString m_folder;
    int m_scale = PlotExport::smallestScale;
    QList<QAction*> m_scales;
    FileQuestion m_fileQuestion;
    PrintQuestion m_printQuestion;
};
