#include "window/exportactions.h"

#include "output/plotprint.h"
#include "window/curvelook.h"
#include "window/deskplot.h"
#include "window/menuentry.h"
#include "window/texts.h"

#include <database/exception.h>

#include <QActionGroup>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>

namespace {

QString filterOf(ExportFormat format)
{
    switch (format) {
    case ExportFormat::Png:
        return ExportActions::tr("Pictures (*.png)");
    case ExportFormat::Svg:
        return ExportActions::tr("Drawings (*.svg)");
    case ExportFormat::Pdf:
        return ExportActions::tr("Pages (*.pdf)");
    case ExportFormat::Csv:
        break;
    }
    return ExportActions::tr("Tables (*.csv)");
}

QString suffixOf(ExportFormat format)
{
    return PlotExport::suffixes().at(int(format));
}

// A printer that writes a file takes its name from the document, too.
QString fileNameOf(const QString& document)
{
    static const QRegularExpression forbidden(QStringLiteral("[\\x00-\\x1f\\x7f/\\\\:*?\"<>|]"));
    return QString(document).replace(forbidden, QStringLiteral("-"));
}

QString askByDialog(const QString& suggestion, ExportFormat format, QWidget* parent)
{
    QFileDialog dialog(parent, ExportActions::tr("Export the plot"), suggestion, filterOf(format));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffixOf(format));
    dialog.selectFile(QFileInfo(suggestion).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

bool askForPrinter(QPrinter* printer, QWidget* parent)
{
    return QPrintDialog(printer, parent).exec() == QDialog::Accepted;
}

}

ExportActions::ExportActions(DeskPlot* plot, QMenu* menu)
    : QObject(menu)
    , m_plot(plot)
    , m_fileQuestion(&askByDialog)
    , m_printQuestion(&askForPrinter)
{
    QMenu& exports = *menu->addMenu(tr("&Export"));
    addExports(exports);
    exports.addSeparator();
    addScales(exports);
    addCopies(*menu->addMenu(tr("&Copy")));
    connect(
        addEntry(*menu,
            {tr("&Print..."), {QKeySequence(QStringLiteral("Ctrl+P"))}, tr("Print the plot on one page")}),
        SIGNAL(triggered()), this, SLOT(onPrint()));
}

void ExportActions::addExports(QMenu& menu)
{
    struct Export {
        ExportFormat format;
        MenuEntry entry;
    };
    const Export all[] = {
        {ExportFormat::Png,
            {tr("&PNG picture..."), {QKeySequence(QStringLiteral("Ctrl+S"))},
                tr("Save the plot as a picture of pixels")}},
        {ExportFormat::Svg,
            {tr("&SVG drawing..."), {QKeySequence(QStringLiteral("Ctrl+Shift+S"))},
                tr("Save the plot as a drawing that is sharp at any size")}},
        {ExportFormat::Pdf,
            {tr("P&DF page..."), {QKeySequence(QStringLiteral("Ctrl+Shift+D"))},
                tr("Save the plot as a page for documents")}},
        {ExportFormat::Csv,
            {tr("&CSV table..."), {QKeySequence(QStringLiteral("Ctrl+Shift+E"))},
                tr("Save the samples of the visible curves for a spreadsheet")}},
    };
    auto* const group = new QActionGroup(this);
    for (const Export& each : all) {
        QAction* const action = addEntry(menu, each.entry);
        action->setData(int(each.format));
        group->addAction(action);
    }
    connect(group, SIGNAL(triggered(QAction*)), this, SLOT(onExport(QAction*)));
}

// Their keys count while the plot has the keyboard: texts and tables elsewhere are copied by the same ones.
void ExportActions::addCopies(QMenu& menu)
{
    struct Copy {
        ExportFormat format;
        MenuEntry entry;
    };
    const Copy all[] = {
        {ExportFormat::Png,
            {tr("&Picture"), {QKeySequence(QStringLiteral("Ctrl+C"))},
                tr("Copy the plot to the clipboard as a picture of pixels")}},
        {ExportFormat::Svg,
            {tr("&SVG drawing"), {QKeySequence(QStringLiteral("Ctrl+Alt+S"))},
                tr("Copy the plot to the clipboard as an SVG drawing")}},
        {ExportFormat::Pdf,
            {tr("P&DF page"), {QKeySequence(QStringLiteral("Ctrl+Alt+D"))},
                tr("Copy the plot to the clipboard as a PDF page")}},
        {ExportFormat::Csv,
            {tr("&CSV table"), {QKeySequence(QStringLiteral("Ctrl+Alt+C"))},
                tr("Copy the samples of the visible curves to the clipboard as text")}},
    };
    auto* const group = new QActionGroup(this);
    for (const Copy& each : all) {
        QAction* const action = addEntry(menu, each.entry);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_plot->addAction(action);
        action->setData(int(each.format));
        group->addAction(action);
    }
    connect(group, SIGNAL(triggered(QAction*)), this, SLOT(onCopy(QAction*)));
}

void ExportActions::addScales(QMenu& menu)
{
    QMenu& scales = *menu.addMenu(tr("Si&ze of PNG pictures"));
    auto* const group = new QActionGroup(this);
    for (int scale = PlotExport::smallestScale; scale <= PlotExport::largestScale; ++scale) {
        QAction* const action = addEntry(scales,
            {tr("&%1\u00d7").arg(scale), {QKeySequence(QStringLiteral("Ctrl+Alt+%1").arg(scale))},
                tr("Save and copy PNG pictures at %1 times the size of the plot on the screen").arg(scale)});
        action->setCheckable(true);
        action->setChecked(scale == m_scale);
        action->setData(scale);
        group->addAction(action);
        m_scales.append(action);
    }
    connect(group, SIGNAL(triggered(QAction*)), this, SLOT(onScaleChosen(QAction*)));
}

void ExportActions::setFolder(const QString& folder)
{
    if (!folder.isEmpty() && QFileInfo(folder).isDir())
        m_folder = folder;
}

void ExportActions::setScale(int scale)
{
    for (QAction* const action : qAsConst(m_scales)) {
        if (action->data().toInt() != scale)
            continue;
        action->setChecked(true);
        m_scale = scale;
    }
}

void ExportActions::onScaleChosen(QAction* action)
{
    m_scale = action->data().toInt();
}

ExportOptions ExportActions::options() const
{
    return {m_plot->size(), m_scale, m_plot->priceTitle(), &CurveLook::key};
}

QString ExportActions::suggestion(ExportFormat format) const
{
    const QString name = fileNameOf(m_documentName.isEmpty() ? QStringLiteral("optiondesk") : m_documentName)
        + QLatin1Char('.') + suffixOf(format);
    return m_folder.isEmpty() ? name : QDir(m_folder).filePath(name);
}

template <typename Work> void ExportActions::attempt(const QString& title, const Work& work)
{
    try {
        Q_EMIT done(work());
    } catch (const Exception& error) {
        Q_EMIT failed(title, Texts::oneLine(error.text()));
    }
}

void ExportActions::onExport(QAction* action)
{
    exportAs(ExportFormat(action->data().toInt()));
}

void ExportActions::exportAs(ExportFormat format)
{
    const QPointer<ExportActions> self(this);
    const QString fileName = m_fileQuestion(suggestion(format), format, m_plot->window());
    if (!self || !m_plot || fileName.isEmpty())
        return;
    attempt(tr("Export"), [&] {
        const ExportFormat written = PlotExport::formatOf(fileName).value_or(format);
        PlotExport::save(*m_plot, written, options(), fileName);
        m_folder = QFileInfo(fileName).absolutePath();
        return tr("Saved as %1").arg(QDir::toNativeSeparators(fileName));
    });
}

void ExportActions::onCopy(QAction* action)
{
    attempt(tr("Copy"), [&] {
        const auto format = ExportFormat(action->data().toInt());
        QGuiApplication::clipboard()->setMimeData(PlotExport::mimeData(*m_plot, format, options()).release());
        return tr("Copied to the clipboard");
    });
}

void ExportActions::onPrint()
{
    QPrinter printer(QPrinter::HighResolution);
    PlotPrint::prepare(*m_plot, printer);
    if (!m_documentName.isEmpty())
        printer.setDocName(fileNameOf(m_documentName));
    const QPointer<ExportActions> self(this);
    if (!m_printQuestion(&printer, m_plot->window()) || !self || !m_plot)
        return;
    attempt(tr("Print"), [&] {
        PlotPrint::print(*m_plot, printer);
        return tr("Printed");
    });
}
