#include "window/seriesselector.h"

#include "window/texts.h"

#include <QComboBox>
#include <QHBoxLayout>

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
    m_baseCodes->clear();
    for (const StoredSeries& one : series) {
        if (m_baseCodes->findText(one.baseCode) < 0)
            m_baseCodes->addItem(one.baseCode);
        if (one.futureIsinId == futureIsinId)
            m_baseCodes->setCurrentText(one.baseCode);
    }
    fillExpiries(futureIsinId);
}

void SeriesSelector::fillExpiries(int futureIsinId)
{
    m_expiries->clear();
    for (const StoredSeries& one : qAsConst(m_series)) {
        if (one.baseCode == m_baseCodes->currentText())
            m_expiries->addItem(Texts::expiry(one.expiry), one.futureIsinId);
    }
    const int position = m_expiries->findData(futureIsinId);
    m_expiries->setCurrentIndex(position < 0 ? 0 : position);
}

void SeriesSelector::onBaseCodeActivated()
{
    fillExpiries(0);
    onExpiryActivated();
}

void SeriesSelector::onExpiryActivated()
{
    if (m_expiries->currentIndex() >= 0)
        Q_EMIT chosen(m_expiries->currentData().toInt());
}
