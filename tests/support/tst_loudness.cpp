#include "support/programend.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <QHash>
#include <QProcess>
#include <QTimer>

#include <qwt_plot.h>
#include <qwt_plot_item.h>
#include <qwt_scale_div.h>

#include <functional>
#include <limits>
#include <optional>

namespace {

/// What the compiler may not see that nobody needs, or that it is wrong.
char* volatile lastLost = nullptr;
volatile double zero = 0.0;
volatile double beyondIntegers = 1e10;
volatile int largest = std::numeric_limits<int>::max();
volatile int converted = 0;

constexpr char modeVariable[] = "PLOT2D_TEST_LOUDNESS";

void leak()
{
    for (int i = 0; i < 10; ++i)
        lastLost = new char[100];
}

/// Emits a signal of its plot whenever it is drawn.
class TalkingItem : public QwtPlotItem {
public:
    int rtti() const override { return Rtti_PlotUserItem; }
    void draw(QPainter*, const QwtScaleMap&, const QwtScaleMap&, const QRectF&) const override
    {
        Q_EMIT static_cast<PriceBased2dPlot*>(plot())->updateAxisLabels();
    }
};

/// Loses memory whenever it is drawn.
class LosingWidget : public QWidget {
    void paintEvent(QPaintEvent*) override { leak(); }
};

/// What a test does in the child process. Each but the first is something that no test may do unseen.
class Misdeed : public QObject {
    Q_OBJECT

public:
    Misdeed() { warnIn("constructor"); }
    ~Misdeed() override { warnIn("destructor"); }

private Q_SLOTS:
    void act();

private:
    static void warnIn(const char* place);
    static void showBrokenScale();
    static void breakScaleUnseen();
    static void talkWhilePainting(bool isPainted);
    static void leakInHandler();
    static void leakWhilePainting();
    static void readFreedMemory();
    static void useValueOfNothing();
};

void Misdeed::warnIn(const char* place)
{
    if (qgetenv(modeVariable) == QByteArray("warning in the ") + place)
        qWarning("nobody has announced this of a %s", place);
}

void Misdeed::showBrokenScale()
{
    QwtPlot plot;
    plot.resize(200, 150);
    plot.show();
    QCoreApplication::processEvents();
    plot.setAxisScaleDiv(QwtPlot::yRight, QwtScaleDiv(0.0, std::numeric_limits<double>::quiet_NaN()));
    QEvent request(QEvent::LayoutRequest);
    QCoreApplication::sendEvent(&plot, &request);
}

void Misdeed::breakScaleUnseen()
{
    QwtPlot plot;
    plot.setAxisScaleDiv(QwtPlot::yRight, QwtScaleDiv(0.0, std::numeric_limits<double>::quiet_NaN()));
    plot.replot();
}

void Misdeed::talkWhilePainting(bool isPainted)
{
    TestHost::createSecurities();
    TestHost::createBoards();
    {
        TestPlot plot;
        plot.createPicker();
        plot.resize(200, 150);
        plot.show();
        QCoreApplication::processEvents();
        auto* item = new TalkingItem;
        item->setVisible(isPainted);
        item->attach(&plot);
        plot.replot();
        Q_EMIT plot.updateAxisLabels();
        QCoreApplication::processEvents();
    }
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void Misdeed::leakInHandler()
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&loop] {
        leak();
        loop.quit();
    });
    loop.exec();
}

void Misdeed::leakWhilePainting()
{
    LosingWidget widget;
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

void Misdeed::readFreedMemory()
{
    lastLost = new char[100]();
    delete[] lastLost;
    converted = lastLost[50];
}

void Misdeed::useValueOfNothing()
{
    std::optional<int> nothing;
    if (zero != 0.0)
        nothing = 1;
    converted = *nothing;
}

void Misdeed::act()
{
    const QHash<QByteArray, std::function<void()>> deeds{
        {"nothing", [] {}},
        {"warning in the constructor", [] {}},
        {"warning in the destructor", [] {}},
        {"warning", [] { qWarning("nobody has announced this"); }},
        {"256 warnings",
            [] {
                for (int i = 0; i < 256; ++i)
                    qWarning("nobody has announced %d", i);
            }},
        {"announced warning",
            [] {
                QTest::ignoreMessage(QtWarningMsg, "somebody has announced this");
                qWarning("somebody has announced this");
            }},
        {"critical message", [] { qCritical("nobody has announced this"); }},
        {"scale without an end", showBrokenScale},
        {"scale without an end, unseen", breakScaleUnseen},
        {"signal", [] { talkWhilePainting(false); }},
        {"signal while painting", [] { talkWhilePainting(true); }},
        {"leak", leak},
        {"leak in a handler", leakInHandler},
        {"leak while painting", leakWhilePainting},
        {"freed memory", readFreedMemory},
        {"division by zero", [] { zero = 1.0 / zero; }},
        {"cast that does not fit", [] { converted = static_cast<int>(beyondIntegers); }},
        {"overflow", [] { converted = largest + 1; }},
        {"value of nothing", useValueOfNothing},
    };
    deeds.value(qgetenv(modeVariable))();
}

}

/// That what must be loud fails a test, and what is sound does not.
class tst_loudness : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runs_data();
    void runs();
    void programs_data();
    void programs();
    void replayOfAnInput();
};

void tst_loudness::runs_data()
{
    QTest::addColumn<QByteArray>("complaint");
    const auto add
        = [](const char* mode, const char* complaint) { QTest::newRow(mode) << QByteArray(complaint); };
    add("nothing", "");
    add("warning", "unexpected message in act(): nobody has announced this");
    add("warning in the constructor", "nobody has announced this of a constructor");
    add("warning in the destructor", "nobody has announced this of a destructor");
    add("256 warnings", "nobody has announced 255");
    add("critical message", "nobody has announced this");
    add("announced warning", "");
    add("scale without an end", "axis 1 goes from 0 to nan");
    add("scale without an end, unseen", "axis 1 goes from 0 to nan");
    add("signal", "");
    add("signal while painting", "emits updateAxisLabels() while something paints");
#ifdef __SANITIZE_ADDRESS__
    add("leak", "LeakSanitizer: detected memory leaks");
    add("leak in a handler", "LeakSanitizer: detected memory leaks");
    add("leak while painting", "LeakSanitizer: detected memory leaks");
    add("freed memory", "heap-use-after-free");
    add("division by zero", "division by zero");
    add("cast that does not fit", "outside the range of representable values");
    add("overflow", "signed integer overflow");
    add("value of nothing", "_M_is_engaged()");
#endif
}

void tst_loudness::runs()
{
    QFETCH(QByteArray, complaint);
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(modeVariable), QString::fromLatin1(QTest::currentDataTag()));
    // Of a process that is aborted Qt Test would have a debugger tell more.
    environment.insert(QStringLiteral("QTEST_DISABLE_STACK_DUMP"), QStringLiteral("1"));
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(child.waitForFinished());
    const QByteArray errors = child.readAllStandardError();
    const bool isFine = child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0;
    QVERIFY2(isFine == complaint.isEmpty(), errors.constData());
    QVERIFY2(errors.contains(complaint), errors.constData());
}

void tst_loudness::programs_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QByteArray>("trouble");
    QTest::newRow("nothing") << "echo well" << QByteArray();
    QTest::newRow("exit code") << "exit 3" << QByteArray("exit code 3\n");
    QTest::newRow("complaint") << "echo odd >&2" << QByteArray("odd\n");
    QTest::newRow("both") << "echo bad >&2; exit 1" << QByteArray("exit code 1\nbad\n");
    QTest::newRow("crash") << "kill -9 $$" << QByteArray("exit code -1\n");
}

void tst_loudness::programs()
{
    QFETCH(QString, script);
    QProcess program;
    program.start(QStringLiteral("sh"), {QStringLiteral("-c"), script});
    QVERIFY(program.waitForFinished());
    QTEST(TestSupport::troubleOf(program), "trouble");
}

// The control warns of this input alone.
void tst_loudness::replayOfAnInput()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("input")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("flaw") == 4);
    file.close();
    QProcess replay;
    replay.start(QStringLiteral(FUZZ_CONTROL), {QStringLiteral("0"), file.fileName()});
    QVERIFY(replay.waitForFinished());
    QCOMPARE(
        TestSupport::troubleOf(replay), QByteArray("exit code -1\nnobody has announced this\n666c6177\n"));
}

int main(int argc, char** argv)
{
    TestSupport::preferNoScreen();
    TestSupport::LoudApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (qEnvironmentVariableIsSet(modeVariable)) {
        return TestSupport::run<Misdeed>(arguments);
    }
    return TestSupport::run<tst_loudness>(arguments);
}

#include "tst_loudness.moc"
