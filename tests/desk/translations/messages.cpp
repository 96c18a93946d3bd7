#include "messages.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

void readTranslation(QXmlStreamReader& xml, Message& message)
{
    message.state = xml.attributes().value(QLatin1String("type")).toString();
    if (!message.isNumerus) {
        message.translations.append(xml.readElementText());
        return;
    }
    while (xml.readNextStartElement())
        message.translations.append(xml.readElementText());
}

Message readMessage(QXmlStreamReader& xml, const QString& context)
{
    Message message;
    message.context = context;
    message.isNumerus = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source"))
            message.source = xml.readElementText();
        else if (xml.name() == QLatin1String("comment"))
            message.comment = xml.readElementText();
        else if (xml.name() == QLatin1String("translation"))
            readTranslation(xml, message);
        else
            xml.skipCurrentElement();
    }
    return message;
}

}

QVector<Message> Messages::of(const QString& fileName)
{
    QFile file(fileName);
    QVector<Message> found;
    if (!file.open(QIODevice::ReadOnly))
        return found;
    QXmlStreamReader xml(&file);
    QString context;
    xml.readNextStartElement();
    while (xml.readNextStartElement()) {
        while (xml.readNextStartElement()) {
            if (xml.name() == QLatin1String("name"))
                context = xml.readElementText();
            else
                found.append(readMessage(xml, context));
        }
    }
    return xml.hasError() ? QVector<Message>() : found;
}

QString Messages::nameOf(const Message& message)
{
    return QStringList{message.context, message.source, message.comment}.join(QLatin1Char('|'));
}
