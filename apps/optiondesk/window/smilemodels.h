#pragma once

#include <pricing/parametricsmile.h>

#include <QString>
#include <QVector>

#include <optional>

/// The models of smiles that the user may choose from.
namespace SmileModels {

/// A model with its name on the command line and in the menu.
struct Description {
    Pricing::SmileModel model;
    QString key;
    /// In English, to be translated by DeskTexts::tr().
    const char* menuText;
};

/// All models, in the order of the menu.
const QVector<Description>& all();

/// The model's name on the command line, and the model of such a name.
QString key(Pricing::SmileModel model);
std::optional<Pricing::SmileModel> fromKey(const QString& key);

/// "SVI"
QString name(Pricing::SmileModel model);

}
