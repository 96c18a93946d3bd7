#include "support/testmain.h"

#include <position/legmodel.h>
#include <position/positionpanel.h>

#include <QAction>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

using namespace Position;

namespace {

/// A market of one series far enough away for a long date.
class Market : public LegMarket {
public:
    QVector<QDate> expiries() const override { return {QDate(2024, 12, 20)}; }
    Leg suggestedLeg() const override { return {LegKind::Call, QDate(2024, 12, 20), 1, 100.0, 5.0}; }
    std::optional<double> price(const Leg&) const override { return 5.0; }
};

}

/// The table of a position in its panel.
class tst_positionpanel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void tabLeavesTheTable();
    void tabGoesOnFromAnEditor();
    void columnsFitTheFirstLeg();
    void columnsFollowTheLegs();

private:
    QTableView& table() const { return *m_panel->table(); }
    bool isWhole(int column) const;

    Market m_market;
    std::unique_ptr<LegModel> m_model;
    std::unique_ptr<QAction> m_action;
    std::unique_ptr<QWidget> m_window;
    PositionPanel* m_panel = nullptr;
};

void tst_positionpanel::init()
{
    m_model = std::make_unique<LegModel>(m_market, nullptr);
    m_action = std::make_unique<QAction>(QStringLiteral("Add leg"));
    m_window = std::make_unique<QWidget>();
    m_panel = new PositionPanel(m_model.get(), {m_action.get()}, m_window.get());
    m_panel->resize(700, 200);
    m_window->resize(m_panel->size());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_positionpanel::cleanup()
{
    m_window.reset();
    m_action.reset();
    m_model.reset();
}

bool tst_positionpanel::isWhole(int column) const
{
    const QString text = m_model->index(0, column).data().toString();
    return !text.isEmpty() && table().columnWidth(column) >= table().fontMetrics().horizontalAdvance(text);
}

void tst_positionpanel::tabLeavesTheTable()
{
    m_model->addLeg();
    m_panel->edit(0);
    QVERIFY(table().hasFocus());
    QTest::keyClick(&table(), Qt::Key_Tab);
    QVERIFY(!table().hasFocus());
    QTest::keyClick(m_window->focusWidget(), Qt::Key_Backtab);
    QVERIFY(table().hasFocus());
    QCOMPARE(table().currentIndex().column(), 0);
}

void tst_positionpanel::tabGoesOnFromAnEditor()
{
    m_model->addLeg();
    m_panel->edit(0);
    const QModelIndex strike = m_model->index(0, LegModel::Strike);
    table().setCurrentIndex(strike);
    table().edit(strike);
    auto* const editor = table().findChild<QLineEdit*>();
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_Tab);
    QCOMPARE(table().currentIndex().column(), int(LegModel::Price));
}

void tst_positionpanel::columnsFitTheFirstLeg()
{
    m_model->addLeg();
    QTRY_VERIFY(isWhole(LegModel::Expiry));
}

void tst_positionpanel::columnsFollowTheLegs()
{
    m_model->addLeg();
    QTRY_VERIFY(isWhole(LegModel::Expiry));
    const int before = table().columnWidth(LegModel::Expiry);
    m_model->removeAll();
    QTRY_VERIFY(table().columnWidth(LegModel::Expiry) < before);
    m_model->setLegs({m_market.suggestedLeg()});
    QTRY_VERIFY(isWhole(LegModel::Expiry));
}

PLOT2D_TEST_MAIN(tst_positionpanel)
#include "tst_positionpanel.moc"
