#include "window/importactions.h"

#include "window/desktexts.h"
#include "window/menuentry.h"

#include <work/work.h>
#include <work/workbar.h>

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>

namespace {

QString askForFile(const QString& folder, QWidget* parent)
{
    return QFileDialog::getOpenFileName(parent, DeskTexts::tr("Import an option chain"), folder,
        DeskTexts::tr("Option chains (*.csv *.txt *.tsv);;All files (*)"));
}

// Empty unless it is one file of this machine.
QString fileOf(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

}

ImportActions::ImportActions(
    const ChainImporter::Store& store, WorkBar* bar, QMainWindow* window, QMenu* menu)
    : QObject(window)
    , m_window(window)
    , m_importer(new ChainImporter(store, this))
    , m_fileQuestion(askForFile)
{
    connect(addEntry(*menu,
                {tr("&Import..."), {QKeySequence(QStringLiteral("Ctrl+O"))},
                    tr("Import an option chain from a file")}),
        SIGNAL(triggered()), this, SLOT(onImport()));
    bar->setCancelAction(addEntry(*menu,
        {tr("Ca&ncel"), {QKeySequence(QStringLiteral("Ctrl+."))},
            tr("Stop the import or the fit that is going on (Escape does, too)")}));
    bar->add(m_importer->work());
    connect(m_importer, SIGNAL(failed(QString)), this, SLOT(onFailed(QString)));
    connect(m_importer, SIGNAL(cancelled()), this, SLOT(onCancelled()));
    connect(m_importer, SIGNAL(imported(QString)), this, SLOT(onImported(QString)));
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

void ImportActions::setFolder(const QString& folder)
{
    if (QFileInfo(folder).isDir())
        m_folder = folder;
}

void ImportActions::import(const QString& fileName)
{
    if (m_importer->isRunning()) {
        Q_EMIT said(tr("%1 is being imported; import %2 when that is done")
                        .arg(QFileInfo(m_importer->fileName()).fileName(), QFileInfo(fileName).fileName()));
        return;
    }
    setFolder(QFileInfo(fileName).absolutePath());
    m_importer->start(fileName);
}

void ImportActions::onImport()
{
    const QString fileName = m_fileQuestion(m_folder, m_window);
    if (!fileName.isEmpty())
        import(fileName);
}

void ImportActions::onFailed(const QString& reason)
{
    Q_EMIT failed(tr("Import"), reason);
}

void ImportActions::onCancelled()
{
    Q_EMIT said(tr("The import of %1 was cancelled; nothing has changed")
                    .arg(QFileInfo(m_importer->fileName()).fileName()));
}

void ImportActions::onImported(const QString& fileName)
{
    Q_EMIT said(tr("%1 is imported").arg(QFileInfo(fileName).fileName()));
}

bool ImportActions::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close && watched == m_window)
        m_importer->cancel();
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    // A drag that has entered stands for its moves as well.
    auto* const drop = static_cast<QDropEvent*>(event);
    const QString fileName = fileOf(drop->mimeData());
    if (fileName.isEmpty())
        return QObject::eventFilter(watched, event);
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop)
        import(fileName);
    return true;
}
