#pragma once

#include "desk/window/desktest.h"

#include <position/leg.h>

#include <QFile>
#include <QString>
#include <QVector>

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
inline QString exportFile()
{
    return QStringLiteral("e.csv");
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

inline OptionChain chain(int version)
{
    OptionChain chain = DeskTest::chain();
    chain.series.first().forward = 100.0 + version;
    while (chain.series.size() < seriesCount) {
        chain.series.append(chain.series.first());
        chain.series.last().expiry = chain.series.last().expiry.addMonths(chain.series.size());
    }
    return chain;
}

/// The first column's title in a table, so long that tables of all versions have one size.
inline QString tableTitle(int version)
{
    return QString::number(version).rightJustified(9, QLatin1Char('0'));
}

}
