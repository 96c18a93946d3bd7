#include "plot2d/pricebased2dplotlegend.h"

#include "legendcheckbox_p.h"
#include "legendicons_p.h"
#include "legendstate_p.h"
#include "plot2d/pricebased2dplot.h"

#include <database/settings.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <qwt_dyngrid_layout.h>
#include <qwt_legend_label.h>
#include <qwt_plot_marker.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <algorithm>

namespace {

const QColor CheckedLabelColor(Qt::black);
const QColor UncheckedLabelColor(Qt::darkGray);

QString settingsKey()
{
    return QStringLiteral("legendItemKeys");
}

template <class Widget> Widget* widgetAt(const QLayout* layout, int index)
{
    QLayoutItem* item = layout ? layout->itemAt(index) : nullptr;
    return item ? qobject_cast<Widget*>(item->widget()) : nullptr;
}

/// The data types of the attached curves, and the one that stands for all of them.
QSet<int> typesOfCurves(const PriceBased2dPlot& plot)
{
    QSet<int> types{-1};
    const QList<PriceBased2dPlotCurve*> curves = plot.attachedCurves(-1);
    for (const PriceBased2dPlotCurve* curve : curves)
        types.insert(curve->dataType());
    return types;
}

bool hasTwoItems(const QLayout* layout)
{
    return layout && layout->count() == 2;
}

}

/// While it lives, a check box survives its entry: the box goes on working after it has told of its change.
class LabelWidget::Telling {
public:
    explicit Telling(QCheckBox* checkBox)
        : m_widget(qobject_cast<LabelWidget*>(checkBox->parentWidget()))
        , m_checkBox(checkBox)
        , m_isOutermost(m_widget && !m_widget->m_tellingBox)
    {
        if (m_isOutermost)
            m_widget->m_tellingBox = checkBox;
    }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
    ~Telling()
    {
        if (m_isOutermost && m_widget)
            m_widget->m_tellingBox.clear();
        else if (m_isOutermost && m_checkBox)
            m_checkBox->deleteLater();
    }

private:
    const QPointer<LabelWidget> m_widget;
    const QPointer<QCheckBox> m_checkBox;
    const bool m_isOutermost;
};

LabelWidget::LabelWidget(QWidget* parent)
    : QWidget(parent)
{
}

LabelWidget::~LabelWidget()
{
    if (m_tellingBox)
        m_tellingBox->setParent(nullptr);
}

void LabelWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && hasTwoItems(layout())) {
        auto* checkBox = widgetAt<QCheckBox>(layout(), 0);
        if (!checkBox)
            return;
        // Whoever listens to the legend may take this very widget away.
        const QPointer<LabelWidget> self(this);
        checkBox->toggle();
        if (!self)
            return;
    }
    QWidget::mousePressEvent(event);
}

PriceBased2dPlotLegend::PriceBased2dPlotLegend(QwtPlot* plot)
    : QwtLegend(plot)
    , m_plot(plot)
{
    m_layout = qobject_cast<QwtDynGridLayout*>(contentsWidget()->layout());
    if (m_layout)
        m_layout->setSizeConstraint(QLayout::SetFixedSize);
    contentsWidget()->parentWidget()->installEventFilter(this);
    horizontalScrollBar()->installEventFilter(this);
    verticalScrollBar()->installEventFilter(this);
}

PriceBased2dPlotLegend::~PriceBased2dPlotLegend() = default;

void PriceBased2dPlotLegend::initCore()
{
    createResetIcons();
}

void PriceBased2dPlotLegend::wheelEvent(QWheelEvent* event)
{
    event->accept();
}

bool PriceBased2dPlotLegend::eventFilter(QObject* watched, QEvent* event)
{
    // A check box accepts a press but hands on the moves of a drag that has left it; the plot would take them
    // for those of the drag whose press it saw last.
    const bool isView = watched == contentsWidget()->parentWidget();
    const bool kept = event->type() == QEvent::Wheel || (isView && event->type() == QEvent::MouseMove);
    if (!kept)
        return QwtLegend::eventFilter(watched, event);
    event->accept();
    return true;
}

QWidget* PriceBased2dPlotLegend::createWidget(const QwtLegendData&) const
{
    auto* self = const_cast<PriceBased2dPlotLegend*>(this);
    auto* widget = new LabelWidget(self);
    auto* layout = new QHBoxLayout(widget);
    QCheckBox* checkBox = new LegendCheckBox(widget);
    checkBox->setChecked(true);
    connect(checkBox, SIGNAL(stateChanged(int)), self, SLOT(onCheckBoxChecked(int)), Qt::UniqueConnection);
    layout->addWidget(checkBox);
    auto* label = new QwtLegendLabel(widget);
    layout->addWidget(label);

    self->updateItemMaps();
    m_entries.append({checkBox, label, QPixmap()});
    return widget;
}

void PriceBased2dPlotLegend::updateWidget(QWidget* widget, const QwtLegendData& legendData)
{
    const QLayout* layout = widget ? widget->layout() : nullptr;
    auto* checkBox = widgetAt<QCheckBox>(layout, 0);
    auto* label = widgetAt<QwtLegendLabel>(layout, 1);
    if (!hasTwoItems(layout) || !checkBox || !label || !legendData.isValid()) {
        QwtLegend::updateWidget(widget, legendData);
        return;
    }

    label->setData(legendData);
    QwtText text = label->text();
    // The box itself shows no text: a screen reader takes the entry's name from here.
    checkBox->setAccessibleName(text.text());
    if (!text.isEmpty()) {
        text.setColor(checkBox->isChecked() ? CheckedLabelColor : UncheckedLabelColor);
        label->setText(text);
    }
    if (m_layout && qobject_cast<LabelWidget*>(widget))
        updateDynLayoutItemAlignment(m_layout->indexOf(widget));
}

void PriceBased2dPlotLegend::updateItemMaps()
{
    const auto isGone
        = [this](const Entry& entry) { return !entry.checkBox || !isAncestorOf(entry.checkBox); };
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), isGone), m_entries.end());
}

void PriceBased2dPlotLegend::updateDynLayoutItemAlignment(int index)
{
    QLayoutItem* item = m_layout ? m_layout->itemAt(index) : nullptr;
    if (!item)
        return;
    item->setAlignment((item->alignment() & ~Qt::AlignRight) | Qt::AlignLeft | Qt::AlignHCenter);
    if (item->widget())
        item->widget()->update();
}

const PriceBased2dPlotLegend::Entry* PriceBased2dPlotLegend::entryOf(const QString& text) const
{
    const Entry* found = nullptr;
    for (const Entry& entry : qAsConst(m_entries)) {
        if (!entry.checkBox || !entry.label || entry.label->text().text() != text)
            continue;
        // A widget that waits for its deletion has left the layout already, and gives way to its successor.
        if (!m_layout || m_layout->indexOf(entry.checkBox->parentWidget()) >= 0)
            return &entry;
        if (!found)
            found = &entry;
    }
    return found;
}

PriceBased2dPlotLegend::Entry* PriceBased2dPlotLegend::entryOf(const QCheckBox* checkBox)
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
        [checkBox](const Entry& candidate) { return candidate.checkBox == checkBox; });
    return entry == m_entries.end() || !checkBox || !entry->label ? nullptr : &*entry;
}

void PriceBased2dPlotLegend::setCheckBoxChecked(const QString& text, bool checked)
{
    const Entry* entry = entryOf(text);
    if (entry && entry->checkBox->isChecked() != checked)
        entry->checkBox->setChecked(checked);
}

bool PriceBased2dPlotLegend::isCheckBoxChecked(const QString& text, bool* found) const
{
    const Entry* entry = entryOf(text);
    *found = entry != nullptr;
    return entry && entry->checkBox->isChecked();
}

void PriceBased2dPlotLegend::setUncheckedItems(const QStringList& texts)
{
    m_uncheckedItems = texts;
}

QStringList PriceBased2dPlotLegend::uncheckedItems() const
{
    return m_uncheckedItems;
}

void PriceBased2dPlotLegend::restoreUncheckedItems()
{
    const QPointer<PriceBased2dPlotLegend> self(this);
    const QStringList texts = m_uncheckedItems;
    for (const QString& text : texts) {
        if (!self)
            return;
        setCheckBoxChecked(text, false);
    }
}

void PriceBased2dPlotLegend::onCheckBoxChecked(int state)
{
    if (state != Qt::Unchecked && state != Qt::Checked)
        return;
    Entry* entry = entryOf(qobject_cast<QCheckBox*>(sender()));
    if (!entry)
        return;
    const QPointer<QwtLegendLabel> label = entry->label;
    QwtText text = label->text();
    if (text.text().isEmpty() || label->icon().isNull())
        return;

    const bool checked = state == Qt::Checked;
    text.setColor(checked ? CheckedLabelColor : UncheckedLabelColor);
    // The plot and the listeners may delete entries and the legend itself.
    const QPointer<PriceBased2dPlotLegend> self(this);
    const LabelWidget::Telling telling(entry->checkBox);
    if (checked)
        restoreIcon(*entry);
    else
        replaceIcon(*entry, text.text());
    if (self)
        Q_EMIT visibilityChanged(text.text(), checked);
    if (self && checked)
        m_uncheckedItems.removeOne(text.text());
    else if (self && !m_uncheckedItems.contains(text.text()))
        m_uncheckedItems.append(text.text());
    if (label)
        label->setText(text);
}

void PriceBased2dPlotLegend::replaceIcon(Entry& entry, const QString& text)
{
    if (m_uncheckedItems.contains(text))
        return;
    entry.savedIcon = entry.label->icon();
    setResetIcon(entry.label);
}

void PriceBased2dPlotLegend::restoreIcon(Entry& entry)
{
    const QPixmap icon = entry.savedIcon;
    entry.savedIcon = QPixmap();
    if (!icon.isNull())
        entry.label->setIcon(icon);
}

void PriceBased2dPlotLegend::setResetIcon(QwtLegendLabel* label)
{
    auto* plot = qobject_cast<PriceBased2dPlot*>(m_plot.data());
    if (!label || !plot)
        return;
    const QString text = label->text().text();
    const QList<PriceBased2dPlotCurve*> curves = plot->attachedCurves(-1);
    const auto named = std::find_if(curves.cbegin(), curves.cend(),
        [&text](const PriceBased2dPlotCurve* curve) { return curve->title().text() == text; });
    if (named == curves.cend())
        return;
    const QPixmap icon = m_resetIcons[getStyle(*named)];
    if (icon.isNull())
        return;
    label->setIcon(icon);
    plot->curveIconReset(*named);
}

void PriceBased2dPlotLegend::setCheckBoxIcon(const QString& text, const QPixmap& pixmap)
{
    if (pixmap.isNull())
        return;
    if (const Entry* entry = entryOf(text))
        entry->label->setIcon(pixmap);
}

void PriceBased2dPlotLegend::createResetIcons()
{
    const QMap<int, QPixmap> icons = LegendIcons::create();
    for (auto icon = icons.cbegin(); icon != icons.cend(); ++icon)
        m_resetIcons.insert(icon.key(), icon.value());
}

int PriceBased2dPlotLegend::getStyle(const PriceBased2dPlotCurve* curve) const
{
    if (!curve)
        return QwtSymbol::NoSymbol;
    const QwtSymbol* symbol = curve->symbol();
    if (curve->dataType() == PriceBased2dPlotCurve::markedType) {
        const auto* plot = qobject_cast<const PriceBased2dPlot*>(m_plot.data());
        if (!plot)
            return QwtSymbol::NoSymbol;
        const QList<QwtPlotMarker*> markers = plot->attachedMarkers();
        if (markers.isEmpty())
            return QwtSymbol::Rect;
        symbol = markers.first()->symbol();
    }
    return symbol ? symbol->style() : QwtSymbol::NoSymbol;
}

void PriceBased2dPlotLegend::store(Settings& settings) const
{
    const_cast<PriceBased2dPlotLegend*>(this)->updateItemMaps();
    const auto* plot = qobject_cast<const PriceBased2dPlot*>(m_plot.data());
    const QList<PriceBased2dPlotCurve*> curves
        = plot ? plot->attachedCurves(-1) : QList<PriceBased2dPlotCurve*>();
    if (!curves.isEmpty())
        settings.setValue(settingsKey(), LegendState::write(curves));
}

void PriceBased2dPlotLegend::restore(const Settings& settings)
{
    updateItemMaps();
    const QPointer<PriceBased2dPlot> plot = qobject_cast<PriceBased2dPlot*>(m_plot.data());
    const QPointer<PriceBased2dPlotLegend> self(this);
    const auto records = LegendState::read(
        settings.value(settingsKey(), QVariant()).toByteArray(), plot ? typesOfCurves(*plot) : QSet<int>());
    for (const PriceBased2dPlotCurve::CurveParams& record : records) {
        if (!self || !plot)
            return;
        const QList<PriceBased2dPlotCurve*> curves = plot->attachedCurves(record.dataType);
        if (curves.size() != 1)
            continue;
        bool found = false;
        const QString title = curves.first()->title().text();
        if (record.isVisible != isCheckBoxChecked(title, &found) && found)
            setCheckBoxChecked(title, record.isVisible);
    }
}
