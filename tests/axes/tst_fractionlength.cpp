#include "plot2d/ticklabels_p.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>

using Values = QList<double>;

class tst_fractionlength : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void length_data();
    void length();
    void readTheSame_data();
    void readTheSame();
    void eachTextIsAskedOnce();
    void textsEndAtTheFirstDifference();
};

void tst_fractionlength::length_data()
{
    QTest::addColumn<Values>("ticks");
    QTest::addColumn<int>("equalDigits");
    QTest::addColumn<int>("expected");

    const auto row = [](const char* name, const Values& ticks, int equalDigits, int expected) {
        QTest::newRow(name) << ticks << equalDigits << expected;
    };
    row("no tick", {}, 4, 0);
    row("equal digits unknown", {12.345, 12.349}, -1, 0);
    row("equal digits the smallest int", {12.345}, std::numeric_limits<int>::min(), 0);
    row("two ticks", {12.345, 12.349}, 4, 3);
    row("the lower one alone", {12.345}, 4, 3);
    row("the upper one alone", {12.349}, 4, 3);
    row("whole numbers", {12, 13}, 4, 0);
    row("three digits beyond the shared ones", {1.23456789}, 1, 3);
    row("no shared fraction digit", {1.23456789}, 2, 4);
    row("ten at the most", {1.23456789012345}, 9, 10);
    row("exactly ten", {1.23456789012345}, 8, 10);
    row("largest of the ticks", {1.5, 1.25, 1.125, 1.5}, 3, 3);
    row("zeros at the end", {1.5}, 8, 1);
    row("zeros after the point", {1.0005}, 8, 4);
    row("a single 1 after zeros", {1.0000000001}, 8, 10);
    row("rounds to zero", {1.0001}, 1, 0);
    row("rounds half up to a digit", {0.0005}, 1, 3);
    row("rounds up to a whole unit", {1.9996}, 1, 0);
    row("negative", {-12.345}, 4, 3);
    row("negative half", {-0.5}, 1, 1);
    row("negative, rounded half up to zero", {-0.0005}, 1, 0);
    row("negative, barely beyond the half", {-0.00051}, 1, 3);
    row("as good as whole, from below", {2.99999999996}, 8, 0);
    row("as good as whole, a digit remains", {2.9999999999}, 8, 10);
    // Fewer equal digits than the integer part has: rounded to tens and more, and never shown.
    row("fewer equal digits than digits", {123.4}, 1, 0);
    row("one digit fewer", {12.75}, 1, 0);
    row("no equal digit", {0.5}, 0, 0);
    row("as many as the integer part", {123.4567}, 3, 3);
    row("beyond 64 bits", {1e20, 1.5}, 3, 1);
    row("what is no number ends the search", {1.25, std::numeric_limits<double>::quiet_NaN(), 2.123456}, 3,
        2);
    row("a later tick counts after one without fraction", {1, 2, 2.25}, 2, 2);
}

void tst_fractionlength::length()
{
    QFETCH(Values, ticks);
    QFETCH(int, equalDigits);
    QTEST(TickLabels::maxFractionLength(ticks, equalDigits), "expected");
}

void tst_fractionlength::readTheSame_data()
{
    QTest::addColumn<Values>("ticks");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<bool>("expected");

    const auto row = [](const char* name, const Values& ticks, const QStringList& texts, bool expected) {
        QTest::newRow(name) << ticks << texts << expected;
    };
    row("no tick", {}, {}, false);
    row("one tick", {0}, {"a"}, false);
    row("same texts", {0, 1, 2}, {"100", "100", "100"}, true);
    row("first pair differs", {0, 1, 2}, {"99", "100", "100"}, false);
    row("last pair differs", {0, 1, 2}, {"100", "100", "101"}, false);
    row("empty texts only", {0, 1, 2}, {"", "", ""}, false);
    row("empty texts are passed over", {0, 1, 2, 3}, {"", "100", "100", ""}, true);
    row("an empty text parts two that differ", {0, 1, 2}, {"99", "", "100"}, false);
    row("an empty text parts differing pairs", {0, 1, 2, 3, 4}, {"1", "1", "", "2", "2"}, true);
    row("nearer than 1e-8", {0, 1, 1.000000005}, {"a", "b", "c"}, true);
    row("nearer than 1e-8, descending", {0, 1, 0.999999995}, {"a", "b", "c"}, true);
    row("equal values", {1, 1, 2}, {"a", "a", "b"}, true);
    row("1e-8 apart is not nearer", {0, 1e-8}, {"a", "b"}, false);
    row("barely nearer than 1e-8", {0, std::nextafter(1e-8, 0)}, {"a", "b"}, true);
}

void tst_fractionlength::readTheSame()
{
    QFETCH(Values, ticks);
    QFETCH(QStringList, texts);
    const auto text = [&](double value) { return texts.at(ticks.indexOf(value)); };
    QTEST(TickLabels::readTheSame(ticks, text), "expected");
}

void tst_fractionlength::eachTextIsAskedOnce()
{
    QList<double> asked;
    const auto text = [&asked](double value) {
        asked.append(value);
        return QStringLiteral("100");
    };
    QVERIFY(TickLabels::readTheSame({1, 2, 3, 4}, text));
    QCOMPARE(asked, (QList<double>{1, 2, 3, 4}));
}

void tst_fractionlength::textsEndAtTheFirstDifference()
{
    QList<double> asked;
    const auto text = [&asked](double value) {
        asked.append(value);
        return QString::number(value);
    };
    QVERIFY(!TickLabels::readTheSame({1, 2, 3, 4}, text));
    QCOMPARE(asked, (QList<double>{1, 2}));
}

PLOT2D_TEST_MAIN(tst_fractionlength)

#include "tst_fractionlength.moc"
