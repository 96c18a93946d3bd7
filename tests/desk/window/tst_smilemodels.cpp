#include "desktest.h"
#include "support/testmain.h"

#include <position/legmodel.h>
#include <window/deskdata.h>
#include <window/deskwindow.h>
#include <window/elidedlabel.h>
#include <window/positiondesk.h>
#include <window/smilemodels.h>

#include <QAction>

#include <algorithm>

using Pricing::SmileModel;

/// The choice of the smile's model.
class tst_smilemodels : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void keysAndNames();
    void isChosenInTheMenu();
    void tellsWhereItDoesNotFit();
    void valuesThePosition();

private:
    QAction* action(const QString& text) const;
    QString status() const { return m_window->findChild<ElidedLabel*>()->fullText(); }

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
};

void tst_smilemodels::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->showSeries(m_data->import(DeskTest::chain(), 0), SeriesFacts());
}

void tst_smilemodels::cleanup()
{
    m_window.reset();
    m_data.reset();
}

QAction* tst_smilemodels::action(const QString& text) const
{
    const QList<QAction*> actions = m_window->findChildren<QAction*>();
    for (QAction* const one : actions) {
        if (one->text().remove(QLatin1Char('&')) == text)
            return one;
    }
    qFatal("no action \"%s\"", qPrintable(text));
}

void tst_smilemodels::keysAndNames()
{
    QSet<QString> names;
    for (const SmileModels::Description& each : SmileModels::all()) {
        QVERIFY(SmileModels::fromKey(each.key) == each.model);
        names.insert(SmileModels::name(each.model));
    }
    QCOMPARE(names.size(), 3);
    QVERIFY(!SmileModels::fromKey(QStringLiteral("SVI")));
    QVERIFY(!SmileModels::fromKey(QString()));
}

void tst_smilemodels::isChosenInTheMenu()
{
    QVERIFY(action(QStringLiteral("Smoothing spline"))->isChecked());
    QVERIFY2(status().contains(QStringLiteral("\u00b7 smile error")), qPrintable(status()));
    const double spline = *m_window->shownSeries()->smile->volatility(110.0);
    action(QStringLiteral("SVI"))->trigger();
    QVERIFY(m_window->shownSeries()->smile->model() == SmileModel::Svi);
    QVERIFY2(status().contains(QStringLiteral("SVI smile error")), qPrintable(status()));
    QVERIFY(*m_window->shownSeries()->smile->volatility(110.0) != spline);
    // It stays for series that are chosen later.
    m_window->showSeries(m_data->import(DeskTest::chain(QStringLiteral("OTHER")), 0), SeriesFacts());
    QVERIFY(m_window->shownSeries()->smile->model() == SmileModel::Svi);
    m_window->setSmileModel(SmileModel::Spline);
    QVERIFY(action(QStringLiteral("Smoothing spline"))->isChecked());
    QVERIFY(m_window->shownSeries()->smile->model() == SmileModel::Spline);
}

void tst_smilemodels::tellsWhereItDoesNotFit()
{
    OptionChain chain = DeskTest::chain(QStringLiteral("FEW"));
    QVector<OptionQuote>& quotes = chain.series.first().quotes;
    // Two strikes on each side of the forward.
    quotes = quotes.mid(28, 10);
    m_window->setSmileModel(SmileModel::Svi);
    quotes.erase(quotes.begin(), quotes.begin() + 2);
    m_window->showSeries(m_data->import(chain, 0), SeriesFacts());
    QCOMPARE(m_window->shownSeries()->analysis.points.size(), 4);
    QVERIFY(m_window->shownSeries()->smile->model() == SmileModel::Spline);
    QVERIFY2(status().contains(QStringLiteral("no SVI smile fits, spline error")), qPrintable(status()));
}

void tst_smilemodels::valuesThePosition()
{
    Position::LegModel& legs = *m_window->position()->model();
    legs.addLeg();
    legs.setData(legs.index(0, Position::LegModel::Strike), QStringLiteral("137.5"));
    const auto volatility = [this] { return *m_window->shownSeries()->position.legs().first().volatility; };
    const double before = volatility();
    action(QStringLiteral("SABR"))->trigger();
    QVERIFY(volatility() != before);
    QCOMPARE(volatility(), *m_window->shownSeries()->smile->volatility(137.5));
}

PLOT2D_TEST_MAIN(tst_smilemodels)
#include "tst_smilemodels.moc"
