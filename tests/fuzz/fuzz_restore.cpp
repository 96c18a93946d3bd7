#include "differential/plainstored.h"
#include "flow/legendplot.h"
#include "fuzzinput.h"
#include "support/runtimefolder.h"

#include <database/settings.h>

#include <QApplication>

#include <memory>

namespace {

struct Kind {
    const char* title;
    int type;
    /// Whether a stored record of the type finds this curve alone: type -1 stands for every curve.
    bool isAlone;
    bool isListed;
};

constexpr Kind kinds[] = {{"smile", 9, true, true}, {"unlisted", 10, true, false}, {"bid", 11, true, true},
    {"ask", 12, false, true}, {"late ask", 12, false, true}, {"points", 13, true, true},
    {"line", 0, true, true}, {"any", -1, false, true}};

QString titleOf(const Kind& kind)
{
    return QString::fromLatin1(kind.title);
}

QApplication& application()
{
    static int argc = 1;
    static char name[] = "fuzz_restore";
    static char* argv[] = {name, nullptr};
    static auto* const instance = [] {
        TestSupport::nameRuntimeFolder();
        return new QApplication(argc, argv);
    }();
    return *instance;
}

/// A plot with these curves and its legend, which hides and shows them. It serves all inputs.
class Desk : public QObject {
public:
    Desk()
    {
        m_plot = std::make_unique<LegendPlot>();
        for (const Kind& kind : kinds) {
            PriceBased2dPlotCurve* const curve = m_plot->add(titleOf(kind), kind.type);
            if (kind.isListed)
                continue;
            curve->detach();
            curve->setItemAttribute(QwtPlotItem::Legend, false);
            curve->attach(&m_plot->plot);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        connect(&legend(), SIGNAL(visibilityChanged(QString, bool)), &m_plot->plot,
            SLOT(setCurveVisible(QString, bool)));
        connect(&legend(), &PriceBased2dPlotLegend::visibilityChanged, this, [this] { ++m_changes; });
    }

    void setChecked(const QMap<QString, bool>& states)
    {
        for (auto state = states.cbegin(); state != states.cend(); ++state)
            legend().setCheckBoxChecked(state.key(), state.value());
        m_changes = 0;
        m_plot->plot.calls.clear();
    }

    void restore(const QByteArray& bytes)
    {
        m_settings.setValue(QStringLiteral("legendItemKeys"), bytes);
        legend().restore(m_settings);
        // The settings are never written, nor is anything painted.
        QCoreApplication::removePostedEvents(nullptr);
    }

    void expect(const QMap<QString, bool>& states, int changes)
    {
        FUZZ_EXPECT(m_changes == changes);
        int unchecked = 0;
        for (auto state = states.cbegin(); state != states.cend(); ++state) {
            bool found = false;
            FUZZ_EXPECT(legend().isCheckBoxChecked(state.key(), &found) == state.value() && found);
            FUZZ_EXPECT(legend().uncheckedItems().count(state.key()) == (state.value() ? 0 : 1));
            unchecked += state.value() ? 0 : 1;
        }
        FUZZ_EXPECT(legend().uncheckedItems().size() == unchecked);
        for (const PriceBased2dPlotCurve* const curve : m_plot->plot.attachedCurves(-1)) {
            // The line at the quote is not shown without a quote.
            if (curve->isValid() && curve->dataType() != PriceBased2dPlotCurve::quoteLineType)
                FUZZ_EXPECT(curve->isVisible() == states.value(curve->title().text(), true));
        }
    }

private:
    TestLegend& legend() { return *m_plot->legend; }

    std::unique_ptr<LegendPlot> m_plot;
    Settings m_settings{QStringLiteral("/nonexistent/settings.ini")};
    int m_changes = 0;
};

Desk& desk()
{
    static Desk* const instance = [] {
        application();
        TestHost::createSecurities();
        TestHost::createBoards();
        return new Desk;
    }();
    return *instance;
}

/// The states that the bytes leave behind.
QMap<QString, bool> restored(const QByteArray& bytes, QMap<QString, bool> states)
{
    for (const Plain::StoredCurve& record : Plain::storedCurves(bytes)) {
        for (const Kind& kind : kinds) {
            if (kind.type == record.type && kind.isAlone && kind.isListed)
                states[titleOf(kind)] = record.visible;
        }
    }
    return states;
}

}

/// The first byte says which entries are unchecked before, the others are the stored value.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    QMap<QString, bool> before;
    int bit = 0;
    for (const Kind& kind : kinds) {
        if (kind.isListed)
            before.insert(titleOf(kind), (data[0] >> bit & 1) == 0);
        ++bit;
    }
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), static_cast<int>(size) - 1);
    const QMap<QString, bool> after = restored(bytes, before);
    int changes = 0;
    for (const QString& title : after.keys())
        changes += after.value(title) != before.value(title) ? 1 : 0;

    desk().setChecked(before);
    desk().restore(bytes);
    desk().expect(after, changes);
    return 0;
}
