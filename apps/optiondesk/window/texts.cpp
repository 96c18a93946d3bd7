#include "window/texts.h"

#include "window/smilemodels.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr double daysPerYear = 365.0;

const auto separator = QStringLiteral(" \u00b7 ");

QString days(double time)
{
    const double count = time * daysPerYear;
    // Under ten days the half days of an inferred time matter.
    const QString number = QString::number(count, 'f', count < 9.95 && count != std::floor(count) ? 1 : 0);
    return number + (number == QLatin1String("1") ? QStringLiteral(" day") : QStringLiteral(" days"));
}

QString reason(Pricing::Refusal refusal)
{
    switch (refusal) {
    case Pricing::Refusal::InvalidInput:
        return QStringLiteral("invalid");
    case Pricing::Refusal::NoPrice:
        return QStringLiteral("without price");
    case Pricing::Refusal::ZeroPrice:
        return QStringLiteral("at zero");
    case Pricing::Refusal::BelowIntrinsic:
        return QStringLiteral("below intrinsic");
    case Pricing::Refusal::AboveBound:
        return QStringLiteral("above any value");
    case Pricing::Refusal::NoConvergence:
        return QStringLiteral("unsolved");
    }
    return QString();
}

QString leftOut(const QMap<Pricing::Refusal, int>& counts)
{
    int total = 0;
    QStringList reasons;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
        total += count.value();
        reasons.append(QStringLiteral("%1 %2").arg(count.value()).arg(reason(count.key())));
    }
    if (total == 0)
        return QStringLiteral("none left out");
    return QStringLiteral("%1 left out: %2").arg(total).arg(reasons.join(QStringLiteral(", ")));
}

QString smileName(const ShownSeries& series)
{
    const Pricing::SmileModel used = series.smile->model();
    if (used == series.smileModel)
        return used == Pricing::SmileModel::Spline ? QStringLiteral("smile")
                                                   : SmileModels::name(used) + QStringLiteral(" smile");
    return QStringLiteral("no %1 smile fits, spline").arg(SmileModels::name(series.smileModel));
}

QString smileError(const ShownSeries& series)
{
    const double points = series.smile->rmsError() * 100.0;
    const QString name = smileName(series);
    if (points < 0.005)
        return QStringLiteral("%1 error below %2 vol points").arg(name, QLocale().toString(0.01, 'f', 2));
    return QStringLiteral("%1 error %2 vol points").arg(name, QLocale().toString(points, 'f', 2));
}

QString forward(const ShownSeries& series)
{
    // Parity between strikes and prices has a finer grid than the prices.
    const int decimals = std::min(series.data.decimals + 1, 6);
    QString number = QLocale().toString(series.market.forward, 'f', decimals);
    if (number.endsWith(QLocale().zeroDigit()))
        number.chop(1);
    if (number.endsWith(QLocale().decimalPoint()))
        number.chop(1);
    switch (series.forwardSource) {
    case ForwardSource::Given:
        return QStringLiteral("Forward %1 (as given)").arg(number);
    case ForwardSource::Stated:
        return QStringLiteral("Forward %1").arg(number);
    case ForwardSource::Parity:
        return QStringLiteral("Forward %1 (parity)").arg(number);
    }
    return QString();
}

}

QString Texts::expiry(const QDate& date)
{
    // The desk speaks English whatever the locale of its numbers.
    return date.isValid() ? QLocale::c().toString(date, QStringLiteral("d MMM yyyy"))
                          : QStringLiteral("no expiry");
}

QString Texts::seriesName(const SeriesData& data)
{
    if (!data.options.expiry.isValid())
        return data.baseCode;
    return QStringLiteral("%1, expiry %2").arg(data.baseCode, expiry(data.options.expiry));
}

QString Texts::documentName(const SeriesData& data)
{
    return data.options.expiry.isValid()
        ? data.baseCode + QLatin1Char(' ') + data.options.expiry.toString(Qt::ISODate)
        : data.baseCode;
}

QString Texts::title(const ShownSeries& series)
{
    QStringList parts{series.data.baseCode};
    if (series.data.options.expiry.isValid())
        parts.append(QStringLiteral("expiry ") + expiry(series.data.options.expiry));
    switch (series.timeSource) {
    case TimeSource::Dates:
        parts.append(days(series.market.time));
        break;
    case TimeSource::Volatilities:
        parts.append(days(series.market.time) + QStringLiteral(" (inferred)"));
        break;
    case TimeSource::Assumed:
        parts.append(days(series.market.time) + QStringLiteral(" (assumed)"));
        break;
    }
    return parts.join(separator);
}

QString Texts::status(const ShownSeries& series)
{
    const int points = series.analysis.points.size();
    QStringList parts{forward(series),
        points == 1 ? QStringLiteral("1 point") : QStringLiteral("%1 points").arg(points),
        leftOut(series.analysis.leftOut)};
    if (series.smile)
        parts.append(smileError(series));
    return parts.join(separator);
}

QString Texts::notice(const ShownSeries& series)
{
    if (series.timeSource != TimeSource::Assumed)
        return QString();
    return QStringLiteral("the dates of %1 do not tell the time to expiry: %2 days are assumed")
        .arg(seriesName(series.data))
        .arg(assumedDays);
}

QString Texts::oneLine(const QString& text)
{
    QString line = text;
    std::replace_if(
        line.begin(), line.end(),
        [](QChar character) {
            return character.category() == QChar::Other_Control || character == QChar::LineSeparator
                || character == QChar::ParagraphSeparator;
        },
        QLatin1Char(' '));
    return line.trimmed();
}
