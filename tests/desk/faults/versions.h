#pragma once

#include "desk/window/desktest.h"

#include <position/leg.h>

#include <QFile>
#include <QSize>
#include <QString>
#include <QVector>

#include <algorithm>

/// What a desk stores over and over, each time another version, told apart by a number from 1 on that every
/// part of it shows.
namespace Versions {

constexpr int settingsCount = 600;
constexpr int legCount = 2000;
constexpr int seriesCount = 3;

inline QString settingsFile()
{
    return QStringLiteral("s.ini");
}
inline QString positionsFile()
{
    return QStringLiteral("p.json");
}
inline QString database()
{
    return QStringLiteral("d.sqlite");
}
inline QString tableFile()
{
    return QStringLiteral("e.csv");
}
inline QString pictureFile()
{
    return QStringLiteral("e.png");
}

inline QString keyOf(int i)
{
    return QStringLiteral("group%1/key").arg(i);
}

inline QVector<Position::Leg> legs(int version)
{
    return QVector<Position::Leg>(
        legCount, {Position::LegKind::Call, QDate(2024, 4, 2), version, 100.0, double(version)});
}

/// Lets the first series of a chain show a version.
inline void mark(OptionChain& chain, int version)
{
    chain.series.first().forward = 100.0 + version;
    for (OptionQuote& quote : chain.series.first().quotes)
        quote.last = decimal::fromUnits(version, 2);
}

inline OptionChain chain(int version)
{
    OptionChain chain = DeskTest::chain();
    mark(chain, version);
    while (chain.series.size() < seriesCount) {
        chain.series.append(chain.series.first());
        chain.series.last().expiry = chain.series.last().expiry.addMonths(chain.series.size());
    }
    return chain;
}

/// Whether two series are the same in what a version shows.
inline bool isSame(const OptionSeries& a, const OptionSeries& b)
{
    return a.forward == b.forward
        && std::equal(a.quotes.cbegin(), a.quotes.cend(), b.quotes.cbegin(), b.quotes.cend(),
            [](const OptionQuote& one, const OptionQuote& other) {
                return one.type == other.type && one.strike == other.strike && one.last == other.last
                    && one.settlement == other.settlement;
            });
}

/// A picture's size, which tells its version.
inline QSize pictureSize(int version)
{
    return QSize(300 + version % 1000, 200 + version / 1000);
}
inline int versionOf(const QSize& size)
{
    return size.width() - 300 + 1000 * (size.height() - 200);
}

/// The first column's title in a table, so long that tables of all versions have one size.
inline QString tableTitle(int version)
{
    return QString::number(version).rightJustified(9, QLatin1Char('0'));
}

}
