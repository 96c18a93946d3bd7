#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QUrl>

class QWidget;
class Table;

/// Chains that take long, ways to import them, and what a table holds.
namespace LongChain {

/// A CSV of one underlying, LONG: time values that fall with the distance from 100 and grow with the expiry,
/// prices that can be valued.
QByteArray text(int expiries, int strikes);

/// Drops files on a widget; false where it does not take them.
bool drop(QWidget& target, const QList<QUrl>& urls);

/// The fields of each row.
QStringList rowsOf(const Table& table);

}
