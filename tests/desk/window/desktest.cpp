#include "desktest.h"

#include <pricing/black.h>

#include <QFile>
#include <QFileInfo>

#include <cmath>

namespace {

OptionQuote quote(OptionType type, double strike)
{
    const Pricing::Market market{DeskTest::forward, 91.0 / 365.0};
    OptionQuote result;
    result.type = type;
    result.strike = decimal::fromDouble(strike, 1);
    result.settlement = decimal::fromDouble(
        Pricing::blackPrice(type, strike, market, DeskTest::volatility(strike)).value_or(0.0), 2);
    return result;
}

}

double DeskTest::volatility(double strike)
{
    const double logarithm = std::log(strike / forward);
    return 0.3 - 0.1 * logarithm + 0.4 * logarithm * logarithm;
}

OptionChain DeskTest::chain(const QString& baseCode)
{
    OptionChain result;
    result.baseCode = baseCode;
    result.asOf = QDate(2024, 1, 2);
    result.priceStep = decimal::fromUnits(1, 2);
    result.decimals = 2;
    OptionSeries series;
    series.expiry = QDate(2024, 4, 2);
    for (int i = 0; i < strikeCount; ++i) {
        for (const OptionType type : {OptionType::Call, OptionType::Put})
            series.quotes.append(quote(type, 60.0 + 2.5 * i));
    }
    result.series.append(series);
    return result;
}

OptionChain DeskTest::quotedChain(const QString& baseCode)
{
    const decimal spread = decimal::fromUnits(5, 2);
    OptionChain result = chain(baseCode);
    for (OptionQuote& quote : result.series.first().quotes) {
        quote.volatility = volatility(quote.strike.toDouble());
        quote.bid = *quote.settlement > spread ? *quote.settlement - spread : decimal::zero;
        quote.ask = *quote.settlement + spread;
    }
    return result;
}

QByteArray DeskTest::csv()
{
    QByteArray text("underlying,quote_date,expiry,type,strike,settlement\n");
    const OptionChain whole = chain();
    for (const OptionQuote& one : whole.series.first().quotes)
        text += QByteArray("TEST,2024-01-02,2024-04-02,") + char(one.type) + ','
            + one.strike.toString().toLatin1() + ',' + one.settlement->toString().toLatin1() + '\n';
    return text;
}

QString DeskTest::write(const QString& fileName, const QByteArray& content)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(fileName));
    return fileName;
}

QString DeskTest::realChain(const QString& name)
{
    const QString fileName = QStringLiteral(PLOT2D_REALDATA_DIR "/") + name;
    return QFileInfo::exists(fileName) ? fileName : QString();
}

int DeskTest::countPixels(const QImage& image, QRgb color)
{
    constexpr int tolerance = 12;
    const auto near = [](int a, int b) { return std::abs(a - b) <= tolerance; };
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (near(qRed(pixel), qRed(color)) && near(qGreen(pixel), qGreen(color))
                && near(qBlue(pixel), qBlue(color)))
                ++count;
        }
    }
    return count;
}
