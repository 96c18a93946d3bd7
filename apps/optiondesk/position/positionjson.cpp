#include "position/positionjson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

using Position::Leg;
using Position::LegKind;

const auto formatKey = QStringLiteral("format");
const auto formatName = QStringLiteral("option desk positions 1");
const auto positionsKey = QStringLiteral("positions");
const auto kindKey = QStringLiteral("kind");
const auto expiryKey = QStringLiteral("expiry");
const auto quantityKey = QStringLiteral("quantity");
const auto strikeKey = QStringLiteral("strike");
const auto priceKey = QStringLiteral("price");

QString nameOf(LegKind kind)
{
    switch (kind) {
    case LegKind::Future:
        return QStringLiteral("future");
    case LegKind::Call:
        return QStringLiteral("call");
    case LegKind::Put:
        break;
    }
    return QStringLiteral("put");
}

QJsonObject objectOf(const Leg& leg)
{
    QJsonObject object{{kindKey, nameOf(leg.kind)}, {quantityKey, leg.quantity}, {priceKey, leg.price}};
    if (leg.kind != LegKind::Future)
        object.insert(strikeKey, leg.strike);
    if (leg.expiry.isValid())
        object.insert(expiryKey, leg.expiry.toString(Qt::ISODate));
    return object;
}

bool readKind(const QJsonValue& value, LegKind* kind)
{
    for (const LegKind each : {LegKind::Future, LegKind::Call, LegKind::Put}) {
        if (value.toString() != nameOf(each))
            continue;
        *kind = each;
        return true;
    }
    return false;
}

std::optional<Leg> legOf(const QJsonObject& object)
{
    Leg leg;
    if (!readKind(object.value(kindKey), &leg.kind))
        return std::nullopt;
    leg.expiry = QDate::fromString(object.value(expiryKey).toString(), Qt::ISODate);
    const bool wantsStrike = leg.kind != LegKind::Future;
    if (object.contains(expiryKey) != leg.expiry.isValid() || object.contains(strikeKey) != wantsStrike
        || !object.value(priceKey).isDouble())
        return std::nullopt;
    leg.quantity = object.value(quantityKey).toInt();
    leg.strike = object.value(strikeKey).toDouble();
    leg.price = object.value(priceKey).toDouble();
    return isValid(leg) ? std::optional<Leg>(leg) : std::nullopt;
}

std::optional<QVector<Leg>> legsOf(const QJsonValue& value)
{
    if (!value.isArray())
        return std::nullopt;
    QVector<Leg> legs;
    const QJsonArray array = value.toArray();
    for (const QJsonValue& each : array) {
        const std::optional<Leg> leg = legOf(each.toObject());
        if (!leg)
            return std::nullopt;
        legs.append(*leg);
    }
    return legs;
}

}

QByteArray PositionJson::written(const Positions& positions)
{
    QJsonObject byCode;
    for (auto position = positions.begin(); position != positions.end(); ++position) {
        QJsonArray legs;
        for (const Leg& leg : *position)
            legs.append(objectOf(leg));
        if (!legs.isEmpty())
            byCode.insert(position.key(), legs);
    }
    return QJsonDocument(QJsonObject{{formatKey, formatName}, {positionsKey, byCode}}).toJson();
}

std::optional<PositionJson::Positions> PositionJson::read(const QByteArray& text)
{
    const QJsonObject whole = QJsonDocument::fromJson(text).object();
    if (whole.value(formatKey).toString() != formatName || !whole.value(positionsKey).isObject())
        return std::nullopt;
    Positions positions;
    const QJsonObject byCode = whole.value(positionsKey).toObject();
    for (auto position = byCode.begin(); position != byCode.end(); ++position) {
        const std::optional<QVector<Leg>> legs = legsOf(*position);
        if (!legs)
            return std::nullopt;
        positions.insert(position.key(), *legs);
    }
    return positions;
}
