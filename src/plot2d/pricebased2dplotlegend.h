#pragma once

#include "plot2d/plot2dexport.h"

#include <QMap>
#include <QPixmap>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <qwt_legend.h>

class PriceBased2dPlotCurve;
class QCheckBox;
class QwtDynGridLayout;
class QwtLegendLabel;
class QwtPlot;
class Settings;

/// The widget of one entry of a legend: a check box, then the label. A click anywhere on it toggles the box.
class PLOT2D_EXPORT LabelWidget : public QWidget {
    Q_OBJECT

public:
    /// An empty entry: the legend puts box and label into its layout.
    explicit LabelWidget(QWidget* parent);
    /// Leaves its check box behind, for later, while that is telling of its change.
    ~LabelWidget() override;

protected:
    /// The left button toggles the check box, which tells the legend.
    void mousePressEvent(QMouseEvent* event) override;

private:
    class Telling;
    friend class PriceBased2dPlotLegend;

    QPointer<QCheckBox> m_tellingBox;
};

/// The legend of a plot: each entry has a check box in front of its label.
///
/// Entries are known by their texts, the titles of the curves that they show; of entries with equal texts the
/// one made first is meant. Unchecking an entry greys its text and swaps its icon for a grey placeholder.
/// What a curve does on that is the host's: it connects visibilityChanged(). A listener may delete anything:
/// entries, curves, the legend itself, also at once instead of later.
class PLOT2D_EXPORT PriceBased2dPlotLegend : public QwtLegend {
    Q_OBJECT

public:
    /// A legend of a plot, which becomes its parent. Of a plot that is no PriceBased2dPlot it has entries
    /// that grey and announce themselves, but neither placeholders nor a state to store.
    explicit PriceBased2dPlotLegend(QwtPlot* plot);
    ~PriceBased2dPlotLegend() override;

    /// Makes the placeholder icons by createResetIcons(); to be called once after construction, so that a
    /// derived legend makes its own. Curves whose legend icons are as large as these (50 by 13 pixels) keep
    /// the entries in their places when they are unchecked.
    void initCore();

    /// Forgets the entries whose widgets are gone.
    void updateItemMaps();

    /// Aligns an item of the grid of entries (0 for the first) to the left and to its centre instead of to
    /// the right; nothing for an index without an item.
    void updateDynLayoutItemAlignment(int index);

    /// Checks or unchecks the entry of a text, as the user would: emits visibilityChanged(). Nothing for an
    /// unknown text and for an entry that is so already.
    void setCheckBoxChecked(const QString& text, bool checked);
    /// Whether the entry of a text is checked; `found`, which must not be null, says whether there is one.
    bool isCheckBoxChecked(const QString& text, bool* found) const;

    /// The texts of the entries that the user has unchecked. They outlive the entries;
    /// restoreUncheckedItems() applies them to new ones, setting the list changes no entry.
    void setUncheckedItems(const QStringList& texts);
    /// The texts in the order in which they were unchecked.
    QStringList uncheckedItems() const;
    /// Unchecks the entries of these texts, as the user would: emits visibilityChanged() for each that was
    /// checked. Their icons stay.
    void restoreUncheckedItems();

    /// Gives a label the placeholder of its curve's style, and calls PriceBased2dPlot::curveIconReset(); the
    /// label keeps its icon where there is no such curve or placeholder. A null label is ignored.
    void setResetIcon(QwtLegendLabel* label);
    /// Gives the entry of a text an icon of the host's, checked or not; a null icon and an unknown text are
    /// ignored. An entry that is checked again gets back the icon that it had before it was unchecked.
    void setCheckBoxIcon(const QString& text, const QPixmap& pixmap);

    /// Stores which of the attached curves are valid and visible, by their data types, under the key
    /// "legendItemKeys" of settings of the host's; nothing without curves.
    virtual void store(Settings& settings) const;
    /// Checks and unchecks the entries of the stored data types that exactly one attached curve has, as the
    /// user would: emits visibilityChanged() for each that changes. Anything in the stored value that cannot
    /// be read or no longer fits is passed over.
    virtual void restore(const Settings& settings);

    /// Makes the placeholder icons, by symbol style: triangles up and down, and a line (QwtSymbol::Rect). A
    /// derived legend puts its own into resetIcons().
    virtual void createResetIcons();
    /// The symbol style that selects a curve's placeholder, -1 for none. A curve with marked points goes by
    /// the plot's first marker, and is a line (QwtSymbol::Rect) while there is none.
    virtual int getStyle(const PriceBased2dPlotCurve* curve) const;

    /// The widget of a new entry, a LabelWidget with a checked box; QwtLegend owns it.
    QWidget* createWidget(const QwtLegendData& legendData) const override;
    /// Shows a curve's title and icon in its entry, grey while it is unchecked. A widget that is none of
    /// createWidget() is left to QwtLegend.
    void updateWidget(QWidget* widget, const QwtLegendData& legendData) override;

    /// Keeps the wheel from the view of the entries and its scroll bars, which would scroll, and from the
    /// plot a drag that began on a check box.
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The entry of this text was checked or unchecked, by the user or by a call. Sent after the entry's icon
    /// has changed, before its text is coloured; not for an entry without a text or an icon.
    void visibilityChanged(const QString& labelText, bool visible);

public Q_SLOTS:
    /// Follows the state (Qt::CheckState) of a check box of the legend, which sends it: greys or restores the
    /// entry and emits visibilityChanged(). Nothing for other senders and for Qt::PartiallyChecked.
    void onCheckBoxChecked(int state);

protected:
    /// Swallowed: the wheel neither scrolls the legend nor zooms the plot behind it.
    void wheelEvent(QWheelEvent* event) override;

    /// The placeholder icons by QwtSymbol::Style.
    QMap<int, QPixmap>& resetIcons() { return m_resetIcons; }

private:
    // A list and not a map by check box: a guarded pointer that becomes null would break the order of a map.
    struct Entry {
        QPointer<QCheckBox> checkBox;
        QPointer<QwtLegendLabel> label;
        /// The label's own icon while the entry is unchecked.
        QPixmap savedIcon;
    };

    const Entry* entryOf(const QString& text) const;
    Entry* entryOf(const QCheckBox* checkBox);
    void replaceIcon(Entry& entry, const QString& text);
    static void restoreIcon(Entry& entry);

    mutable QVector<Entry> m_entries;
    QStringList m_uncheckedItems;
    QMap<int, QPixmap> m_resetIcons;
    QPointer<QwtDynGridLayout> m_layout;
    QPointer<QwtPlot> m_plot;
};
