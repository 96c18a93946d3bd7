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
    QString menuText;
};

/// All models, in the order of the menu.
const QVector<Description>& all();

/// The model of a name on the command line.
std::optional<Pricing::SmileModel> fromKey(const QString& key);

/// "SVI"
QString name(Pricing::SmileModel model);

}
