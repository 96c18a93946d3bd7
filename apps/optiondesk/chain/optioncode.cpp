#include "chain/optioncode.h"

#include <QRegularExpression>

std::optional<OptionCode> parseOptionCode(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^([A-Z][A-Z0-9.]{0,5}?)\\s{0,5}([0-9]{2})([0-9]{2})([0-9]{2})([CP])[0-9]{8}$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    OptionCode code;
    code.root = match.captured(1);
    code.expiry
        = QDate(2000 + match.captured(2).toInt(), match.captured(3).toInt(), match.captured(4).toInt());
    code.type = match.captured(5) == QLatin1String("C") ? OptionType::Call : OptionType::Put;
    if (!code.expiry.isValid())
        return std::nullopt;
    return code;
}
