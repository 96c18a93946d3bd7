#pragma once

#include "window/commandline.h"
#include "window/viewhistory.h"

#include <QDate>
#include <QStringList>

#include <optional>

class PriceBased2dPlot;

/// The part of a series that was shown, as texts that outlive the desk.
struct KeptView {
    /// The series and what was drawn of it: another one has nothing to do with these ranges.
    QString baseCode;
    QDate expiry;
    DeskView drawn = DeskView::Volatility;
    View view;

    QStringList toTexts() const;
    /// Nothing for texts that are not those of a view, also with numbers that are not finite or ranges
    /// without width.
    static std::optional<KeptView> fromTexts(const QStringList& texts);

    /// Shows the view on the plot of its series; nothing where the plot's curves are out of its sight, or it
    /// shows less than a step or far more than there is.
    void show(PriceBased2dPlot& plot) const;
};
