#pragma once

#include <ctime>

namespace TestSupport {

/// A limit far above what following a table costs and far below what walking it for each change would. It is
/// the process's own time that counts, so a busy machine does not matter.
class Patience {
public:
    bool isOver() const { return (std::clock() - m_start) / CLOCKS_PER_SEC >= 60; }

private:
    std::clock_t m_start = std::clock();
};

}
