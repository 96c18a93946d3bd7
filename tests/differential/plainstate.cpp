#include "differential/plainstate.h"

void Plain::Legend::toggle(int index)
{
    LegendCurve& entry = curves[index];
    const QString text = entry.curve.title;
    entry.checked = !entry.checked;
    if (text.isEmpty() || entry.icon.isNull())
        return;
    entry.grey = !entry.checked;
    if (!entry.checked && !unchecked.contains(text)) {
        entry.savedIcon = entry.icon;
        const QImage placeholder = placeholderOf(text);
        if (!placeholder.isNull())
            entry.icon = placeholder;
    }
    if (entry.checked && !entry.savedIcon.isNull()) {
        entry.icon = entry.savedIcon;
        entry.savedIcon = QImage();
    }
    announced << text + (entry.checked ? QLatin1String(" shown") : QLatin1String(" hidden"));
    if (isConnected)
        showCurve(text, entry.checked);
    if (entry.checked)
        unchecked.removeOne(text);
    else if (!unchecked.contains(text))
        unchecked << text;
}

void Plain::Legend::check(const QString& text, bool checked)
{
    const int index = entryOf(text);
    if (index >= 0 && curves[index].checked != checked)
        toggle(index);
}

void Plain::Legend::checkOffUnchecked()
{
    const QStringList texts = unchecked;
    for (const QString& text : texts)
        check(text, false);
}

void Plain::Legend::setIcon(const QString& text, const QImage& icon)
{
    const int index = entryOf(text);
    if (index >= 0 && !icon.isNull())
        curves[index].icon = icon;
}

void Plain::Legend::update(int index, const QString& title, const QImage& icon)
{
    LegendCurve& entry = curves[index];
    entry.curve.title = title;
    entry.icon = icon;
    entry.grey = !entry.checked;
}

QByteArray Plain::Legend::stored() const
{
    if (curves.isEmpty())
        return QByteArray();
    QList<StoredCurve> all;
    for (const LegendCurve& entry : curves)
        all << StoredCurve{entry.curve.isValid(), entry.curve.visible, entry.curve.type};
    return storedBytes(all);
}

void Plain::Legend::restore(const QByteArray& bytes)
{
    const QList<StoredCurve> all = storedCurves(bytes);
    for (const StoredCurve& stored : all) {
        const int index = onlyCurveOf(stored.type);
        if (index >= 0)
            check(curves[index].curve.title, stored.visible);
    }
}

int Plain::Legend::entryOf(const QString& text) const
{
    for (int i = 0; i < curves.size(); ++i) {
        if (curves[i].curve.title == text)
            return i;
    }
    return -1;
}

QList<int> Plain::Legend::used() const
{
    QList<int> indices;
    for (int i = 0; i < curves.size(); ++i) {
        const int entry = entryOf(curves[i].curve.title);
        if (curves[i].curve.isValid() && curves[entry].checked)
            indices << i;
    }
    return indices;
}

/// The first valid curve of the title.
void Plain::Legend::showCurve(const QString& title, bool visible)
{
    for (LegendCurve& entry : curves) {
        if (entry.curve.title != title || !entry.curve.isValid())
            continue;
        if (!entry.curve.isQuoteLine() || !visible || quote >= 0.0)
            entry.curve.visible = visible;
        return;
    }
}

QImage Plain::Legend::placeholderOf(const QString& text) const
{
    const int index = entryOf(text);
    if (index < 0)
        return QImage();
    const LegendCurve& entry = curves[index];
    constexpr int lineStyle = 1;
    const int ofMarkers = markerStyle == -1 ? lineStyle : markerStyle;
    return placeholders.value(entry.curve.type == 13 ? ofMarkers : entry.symbol);
}

/// -1 asks for all curves, any other type for those that have it.
int Plain::Legend::onlyCurveOf(int type) const
{
    int found = -1;
    int count = 0;
    for (int i = 0; i < curves.size(); ++i) {
        if (type == -1 || (curves[i].curve.type == type && isCurveType(type))) {
            found = i;
            count = count + 1;
        }
    }
    return count == 1 ? found : -1;
}
