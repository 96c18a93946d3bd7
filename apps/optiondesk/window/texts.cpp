#include "window/texts.h"

#include "window/desktexts.h"
#include "window/smilemodels.h"

#include <position/legtexts.h>

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
    if (count < 9.95 && count != std::floor(count))
        return DeskTexts::tr("%1 days").arg(QString::number(count, 'f', 1));
    const int whole = qRound(count);
    return whole == 1 ? DeskTexts::tr("1 day") : DeskTexts::tr("%n days", nullptr, whole);
}

QString reason(Pricing::Refusal refusal)
{
    switch (refusal) {
    case Pricing::Refusal::InvalidInput:
        return DeskTexts::tr("invalid");
    case Pricing::Refusal::NoPrice:
        return DeskTexts::tr("without price");
    case Pricing::Refusal::ZeroPrice:
        return DeskTexts::tr("at zero");
    case Pricing::Refusal::BelowIntrinsic:
        return DeskTexts::tr("below intrinsic");
    case Pricing::Refusal::AboveBound:
        return DeskTexts::tr("above any value");
    case Pricing::Refusal::NoConvergence:
        return DeskTexts::tr("unsolved");
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
        return DeskTexts::tr("none left out");
    return DeskTexts::tr("%1 left out: %2").arg(total).arg(reasons.join(QStringLiteral(", ")));
}

QString smileName(const ShownSeries& series)
{
    const Pricing::SmileModel used = series.smile->model();
    if (used == series.smileModel)
        return used == Pricing::SmileModel::Spline ? DeskTexts::tr("smile")
                                                   : DeskTexts::tr("%1 smile").arg(SmileModels::name(used));
    return DeskTexts::tr("no %1 smile fits, spline").arg(SmileModels::name(series.smileModel));
}

QString smileError(const ShownSeries& series)
{
    const double points = series.smile->rmsError() * 100.0;
    const QString name = smileName(series);
    if (points < 0.005)
        return DeskTexts::tr("%1 error below %2 vol points").arg(name, QLocale().toString(0.01, 'f', 2));
    return DeskTexts::tr("%1 error %2 vol points").arg(name, QLocale().toString(points, 'f', 2));
}

// Of the discount factor that parity gives; nothing for 1. Over an assumed time a rate would be made up, the
// factor is not.
QString interest(const ShownSeries& series)
{
    const Pricing::Market& market = series.market;
    if (market.rate == 0.0)
        return QString();
    if (series.timeSource == TimeSource::Assumed)
        return DeskTexts::tr("discount factor %1").arg(QLocale().toString(market.discount(), 'f', 4));
    return DeskTexts::tr("rate %1 %").arg(QLocale().toString(market.rate * 100.0, 'f', 2));
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
    const QString rate = interest(series);
    switch (series.forwardSource) {
    case ForwardSource::Given:
        return rate.isEmpty() ? DeskTexts::tr("Forward %1 (as given)").arg(number)
                              : DeskTexts::tr("Forward %1 (as given), %2 (parity)").arg(number, rate);
    case ForwardSource::Stated:
        return rate.isEmpty() ? DeskTexts::tr("Forward %1").arg(number)
                              : DeskTexts::tr("Forward %1 (stated), %2 (parity)").arg(number, rate);
    case ForwardSource::Parity:
        return rate.isEmpty() ? DeskTexts::tr("Forward %1 (parity)").arg(number)
                              : DeskTexts::tr("Forward %1, %2 (parity)").arg(number, rate);
    }
    return QString();
}

}

QString Texts::expiry(const QDate& date)
{
    return date.isValid() ? Position::LegTexts::expiry(date) : DeskTexts::tr("no expiry");
}

QString Texts::seriesName(const SeriesData& data)
{
    if (!data.options.expiry.isValid())
        return data.baseCode;
    return DeskTexts::tr("%1, expiry %2").arg(data.baseCode, expiry(data.options.expiry));
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
        parts.append(DeskTexts::tr("expiry %1").arg(expiry(series.data.options.expiry)));
    switch (series.timeSource) {
    case TimeSource::Dates:
        parts.append(days(series.market.time));
        break;
    case TimeSource::Volatilities:
        parts.append(DeskTexts::tr("%1 (inferred)").arg(days(series.market.time)));
        break;
    case TimeSource::Assumed:
        parts.append(DeskTexts::tr("%1 (assumed)").arg(days(series.market.time)));
        break;
    }
    return parts.join(separator);
}

QString Texts::status(const ShownSeries& series)
{
    const int points = series.analysis.points.size();
    QStringList parts{forward(series),
        points == 1 ? DeskTexts::tr("1 point") : DeskTexts::tr("%n points", nullptr, points),
        leftOut(series.analysis.leftOut)};
    if (series.smile)
        parts.append(smileError(series));
    return parts.join(separator);
}

QString Texts::notice(const ShownSeries& series)
{
    if (series.timeSource != TimeSource::Assumed)
        return QString();
    return DeskTexts::tr(
        "the dates of %1 do not tell the time to expiry: %n days are assumed", nullptr, assumedDays)
        .arg(seriesName(series.data));
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
