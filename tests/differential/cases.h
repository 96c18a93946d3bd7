#pragma once

#include "differential/random.h"
#include "differential/told.h"

#include <functional>

namespace Differential {

/// What a case has shown: where the plain answer and the library's differ.
class Findings {
public:
    template <class T> void compare(const char* what, const T& plain, const T& library)
    {
        ++m_comparisons;
        if (!same(plain, library))
            note(what, told(plain), told(library));
    }
    void compareNear(const char* what, double plain, double library, double scale)
    {
        ++m_comparisons;
        if (!isNear(plain, library, scale))
            note(what, told(plain), told(library));
    }
    /// Counts what is not compared because either answer is right.
    void leaveOut() { ++m_leftOut; }
    void note(const char* what, const QString& plain, const QString& library);

    /// Says what was asked, in full; `description` is called only where something differs.
    template <class Description> void given(const Description& description)
    {
        if (differ())
            m_text += QStringLiteral("  given %1\n").arg(description());
    }

    bool differ() const { return !m_text.isEmpty(); }
    int comparisons() const { return m_comparisons; }
    int leftOut() const { return m_leftOut; }
    QString text() const { return m_text; }

private:
    QString m_text;
    int m_comparisons = 0;
    int m_leftOut = 0;
};

/// Runs the cases of a subject until one shows a difference, and gives the text of that; an empty one when
/// all agree. Each case has a generator of its own, so that it can be run again by itself. Only cases in
/// which something is compared are counted; a subject without any is a difference.
///
/// PLOT2D_CASES is the number of cases of a subject, 40,000 where it is not set; a subject whose cases take
/// `cost` times as long as a plain function runs as many fewer. PLOT2D_CASE is the number of the only case to
/// run. Qt Test ends a test function after five minutes unless QTEST_FUNCTION_TIMEOUT (milliseconds) says
/// more.
QString firstDifference(
    const char* subject, quint64 seed, int cost, const std::function<void(Random&, Findings&)>& run);

}
