#include "window/desklegend.h"

#include "window/curvelook.h"
#include "window/entryicon.h"
#include "window/legendcolumns.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QLayout>
#include <QMenu>
#include <QPainter>
#include <QScrollArea>
#include <QShortcut>

#include <qwt_legend_label.h>
#include <qwt_plot_layout.h>
#include <qwt_text.h>

#include <algorithm>

namespace {

// Pixels between the entries, to the left and right inside of each, and around all.
constexpr int spacing = 2;
constexpr int margin = 5;
constexpr int reserve = 20;

const QColor uncheckedColor(Qt::gray);

template <typename Slot>
QAction* addChoice(QMenu& menu, const QString& text, const QString& tip, const DeskLegend* legend, Slot slot)
{
    QAction* const action = menu.addAction(text, legend, slot);
    action->setToolTip(tip);
    action->setStatusTip(tip);
    return action;
}

}

DeskLegend::DeskLegend(PriceBased2dPlot* plot)
    : PriceBased2dPlotLegend(plot)
    , m_plot(plot)
{
    contentsWidget()->layout()->setSpacing(spacing);
    findChild<QScrollArea*>()->setAccessibleName(tr("Legend"));
    // Not every platform makes a request for a menu of it.
    new QShortcut(QKeySequence(QStringLiteral("Shift+F10")), this, SLOT(openMenuOfFocus()), nullptr,
        Qt::WidgetWithChildrenShortcut);
}

// Those that wait for their deletion have left the layout.
QList<LabelWidget*> DeskLegend::entries() const
{
    QList<LabelWidget*> found;
    const QLayout* const layout = contentsWidget()->layout();
    for (int i = 0; i < layout->count(); ++i) {
        if (auto* const entry = qobject_cast<LabelWidget*>(layout->itemAt(i)->widget()))
            found.append(entry);
    }
    return found;
}

void DeskLegend::arrange(int width)
{
    QVector<int> widths;
    const QList<LabelWidget*> all = entries();
    for (const LabelWidget* const entry : all) {
        entry->layout()->setContentsMargins(margin, 1, margin, 1);
        // It may have been laid out before it got its icon and text.
        entry->layout()->activate();
        widths.append(entry->sizeHint().width());
    }
    // The layout of an empty legend asks for a size below zero.
    contentsWidget()->layout()->setEnabled(!all.isEmpty());
    // The legend itself puts all entries in one row and scrolls.
    setMaxColumns(uint(LegendColumns::thatFit(widths, spacing, width - reserve)));
    limitHeight(all);
    // It would keep those of before when it gets narrower.
    contentsWidget()->layout()->update();
}

void DeskLegend::limitHeight(const QList<LabelWidget*>& all)
{
    constexpr double largestPart = 0.2;
    constexpr int fewestRows = 2;
    int row = 0;
    for (const LabelWidget* const entry : all)
        row = std::max(row, entry->sizeHint().height());
    const double least = fewestRows * row + (fewestRows + 1) * spacing;
    const double height = std::max(1, m_plot->height());
    m_plot->plotLayout()->setLegendRatio(std::clamp(least / height, largestPart, 1.0));
}

const PriceBased2dPlotCurve* DeskLegend::curveOf(const QWidget* part) const
{
    while (part && !qobject_cast<const LabelWidget*>(part))
        part = part->parentWidget();
    return part ? dynamic_cast<PriceBased2dPlotCurve*>(m_plot->infoToItem(itemInfo(part))) : nullptr;
}

void DeskLegend::updateWidget(QWidget* widget, const QwtLegendData& legendData)
{
    PriceBased2dPlotLegend::updateWidget(widget, legendData);
    if (auto* const label = widget->findChild<QwtLegendLabel*>())
        label->installEventFilter(this);
}

bool DeskLegend::eventFilter(QObject* watched, QEvent* event)
{
    auto* const label = event->type() == QEvent::Paint ? qobject_cast<QwtLegendLabel*>(watched) : nullptr;
    return label ? paintLabel(*label) : PriceBased2dPlotLegend::eventFilter(watched, event);
}

// A label would paint its icon as a pixmap of as many device pixels as the icon has in the plot's pixels, and
// then stretched.
bool DeskLegend::paintLabel(QwtLegendLabel& label) const
{
    const PriceBased2dPlotCurve* const curve = curveOf(&label);
    const auto* const box = label.parentWidget()->findChild<QCheckBox*>();
    if (!curve || !box)
        return false;
    const QRect contents = label.contentsRect();
    QRect place(QPoint(), label.icon().size());
    place.moveCenter(contents.center());
    place.moveLeft(contents.left() + label.margin());

    QPainter painter(&label);
    EntryIcon::paint(painter, place, *curve, box->isChecked() ? curve->pen().color() : uncheckedColor);
    painter.setFont(label.font());
    label.text().draw(&painter, label.textRect());
    return true;
}

QStringList DeskLegend::titles() const
{
    QStringList found;
    const QList<LabelWidget*> all = entries();
    for (const LabelWidget* const entry : all) {
        if (const PriceBased2dPlotCurve* const curve = curveOf(entry))
            found.append(curve->title().text());
    }
    return found;
}

void DeskLegend::showOnly(const QString& title)
{
    const QStringList all = titles();
    for (const QString& each : all)
        setCheckBoxChecked(each, each == title);
}

void DeskLegend::showAll()
{
    const QStringList all = titles();
    for (const QString& title : all)
        setCheckBoxChecked(title, true);
}

void DeskLegend::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        openMenuOfFocus();
    else if (const PriceBased2dPlotCurve* const curve = curveOf(childAt(event->pos())))
        openMenu(*curve, event->globalPos());
    else
        event->ignore();
}

void DeskLegend::openMenuOfFocus()
{
    const QWidget* const focus = QApplication::focusWidget();
    if (const PriceBased2dPlotCurve* const curve = curveOf(focus))
        openMenu(*curve, focus->mapToGlobal(focus->rect().bottomLeft()));
}

// The curve may be gone by the time the user chooses, hence its title.
void DeskLegend::openMenu(const PriceBased2dPlotCurve& curve, const QPoint& globalPosition)
{
    const QString title = curve.title().text();
    // In the look of the window: the plot is white.
    auto* const menu = new QMenu(title, window());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(tr("Curve %1").arg(title));
    menu->setToolTipsVisible(true);
    addChoice(
        *menu, tr("&Only this curve"), tr("Hide all other curves"), this, [this, title] { showOnly(title); });
    addChoice(*menu, tr("&All curves"), tr("Show all curves"), this, [this] { showAll(); });
    menu->addSeparator();
    const bool isFree = CurveLook::hasFreeColor(curve);
    QAction* const color = addChoice(*menu, tr("&Colour..."),
        isFree ? tr("Choose another colour for this curve") : tr("This curve always has this colour"), this,
        [this, title] { Q_EMIT colorRequested(title); });
    color->setEnabled(isFree);
    menu->popup(globalPosition);
}
