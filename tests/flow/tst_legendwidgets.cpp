#include "legendplot.h"

#include "support/paintcounter.h"
#include "support/testmain.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalSpy>

#include <functional>
#include <memory>

namespace {

using Fill = std::function<void(QWidget&)>;

QwtLegendData dataOf(const QString& title)
{
    QwtLegendData data;
    data.setValue(QwtLegendData::TitleRole, QVariant::fromValue(QwtText(title)));
    data.setValue(QwtLegendData::IconRole, QVariant::fromValue(QPixmap(8, 8)));
    return data;
}

template <class... Widgets> Fill rowOf()
{
    return [](QWidget& widget) {
        auto* const layout = new QHBoxLayout(&widget);
        (layout->addWidget(new Widgets(&widget)), ...);
    };
}

}

Q_DECLARE_METATYPE(Fill)
Q_DECLARE_METATYPE(Qt::MouseButton)

/// A host may put widgets of its own into a legend, and take parts of the legend's entries away.
class tst_LegendWidgets : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void otherWidgetsStayAsTheyAre_data();
    void otherWidgetsStayAsTheyAre();
    void widgetsOfTheSameFormAreFilled();
    void withoutDataAnEntryStaysAsItIs();
    void withoutATextAnEntryKeepsItsColor();
    void aPressOnOtherWidgetsTogglesNothing_data();
    void aPressOnOtherWidgetsTogglesNothing();
    void anEntryWithoutItsLabelIsUnknown();
    void aBoxTakenOutOfItsEntryIsForgotten();
    void anEntryWithoutTextOrIconTellsNothing();
    void aLabelAloneIsFilledByQwt();
    void alignsItemsOfTheGridOnly();
    void otherWidgetsOfTheGridKeepTheirPlace();
    void anItemThatIsAlignedIsPainted();
    void aLegendOfAnotherPlotHasNoCurves();
    void aListenerMayEndTheRestoring();
};

void tst_LegendWidgets::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_LegendWidgets::otherWidgetsStayAsTheyAre_data()
{
    QTest::addColumn<Fill>("fill");
    QTest::newRow("no layout") << Fill([](QWidget&) {});
    QTest::newRow("nothing") << rowOf<>();
    QTest::newRow("a box alone") << rowOf<QCheckBox>();
    QTest::newRow("one too many") << rowOf<QCheckBox, QwtLegendLabel, QLabel>();
    QTest::newRow("no box") << rowOf<QLabel, QwtLegendLabel>();
    QTest::newRow("no label of a legend") << rowOf<QCheckBox, QLabel>();
    QTest::newRow("no widget") << Fill([](QWidget& widget) {
        auto* const layout = new QHBoxLayout(&widget);
        layout->addStretch();
        layout->addWidget(new QwtLegendLabel(&widget));
    });
}

void tst_LegendWidgets::otherWidgetsStayAsTheyAre()
{
    QFETCH(Fill, fill);
    LegendPlot test;
    QWidget widget;
    fill(widget);
    test.legend->updateWidget(&widget, dataOf(QStringLiteral("title")));
    const auto* const label = widget.findChild<QwtLegendLabel*>();
    QVERIFY(!label || label->text().text().isEmpty());
    const auto* const box = widget.findChild<QCheckBox*>();
    QVERIFY(!box || box->accessibleName().isEmpty());
    // Nor does it mind that there is no widget at all.
    test.legend->updateWidget(nullptr, dataOf(QStringLiteral("title")));
}

void tst_LegendWidgets::widgetsOfTheSameFormAreFilled()
{
    LegendPlot test;
    QWidget widget;
    rowOf<QCheckBox, QwtLegendLabel>()(widget);
    auto* const box = widget.findChild<QCheckBox*>();
    const auto* const label = widget.findChild<QwtLegendLabel*>();
    box->setChecked(true);
    test.legend->updateWidget(&widget, dataOf(QStringLiteral("one")));
    QCOMPARE(label->text().text(), QStringLiteral("one"));
    QCOMPARE(label->text().color(), QColor(Qt::black));
    QCOMPARE(box->accessibleName(), QStringLiteral("one"));
    box->setChecked(false);
    test.legend->updateWidget(&widget, dataOf(QStringLiteral("two")));
    QCOMPARE(label->text().text(), QStringLiteral("two"));
    QCOMPARE(label->text().color(), QColor(Qt::darkGray));
}

void tst_LegendWidgets::withoutDataAnEntryStaysAsItIs()
{
    LegendPlot test;
    const auto* const curve = test.add(QStringLiteral("curve"));
    test.legend->updateWidget(test.entry(curve), QwtLegendData());
    QCOMPARE(test.label(curve)->text().text(), QStringLiteral("curve"));
    QCOMPARE(test.checkBox(curve)->accessibleName(), QStringLiteral("curve"));
}

void tst_LegendWidgets::withoutATextAnEntryKeepsItsColor()
{
    LegendPlot test;
    const auto* const curve = test.add(QStringLiteral("curve"));
    test.legend->updateWidget(test.entry(curve), dataOf(QString()));
    QVERIFY(test.label(curve)->text().isEmpty());
    QCOMPARE(test.label(curve)->text().color(), QwtText().color());
    QVERIFY(test.checkBox(curve)->accessibleName().isEmpty());
}

void tst_LegendWidgets::aPressOnOtherWidgetsTogglesNothing_data()
{
    QTest::addColumn<Fill>("fill");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("toggles");
    QTest::newRow("as an entry") << rowOf<QCheckBox, QLabel>() << Qt::LeftButton << true;
    QTest::newRow("other button") << rowOf<QCheckBox, QLabel>() << Qt::RightButton << false;
    QTest::newRow("no layout") << Fill([](QWidget& widget) { new QCheckBox(&widget); }) << Qt::LeftButton
                               << false;
    QTest::newRow("three") << rowOf<QCheckBox, QLabel, QLabel>() << Qt::LeftButton << false;
    QTest::newRow("box behind") << rowOf<QLabel, QCheckBox>() << Qt::LeftButton << false;
}

void tst_LegendWidgets::aPressOnOtherWidgetsTogglesNothing()
{
    QFETCH(Fill, fill);
    QFETCH(Qt::MouseButton, button);
    QFETCH(bool, toggles);
    LabelWidget widget(nullptr);
    fill(widget);
    const auto* const box = widget.findChild<QCheckBox*>();
    QSignalSpy spy(box, SIGNAL(stateChanged(int)));
    QTest::mousePress(&widget, button, Qt::NoModifier, QPoint(1, 1));
    QCOMPARE(spy.size(), toggles ? 1 : 0);
}

void tst_LegendWidgets::anEntryWithoutItsLabelIsUnknown()
{
    LegendPlot test;
    const auto* const curve = test.add(QStringLiteral("curve"));
    QSignalSpy spy(test.legend, SIGNAL(visibilityChanged(QString, bool)));
    QCheckBox* const box = test.checkBox(curve);
    delete test.label(curve);
    bool found = true;
    QVERIFY(!test.legend->isCheckBoxChecked(QStringLiteral("curve"), &found));
    QVERIFY(!found);
    box->toggle();
    QVERIFY(spy.isEmpty());
    QVERIFY(test.legend->uncheckedItems().isEmpty());
}

void tst_LegendWidgets::aBoxTakenOutOfItsEntryIsForgotten()
{
    LegendPlot test;
    const auto* const curve = test.add(QStringLiteral("curve"));
    QSignalSpy spy(test.legend, SIGNAL(visibilityChanged(QString, bool)));
    const std::unique_ptr<QCheckBox> box(test.checkBox(curve));
    box->setParent(nullptr);
    // Until the entries are looked over it goes on working.
    box->toggle();
    QCOMPARE(spy.size(), 1);
    test.legend->updateItemMaps();
    box->toggle();
    QCOMPARE(spy.size(), 1);
}

void tst_LegendWidgets::anEntryWithoutTextOrIconTellsNothing()
{
    LegendPlot test;
    const auto* const curve = test.add(QStringLiteral("curve"));
    QSignalSpy spy(test.legend, SIGNAL(visibilityChanged(QString, bool)));
    test.label(curve)->setText(QwtText());
    test.checkBox(curve)->toggle();
    QVERIFY(spy.isEmpty());
    test.label(curve)->setText(QwtText(QStringLiteral("curve")));
    test.label(curve)->setIcon(QPixmap());
    test.checkBox(curve)->toggle();
    QVERIFY(spy.isEmpty());
    test.label(curve)->setIcon(QPixmap(8, 8));
    test.checkBox(curve)->toggle();
    QCOMPARE(spy.size(), 1);
}

void tst_LegendWidgets::alignsItemsOfTheGridOnly()
{
    LegendPlot test;
    test.add(QStringLiteral("one"));
    test.add(QStringLiteral("two"));
    QLayout* const grid = test.legend->contentsWidget()->layout();
    QCOMPARE(grid->count(), 2);
    for (int i = 0; i < 2; ++i)
        grid->itemAt(i)->setAlignment(Qt::AlignRight);
    for (const int index : {-1, 2, 1000})
        test.legend->updateDynLayoutItemAlignment(index);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(grid->itemAt(i)->alignment(), Qt::Alignment(Qt::AlignRight));
    test.legend->updateDynLayoutItemAlignment(1);
    QCOMPARE(grid->itemAt(0)->alignment(), Qt::Alignment(Qt::AlignRight));
    QCOMPARE(grid->itemAt(1)->alignment(), Qt::AlignLeft | Qt::AlignHCenter);
}

void tst_LegendWidgets::aLabelAloneIsFilledByQwt()
{
    LegendPlot test;
    QwtLegendLabel label;
    test.legend->updateWidget(&label, dataOf(QStringLiteral("one")));
    QCOMPARE(label.text().text(), QStringLiteral("one"));
}

void tst_LegendWidgets::otherWidgetsOfTheGridKeepTheirPlace()
{
    LegendPlot test;
    QLayout* const grid = test.legend->contentsWidget()->layout();
    for (QWidget* const widget : {new QWidget, static_cast<QWidget*>(new LabelWidget(nullptr))}) {
        rowOf<QCheckBox, QwtLegendLabel>()(*widget);
        grid->addWidget(widget);
        const int index = grid->indexOf(widget);
        grid->itemAt(index)->setAlignment(Qt::AlignRight);
        test.legend->updateWidget(widget, dataOf(QStringLiteral("one")));
        const bool isEntry = qobject_cast<LabelWidget*>(widget) != nullptr;
        QCOMPARE(grid->itemAt(index)->alignment(),
            isEntry ? Qt::AlignLeft | Qt::AlignHCenter : Qt::Alignment(Qt::AlignRight));
    }
}

void tst_LegendWidgets::anItemThatIsAlignedIsPainted()
{
    LegendPlot test;
    const auto* const curve = test.add(QStringLiteral("curve"));
    test.plot.resize(400, 300);
    test.plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&test.plot));
    QCoreApplication::processEvents();
    PaintCounter paints(*test.entry(curve));
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, 0);
    test.legend->updateDynLayoutItemAlignment(0);
    QTRY_VERIFY(paints.count > 0);
    // Nor does it mind an item without a widget.
    QLayout* const grid = test.legend->contentsWidget()->layout();
    grid->addItem(new QSpacerItem(1, 1));
    test.legend->updateDynLayoutItemAlignment(1);
    QCOMPARE(grid->itemAt(1)->alignment(), Qt::AlignLeft | Qt::AlignHCenter);
    delete grid->takeAt(1);
}

void tst_LegendWidgets::aLegendOfAnotherPlotHasNoCurves()
{
    QwtPlot plain;
    auto* const legend = new TestLegend(&plain);
    legend->initCore();
    plain.insertLegend(legend);
    auto* const curve = new PriceBased2dPlotCurve(nullptr, QStringLiteral("curve"));
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->attach(&plain);
    auto* const label = legend->findChild<QwtLegendLabel*>();
    QVERIFY(label);
    const QImage icon = label->icon().toImage();
    legend->setResetIcon(label);
    QCOMPARE(label->icon().toImage(), icon);
    legend->setResetIcon(nullptr);
    QCOMPARE(legend->getStyle(nullptr), int(QwtSymbol::NoSymbol));
    curve->setDataType(PriceBased2dPlotCurve::markedType);
    QCOMPARE(legend->getStyle(curve), int(QwtSymbol::NoSymbol));
}

void tst_LegendWidgets::aListenerMayEndTheRestoring()
{
    LegendPlot test;
    test.add(QStringLiteral("one"));
    test.add(QStringLiteral("two"));
    QStringList told;
    connect(
        test.legend.data(), &PriceBased2dPlotLegend::visibilityChanged, this, [&](const QString& text, bool) {
            told << text;
            delete test.legend;
        });
    test.legend->setUncheckedItems({QStringLiteral("one"), QStringLiteral("two")});
    test.legend->restoreUncheckedItems();
    QVERIFY(!test.legend);
    QCOMPARE(told, QStringList{QStringLiteral("one")});
}

PLOT2D_TEST_MAIN(tst_LegendWidgets)
#include "tst_legendwidgets.moc"
