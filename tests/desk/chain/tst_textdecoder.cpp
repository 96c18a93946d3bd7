#include "chain/chainerror.h"
#include "chain/textdecoder.h"
#include "support/testmain.h"

#include <QBuffer>

namespace {

/// Hands over one byte at a time, as a slow pipe may.
class DropByDrop : public QBuffer {
protected:
    qint64 readData(char* data, qint64) override { return QBuffer::readData(data, 1); }
};

QStringList linesOf(QIODevice& device)
{
    TextDecoder decoder(device, QStringLiteral("name"));
    QStringList lines;
    QString line;
    while (decoder.readLine(&line))
        lines.append(line);
    return lines;
}

QString errorOf(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    try {
        linesOf(buffer);
    } catch (const ChainError& error) {
        return error.text();
    }
    return {};
}

QByteArray utf16(const QString& text, bool bigEndian)
{
    QByteArray bytes = bigEndian ? "\xfe\xff" : "\xff\xfe";
    for (const QChar unit : text) {
        const char high = char(unit.unicode() >> 8);
        const char low = char(unit.unicode() & 0xFF);
        bytes.append(bigEndian ? high : low);
        bytes.append(bigEndian ? low : high);
    }
    return bytes;
}

}

class tst_textdecoder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lines_data();
    void lines();
    void errors_data();
    void errors();
    void lineNumbers();
    void longestLine();
    void readsNoMoreThanItNeeds();
};

void tst_textdecoder::lines_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");

    const QString accents = QStringLiteral("Pr\u00e9mio \u20ac;1");
    QTest::newRow("empty") << QByteArray() << QStringList();
    QTest::newRow("one line") << QByteArray("a,b") << QStringList{"a,b"};
    QTest::newRow("LF") << QByteArray("a\nb\n") << QStringList{"a", "b"};
    QTest::newRow("CRLF") << QByteArray("a\r\nb\r\n") << QStringList{"a", "b"};
    QTest::newRow("CR") << QByteArray("a\rb\r") << QStringList{"a", "b"};
    QTest::newRow("blank lines") << QByteArray("\n\na\r\n\r\nb") << QStringList{"", "", "a", "", "b"};
    QTest::newRow("LF before CR") << QByteArray("a\n\rb") << QStringList{"a", "", "b"};
    QTest::newRow("tab") << QByteArray("a\tb\n") << QStringList{"a\tb"};
    QTest::newRow("UTF-8") << (accents + "\nx").toUtf8() << QStringList{accents, "x"};
    QTest::newRow("UTF-8 with mark") << "\xef\xbb\xbf" + (accents + "\nx").toUtf8()
                                     << QStringList{accents, "x"};
    QTest::newRow("mark only") << QByteArray("\xef\xbb\xbf") << QStringList();
    QTest::newRow("UTF-16 LE") << utf16(accents + "\r\nx\r\n", false) << QStringList{accents, "x"};
    QTest::newRow("UTF-16 BE") << utf16(accents + "\nx", true) << QStringList{accents, "x"};
    QTest::newRow("UTF-16 surrogates")
        << utf16(QStringLiteral("\U0001F600,1"), true) << QStringList{QStringLiteral("\U0001F600,1")};
    QTest::newRow("Latin-1") << QByteArray("Pr\xe9mio,1\n") << QStringList{QStringLiteral("Pr\u00e9mio,1")};
    QTest::newRow("Windows-1252") << QByteArray("\x80 \x96 \x9f\n")
                                  << QStringList{QStringLiteral("\u20ac \u2013 \u0178")};
    QTest::newRow("Windows-1252 after plain lines")
        << QByteArray("a\nb\xfc\nc\n") << QStringList{"a", QStringLiteral("b\u00fc"), "c"};
}

void tst_textdecoder::lines()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);

    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QCOMPARE(linesOf(buffer), expected);

    DropByDrop drops;
    drops.setData(bytes);
    drops.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    // The encoding is told by what the first read gives.
    if (!bytes.isEmpty() && uchar(bytes.at(0)) < 0x80)
        QCOMPARE(linesOf(drops), expected);
}

void tst_textdecoder::errors_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");

    const QString notText = QStringLiteral("name:%1: not a text file");
    const QString compressed = QStringLiteral("name: not a text file but a compressed one");
    QTest::newRow("NUL") << QByteArray("a\nb\0c\n", 6) << notText.arg(2);
    QTest::newRow("control character") << QByteArray("a\x02") << notText.arg(1);
    QTest::newRow("not in Windows-1252") << QByteArray("a\nb\nc\x81\n") << notText.arg(3);
    QTest::newRow("delete character") << QByteArray("a\x7f\n") << notText.arg(1);
    QTest::newRow("UTF-16 without mark") << utf16("ab", false).mid(2) << notText.arg(1);
    QTest::newRow("half a UTF-16 unit") << utf16("ab\n", false) + 'c' << notText.arg(2);
    QTest::newRow("half a UTF-16 unit behind others") << utf16("ab", false) + 'c' << notText.arg(1);
    QTest::newRow("half a UTF-16 unit alone") << utf16("", false) + 'c' << notText.arg(1);
    QTest::newRow("lone surrogate") << QByteArray("\xfe\xff\xd8\x00\x00\x41", 6) << notText.arg(1);
    QTest::newRow("NUL in UTF-16") << QByteArray("\xff\xfe\x41\x00\x00\x00", 6) << notText.arg(1);
    QTest::newRow("mark that lies")
        << QByteArray("\xef\xbb\xbf"
                      "a\nb\xfc\n")
        << QStringLiteral("name:2: the line is not UTF-8, which the file's first bytes announce");
    QTest::newRow("gzip") << QByteArray("\x1f\x8b\x08\x00", 4) << compressed;
    QTest::newRow("zip") << QByteArray("PK\x03\x04") << compressed;
    QTest::newRow("long line") << "a\n" + QByteArray(70000, 'x')
                               << QStringLiteral("name:2: the line is longer than 65536 characters");
}

void tst_textdecoder::errors()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, expected);

    QCOMPARE(errorOf(bytes), expected);
}

void tst_textdecoder::lineNumbers()
{
    QBuffer buffer;
    buffer.setData("a\r\n\r\nb");
    buffer.open(QIODevice::ReadOnly);
    TextDecoder decoder(buffer, QStringLiteral("name"));
    QCOMPARE(decoder.lineNumber(), 0);
    QString line;
    for (int number = 1; number <= 3; ++number) {
        QVERIFY(decoder.readLine(&line));
        QCOMPARE(decoder.lineNumber(), number);
    }
    QVERIFY(!decoder.readLine(&line));
    QCOMPARE(decoder.lineNumber(), 3);
    QVERIFY(!decoder.readLine(&line));
    QCOMPARE(decoder.bytesRead(), 6);
}

void tst_textdecoder::longestLine()
{
    const QByteArray longest(TextDecoder::maxLineLength, 'x');
    QCOMPARE(errorOf(longest + '\n'), QString());
    QCOMPARE(errorOf(longest + "x\n"), QStringLiteral("name:1: the line is longer than 65536 characters"));
}

void tst_textdecoder::readsNoMoreThanItNeeds()
{
    QBuffer buffer;
    buffer.setData(QByteArray(50 * 1024 * 1024, 'x'));
    buffer.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    TextDecoder decoder(buffer, QStringLiteral("name"));
    QString line;
    QVERIFY_EXCEPTION_THROWN(decoder.readLine(&line), ChainError);
    QVERIFY2(decoder.bytesRead() <= 3 * TextDecoder::maxLineLength,
        qPrintable(QString::number(decoder.bytesRead())));
}

PLOT2D_TEST_MAIN(tst_textdecoder)
#include "tst_textdecoder.moc"
