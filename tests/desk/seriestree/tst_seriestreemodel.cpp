#include "support/testmain.h"

#include <seriestree/expirylook.h>
#include <seriestree/seriestreemodel.h>

#include <QAbstractItemModelTester>
#include <QFont>
#include <QIcon>

/// The tree of stored series: its shape, its boxes and what it says of them.
class tst_seriestreemodel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void groupsByUnderlying();
    void tellsEqualExpiriesApart();
    void allAreChecked();
    void theChosenOneIsNotBesideItself();
    void unchecks();
    void theChosenOneStaysChecked();
    void theUnderlyingChecksAll();
    void remembersByName();
    void keepsColorsOfPlaces();
    void resetsForOtherSeriesOnly();
    void saysWhichIsChosen();

private:
    QModelIndex of(int futureIsinId) const { return m_model->indexOf(futureIsinId); }
    QVector<int> beside() const;
    void check(const QModelIndex& index, Qt::CheckState state) const;
    Qt::CheckState state(const QModelIndex& index) const;

    std::unique_ptr<SeriesTreeModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

namespace {

StoredSeries series(const char* baseCode, const QDate& expiry, int futureIsinId)
{
    StoredSeries result;
    result.baseCode = QString::fromLatin1(baseCode);
    result.expiry = expiry;
    result.futureIsinId = futureIsinId;
    return result;
}

QVector<StoredSeries> twoUnderlyings()
{
    return {series("ASH", QDate(2024, 3, 15), 11), series("ASH", QDate(2024, 6, 21), 12),
        series("ASH", QDate(2024, 9, 20), 13), series("ELM", QDate(2024, 3, 15), 21)};
}

}

void tst_seriestreemodel::init()
{
    m_model = std::make_unique<SeriesTreeModel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_model->setSeries(twoUnderlyings());
    m_model->setChosen(12);
}

void tst_seriestreemodel::cleanup()
{
    m_tester.reset();
    m_model.reset();
}

QVector<int> tst_seriestreemodel::beside() const
{
    QVector<int> ids;
    const QVector<SeriesBeside> all = m_model->beside();
    for (const SeriesBeside& one : all)
        ids.append(one.futureIsinId);
    return ids;
}

void tst_seriestreemodel::check(const QModelIndex& index, Qt::CheckState checked) const
{
    QVERIFY(m_model->setData(index, checked, Qt::CheckStateRole));
}

Qt::CheckState tst_seriestreemodel::state(const QModelIndex& index) const
{
    return Qt::CheckState(index.data(Qt::CheckStateRole).toInt());
}

void tst_seriestreemodel::groupsByUnderlying()
{
    QCOMPARE(m_model->rowCount(), 2);
    const QModelIndex ash = m_model->index(0, 0);
    QCOMPARE(ash.data().toString(), QStringLiteral("ASH"));
    QCOMPARE(m_model->rowCount(ash), 3);
    QCOMPARE(m_model->index(1, 0, ash).data().toString(), QStringLiteral("21 Jun 2024"));
    QCOMPARE(m_model->seriesAt(ash), 0);
    QCOMPARE(m_model->seriesAt(m_model->index(1, 0, ash)), 12);
    QCOMPARE(of(21), m_model->index(0, 0, m_model->index(1, 0)));
    QVERIFY(!of(99).isValid());
}

void tst_seriestreemodel::tellsEqualExpiriesApart()
{
    m_model->setSeries({series("ASH", QDate(), 1), series("ASH", QDate(), 2)});
    QCOMPARE(of(1).data().toString(), QStringLiteral("no expiry"));
    QCOMPARE(of(2).data().toString(), QStringLiteral("no expiry (2)"));
}

void tst_seriestreemodel::allAreChecked()
{
    for (const int id : {11, 12, 13, 21})
        QCOMPARE(state(of(id)), Qt::Checked);
    QCOMPARE(state(m_model->index(0, 0)), Qt::Checked);
    QCOMPARE(m_model->unchecked(), QStringList());
}

void tst_seriestreemodel::theChosenOneIsNotBesideItself()
{
    QCOMPARE(beside(), (QVector<int>{11, 13}));
    m_model->setChosen(11);
    QCOMPARE(beside(), (QVector<int>{12, 13}));
    m_model->setChosen(21);
    QCOMPARE(beside(), QVector<int>());
    m_model->setChosen(99);
    QCOMPARE(beside(), QVector<int>());
}

void tst_seriestreemodel::unchecks()
{
    const QSignalSpy changes(m_model.get(), SIGNAL(checksChanged()));
    check(of(13), Qt::Unchecked);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(beside(), QVector<int>{11});
    QCOMPARE(state(of(13)), Qt::Unchecked);
    QCOMPARE(state(m_model->index(0, 0)), Qt::PartiallyChecked);
    check(of(13), Qt::Checked);
    QCOMPARE(beside(), (QVector<int>{11, 13}));
    QVERIFY(!m_model->setData(of(13), QStringLiteral("text"), Qt::EditRole));
}

void tst_seriestreemodel::theChosenOneStaysChecked()
{
    check(of(13), Qt::Unchecked);
    QVERIFY(of(13).flags() & Qt::ItemIsUserCheckable);
    m_model->setChosen(13);
    QCOMPARE(state(of(13)), Qt::Checked);
    QVERIFY(!(of(13).flags() & Qt::ItemIsUserCheckable));
    m_model->setChosen(12);
    QCOMPARE(state(of(13)), Qt::Unchecked);
}

void tst_seriestreemodel::theUnderlyingChecksAll()
{
    check(m_model->index(0, 0), Qt::Unchecked);
    QCOMPARE(beside(), QVector<int>());
    QCOMPARE(state(m_model->index(0, 0)), Qt::PartiallyChecked);
    QCOMPARE(state(of(21)), Qt::Checked);
    check(m_model->index(0, 0), Qt::Checked);
    QCOMPARE(beside(), (QVector<int>{11, 13}));
}

void tst_seriestreemodel::remembersByName()
{
    check(of(13), Qt::Unchecked);
    const QStringList names = m_model->unchecked();
    QCOMPARE(names, QStringList{"ASH 2024-09-20"});

    SeriesTreeModel later;
    const QSignalSpy changes(&later, SIGNAL(checksChanged()));
    later.setUnchecked(names);
    later.setUnchecked(names);
    QCOMPARE(changes.size(), 1);
    later.setSeries({series("ASH", QDate(2024, 6, 21), 5), series("ASH", QDate(2024, 9, 20), 6)});
    later.setChosen(5);
    QVERIFY(later.beside().isEmpty());
    QCOMPARE(later.unchecked(), names);
}

void tst_seriestreemodel::keepsColorsOfPlaces()
{
    QCOMPARE(m_model->beside().last().pen, ExpiryLook::pen(2));
    check(of(11), Qt::Unchecked);
    QCOMPARE(m_model->beside().last().pen, ExpiryLook::pen(2));
    m_model->setChosen(11);
    QCOMPARE(m_model->beside().first().pen, ExpiryLook::pen(1));
}

void tst_seriestreemodel::resetsForOtherSeriesOnly()
{
    const QSignalSpy resets(m_model.get(), SIGNAL(modelReset()));
    m_model->setSeries(twoUnderlyings());
    QCOMPARE(resets.size(), 0);
    m_model->setSeries(twoUnderlyings() + QVector<StoredSeries>{series("FIR", QDate(2024, 3, 15), 31)});
    QCOMPARE(resets.size(), 1);
    QCOMPARE(m_model->rowCount(), 3);
}

void tst_seriestreemodel::saysWhichIsChosen()
{
    QVERIFY(of(12).data(Qt::FontRole).value<QFont>().bold());
    QVERIFY(!of(11).data(Qt::FontRole).isValid());
    QCOMPARE(of(12).data(Qt::AccessibleTextRole).toString(), QStringLiteral("21 Jun 2024, chosen"));
    QCOMPARE(of(11).data(Qt::AccessibleTextRole).toString(), QStringLiteral("15 Mar 2024"));
    for (const int id : {11, 12})
        QVERIFY(!of(id).data(Qt::ToolTipRole).toString().isEmpty());
    const auto picture = [this](int id) {
        const QSize size(ExpiryLook::swatchWidth, ExpiryLook::swatchHeight);
        return of(id).data(Qt::DecorationRole).value<QIcon>().pixmap(size).toImage();
    };
    QVERIFY(picture(11) != picture(12));
    QCOMPARE(picture(11), ExpiryLook::swatch(ExpiryLook::pen(0), 1.0).toImage());
}

PLOT2D_TEST_MAIN(tst_seriestreemodel)
#include "tst_seriestreemodel.moc"
