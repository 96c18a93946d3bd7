#pragma once

class QwtPlot;

namespace GridLines {

/// Makes the lines of the plot's grid whole pixels of its screen wide, about one of the plot's: at a factor
/// of 1.25 some would have one and some two.
void fit(QwtPlot& plot);

}
