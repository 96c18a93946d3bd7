#include "desk/chain/chaintext.h"
#include "support/testmain.h"

/// Files as vendors, R and Python write them.
class tst_chainlayouts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void byOption_data();
    void byOption();
    void byStrike_data();
    void byStrike();
    void heads_data();
    void heads();
    void ordered();

private:
    static void addColumns();
};

void tst_chainlayouts::addColumns()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("expected");
}

void tst_chainlayouts::byOption_data()
{
    addColumns();

    const QString head = "TEST - step 0.05 decimals 2";
    QTest::newRow("settlements") << QByteArray("type,strike,settlement\nC,50.00,42.85\nP,60.00,0.10\n")
                                 << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("R's write.csv") << QByteArray(
        "\"\",\"type\",\"strike\",\"settlement\"\n\"1\",\"C\",50,42.85\n\"2\",\"P\",60,0.1\n")
                                   << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("R's write.table") << QByteArray(
        "\"type\",\"strike\",\"settlement\"\n\"1\",\"C\",50,42.85\n\"2\",\"P\",60,0.1\n")
                                     << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("pandas") << QByteArray(
        ",expiry,strike,right,bid,ask,volume\n"
        "0,2012-03-16 00:00:00,50.0,C,42.8,42.9,\n1,2012-03-16 00:00:00,60.0,P,,0.1,12.0\n")
                            << QStringList{"TEST - step 0.1 decimals 1", "2012-03-16 -", "C 50 b=42.8 a=42.9",
                                   "P 60 a=0.1 v=12"};
    QTest::newRow("numpy's savetxt") << QByteArray("# strike,cp,price\n5e+01,C,4.285e+01\n6e+01,P,1e-01\n")
                                     << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("quote download") << QByteArray(
        "contractSymbol,lastTradeDate,strike,lastPrice,bid,ask,change,percentChange,volume,"
        "openInterest,impliedVolatility,inTheMoney,contractSize,currency\n"
        "AMB231215C00150000,2023-12-01 14:30:00+00:00,150.0,5.1,5.0,5.2,0.1,2.0,10.0,100,"
        "0.3005,True,REGULAR,USD\n"
        "AMB231215P00150000,2023-11-30 14:30:00+00:00,150.0,4.1,4.0,4.2,0.1,2.0,,7,0.3125,"
        "False,REGULAR,USD\n")
                                    << QStringList{"AMB - step 0.1 decimals 1", "2023-12-15 -",
                                           "C 150 b=5 a=5.2 l=5.1 v=10 i=100 iv=0.3005",
                                           "P 150 b=4 a=4.2 l=4.1 i=7 iv=0.3125"};
    QTest::newRow("long names") << QByteArray(
        "date,symbol,exdate,cp_flag,strike_price,best_bid,best_offer,volume,open_interest,"
        "impl_volatility\n20121001,AMB,20121116,C,50,42.8,42.9,1,2,0.25\n"
        "20121001,AMB,20121116,P,50,0.1,0.2,3,4,0.35\n")
                                << QStringList{"AMB 2012-10-01 step 0.1 decimals 1", "2012-11-16 -",
                                       "C 50 b=42.8 a=42.9 v=1 i=2 iv=0.25",
                                       "P 50 b=0.1 a=0.2 v=3 i=4 iv=0.35"};
    QTest::newRow("retail screen") << QByteArray(
        "Strike,Moneyness,Bid,Mid,Ask,Last,Change,%Chg,Volume,\"Open Int\",Vol/OI,IV,Delta,Type,Time\n"
        "\"1,050.00\",-5.1%,12.5,12.6,12.7,12.55,+0.5,+4%,\"1,200\",\"10,000\",0.12,35.20%,0.6,Call,"
        "15:59\n"
        "\"1,050.00\",-5.1%,2.5,2.6,2.7,2.6,-0.5,-4%,N/A,0,0,34.10%,-0.4,Put,15:59\n"
        "\"Downloaded from somewhere as of 10-01-2012 04:00pm\"\n")
                                   << QStringList{"TEST - step 0.05 decimals 2", "- -",
                                          "C 1050 b=12.5 a=12.7 l=12.55 s=12.6 v=1200 i=10000 iv=0.352",
                                          "P 1050 b=2.5 a=2.7 l=2.6 s=2.6 i=0 iv=0.341"};
    QTest::newRow("German spreadsheet")
        << QByteArray("Type;Expiry;Strike;Settlement;Volume;IV\nCall;16.03.2012;6.500,00;92,85;1.234;25,5%\n"
                      "Put;16.03.2012;6.500,00;1,25;;26%\n")
        << QStringList{head, "2012-03-16 -", "C 6500 s=92.85 v=1234 iv=0.255", "P 6500 s=1.25 iv=0.26"};
    QTest::newRow("tabs with decimal commas") << QByteArray("Right\tK\tPremium\nc\t50\t42,85\np\t60\t0,1\n")
                                              << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("semicolons with points") << QByteArray("cp;strike;close\nC;50;42.85\nP;60;0.1\n")
                                            << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("bars") << QByteArray("cp|strike|close\nC|50|42.85\nP|60|0.1\n")
                          << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("quoted decimal commas in a comma file")
        << QByteArray("cp,strike,close\nC,50,\"42,85\"\nP,60,\"0,1\"\n")
        << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("everything around") << QByteArray(
        "# Amber options\n\nPrices in USD, settlement\n\n Type , STRIKE (USD) , Settle.Price ,Note,\n"
        "C,50,42.85,x,\n\n,,,,\nP,60,0.1,,\n# end\n")
                                       << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("header with an empty end, rows without")
        << QByteArray("type,strike,close,,\nC,50,42.85\nP,60,0.1\n")
        << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("unnamed remarks at the end") << QByteArray("type,strike,close,\nC,50,42.85,x\nP,60,0.1,\n")
                                                << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("no line end") << QByteArray("type,strike,close\nC,50,42.85\nP,60,0.1")
                                 << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("old Mac") << QByteArray("type,strike,close\rC,50,42.85\rP,60,0.1\r")
                             << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("Latin-1 remark") << QByteArray("type,strike,close,Bemerkung f\xfcr\nC,50,42.85,sch\xf6n\n"
                                                  "P,60,0.1,\n")
                                    << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("exercise style in the column named type")
        << QByteArray("type,option_type,strike,close\nAmerican,call,50,42.85\nAmerican,put,60,0.1\n")
        << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("settlement and close")
        << QByteArray("type,strike,close,settle\nC,50,1,42.85\nP,60,2,0.1\n")
        << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
    QTest::newRow("volatilities only")
        << QByteArray("type,strike,iv\nC,52.5,0.25\nP,60,0.3\n")
        << QStringList{"TEST - step 0.5 decimals 1", "- -", "C 52.5 iv=0.25", "P 60 iv=0.3"};
    QTest::newRow("days to expiry as maturity")
        << QByteArray("maturity,type,strike,close\n44,C,50,42.85\n44,P,60,0.1\n")
        << QStringList{head, "- -", "C 50 s=42.85", "P 60 s=0.1"};
}

void tst_chainlayouts::byOption()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, expected);

    QCOMPARE(ChainText::describe(ChainText::read(text)), expected);
}

void tst_chainlayouts::byStrike_data()
{
    addColumns();

    const QString head = "TEST - step 0.1 decimals 1";
    const QStringList settlements = {head, "- -", "C 50 s=42.8", "P 50 s=0.1", "C 60 s=32.9"};
    QTest::newRow("prefixes") << QByteArray("strike,call_settle,put_settle\n50,42.8,0.1\n60,32.9,\n")
                              << settlements;
    QTest::newRow("prefixes in words")
        << QByteArray("Call Settle,Strike,Put Settle\n42.8,50,0.1\n32.9,60,-\n") << settlements;
    QTest::newRow("suffixes") << QByteArray("K,price.c,price.p\n50,42.8,0.1\n60,32.9,NA\n") << settlements;
    QTest::newRow("bracket suffixes")
        << QByteArray("X,Settle (call),Settle (put)\n50,42.8,0.1\n60,32.9,nan\n") << settlements;
    QTest::newRow("sides only") << QByteArray("strike,call,put\n50,42.8,0.1\n60,32.9,\n") << settlements;
    QTest::newRow("letters only") << QByteArray("K,C,P\n50,42.8,0.1\n60,32.9,\n") << settlements;
    QTest::newRow("one word in capitals")
        << QByteArray("STRIKE,CALLPRICE,PUTPRICE\n50,42.8,0.1\n60,32.9,\n") << settlements;
    QTest::newRow("an empty row of a strike")
        << QByteArray("strike,call,put\n50,42.8,0.1\n55,,\n60,32.9,\n") << settlements;
    QTest::newRow("calls alone") << QByteArray("strike,call_bid,call_ask\n50,42.7,42.8\n")
                                 << QStringList{head, "- -", "C 50 b=42.7 a=42.8"};
    QTest::newRow("zeros are prices")
        << QByteArray("strike,call,put\n50,42.8,0\n") << QStringList{head, "- -", "C 50 s=42.8", "P 50 s=0"};
    QTest::newRow("letters in brackets") << QByteArray(
        "[QUOTE_DATE], [UNDERLYING_LAST], [EXPIRE_DATE], [DTE], [C_DELTA], [C_IV], [C_VOLUME], [C_BID], "
        "[C_ASK], [STRIKE], [P_BID], [P_ASK], [P_IV], [P_VOLUME]\n"
        "2012-10-01, 92.85, 2012-11-16, 46, 0.9, 0.251, 12, 42.7, 42.8, 50, 0.1, 0.2, 0.302, \n")
                                         << QStringList{"TEST 2012-10-01 step 0.1 decimals 1",
                                                "2012-11-16 92.849999999999994",
                                                "C 50 b=42.7 a=42.8 v=12 iv=0.251",
                                                "P 50 b=0.1 a=0.2 iv=0.302"};
    QTest::newRow("mirrored around the strike")
        << QByteArray(
               "CALLS,,,,,,PUTS,,,,\n,OI,CHNG IN OI,VOLUME,IV,LTP,BID,ASK,STRIKE,BID,ASK,LTP,IV,VOLUME,OI,\n"
               ",\"1,200\",5,10,25.5,42.7,42.6,42.8,50.00,0.1,0.2,-,30.5,7,8,\n")
        << QStringList{head, "- -", "C 50 b=42.6 a=42.8 l=42.7 v=10 i=1200 iv=0.255",
               "P 50 b=0.1 a=0.2 v=7 i=8 iv=0.305"};
    QTest::newRow("mirrored, numbered by pandas")
        << QByteArray("Last,Bid,Ask,Strike,Last.1,Bid.1,Ask.1\n42.7,42.6,42.8,50,0.2,0.1,0.3\n")
        << QStringList{head, "- -", "C 50 b=42.6 a=42.8 l=42.7", "P 50 b=0.1 a=0.3 l=0.2"};
    QTest::newRow("months") << QByteArray(
        "expiry,strike,call_settle,put_settle\n201206,50,42.8,0.1\n201203,50,42.7,\n")
                            << QStringList{head, "2012-03-16 -", "C 50 s=42.7", "2012-06-15 -", "C 50 s=42.8",
                                   "P 50 s=0.1"};
    QTest::newRow("volumes and volatilities of both sides")
        << QByteArray("strike,c_vol,c_iv,c_last,p_last,p_iv,p_vol\n50,3,25,42.8,0.1,31,4\n")
        << QStringList{head, "- -", "C 50 l=42.8 v=3 iv=0.25", "P 50 l=0.1 v=4 iv=0.31"};
}

void tst_chainlayouts::byStrike()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, expected);

    QCOMPARE(ChainText::describe(ChainText::read(text)), expected);
}

void tst_chainlayouts::heads_data()
{
    QTest::addColumn<QByteArray>("columns");
    QTest::addColumn<QByteArray>("cells");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("expected");

    const QString name = "amber_2012-10-01.csv";
    QTest::newRow("from the name") << QByteArray() << QByteArray() << name << "AMBER 2012-10-01";
    QTest::newRow("no date") << QByteArray() << QByteArray() << "amber.csv"
                             << "AMBER -";
    QTest::newRow("day") << QByteArray("date") << QByteArray("2012-09-28") << name << "AMBER 2012-09-28";
    QTest::newRow("day and time") << QByteArray("As Of") << QByteArray("09/28/2012 16:00") << name
                                  << "AMBER 2012-09-28";
    QTest::newRow("empty day") << QByteArray("date") << QByteArray("-") << name << "AMBER 2012-10-01";
    QTest::newRow("time stamp in seconds")
        << QByteArray("timestamp") << QByteArray("16.5") << name << "AMBER 2012-10-01";
    QTest::newRow("symbol") << QByteArray("Symbol") << QByteArray("AMB") << name << "AMB 2012-10-01";
    QTest::newRow("underlying") << QByteArray("underlying") << QByteArray("AMB") << name << "AMB 2012-10-01";
    QTest::newRow("underlying before symbol")
        << QByteArray("symbol,underlying_symbol") << QByteArray("OPT1,AMB") << name << "AMB 2012-10-01";
    QTest::newRow("price in underlying")
        << QByteArray("underlying") << QByteArray("92.85") << name << "AMBER 2012-10-01";
    QTest::newRow("root of an option code")
        << QByteArray("symbol") << QByteArray("AMB231215C00150000") << name << "AMB 2012-10-01";
}

void tst_chainlayouts::heads()
{
    QFETCH(QByteArray, columns);
    QFETCH(QByteArray, cells);
    QFETCH(QString, fileName);
    QFETCH(QString, expected);

    const QByteArray separator = columns.isEmpty() ? "" : ",";
    const QByteArray text = columns + separator + "type,strike,close\n" + cells + separator + "C,50,42\n";
    const OptionChain chain = ChainText::read(text, fileName);
    QCOMPARE(ChainText::describe(chain).first(), expected + " step 1 decimals 0");
}

void tst_chainlayouts::ordered()
{
    const OptionChain chain = ChainText::read(
        "symbol,expiry,type,strike,close\nB1,20120615,P,60,1\nB2,20120316,P,60,2\nB3,20120316,C,60,3\n"
        "B4,20120316,C,9,4\nB5,20120615,C,100,5\n");
    QCOMPARE(ChainText::describe(chain),
        QStringList({"TEST - step 1 decimals 0", "2012-03-16 -", "C 9 s=4", "C 60 s=3", "P 60 s=2",
            "2012-06-15 -", "P 60 s=1", "C 100 s=5"}));
}

PLOT2D_TEST_MAIN(tst_chainlayouts)
#include "tst_chainlayouts.moc"
