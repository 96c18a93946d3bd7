#include "plot2d/pricebased2dplotconverter.h"

#include "plot2d/plot2dcommon.h"

#include <QLocale>

#include <cmath>

PriceBased2dPlotConverter::PriceBased2dPlotConverter() = default;

PriceBased2dPlotConverter::~PriceBased2dPlotConverter() = default;

QString PriceBased2dPlotConverter::convertedValue(double value) const
{
    if (!std::isfinite(value))
        return QString();
    if (m_enabled) {
        if (!m_conversionObject)
            return QString();
        Q_ASSERT_X(m_conversionMethod, "convertedValue", "a conversion is enabled without a method");
        value = ((*m_conversionObject).*m_conversionMethod)(value);
        if (!std::isfinite(value))
            return QString();
    }

    QString text = Plot2dCommon::fromDoubleToSystemStringShort(value, m_decimals);
    if (text.isEmpty())
        return QString();
    if (!m_metricUnit.isEmpty())
        text += m_metricUnit;
    if (value > 0.0 && m_plusSignShown)
        text.prepend(QLocale::system().positiveSign());
    return text;
}

void PriceBased2dPlotConverter::setConvertionObject(Conversion* object)
{
    if (object != m_conversionObject.get())
        m_conversionObject.reset(object);
}
