#include "window/smilemodels.h"

#include "window/desktexts.h"

#include <algorithm>

const QVector<SmileModels::Description>& SmileModels::all()
{
    static const QVector<Description> models{
        {Pricing::SmileModel::Spline, QStringLiteral("spline"),
            QT_TRANSLATE_NOOP("DeskTexts", "&Smoothing spline")},
        {Pricing::SmileModel::Svi, QStringLiteral("svi"), QT_TRANSLATE_NOOP("DeskTexts", "S&VI")},
        {Pricing::SmileModel::Sabr, QStringLiteral("sabr"), QT_TRANSLATE_NOOP("DeskTexts", "S&ABR")},
    };
    return models;
}

QString SmileModels::key(Pricing::SmileModel model)
{
    const auto found = std::find_if(all().cbegin(), all().cend(),
        [model](const Description& description) { return description.model == model; });
    return found == all().cend() ? QString() : found->key;
}

std::optional<Pricing::SmileModel> SmileModels::fromKey(const QString& key)
{
    const auto found = std::find_if(all().cbegin(), all().cend(),
        [&key](const Description& description) { return description.key == key; });
    return found == all().cend() ? std::nullopt : std::optional<Pricing::SmileModel>(found->model);
}

QString SmileModels::name(Pricing::SmileModel model)
{
    switch (model) {
    case Pricing::SmileModel::Svi:
        return QStringLiteral("SVI");
    case Pricing::SmileModel::Sabr:
        return QStringLiteral("SABR");
    case Pricing::SmileModel::Spline:
        break;
    }
    return DeskTexts::tr("spline");
}
