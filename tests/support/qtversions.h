#pragma once

#include <plot2d/qtversions_p.h>

#include <QMetaType>
#include <QString>

#if QWT_VERSION >= 0x060200
#include <qwt_spline_curve_fitter.h>
#else
#include <qwt_curve_fitter.h>
#endif

/// What the tests say differently to the versions of Qt (5 and 6) and of Qwt (6.1 and from 6.2).
namespace TestVersions {

using QtVersions::PointArrays;

/// The type that is registered under the name, QMetaType::UnknownType for none.
inline int typeNamed(const char* name)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QMetaType::fromName(name).id();
#else
    return QMetaType::type(name);
#endif
}

inline void setPenWidth(QwtAbstractScaleDraw& draw, int width)
{
#if QWT_VERSION >= 0x060200
    draw.setPenWidthF(width);
#else
    draw.setPenWidth(width);
#endif
}

/// In whole pixels.
inline int penWidth(const QwtAbstractScaleDraw& draw)
{
    return static_cast<int>(QtVersions::penWidthOf(draw));
}

/// Whether labels that are wider than a narrow canvas leave a scale hardly any pixels, or turn it round.
constexpr bool labelsSqueezeScales = QWT_VERSION >= 0x060200;

/// Why the texts of a locale are not compared: Qt 6 writes hi_IN in its own groups, and ar_EG with a mark of
/// the direction before a sign.
inline const char* otherSignsOf(const QString& locale)
{
    constexpr bool isOther = QT_VERSION >= QT_VERSION_CHECK(6, 0, 0);
    return isOther && (locale == QLatin1String("hi_IN") || locale == QLatin1String("ar_EG"))
        ? "the expected signs are those of Qt 5.15; this is Qt " QT_VERSION_STR
        : nullptr;
}

}
