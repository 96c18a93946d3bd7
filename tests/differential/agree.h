#pragma once

#include "differential/cases.h"

#include <QtTest>

/// Runs the cases of a subject in a test function, which fails with the first difference.
#define AGREE(subject, seed, cost, run)                                                                      \
    do {                                                                                                     \
        const QString difference = Differential::firstDifference(subject, seed, cost, run);                  \
        QVERIFY2(difference.isEmpty(), qPrintable(difference));                                              \
    } while (false)
