#pragma once

#include <chain/optionchain.h>

#include <QImage>
#include <QStringList>

/// Chains, files and runs of the option desk for its tests.
namespace DeskTest {

constexpr double forward = 100.0;
/// Strikes from 60 to 140, 2.5 apart.
constexpr int strikeCount = 33;

/// The volatility of the chains below at a strike, as a fraction.
double volatility(double strike);

/// A chain of Black's values, to the cent, with 91 days between the date of the prices (2024-01-02) and the
/// expiry (2024-04-02). It states no forward, no volatility and no volumes.
OptionChain chain(const QString& baseCode = QStringLiteral("TEST"));

/// The same with volatilities stated, and with bids and asks a few cents around the values.
OptionChain quotedChain(const QString& baseCode = QStringLiteral("TEST"));

/// The chain as a CSV file's text.
QByteArray csv();

/// Writes a file; its name.
QString write(const QString& fileName, const QByteArray& content);

/// A file of the real chains, or an empty text where it is absent.
QString realChain(const QString& name);
constexpr const char* crudeOilFile = "wti_options_on_futures_2012-10-01.csv";
constexpr const char* indexFile = "dax_index_options_2012-02-10.csv";

/// How many pixels of an image have this colour, or one very like it.
int countPixels(const QImage& image, QRgb color);

}
