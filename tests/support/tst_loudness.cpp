#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <QProcess>

#include <qwt_plot.h>
#include <qwt_plot_item.h>
#include <qwt_scale_div.h>

#include <limits>

namespace {

/// The compiler may not see that nobody needs it.
char* volatile lastLost = nullptr;

constexpr char modeVariable[] = "PLOT2D_TEST_LOUDNESS";

/// Emits a signal of its plot whenever it is drawn.
class TalkingItem : public QwtPlotItem {
public:
    int rtti() const override { return Rtti_PlotUserItem; }
    void draw(QPainter*, const QwtScaleMap&, const QwtScaleMap&, const QRectF&) const override
    {
        Q_EMIT static_cast<PriceBased2dPlot*>(plot())->updateAxisLabels();
    }
};

/// What a test does in the child process. Each but the first is something that no test may do unseen.
class Misdeed : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void act();

private:
    static void showBrokenScale();
    static void talkWhilePainting(bool isPainted);
    static void leak();
};

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

void Misdeed::leak()
{
    for (int i = 0; i < 10; ++i)
        lastLost = new char[100];
}

void Misdeed::act()
{
    const QByteArray mode = qgetenv(modeVariable);
    if (mode == "warning")
        qWarning("nobody has announced this");
    else if (mode == "announced warning") {
        QTest::ignoreMessage(QtWarningMsg, "somebody has announced this");
        qWarning("somebody has announced this");
    } else if (mode == "critical")
        qCritical("nobody has announced this");
    else if (mode == "leak")
        leak();
    else if (mode == "scale")
        showBrokenScale();
    else if (mode == "signal while painting")
        talkWhilePainting(true);
    else if (mode == "signal")
        talkWhilePainting(false);
}

}

/// That what must be loud fails a test, and what is sound does not.
class tst_loudness : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runs_data();
    void runs();
};

void tst_loudness::runs_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("nothing") << QByteArray("nothing") << QByteArray();
    QTest::newRow("warning") << QByteArray("warning")
                             << QByteArray("unexpected message in act(): nobody has announced this");
    QTest::newRow("critical message") << QByteArray("critical") << QByteArray("nobody has announced this");
    QTest::newRow("announced warning") << QByteArray("announced warning") << QByteArray();
    QTest::newRow("scale without an end") << QByteArray("scale") << QByteArray("axis 1 goes from 0 to nan");
    QTest::newRow("signal") << QByteArray("signal") << QByteArray();
    QTest::newRow("signal while painting") << QByteArray("signal while painting")
                                           << QByteArray("emits updateAxisLabels() while something paints");
#ifdef __SANITIZE_ADDRESS__
    QTest::newRow("leak") << QByteArray("leak") << QByteArray("LeakSanitizer: detected memory leaks");
#endif
}

void tst_loudness::runs()
{
    QFETCH(QByteArray, mode);
    QFETCH(QByteArray, complaint);
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(modeVariable), QString::fromLatin1(mode));
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    const QByteArray errors = child.readAllStandardError();
    QVERIFY2(complaint.isEmpty() ? child.exitCode() == 0 : child.exitCode() != 0, errors.constData());
    if (!complaint.isEmpty())
        QVERIFY2(errors.contains(complaint), errors.constData());
}

int main(int argc, char** argv)
{
    TestSupport::preferNoScreen();
    TestSupport::LoudApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (qEnvironmentVariableIsSet(modeVariable)) {
        Misdeed misdeed;
        return TestSupport::run(&misdeed, arguments);
    }
    tst_loudness test;
    return TestSupport::run(&test, arguments);
}

#include "tst_loudness.moc"
