#pragma once

/// Where a program can be killed while it stores: before each of its calls that change files or lock them.
///
/// Linked into a program, with its symbols exported, they count the calls of all libraries as well.
namespace KillPoints {

/// Kills the program before the n-th such call from now on, n from 1.
void arm(int call);
/// Lets all calls pass from now on.
void disarm();

}
