#pragma once

class PriceBased2dPlot;
class QPrinter;

/// The plot on paper.
namespace PlotPrint {

/// Sets a printer up for a plot: one landscape page with a document name.
void prepare(const PriceBased2dPlot& plot, QPrinter& printer);

/// Prints a plot on one page, laid out for the page as it is for a screen of that size; a file that the
/// printer prints into is written as a whole or not at all. Throws Exception where the printer or the file
/// cannot be used.
void print(PriceBased2dPlot& plot, QPrinter& printer);

}
