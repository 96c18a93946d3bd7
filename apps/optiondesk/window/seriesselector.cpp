#include "window/seriesselector.h"

#include "window/texts.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPair>
#include <QVariant>

namespace {

using Item = QPair<QString, QVariant>;

Item itemAt(const QComboBox& box, int index)
{
    return {box.itemText(index), box.itemData(index)};
}

// Takes out and puts in single items, so that the others do not move under the mouse.
void setItems(const QVector<Item>& items, QComboBox* box)
{
    for (int i = 0; i < items.size(); ++i) {
        while (i < box->count() && !items.contains(itemAt(*box, i)))
            box->removeItem(i);
        if (i == box->count() || itemAt(*box, i) != items.at(i))
            box->insertItem(i, items.at(i).first, items.at(i).second);
    }
    while (box->count() > items.size())
        box->removeItem(box->count() - 1);
}

}

SeriesSelector::SeriesSelector(QWidget* parent)
    : QWidget(parent)
    , m_baseCodes(new QComboBox(this))
    , m_expiries(new QComboBox(this))
{
    m_baseCodes->setObjectName(QStringLiteral("baseCodes"));
    m_baseCodes->setToolTip(tr("The underlying"));
    m_baseCodes->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_expiries->setObjectName(QStringLiteral("expiries"));
    m_expiries->setToolTip(tr("The expiry of the options"));
    m_expiries->setSizeAdjustPolicy(QComboBox::AdjustToContents);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(m_baseCodes);
    layout->addWidget(m_expiries);

    connect(m_baseCodes, SIGNAL(activated(int)), this, SLOT(onBaseCodeActivated()));
    connect(m_expiries, SIGNAL(activated(int)), this, SLOT(onExpiryActivated()));
}

void SeriesSelector::setSeries(const QVector<StoredSeries>& series, int futureIsinId)
{
    m_series = series;
    QString selected = m_baseCodes->currentText();
    QVector<Item> codes;
    for (const StoredSeries& one : series) {
        if (codes.isEmpty() || codes.last().first != one.baseCode)
            codes.append({one.baseCode, QVariant()});
        if (one.futureIsinId == futureIsinId)
            selected = one.baseCode;
    }
    setItems(codes, m_baseCodes);
    m_baseCodes->setCurrentIndex(m_baseCodes->findText(selected));
    fillExpiries();
    m_expiries->setCurrentIndex(m_expiries->findData(futureIsinId));
}

void SeriesSelector::fillExpiries()
{
    QVector<Item> expiries;
    for (const StoredSeries& one : qAsConst(m_series)) {
        if (m_baseCodes->currentIndex() >= 0 && one.baseCode == m_baseCodes->currentText())
            expiries.append({Texts::expiry(one.expiry), one.futureIsinId});
    }
    setItems(expiries, m_expiries);
}

void SeriesSelector::onBaseCodeActivated()
{
    fillExpiries();
    m_expiries->setCurrentIndex(0);
    onExpiryActivated();
}

void SeriesSelector::onExpiryActivated()
{
    if (m_expiries->currentIndex() >= 0)
        Q_EMIT chosen(m_expiries->currentData().toInt());
}
