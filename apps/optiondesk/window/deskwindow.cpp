#include "window/deskwindow.h"

#include "window/deskplot.h"
#include "window/desktexts.h"
#include "window/elidedlabel.h"
#include "window/exportactions.h"
#include "window/importactions.h"
#include "window/menuentry.h"
#include "window/positiondesk.h"
#include "window/seriesfollower.h"
#include "window/seriesselector.h"
#include "window/storedserieswatch.h"
#include "window/texts.h"
#include "window/viewactions.h"

#include <chain/chainreader.h>
#include <database/exception.h>
#include <work/workbar.h>

#include <QAction>
#include <QActionGroup>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

DeskWindow::DeskWindow(DeskData& deskData, DeskView view, QWidget* parent)
    : QMainWindow(parent)
    , m_data(deskData)
    , m_view(view)
    , m_plot(new DeskPlot(this))
    , m_position(new PositionDesk(deskData, this))
    , m_selector(new SeriesSelector(this))
    , m_follower(new SeriesFollower(this))
    , m_status(new ElidedLabel(this))
    , m_workBar(new WorkBar(this))
{
    setCentralWidget(m_plot);
    createFileMenu();
    createViewMenu();
    createPositionMenu();
    createToolBar();
    m_status->setContentsMargins(6, 0, 6, 0);
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_workBar);
    statusBar()->setSizeGripEnabled(false);
    // A window may be smaller than all its parts would like.
    setMinimumSize(1, 1);
    m_plot->setFocus();
    connect(m_selector, SIGNAL(chosen(int)), this, SLOT(chooseSeries(int)));
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
    m_imports = new ImportActions({[this](const OptionChain& chain) { return m_data.rowsOf(chain); },
                                      [this](ChainRows& rows, int position) { storeRows(rows, position); }},
        m_workBar, this, &menu);
    connect(m_imports, SIGNAL(said(QString)), this, SLOT(say(QString)));
    connect(m_imports, SIGNAL(failed(QString, QString)), this, SLOT(complain(QString, QString)));
    menu.addSeparator();
    m_exports = new ExportActions(m_plot, &menu);
    connect(m_exports, SIGNAL(done(QString)), this, SLOT(say(QString)));
    connect(m_exports, SIGNAL(failed(QString, QString)), this, SLOT(complain(QString, QString)));
    menu.addSeparator();
    connect(addAction(menu, tr("&Quit"), QStringLiteral("Ctrl+Q"), tr("Leave the option desk")),
        SIGNAL(triggered()), this, SLOT(close()));
}

void DeskWindow::createViewMenu()
{
    m_viewMenu = menuBar()->addMenu(tr("&View"));
    QMenu& menu = *m_viewMenu;
    addViews(menu);
    menu.addSeparator();
    addAxisModeActions(menu);
    menu.addSeparator();
    addSmileModels(menu);
    addGridAction(menu);
    menu.addSeparator();
    m_viewActions = new ViewActions(m_plot, &menu);
}

void DeskWindow::addViews(QMenu& menu)
{
    auto* const views = new QActionGroup(this);
    m_volatilityAction = addAction(
        menu, tr("Volatilit&y"), QStringLiteral("Ctrl+1"), tr("Show the volatility over the strikes"));
    m_valueAction = addAction(
        menu, tr("&Value"), QStringLiteral("Ctrl+2"), tr("Show the options' value over the strikes"));
    m_positionAction = addAction(menu, tr("&Position"), QStringLiteral("Ctrl+3"),
        tr("Show profit and loss of the position over the price"));
    const std::pair<QAction*, DeskView> all[] = {{m_volatilityAction, DeskView::Volatility},
        {m_valueAction, DeskView::Value}, {m_positionAction, DeskView::Position}};
    for (const auto& [action, view] : all) {
        action->setCheckable(true);
        action->setChecked(view == m_view);
        action->setData(int(view));
        views->addAction(action);
    }
    connect(views, SIGNAL(triggered(QAction*)), this, SLOT(onViewChosen(QAction*)));
}

void DeskWindow::createPositionMenu()
{
    m_position->addActions(menuBar()->addMenu(tr("&Position")));
    m_position->setTableVisible(m_view == DeskView::Position);
    connect(m_position, SIGNAL(changed()), this, SLOT(onPositionChanged()));
    connect(m_position, SIGNAL(said(QString)), this, SLOT(say(QString)));
}

void DeskWindow::addAxisModeActions(QMenu& menu)
{
    m_axisModes = new QActionGroup(this);
    int key = 1;
    for (const AxisModes::Description& mode : AxisModes::all()) {
        QAction* const action = addAction(menu, QCoreApplication::translate("AxisModes", mode.menuText),
            QStringLiteral("Alt+%1").arg(key++),
            tr("Label the price axis so: %1").arg(AxisModes::axisTitle(mode.mode, tr("Strike"))));
        action->setCheckable(true);
        action->setChecked(mode.mode == AxisMode::Price);
        action->setData(int(mode.mode));
        m_axisModes->addAction(action);
    }
    connect(m_axisModes, SIGNAL(triggered(QAction*)), this, SLOT(onAxisModeChosen(QAction*)));
}

void DeskWindow::addSmileModels(QMenu& menu)
{
    QMenu& models = *menu.addMenu(tr("S&mile"));
    m_smileModels = new QActionGroup(this);
    int key = 1;
    for (const SmileModels::Description& model : SmileModels::all()) {
        QAction* const action
            = addAction(models, DeskTexts::tr(model.menuText), QStringLiteral("Alt+Shift+%1").arg(key++),
                tr("Fit the smile so: %1").arg(SmileModels::name(model.model)));
        action->setCheckable(true);
        action->setChecked(model.model == Pricing::SmileModel::Spline);
        action->setData(int(model.model));
        m_smileModels->addAction(action);
    }
    connect(m_smileModels, SIGNAL(triggered(QAction*)), this, SLOT(onSmileModelChosen(QAction*)));
}

void DeskWindow::addGridAction(QMenu& menu)
{
    m_grid = addAction(
        menu, tr("&Grid"), QStringLiteral("Ctrl+G"), tr("Show or hide the grid behind the curves"));
    m_grid->setCheckable(true);
    m_grid->setChecked(true);
    connect(m_grid, SIGNAL(toggled(bool)), this, SLOT(onGridToggled(bool)));
}

void DeskWindow::createToolBar()
{
    QToolBar& bar = *addToolBar(tr("Series"));
    bar.setObjectName(QStringLiteral("seriesBar"));
    bar.setMovable(false);
    bar.setContextMenuPolicy(Qt::PreventContextMenu);
    bar.addWidget(m_selector);
    bar.addSeparator();
    bar.addAction(m_volatilityAction);
    bar.addAction(m_valueAction);
    bar.addAction(m_positionAction);
    bar.addSeparator();
    bar.addAction(m_viewActions->autoScaleAction());
}

void DeskWindow::showSeries(int futureIsinId, const SeriesFacts& given)
{
    const SeriesFollower::OwnWrites ownWrites(*m_follower);
    ShownSeries shown = m_data.show(futureIsinId, given);
    m_position->value(&shown, given.asOf);
    m_shown = std::move(shown);
    m_shown->filter = m_filter;
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
    m_exports->setDocumentName(Texts::documentName(m_shown->data));
    Q_EMIT shownChanged();
}

void DeskWindow::showReason(const QString& reason)
{
    m_shown.reset();
    m_position->showNothing();
    m_plot->showNothing(reason);
    m_status->setFullText(reason);
    Q_EMIT shownChanged();
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
        m_shown->filter = m_filter;
        m_position->value(&*m_shown, m_given.asOf);
        m_plot->updateSeries(*m_shown);
        tellOfSeries();
    } catch (const Exception& error) {
        showReason(Texts::oneLine(error.text()));
    }
}

void DeskWindow::onPositionChanged()
{
    if (!m_shown)
        return;
    m_position->value(&*m_shown, m_given.asOf);
    if (m_view == DeskView::Position)
        m_plot->updateSeries(*m_shown);
}

void DeskWindow::say(const QString& text)
{
    constexpr int milliseconds = 20000;
    if (!text.isEmpty())
        statusBar()->showMessage(Texts::oneLine(text), milliseconds);
}

void DeskWindow::onStoredSeriesChanged()
{
    m_selector->setSeries(m_data.series(), m_futureIsinId);
}

void DeskWindow::importChain(const QString& fileName)
{
    OptionChain chain = readChain(fileName);
    const int position = applyFacts(SeriesFacts(), &chain);
    storeRows(*m_data.rowsOf(chain), position);
}

void DeskWindow::storeRows(ChainRows& rows, int position)
{
    int futureIsinId = 0;
    const SeriesFollower::OwnWrites ownWrites(*m_follower);
    try {
        futureIsinId = m_data.store(rows, position);
    } catch (const Exception&) {
        // The attempt took the forward back from the future of the series shown.
        if (m_shown)
            m_data.show(m_futureIsinId, m_given);
        throw;
    }
    showSeries(futureIsinId, SeriesFacts());
}

void DeskWindow::chooseSeries(int futureIsinId)
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
        m_selector->setSeries(m_data.series(), futureIsinId);
        showReason(Texts::oneLine(error.text()));
    }
}

void DeskWindow::onViewChosen(QAction* action)
{
    setView(DeskView(action->data().toInt()));
}

void DeskWindow::setView(DeskView view)
{
    m_view = view;
    for (QAction* const action : {m_volatilityAction, m_valueAction, m_positionAction})
        action->setChecked(DeskView(action->data().toInt()) == view);
    m_position->setTableVisible(view == DeskView::Position);
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

void DeskWindow::setFilter(const Pricing::OptionFilter& filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    if (m_shown) {
        m_shown->filter = filter;
        m_plot->updateSeries(*m_shown);
        Q_EMIT shownChanged();
    }
    Q_EMIT filterChanged();
}

AxisMode DeskWindow::axisMode() const
{
    return AxisMode(m_axisModes->checkedAction()->data().toInt());
}

void DeskWindow::setGridVisible(bool visible)
{
    m_grid->setChecked(visible);
}

bool DeskWindow::isGridVisible() const
{
    return m_grid->isChecked();
}

void DeskWindow::setImportFolder(const QString& folder)
{
    m_imports->setFolder(folder);
}

QString DeskWindow::importFolder() const
{
    return m_imports->folder();
}

void DeskWindow::onAxisModeChosen(QAction* action)
{
    m_plot->setAxisMode(AxisMode(action->data().toInt()));
}

void DeskWindow::setSmileModel(Pricing::SmileModel model)
{
    const QList<QAction*> actions = m_smileModels->actions();
    for (QAction* const action : actions) {
        if (action->data().toInt() == int(model))
            action->setChecked(true);
    }
    m_data.setSmileModel(model);
    m_position->forgetOtherSeries();
    if (m_shown)
        onSeriesChanged();
}

Pricing::SmileModel DeskWindow::smileModel() const
{
    return Pricing::SmileModel(m_smileModels->checkedAction()->data().toInt());
}

void DeskWindow::onSmileModelChosen(QAction* action)
{
    setSmileModel(Pricing::SmileModel(action->data().toInt()));
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
