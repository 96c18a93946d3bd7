#pragma once

#include <QStringList>

namespace Monkey {

/// The monkey by hand:
///
///   tst_monkey --events N [--seed S]      does N steps of a seed's series (1) and sums up
///   tst_monkey --replay SEED:FROM:TO      does the steps FROM up to (not including) TO, and prints each
///
/// Whether the arguments ask for it.
bool isCommand(const QStringList& arguments);

/// Does what they ask for; 0 when nothing was broken, 1 when something was, 2 for arguments that are wrong.
int runCommand(const QStringList& arguments);

}
