#include "window/positiondesk.h"

#include "window/deskdata.h"
#include "window/menuentry.h"
#include "window/seriesfollower.h"

#include <database/exception.h>
#include <position/legmodel.h>
#include <position/legtexts.h>
#include <position/positionpanel.h>

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QTableView>

#include <algorithm>
#include <cmath>

using Position::Leg;
using Position::LegKind;

/// A series beside the one shown, valued, and whoever tells when it has to be valued again.
struct PositionDesk::OtherSeries {
    explicit OtherSeries(QObject* parent)
        : follower(new SeriesFollower(parent))
    {
    }
    OtherSeries(const OtherSeries&) = delete;
    OtherSeries& operator=(const OtherSeries&) = delete;
    // It may be what has just told of a change.
    ~OtherSeries()
    {
        follower->follow(0);
        follower->deleteLater();
    }

    SeriesFollower* follower;
    /// Empty while the series cannot be valued.
    std::optional<ShownSeries> valued;
    bool isFresh = false;
};

namespace {

double rounded(double price, int decimals)
{
    const double factor = std::pow(10.0, decimals);
    return std::round(price * factor) / factor;
}

Position::SeriesValuation valuationOf(const ShownSeries& series)
{
    return {series.data.options.expiry, series.market, series.smile};
}

bool isSameStrike(double a, double b)
{
    constexpr double tolerance = 1e-9;
    return std::abs(a - b) <= tolerance * std::abs(a);
}

std::optional<double> theoreticalPrice(Leg leg, const ShownSeries& series)
{
    leg.price = 0.0;
    const Position::Profile one({leg}, {valuationOf(series)});
    if (one.isEmpty())
        return std::nullopt;
    return Position::unitValue(one.legs().first(), series.market.forward, series.market.time);
}

std::optional<StoredSeries> storedSeries(const QString& baseCode, const QDate& expiry)
{
    const QVector<StoredSeries> all = ChainStore::series(baseCode);
    const auto found = std::find_if(
        all.begin(), all.end(), [&expiry](const StoredSeries& series) { return series.expiry == expiry; });
    return found == all.end() ? std::nullopt : std::optional<StoredSeries>(*found);
}

}

PositionDesk::PositionDesk(DeskData& data, QMainWindow* window)
    : QObject(window)
    , m_data(data)
    , m_model(new Position::LegModel(*this, this))
    , m_dock(new QDockWidget(tr("Position"), window))
{
    createActions();
    m_panel = new Position::PositionPanel(m_model, m_actions, m_dock);
    // Deleting a leg is for whoever has the table before the eyes and at hand.
    m_panel->addActions(m_actions.mid(1));
    m_dock->setObjectName(QStringLiteral("positionDock"));
    m_dock->setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    m_dock->setWidget(m_panel);
    m_dock->hide();
    window->addDockWidget(Qt::BottomDockWidgetArea, m_dock);
    connect(m_model, SIGNAL(edited()), this, SLOT(onEdited()));
}

PositionDesk::~PositionDesk() = default;

QAction* PositionDesk::createAction(
    const QString& text, const QString& key, const QString& tip, const char* slot)
{
    auto* const action = new QAction(text, this);
    action->setShortcut(QKeySequence(key));
    action->setToolTip(tip);
    action->setStatusTip(tip);
    connect(action, SIGNAL(triggered()), this, slot);
    m_actions.append(action);
    return action;
}

void PositionDesk::createActions()
{
    createAction(
        tr("&Add leg"), QStringLiteral("Ins"), tr("Add a call at the money to the position"), SLOT(addLeg()));
    createAction(tr("&Remove leg"), QStringLiteral("Del"), tr("Remove the chosen leg from the position"),
        SLOT(removeLeg()))
        ->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    createAction(tr("Remove a&ll"), QStringLiteral("Ctrl+Del"), tr("Remove all legs of the position"),
        SLOT(removeAll()))
        ->setShortcutContext(Qt::WidgetWithChildrenShortcut);
}

void PositionDesk::addActions(QMenu* menu)
{
    menu->addActions(m_actions);
    menu->addSeparator();
    QAction* const visible = m_dock->toggleViewAction();
    visible->setText(tr("&Table"));
    visible->setShortcut(QKeySequence(QStringLiteral("Ctrl+B")));
    visible->setToolTip(tr("Show or hide the table of the position"));
    visible->setStatusTip(visible->toolTip());
    menu->addAction(visible);
    connect(addEntry(*menu,
                {tr("&Edit the table"), {QKeySequence(QStringLiteral("Ctrl+L"))},
                    tr("Take the keyboard to the table of the position")}),
        SIGNAL(triggered()), this, SLOT(editTable()));
}

void PositionDesk::setTableVisible(bool visible)
{
    m_dock->setVisible(visible);
}

QString PositionDesk::setFile(const QString& fileName)
{
    m_file = Position::PositionFile(fileName);
    if (m_shown)
        m_model->setLegs(m_file.legs(m_shown->data.baseCode));
    return m_file.problem();
}

void PositionDesk::takeBaseCode(const QString& baseCode)
{
    if (m_shown && m_shown->data.baseCode == baseCode)
        return;
    m_others.clear();
    m_model->setLegs(m_file.legs(baseCode));
}

void PositionDesk::value(ShownSeries* series, const QDate& asOf)
{
    takeBaseCode(series->data.baseCode);
    if (m_asOf != asOf)
        m_others.clear();
    m_asOf = asOf;
    m_shown = *series;
    forgetUnusedSeries();
    QVector<Position::SeriesValuation> valuations{valuationOf(*series)};
    for (const Leg& leg : m_model->legs()) {
        if (const ShownSeries* const own = seriesOf(leg.expiry))
            valuations.append(valuationOf(*own));
    }
    series->position = Position::Profile(m_model->legs(), valuations);
    m_shown->position = series->position;
    updateTable();
}

PositionDesk::OtherSeries& PositionDesk::otherSeries(const QDate& expiry) const
{
    std::unique_ptr<OtherSeries>& other = m_others[expiry];
    if (!other) {
        other = std::make_unique<OtherSeries>(m_model);
        connect(other->follower, SIGNAL(changed()), this, SLOT(onOtherSeriesChanged()));
    }
    if (other->isFresh)
        return *other;
    other->isFresh = true;
    other->valued.reset();
    const std::optional<StoredSeries> stored = storedSeries(m_shown->data.baseCode, expiry);
    if (!stored)
        return *other;
    other->follower->follow(stored->futureIsinId);
    try {
        SeriesFacts facts;
        facts.asOf = m_asOf;
        other->valued = m_data.valued(stored->futureIsinId, facts);
    } catch (const Exception&) {
        // The summary tells of legs without a value.
    }
    return *other;
}

void PositionDesk::forgetUnusedSeries()
{
    for (auto other = m_others.begin(); other != m_others.end();) {
        const bool isUsed = std::any_of(m_model->legs().begin(), m_model->legs().end(),
            [&other](const Leg& leg) { return leg.expiry == other->first; });
        other = isUsed ? std::next(other) : m_others.erase(other);
    }
}

void PositionDesk::showNothing()
{
    m_shown.reset();
    m_others.clear();
    m_model->setLegs({});
    m_panel->setSummary(QString());
}

void PositionDesk::forgetOtherSeries()
{
    m_others.clear();
}

void PositionDesk::updateTable()
{
    const int decimals = m_shown->data.decimals + 1;
    m_model->setProfile(m_shown->position, decimals);
    m_panel->setSummary(Position::LegTexts::summary(m_shown->position, decimals));
}

void PositionDesk::onEdited()
{
    if (!m_shown)
        return;
    if (!m_file.setLegs(m_shown->data.baseCode, m_model->legs()))
        Q_EMIT said(tr("The position could not be written to its file"));
    Q_EMIT changed();
}

void PositionDesk::onOtherSeriesChanged()
{
    for (auto& [expiry, other] : m_others) {
        if (other->follower == sender())
            other->isFresh = false;
    }
    Q_EMIT changed();
}

void PositionDesk::addLeg()
{
    if (!m_shown)
        return;
    const int row = m_model->addLeg();
    m_dock->show();
    m_panel->edit(row);
}

void PositionDesk::removeLeg()
{
    m_model->removeLeg(m_panel->currentRow());
}

void PositionDesk::removeAll()
{
    m_model->removeAll();
}

void PositionDesk::editTable()
{
    m_dock->show();
    m_panel->edit(std::max(m_panel->currentRow(), 0));
}

QVector<QDate> PositionDesk::expiries() const
{
    QVector<QDate> found;
    const QVector<StoredSeries> all
        = m_shown ? ChainStore::series(m_shown->data.baseCode) : QVector<StoredSeries>();
    for (const StoredSeries& series : all)
        found.append(series.expiry);
    return found;
}

// Null where the series is not there or cannot be valued.
const ShownSeries* PositionDesk::seriesOf(const QDate& expiry) const
{
    if (!m_shown)
        return nullptr;
    if (m_shown->data.options.expiry == expiry)
        return &*m_shown;
    const OtherSeries& other = otherSeries(expiry);
    return other.valued ? &*other.valued : nullptr;
}

Leg PositionDesk::suggestedLeg() const
{
    Leg leg;
    if (!m_shown)
        return leg;
    leg.expiry = m_shown->data.options.expiry;
    const double forward = m_shown->market.forward;
    leg.strike = forward;
    double nearest = forward;
    for (const OptionQuote& quote : m_shown->data.options.quotes) {
        const double strike = quote.strike.toDouble();
        if (std::abs(strike - forward) >= nearest)
            continue;
        nearest = std::abs(strike - forward);
        leg.strike = strike;
    }
    leg.price = price(leg).value_or(0.0);
    return leg;
}

std::optional<double> PositionDesk::price(const Leg& leg) const
{
    const ShownSeries* const series = seriesOf(leg.expiry);
    if (!series)
        return std::nullopt;
    if (leg.kind == LegKind::Future)
        return rounded(series->market.forward, series->data.decimals);
    const OptionType type = leg.kind == LegKind::Call ? OptionType::Call : OptionType::Put;
    for (const OptionQuote& quote : series->data.options.quotes) {
        const bool isOwn = quote.type == type && isSameStrike(quote.strike.toDouble(), leg.strike);
        if (isOwn && quote.price())
            return quote.price();
    }
    const std::optional<double> value = theoreticalPrice(leg, *series);
    return value ? std::optional<double>(rounded(*value, series->data.decimals)) : std::nullopt;
}
