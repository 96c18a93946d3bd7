#include "desk/window/choosingdesk.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <output/curvetable.h>

#include <QCheckBox>
#include <QLocale>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

Q_DECLARE_METATYPE(CurveTable::Column)

/// The table of the curves' samples: its text, and that nothing is lost in it.
class tst_curvetable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writes_data();
    void writes();
    void writesNumbers_data();
    void writesNumbers();
    void isTheSameInEveryLocale();
    void losesNothing();
    void takesWhatIsVisible();
    void losesNothingOfThePlot();
};

namespace {

using Column = CurveTable::Column;

/// What a spreadsheet reads: fields by rows.
QVector<QStringList> read(const QByteArray& csv)
{
    QVector<QStringList> rows;
    QStringList row;
    QString field;
    bool isQuoted = false;
    const QString text = QString::fromUtf8(csv);
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (isQuoted && c == QLatin1Char('"') && i + 1 < text.size() && text.at(i + 1) == c) {
            field += c;
            ++i;
        } else if (c == QLatin1Char('"')) {
            isQuoted = !isQuoted;
        } else if (!isQuoted && c == QLatin1Char(',')) {
            row << field;
            field.clear();
        } else if (!isQuoted && c == QLatin1Char('\n')) {
            rows << (row << field.remove(QLatin1Char('\r')));
            row.clear();
            field.clear();
        } else {
            field += c;
        }
    }
    return rows;
}

QVector<Column> columnsOf(const QVector<QStringList>& rows)
{
    QVector<Column> columns;
    for (int i = 1; i < rows.first().size(); ++i) {
        Column column{rows.first().at(i), {}};
        for (int r = 1; r < rows.size(); ++r) {
            if (!rows.at(r).at(i).isEmpty())
                column.samples.append({rows.at(r).first().toDouble(), rows.at(r).at(i).toDouble()});
        }
        columns.append(column);
    }
    return columns;
}

bool sameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool sameBits(const QVector<QPointF>& a, const QVector<QPointF>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](const QPointF& p, const QPointF& q) { return sameBits(p.x(), q.x()) && sameBits(p.y(), q.y()); });
}

}

void tst_curvetable::writes_data()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<QVector<Column>>("columns");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, const QVector<Column>& columns, const QByteArray& text) {
        QTest::newRow(name) << columns << text;
    };
    row("nothing", {}, "Strike\r\n");
    row("no samples", {{"a", {}}}, "Strike,a\r\n");
    row("one curve", {{"a", {{1, 2}, {2.5, -0.25}}}}, "Strike,a\r\n1,2\r\n2.5,-0.25\r\n");
    row("the union of the prices", {{"a", {{1, 5}, {3, 6}}}, {"b", {{2, 7}, {3, 8}}}},
        "Strike,a,b\r\n1,5,\r\n2,,7\r\n3,6,8\r\n");
    row("ascending", {{"a", {{3, 5}, {1, 6}}}}, "Strike,a\r\n1,6\r\n3,5\r\n");
    row("a step", {{"a", {{1, 5}, {1, 6}, {2, 7}}}, {"b", {{1, 8}}}},
        "Strike,a,b\r\n1,5,8\r\n1,6,\r\n2,7,\r\n");
    row("gaps", {{"a", {{1, nan}, {nan, 2}, {2, infinity}, {-infinity, 3}}}}, "Strike,a\r\n1,\r\n2,\r\n");
    row("quoting",
        {{"a,b", {}}, {"say \"so\"", {}}, {"two\nlines", {}}, {" blank", {}}, {"", {}}, {"plain text", {}}},
        "Strike,\"a,b\",\"say \"\"so\"\"\",\"two\nlines\",\" blank\",\"\",plain text\r\n");
    row("letters", {{QStringLiteral("Volatilit\u00e4t \u03c3"), {}}},
        "Strike,Volatilit\xc3\xa4t \xcf\x83\r\n");
}

void tst_curvetable::writes()
{
    QFETCH(QVector<Column>, columns);
    QTEST(CurveTable::csv(QStringLiteral("Strike"), columns), "text");
}

void tst_curvetable::writesNumbers_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("whole") << 100000.0 << QByteArray("100000");
    QTest::newRow("million") << 1e6 << QByteArray("1000000");
    QTest::newRow("tenth") << 0.1 << QByteArray("0.1");
    QTest::newRow("third") << 1.0 / 3.0 << QByteArray("0.3333333333333333");
    QTest::newRow("sum") << 0.1 + 0.2 << QByteArray("0.30000000000000004");
    QTest::newRow("small") << 0.00001 << QByteArray("0.00001");
    QTest::newRow("zero") << 0.0 << QByteArray("0");
    QTest::newRow("negative zero") << -0.0 << QByteArray("-0");
    QTest::newRow("smallest") << 5e-324 << QByteArray("5e-324");
    QTest::newRow("largest") << std::numeric_limits<double>::max() << QByteArray("1.7976931348623157e+308");
    QTest::newRow("large") << 1e15 << QByteArray("1e+15");
}

void tst_curvetable::writesNumbers()
{
    QFETCH(double, number);
    QFETCH(QByteArray, text);
    QCOMPARE(CurveTable::csv(QStringLiteral("x"), {{QStringLiteral("y"), {{1.0, number}}}}),
        "x,y\r\n1," + text + "\r\n");
}

void tst_curvetable::isTheSameInEveryLocale()
{
    const QVector<Column> columns{{QStringLiteral("a"), {{1234567.5, 0.125}}}};
    const QByteArray before = CurveTable::csv(QStringLiteral("x"), columns);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const bool isSet = std::setlocale(LC_ALL, "de_DE.UTF-8") || std::setlocale(LC_ALL, "de_DE");
    const QByteArray german = CurveTable::csv(QStringLiteral("x"), columns);
    std::setlocale(LC_ALL, "C.UTF-8");
    QLocale::setDefault(QLocale::c());
    QCOMPARE(german, before);
    QCOMPARE(german, QByteArray("x,a\r\n1234567.5,0.125\r\n"));
    if (!isSet)
        qInfo("the locale de_DE is not installed: only Qt's was German");
}

void tst_curvetable::losesNothing()
{
    constexpr unsigned seed = 4711;
    std::mt19937_64 random(seed);
    const auto anyDouble = [&random] {
        double value = 0.0;
        do {
            const auto bits = random();
            std::memcpy(&value, &bits, sizeof value);
        } while (!std::isfinite(value) || value == 0.0);
        return value;
    };
    QVector<Column> columns;
    QVector<double> prices;
    for (int i = 0; i < 700; ++i)
        prices.append(anyDouble());
    std::sort(prices.begin(), prices.end());
    for (int c = 0; c < 4; ++c) {
        Column column{QStringLiteral("%1, \"%1\"").arg(c), {}};
        for (const double price : qAsConst(prices)) {
            for (auto times = random() % 3; times > 0; --times)
                column.samples.append({price, anyDouble()});
        }
        columns.append(column);
    }
    const QVector<Column> again = columnsOf(read(CurveTable::csv(QStringLiteral("Strike"), columns)));
    QCOMPARE(again.size(), columns.size());
    for (int c = 0; c < columns.size(); ++c) {
        QCOMPARE(again.at(c).title, columns.at(c).title);
        QVERIFY2(sameBits(again.at(c).samples, columns.at(c).samples), qPrintable(QString::number(seed)));
    }
}

void tst_curvetable::takesWhatIsVisible()
{
    ChoosingDesk desk;
    desk.start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    const auto titles = [&desk] {
        QStringList found;
        const QVector<Column> columns = CurveTable::columns(*desk.plot);
        for (const Column& column : columns)
            found << column.title;
        return found;
    };
    // The band tells nothing that the volatilities of bid and ask do not.
    const QStringList all{
        "Smile", "Stated volatility", "Bid volatility", "Ask volatility", "Implied volatility"};
    QCOMPARE(titles(), all);
    desk.box(QStringLiteral("Bid volatility"))->setChecked(false);
    QCOMPARE(titles(), (QStringList{"Smile", "Stated volatility", "Ask volatility", "Implied volatility"}));
    desk.box(QStringLiteral("Bid volatility"))->setChecked(true);
    QCOMPARE(titles(), all);
    desk.show(DeskView::Value, desk.quoted);
    QCOMPARE(titles(), (QStringList{"Call value", "Put value", "Market price"}));
    desk.plot->showNothing(QStringLiteral("nothing"));
    QCOMPARE(titles(), QStringList());
}

void tst_curvetable::losesNothingOfThePlot()
{
    ChoosingDesk desk;
    desk.start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    const QVector<QStringList> rows
        = read(CurveTable::csv(QStringLiteral("Strike"), CurveTable::columns(*desk.plot)));
    QCOMPARE(rows.first().first(), QStringLiteral("Strike"));
    const QVector<Column> columns = columnsOf(rows);
    QCOMPARE(columns.size(), 5);
    for (const Column& column : columns) {
        const PriceBased2dPlotCurve* curve = desk.curve(column.title);
        QVERIFY2(curve, qPrintable(column.title));
        QVERIFY(curve->dataSize() > 10);
        QVector<QPointF> samples;
        for (std::size_t i = 0; i < curve->dataSize(); ++i)
            samples.append(curve->sample(int(i)));
        QVERIFY2(sameBits(column.samples, samples), qPrintable(column.title));
    }
}

PLOT2D_TEST_MAIN(tst_curvetable)
#include "tst_curvetable.moc"
