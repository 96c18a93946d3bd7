#include "differential/agree.h"
#include "differential/plainstate.h"
#include "differential/randomcurves.h"
#include "flow/legendplot.h"
#include "support/testmain.h"

#include <plot2d/legendstate_p.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <database/settings.h>

#include <QMouseEvent>
#include <QTemporaryDir>

#include <qwt_graphic.h>
#include <qwt_plot_marker.h>

using Differential::Findings;
using Differential::Random;
using Differential::Samples;
using Differential::told;

namespace {

const QString key = QStringLiteral("legendItemKeys");

QByteArray randomBytes(Random& random, QByteArray bytes)
{
    for (int changes = random.whole(0, 2); changes > 0 && !bytes.isEmpty(); --changes) {
        const int place = random.whole(0, bytes.size() - 1);
        bytes[place] = static_cast<char>(random.oneIn(2) ? random.whole(0, 14) : random.whole(0, 255));
    }
    if (random.oneIn(5))
        bytes.truncate(random.whole(0, bytes.size()));
    if (random.oneIn(8))
        bytes.append(bytes.mid(12, random.whole(0, 12)));
    return bytes;
}

QByteArray randomState(Random& random)
{
    QList<Plain::StoredCurve> curves;
    for (int count = random.whole(0, 6); count > 0; --count) {
        const int type
            = random.oneIn(4) ? random.oneOf({-1, -1, 1, 8, 14, -2147483647}) : random.whole(9, 13);
        curves << Plain::StoredCurve{!random.oneIn(4), random.oneIn(2), random.oneIn(6) ? 0 : type};
    }
    const QByteArray bytes = Plain::storedBytes(curves);
    return random.oneIn(2) ? bytes : randomBytes(random, bytes);
}

/// A legend with its plot, the plain one, and the same changes to both.
class TwoLegends {
public:
    TwoLegends(Random& random, Settings& settings)
        : m_random(random)
        , m_settings(settings)
    {
        m_library.plot.createPicker();
        for (const int style : {1, 4, 5})
            m_plain.placeholders.insert(style, m_library.legend->resetIcons().value(style).toImage());
        if (random.oneIn(2)) {
            m_plain.quote = random.oneOf({105.0, 0.0, -1.0});
            m_library.plot.setBaseCode(QStringLiteral("quoted at %1").arg(m_plain.quote));
            m_library.plot.setPriceInterval({100.0, 120.0, 1.0, true});
        }
        m_plain.isConnected = random.oneIn(2);
        if (m_plain.isConnected)
            QObject::connect(m_library.legend, SIGNAL(visibilityChanged(QString, bool)), &m_library.plot,
                SLOT(setCurveVisible(QString, bool)));
        QObject::connect(m_library.legend, &PriceBased2dPlotLegend::visibilityChanged, &m_library.plot,
            [this](const QString& text, bool visible) {
                m_announced << text + (visible ? QLatin1String(" shown") : QLatin1String(" hidden"));
            });
        for (int count = random.whole(0, 4); count > 0; --count)
            addCurve();
        if (random.oneIn(4))
            addMarker();
    }

    void change()
    {
        const int kind = m_random.whole(0, 11);
        if (kind == 0)
            return addCurve();
        if (kind == 1)
            return setUnchecked();
        if (kind == 2)
            return restoreUnchecked();
        if (kind == 3)
            return store();
        if (kind == 4)
            return restore();
        if (kind == 5)
            return check();
        if (m_plain.curves.isEmpty())
            return;
        const int index = m_random.whole(0, m_plain.curves.size() - 1);
        if (kind == 6)
            removeCurve(index);
        else if (kind == 7)
            rename(index);
        else if (kind == 8)
            setIcon(index);
        else
            click(index);
    }

    void compare(Findings& findings) const
    {
        for (int i = 0; i < m_plain.curves.size(); ++i) {
            const Plain::LegendCurve& plain = m_plain.curves[i];
            const PriceBased2dPlotCurve* curve = m_curves[i];
            findings.compare("checked", plain.checked, m_library.checkBox(curve)->isChecked());
            findings.compare("visible", plain.curve.visible, curve->isVisible());
            if (m_library.icon(curve) != plain.icon)
                findings.note("icon", told(i), QStringLiteral("another"));
            if (plain.curve.title.isEmpty())
                continue;
            findings.compare("grey", plain.grey, m_library.color(curve) == QColor(Qt::darkGray));
            bool found = false;
            const Plain::LegendCurve& first = m_plain.curves[m_plain.entryOf(plain.curve.title)];
            findings.compare("checked by text", first.checked,
                m_library.legend->isCheckBoxChecked(plain.curve.title, &found));
            findings.compare("found", true, found);
        }
        findings.compare("unchecked texts", m_plain.unchecked, m_library.legend->uncheckedItems());
        findings.compare("announced", m_plain.announced, m_announced);
        QList<int> used;
        const auto curves = m_library.plot.picker()->usedCurves();
        for (PriceBased2dPlotCurve* curve : curves)
            used << m_curves.indexOf(curve);
        findings.compare("used curves", m_plain.used(), used);
        findings.compare(
            "stored bytes", QString(m_stored.toHex()), QString(m_settings.value(key).toByteArray().toHex()));
    }

    QString history() const { return m_history.join(QStringLiteral(", ")) + told(m_announced); }

private:
    static QImage iconOf(const PriceBased2dPlotCurve& curve)
    {
        return curve.legendData().first().icon().toPixmap().toImage();
    }

    void addCurve()
    {
        Plain::LegendCurve entry;
        entry.curve = Differential::randomCurve(m_random, Samples::Finite);
        if (m_random.oneIn(5)) {
            entry.curve.type = 0;
            entry.curve.line = Plain::Line::Sticks;
            entry.curve.samples = {{105.0, -1.0}, {105.0, 1.0}};
        }
        entry.curve.legendShowsLine = true;
        entry.curve.hasPen = true;
        entry.curve.color = entry.curve.isQuoteLine() ? QColor(Qt::red) : QColor(Qt::blue);
        entry.symbol = m_random.oneOf({1, 4, 5, 0});
        PriceBased2dPlotCurve* curve = Differential::made(entry.curve, &m_library.plot).release();
        curve->setSymbol(new QwtSymbol(static_cast<QwtSymbol::Style>(entry.symbol)));
        curve->attach(&m_library.plot);
        entry.icon = iconOf(*curve);
        m_plain.curves << entry;
        m_curves << curve;
        m_history << QStringLiteral("add ") + Differential::told(entry.curve);
    }

    void addMarker()
    {
        auto* marker = new QwtPlotMarker;
        m_plain.markerStyle = m_random.oneOf({1, 4, 5, 0});
        marker->setSymbol(new QwtSymbol(static_cast<QwtSymbol::Style>(m_plain.markerStyle)));
        marker->setItemAttribute(QwtPlotItem::Legend, false);
        marker->attach(&m_library.plot);
        m_history << QStringLiteral("marker");
    }

    void removeCurve(int index)
    {
        m_plain.curves.removeAt(index);
        delete m_curves.takeAt(index);
        // Qwt leaves the entry to the event loop.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_history << QStringLiteral("remove %1").arg(index);
    }

    void rename(int index)
    {
        const QString title = m_random.oneIn(5) ? QString() : m_random.title();
        m_history << QStringLiteral("rename %1 to %2").arg(index).arg(title);
        if (m_curves[index]->title().text() == title)
            return;
        m_curves[index]->setTitle(title);
        m_plain.update(index, title, iconOf(*m_curves[index]));
    }

    void setIcon(int index)
    {
        const QString text = m_plain.curves[index].curve.title;
        QPixmap pixmap;
        if (!m_random.oneIn(4)) {
            pixmap = QPixmap(9, 9);
            pixmap.fill(m_random.oneOf({Qt::green, Qt::yellow}));
        }
        m_library.legend->setCheckBoxIcon(text, pixmap);
        m_plain.setIcon(text, pixmap.toImage());
        m_history << QStringLiteral("icon of %1").arg(text);
    }

    void click(int index)
    {
        const bool isLeft = !m_random.oneIn(6);
        const Qt::MouseButton button = isLeft ? Qt::LeftButton : Qt::RightButton;
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(30.0, 5.0), QPointF(30.0, 5.0), QCursor::pos(),
            button, button, Qt::NoModifier);
        QApplication::sendEvent(m_library.entry(m_curves[index]), &event);
        if (isLeft)
            m_plain.toggle(index);
        m_history << QStringLiteral("click on %1").arg(index);
    }

    void check()
    {
        const QString text = m_random.oneIn(10) ? QString() : m_random.title();
        const bool checked = m_random.oneIn(2);
        m_library.legend->setCheckBoxChecked(text, checked);
        m_plain.check(text, checked);
        m_history << QStringLiteral("check %1 %2").arg(text).arg(checked);
    }

    void setUnchecked()
    {
        QStringList texts;
        for (int count = m_random.whole(0, 3); count > 0; --count)
            texts << m_random.title();
        m_library.legend->setUncheckedItems(texts);
        m_plain.unchecked = texts;
        m_history << QStringLiteral("unchecked texts ") + told(texts);
    }

    void restoreUnchecked()
    {
        m_library.legend->restoreUncheckedItems();
        m_plain.checkOffUnchecked();
        m_history << QStringLiteral("restore unchecked");
    }

    void store()
    {
        m_library.legend->store(m_settings);
        if (!m_plain.curves.isEmpty())
            m_stored = m_plain.stored();
        m_history << QStringLiteral("store");
    }

    void restore()
    {
        if (!m_random.oneIn(3)) {
            m_stored = m_stored.isEmpty() || m_random.oneIn(3) ? randomState(m_random)
                                                               : randomBytes(m_random, m_stored);
            m_settings.setValue(key, m_stored);
        }
        m_library.legend->restore(m_settings);
        m_plain.restore(m_stored);
        m_history << QStringLiteral("restore ") + QString(m_stored.toHex());
    }

    Random& m_random;
    Settings& m_settings;
    LegendPlot m_library;
    Plain::Legend m_plain;
    QList<PriceBased2dPlotCurve*> m_curves;
    QStringList m_announced;
    QStringList m_history;
    QByteArray m_stored;
};

}

class tst_differential_state : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void storedStates();
    void legends();
};

void tst_differential_state::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    for (const double quote : {105.0, 0.0, -1.0})
        TestHost::addSecurity(TestHost::future({{"base_code", QStringLiteral("quoted at %1").arg(quote)},
            {"cur_kotir", QString::number(quote)}}));
}

void tst_differential_state::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_differential_state::storedStates()
{
    AGREE("stored states", 601, 1, ([](Random& random, Findings& findings) {
        const QByteArray bytes = randomState(random);
        QSet<int> types;
        for (int count = random.whole(0, 4); count > 0; --count)
            types << random.whole(9, 13);
        QStringList plain;
        const QList<Plain::StoredCurve> all = Plain::storedCurves(bytes);
        for (const Plain::StoredCurve& curve : all) {
            if (types.contains(curve.type))
                plain << QStringLiteral("%1 %2").arg(curve.type).arg(curve.visible);
        }
        QStringList library;
        const auto records = LegendState::read(bytes, types);
        for (const auto& record : records)
            library << QStringLiteral("%1 %2").arg(record.dataType).arg(record.isVisible);
        findings.compare("records", plain, library);
        findings.given([&] { return QString(bytes.toHex()) + told(QList<int>(types.values())); });
    }));
}

void tst_differential_state::legends()
{
    const QTemporaryDir folder;
    Settings settings(folder.filePath(QStringLiteral("settings.ini")));
    AGREE("legends", 602, 100, ([&](Random& random, Findings& findings) {
        settings.setValue(key, QByteArray());
        TwoLegends legends(random, settings);
        for (int changes = random.whole(1, 12); changes > 0 && !findings.differ(); --changes) {
            legends.change();
            legends.compare(findings);
        }
        findings.given([&] { return legends.history(); });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_state)
#include "tst_differential_state.moc"
