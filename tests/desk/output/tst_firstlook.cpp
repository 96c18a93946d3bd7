#include "desk/window/deskrun.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

/// What a new user sees of each real chain who gives the desk nothing but the file.
class tst_firstlook : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsTheSmileOfEveryExpiry_data();
    void showsTheSmileOfEveryExpiry();
};

namespace {

// Milliseconds from the start of the program to its end; the sanitizers cost a multiple.
#ifdef PLOT2D_IS_SANITIZED
constexpr int longest = 60000;
#else
constexpr int longest = 5000;
#endif

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);

QVector<QStringList> rowsOf(const QString& fileName)
{
    QFile file(fileName);
    QVector<QStringList> rows;
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    while (!file.atEnd())
        rows.append(QString::fromUtf8(file.readLine()).trimmed().split(QLatin1Char(',')));
    return rows;
}

// The months are the real chains' way to name a third Friday.
QStringList expiriesOf(const QString& fileName)
{
    const QVector<QStringList> rows = rowsOf(fileName);
    const int column = rows.value(0).indexOf(QStringLiteral("expiry"));
    QStringList titles;
    for (int i = 1; i < rows.size() && column >= 0; ++i) {
        const QDate first = QDate::fromString(rows.at(i).value(column), QStringLiteral("yyyyMM"));
        const QDate expiry = first.addDays((Qt::Friday - first.dayOfWeek() + 7) % 7 + 14);
        const QString title = QLocale::c().toString(expiry, QStringLiteral("d MMM yyyy"));
        if (!titles.contains(title))
            titles.append(title);
    }
    return titles;
}

QVector<double> samplesOf(const QVector<QStringList>& table, const QString& title)
{
    const int column = table.value(0).indexOf(title);
    QVector<double> samples;
    for (int i = 1; i < table.size() && column >= 0; ++i) {
        const QString field = table.at(i).value(column);
        if (!field.isEmpty())
            samples.append(field.toDouble());
    }
    return samples;
}

bool areVolatilities(const QVector<double>& samples)
{
    constexpr double least = 0.01;
    constexpr double most = 5.0;
    return std::all_of(
        samples.begin(), samples.end(), [](double sample) { return sample > least && sample < most; });
}

}

void tst_firstlook::showsTheSmileOfEveryExpiry_data()
{
    QTest::addColumn<QString>("fileName");
    const QFileInfo any(DeskTest::realChain(DeskTest::crudeOilFile));
    const QFileInfoList files = any.exists()
        ? any.dir().entryInfoList({QStringLiteral("*.csv")}, QDir::Files, QDir::Name)
        : QFileInfoList();
    if (files.isEmpty())
        QSKIP("the real chains are not there");
    for (const QFileInfo& file : files)
        QTest::newRow(qPrintable(file.fileName())) << file.absoluteFilePath();
}

void tst_firstlook::showsTheSmileOfEveryExpiry()
{
    QFETCH(QString, fileName);
    const QTemporaryDir folder;
    QElapsedTimer clock;
    clock.start();
    const DeskRun run = runDesk(
        {fileName, "--no-settings", "--picture", "window.png", "--export", "curves.csv"}, folder.path());
    const qint64 taken = clock.elapsed();
    QCOMPARE(run.trouble(), QByteArray());
    QVERIFY2(taken < longest, qPrintable(QStringLiteral("%1 ms").arg(taken)));

    const QImage window(folder.filePath(QStringLiteral("window.png")));
    QCOMPARE(window.size(), QSize(1000, 640));
    QVERIFY(DeskTest::countPixels(window, smileColor) > 300);

    const QVector<QStringList> table = rowsOf(folder.filePath(QStringLiteral("curves.csv")));
    constexpr int fewest = 100;
    const QVector<double> smile = samplesOf(table, QStringLiteral("Smile"));
    QVERIFY2(smile.size() >= fewest && areVolatilities(smile), "Smile");
    // The first one is the one shown, whose curve is the smile itself.
    const QStringList beside = expiriesOf(fileName).mid(1);
    for (const QString& title : beside) {
        const QVector<double> samples = samplesOf(table, title);
        QVERIFY2(samples.size() >= fewest && areVolatilities(samples), qPrintable(title));
    }
    const QStringList others{QStringLiteral("Strike"), QStringLiteral("Smile"),
        QStringLiteral("Stated volatility"), QStringLiteral("Implied volatility")};
    for (const QString& title : table.first())
        QVERIFY2(others.contains(title) || beside.contains(title), qPrintable(title));
}

PLOT2D_TEST_MAIN(tst_firstlook)
#include "tst_firstlook.moc"
