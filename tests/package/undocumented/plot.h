#pragma once

/// A class with one slip of each kind.
class Plot {
public:
    double step() const;
    /// @param low The lower end alone.
    void setRange(double low, double high);

Q_SIGNALS:
    void moved();

protected:
    int m_ticks = 0;
};

struct Range {
    double low = 0.0;
};
