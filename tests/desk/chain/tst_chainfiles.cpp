#include "chain/chainerror.h"
#include "chain/chainreader.h"
#include "desk/chain/chaintext.h"
#include "support/testmain.h"

#include <QFile>
#include <QTemporaryDir>

#include <random>

namespace {

constexpr qint64 megabyte = 1024 * 1024;

/// A file that counts the bytes that are read of it, whoever reads them.
class CountedFile : public QFile {
public:
    using QFile::QFile;

    qint64 readBytes() const { return m_readBytes; }

protected:
    qint64 readData(char* data, qint64 maximum) override
    {
        const qint64 count = QFile::readData(data, maximum);
        m_readBytes += std::max(count, qint64(0));
        return count;
    }

private:
    qint64 m_readBytes = 0;
};

QString errorOf(CountedFile& file)
{
    try {
        readChain(file, file.fileName());
    } catch (const ChainError& error) {
        return error.text();
    }
    return {};
}

QString errorOf(const QString& fileName)
{
    try {
        readChain(fileName);
    } catch (const ChainError& error) {
        return error.text();
    }
    return {};
}

}

class tst_chainfiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void errorText();
    void cannotBeRead_data();
    void cannotBeRead();
    void noise();
    void endlessLine_data();
    void endlessLine();
    void encodings_data();
    void encodings();
    void progress();
    void cancel_data();
    void cancel();
    void brokenRowEndsTheReading();

private:
    QString write(const QString& name, const QByteArray& bytes);

    QTemporaryDir m_folder;
};

QString tst_chainfiles::write(const QString& name, const QByteArray& bytes)
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(file.fileName()));
    return file.fileName();
}

void tst_chainfiles::errorText()
{
    const ChainError inLine("a.csv", 7, "bad");
    QCOMPARE(inLine.text(), QStringLiteral("a.csv:7: bad"));
    QCOMPARE(inLine.file(), QStringLiteral("a.csv"));
    QCOMPARE(inLine.line(), 7);
    QCOMPARE(inLine.reason(), QStringLiteral("bad"));
    QVERIFY(!inLine.isCancelled());
    QCOMPARE(ChainError("a.csv", 0, "bad %1").text(), QStringLiteral("a.csv: bad %1"));
    const std::unique_ptr<ChainError> clone(ChainError::cancelled("a.csv").clone());
    QVERIFY(clone->isCancelled());
    QVERIFY_EXCEPTION_THROWN(clone->raise(), ChainError);
}

void tst_chainfiles::cannotBeRead_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no file") << m_folder.filePath("none.csv") << "there is no such file";
    QTest::newRow("no name") << QString() << "there is no such file";
    QTest::newRow("folder") << m_folder.path() << "is a folder";
    QTest::newRow("device") << "/dev/zero"
                            << "is not an ordinary file";
    QTest::newRow("empty") << write("empty.csv", QByteArray()) << "the file is empty";
    // The first bytes of what gzip makes of a short text.
    const QByteArray gzip = QByteArray::fromHex("1f8b0800000000000003cb48cdc9c95728cf2fca49e10200");
    QTest::newRow("gzip") << write("chain.csv.gz", gzip) << "not a text file but a compressed one";
}

void tst_chainfiles::cannotBeRead()
{
    QFETCH(QString, fileName);
    QFETCH(QString, reason);

    QCOMPARE(errorOf(fileName), fileName + ": " + reason);
}

void tst_chainfiles::noise()
{
    std::mt19937_64 random(20121001);
    QByteArray bytes(int(8 * megabyte), Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random()); });
    const QString name = write("noise.csv", bytes);
    const QString expected = name + ":1: not a text file";
    QCOMPARE(errorOf(name), expected);

    CountedFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(errorOf(file), expected);
    QVERIFY2(
        file.readBytes() > 0 && file.readBytes() < megabyte, qPrintable(QString::number(file.readBytes())));
}

void tst_chainfiles::endlessLine_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QString>("expected");

    const QString tooLong = "%1: the line is longer than 65536 characters";
    QTest::newRow("no header") << QByteArray() << tooLong.arg(1);
    QTest::newRow("below the header") << QByteArray("type,strike,close\nC,50,1\nC,") << tooLong.arg(3);
}

void tst_chainfiles::endlessLine()
{
    QFETCH(QByteArray, start);
    QFETCH(QString, expected);

    const QString name = write("line.csv", start + QByteArray(8 * megabyte, '1'));
    QCOMPARE(errorOf(name), name + ':' + expected);

    CountedFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(errorOf(file), name + ':' + expected);
    QVERIFY2(
        file.readBytes() > 0 && file.readBytes() < megabyte, qPrintable(QString::number(file.readBytes())));
}

void tst_chainfiles::encodings_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const QString text = QStringLiteral("Bemerkung f\u00fcr;type;strike;close\r\nsch\u00f6n;C;50;92,85\r\n");
    QByteArray little = "\xff\xfe";
    QByteArray big = "\xfe\xff";
    for (const QChar unit : text) {
        little.append(char(unit.cell())).append(char(unit.row()));
        big.append(char(unit.row())).append(char(unit.cell()));
    }
    QTest::newRow("UTF-8") << text.toUtf8();
    QTest::newRow("UTF-8 with mark") << "\xef\xbb\xbf" + text.toUtf8();
    QTest::newRow("UTF-16 LE") << little;
    QTest::newRow("UTF-16 BE") << big;
    QTest::newRow("Latin-1") << text.toLatin1();
    QTest::newRow("CR") << text.toUtf8().replace("\r\n", "\r");
    QTest::newRow("LF") << text.toUtf8().replace("\r\n", "\n");
}

void tst_chainfiles::encodings()
{
    QFETCH(QByteArray, bytes);

    const OptionChain chain = readChain(write("amber_2012-10-01.csv", bytes));
    QCOMPARE(ChainText::describe(chain),
        QStringList({"AMBER 2012-10-01 step 0.05 decimals 2", "- -", "C 50 s=92.85"}));
}

void tst_chainfiles::progress()
{
    QByteArray text = "type,strike,close\n";
    for (int strike = 1; strike <= 40000; ++strike)
        text += "C," + QByteArray::number(strike) + ",1\n";
    const QString name = write("large.csv", text);
    QVector<qint64> steps;
    readChain(name, [&](qint64 done, qint64 total) {
        steps.append(done);
        return total == text.size();
    });
    QVERIFY(steps.size() > 3);
    QVERIFY(std::is_sorted(steps.begin(), steps.end()));
    QCOMPARE(steps.last(), qint64(text.size()));
}

void tst_chainfiles::cancel_data()
{
    QTest::addColumn<int>("calls");

    QTest::newRow("at once") << 1;
    QTest::newRow("later") << 3;
}

void tst_chainfiles::cancel()
{
    QFETCH(int, calls);

    QByteArray text = "type,strike,close\n";
    for (int strike = 1; strike <= 40000; ++strike)
        text += "C," + QByteArray::number(strike) + ",1\n";
    const QString name = write("large.csv", text);
    int count = 0;
    try {
        readChain(name, [&](qint64, qint64) { return ++count < calls; });
        QFAIL("not cancelled");
    } catch (const ChainError& error) {
        QVERIFY(error.isCancelled());
        QCOMPARE(error.text(), name + ": cancelled");
    }
    QCOMPARE(count, calls);
}

void tst_chainfiles::brokenRowEndsTheReading()
{
    QByteArray text = "type,strike,close\nC,50,1\nC,x,1\n";
    text += QByteArray("C,50,1\n").repeated(2000000);
    const QString name = write("broken.csv", text);
    qint64 most = 0;
    try {
        readChain(name, [&most](qint64 done, qint64) {
            most = done;
            return true;
        });
        QFAIL("no error");
    } catch (const ChainError& error) {
        QCOMPARE(error.line(), 3);
    }
    QVERIFY(most < megabyte);
    QVERIFY(QFile::remove(name));
}

PLOT2D_TEST_MAIN(tst_chainfiles)
#include "tst_chainfiles.moc"
