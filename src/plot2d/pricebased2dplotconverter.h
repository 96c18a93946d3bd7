#pragma once

#include "plot2d/plot2dexport.h"

#include <basic_views/conversion.h>

#include <QString>

#include <memory>

/// Turns an axis value into the text of its label: optionally through a conversion of the host's, with a
/// limited number of decimals, a unit behind the number and a plus sign before it.
class PLOT2D_EXPORT PriceBased2dPlotConverter {
public:
    /// Converts nothing: plain numbers, of ten decimals at most, without a unit.
    PriceBased2dPlotConverter();
    PriceBased2dPlotConverter(const PriceBased2dPlotConverter&) = delete;
    PriceBased2dPlotConverter& operator=(const PriceBased2dPlotConverter&) = delete;
    virtual ~PriceBased2dPlotConverter();

    /// The text of a value in the system's locale; empty where there is nothing to show: for a value that is
    /// NaN or infinite, before or after the conversion, and while the conversion is enabled without an
    /// object.
    virtual QString convertedValue(double value) const;

    /// Takes ownership of the conversion to use, null for none, and deletes the one held so far, unless it is
    /// the same. Labels that are shown already do not follow.
    void setConvertionObject(Conversion* object);
    /// Null for none; owned by the converter.
    Conversion* conversionObject() const { return m_conversionObject.get(); }

    /// Whether values are converted; off after construction, and then neither object nor method is used.
    void setConversionEnabled(bool enabled) { m_enabled = enabled; }
    /// Whether values are converted.
    bool isConversionEnabled() const { return m_enabled; }

    /// The member function of the object that converts. It must be set before a value is converted by an
    /// object: asserted in a debug build.
    void setConversionMethod(ConversionMethod method) { m_conversionMethod = method; }
    /// Null after construction.
    ConversionMethod conversionMethod() const { return m_conversionMethod; }

    /// Put right behind the number, without a blank; empty after construction.
    void setMetricUnit(const QString& unit) { m_metricUnit = unit; }
    /// The unit behind the number.
    QString metricUnit() const { return m_metricUnit; }

    /// Whether a (converted) value above zero gets the locale's plus sign; off after construction.
    void setPlusSignShown(bool shown) { m_plusSignShown = shown; }
    /// Whether values above zero get a plus sign.
    bool isPlusSignShown() const { return m_plusSignShown; }

    /// The most decimals, 10 after construction; a number outside 0 to 10 counts as the nearest inside.
    void setDecimals(int decimals) { m_decimals = decimals; }
    /// The most decimals, as they were set.
    int decimals() const { return m_decimals; }

private:
    bool m_enabled = false;
    std::unique_ptr<Conversion> m_conversionObject;
    ConversionMethod m_conversionMethod = nullptr;
    QString m_metricUnit;
    bool m_plusSignShown = false;
    int m_decimals = 10;
};
