#include "window/deskwindow.h"

#include "window/chainloader.h"
#include "window/deskplot.h"
#include "window/elidedlabel.h"
#include "window/menuentry.h"
#include "window/picture.h"
#include "window/seriesfollower.h"
#include "window/seriesselector.h"
#include "window/storedserieswatch.h"
#include "window/texts.h"
#include "window/viewactions.h"

#include <chain/chainerror.h>
#include <database/exception.h>

#include <QAction>
#include <QActionGroup>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

DeskWindow::DeskWindow(DeskData& deskData, DeskView view, QWidget* parent)
    : QMainWindow(parent)
    , m_data(deskData)
    , m_view(view)
    , m_plot(new DeskPlot(this))
    , m_selector(new SeriesSelector(this))
    , m_follower(new SeriesFollower(this))
    , m_status(new ElidedLabel(this))
{
    setCentralWidget(m_plot);
    createFileMenu();
    createViewMenu();
    createToolBar();
    m_status->setContentsMargins(6, 0, 6, 0);
    statusBar()->addWidget(m_status, 1);
    statusBar()->setSizeGripEnabled(false);
    // A window may be smaller than all its parts would like.
    setMinimumSize(1, 1);
    m_plot->setFocus();
    connect(m_selector, SIGNAL(chosen(int)), this, SLOT(onSeriesChosen(int)));
    connect(m_follower, SIGNAL(changed()), this, SLOT(onSeriesChanged()));
    connect(new StoredSeriesWatch(this), SIGNAL(changed()), this, SLOT(onStoredSeriesChanged()));
}

QAction* DeskWindow::addAction(QMenu& menu, const QString& text, const QString& shortcut, const QString& tip)
{
    return addEntry(menu, {text, {QKeySequence(shortcut)}, tip});
}

void DeskWindow::createFileMenu()
{
    QMenu& menu = *menuBar()->addMenu(tr("&File"));
    connect(
        addAction(menu, tr("&Import..."), QStringLiteral("Ctrl+O"), tr("Import an option chain from a file")),
        SIGNAL(triggered()), this, SLOT(onImport()));
    connect(
        addAction(menu, tr("&Save picture..."), QStringLiteral("Ctrl+S"), tr("Save a picture of the window")),
        SIGNAL(triggered()), this, SLOT(onSavePicture()));
    menu.addSeparator();
    connect(addAction(menu, tr("&Quit"), QStringLiteral("Ctrl+Q"), tr("Leave the option desk")),
        SIGNAL(triggered()), this, SLOT(close()));
}

void DeskWindow::createViewMenu()
{
    QMenu& menu = *menuBar()->addMenu(tr("&View"));
    auto* const views = new QActionGroup(this);
    m_volatilityAction = addAction(
        menu, tr("&Volatility"), QStringLiteral("Ctrl+1"), tr("Show the volatility over the strikes"));
    m_valueAction = addAction(
        menu, tr("V&alue"), QStringLiteral("Ctrl+2"), tr("Show the options' value over the strikes"));
    for (QAction* const action : {m_volatilityAction, m_valueAction}) {
        action->setCheckable(true);
        views->addAction(action);
    }
    (m_view == DeskView::Volatility ? m_volatilityAction : m_valueAction)->setChecked(true);
    connect(views, SIGNAL(triggered(QAction*)), this, SLOT(onViewChosen(QAction*)));

    menu.addSeparator();
    addAxisModeActions(menu);
    menu.addSeparator();
    addGridAction(menu);
    menu.addSeparator();
    m_viewActions = new ViewActions(m_plot, &menu);
}

void DeskWindow::addAxisModeActions(QMenu& menu)
{
    m_axisModes = new QActionGroup(this);
    int key = 1;
    for (const AxisModes::Description& mode : AxisModes::all()) {
        QAction* const action = addAction(menu, mode.menuText, QStringLiteral("Alt+%1").arg(key++),
            tr("Label the price axis so: %1").arg(AxisModes::axisTitle(mode.mode)));
        action->setCheckable(true);
        action->setChecked(mode.mode == AxisMode::Price);
        action->setData(int(mode.mode));
        m_axisModes->addAction(action);
    }
    connect(m_axisModes, SIGNAL(triggered(QAction*)), this, SLOT(onAxisModeChosen(QAction*)));
}

void DeskWindow::addGridAction(QMenu& menu)
{
    QAction* const grid = addAction(
        menu, tr("&Grid"), QStringLiteral("Ctrl+G"), tr("Show or hide the grid behind the curves"));
    grid->setCheckable(true);
    grid->setChecked(true);
    connect(grid, SIGNAL(toggled(bool)), this, SLOT(onGridToggled(bool)));
}

void DeskWindow::createToolBar()
{
    QToolBar& bar = *addToolBar(tr("Series"));
    bar.setMovable(false);
    bar.setContextMenuPolicy(Qt::PreventContextMenu);
    bar.addWidget(m_selector);
    bar.addSeparator();
    bar.addAction(m_volatilityAction);
    bar.addAction(m_valueAction);
    bar.addSeparator();
    bar.addAction(m_viewActions->autoScaleAction());
}

void DeskWindow::showSeries(int futureIsinId, const SeriesFacts& given)
{
    const SeriesFollower::OwnWrites ownWrites(*m_follower);
    ShownSeries shown = m_data.show(futureIsinId, given);
    m_shown = std::move(shown);
    m_futureIsinId = futureIsinId;
    m_given = given;
    m_follower->follow(futureIsinId);
    m_selector->setSeries(m_data.series(), futureIsinId);
    draw();
}

void DeskWindow::draw()
{
    if (!m_shown)
        return;
    m_plot->showSeries(m_futureIsinId, *m_shown, m_view);
    tellOfSeries();
}

void DeskWindow::tellOfSeries()
{
    setWindowTitle(tr("%1 - Option desk").arg(Texts::seriesName(m_shown->data)));
    QString status = Texts::status(*m_shown);
    const QString notice = Texts::notice(*m_shown);
    if (!notice.isEmpty())
        status.prepend(notice + QStringLiteral(" \u00b7 "));
    m_status->setFullText(status);
}

void DeskWindow::showReason(const QString& reason)
{
    m_shown.reset();
    m_plot->showNothing(reason);
    m_status->setFullText(reason);
}

void DeskWindow::onSeriesChanged()
{
    try {
        const int current = m_data.current(m_futureIsinId);
        if (!m_shown || current != m_futureIsinId) {
            showSeries(current, m_given);
            return;
        }
        const SeriesFollower::OwnWrites ownWrites(*m_follower);
        m_shown = m_data.show(m_futureIsinId, m_given);
        m_plot->updateSeries(*m_shown);
        tellOfSeries();
    } catch (const Exception& error) {
        showReason(Texts::oneLine(error.text()));
    }
}

void DeskWindow::onStoredSeriesChanged()
{
    m_selector->setSeries(m_data.series(), m_futureIsinId);
}

void DeskWindow::importChain(const QString& fileName)
{
    OptionChain chain = loadChain(fileName, this);
    const int position = applyFacts(SeriesFacts(), &chain);
    int futureIsinId = 0;
    const SeriesFollower::OwnWrites ownWrites(*m_follower);
    try {
        futureIsinId = m_data.import(chain, position);
    } catch (const Exception&) {
        // The attempt took the forward back from the future of the series shown.
        if (m_shown)
            m_data.show(m_futureIsinId, m_given);
        throw;
    }
    showSeries(futureIsinId, SeriesFacts());
}

void DeskWindow::onSeriesChosen(int futureIsinId)
{
    // The forward and the expiry were those of the series shown first.
    SeriesFacts facts;
    facts.asOf = m_given.asOf;
    try {
        showSeries(futureIsinId, facts);
    } catch (const Exception& error) {
        // The prices to take a forward from may still come.
        m_futureIsinId = futureIsinId;
        m_given = facts;
        m_follower->follow(futureIsinId);
        showReason(Texts::oneLine(error.text()));
    }
}

void DeskWindow::onViewChosen(QAction* action)
{
    m_view = action == m_valueAction ? DeskView::Value : DeskView::Volatility;
    draw();
}

void DeskWindow::setAxisMode(AxisMode mode)
{
    const QList<QAction*> actions = m_axisModes->actions();
    for (QAction* const action : actions) {
        if (action->data().toInt() == int(mode))
            action->setChecked(true);
    }
    m_plot->setAxisMode(mode);
}

void DeskWindow::onAxisModeChosen(QAction* action)
{
    m_plot->setAxisMode(AxisMode(action->data().toInt()));
}

void DeskWindow::onGridToggled(bool shown)
{
    m_plot->setGridVisible(shown);
    m_plot->replot();
}

void DeskWindow::complain(const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void DeskWindow::onImport()
{
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Import an option chain"), QString(),
        tr("Option chains (*.csv *.txt *.tsv);;All files (*)"));
    if (fileName.isEmpty())
        return;
    try {
        importChain(fileName);
    } catch (const ChainError& error) {
        if (!error.isCancelled())
            complain(tr("Import"), error.text());
    } catch (const Exception& error) {
        complain(tr("Import"), error.text());
    }
}

void DeskWindow::onSavePicture()
{
    const QImage image = Picture::take(*this, size());
    QString fileName = QFileDialog::getSaveFileName(
        this, tr("Save a picture"), QStringLiteral("optiondesk.png"), tr("Pictures (*.png *.jpg *.bmp)"));
    if (fileName.isEmpty())
        return;
    try {
        if (Picture::formatOf(fileName).isEmpty())
            fileName += QStringLiteral(".png");
        Picture::save(image, fileName);
    } catch (const Exception& error) {
        complain(tr("Save picture"), error.text());
    }
}
