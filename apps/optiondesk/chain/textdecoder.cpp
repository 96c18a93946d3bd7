#include "chain/textdecoder.h"

#include "chain/chainerror.h"
#include "chain/chaintexts.h"

#include <QIODevice>
#include <QTextCodec>

#include <algorithm>
#include <array>

namespace {

constexpr int blockSize = 65536;

// Microsoft's code page 1252 from 0x80 to 0x9F; 0 where it defines no character.
constexpr std::array<ushort, 32> windows1252 = {0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0, 0, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013,
    0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178};

QString notText()
{
    return ChainTexts::tr("not a text file");
}

}

TextDecoder::TextDecoder(QIODevice& device, const QString& name)
    : m_device(device)
    , m_name(name)
{
    fill();
    detectEncoding();
}

void TextDecoder::detectEncoding()
{
    if (m_buffer.startsWith("\x1f\x8b") || m_buffer.startsWith("PK\x03\x04") || m_buffer.startsWith("BZh")
        || m_buffer.startsWith("\xfd"
                               "7zXZ"))
        fail(ChainTexts::tr("not a text file but a compressed one"));
    if (m_buffer.startsWith("\xef\xbb\xbf")) {
        m_hasMark = true;
        m_start = 3;
    } else if (m_buffer.startsWith("\xff\xfe")) {
        m_encoding = Encoding::Utf16Little;
        m_start = 2;
    } else if (m_buffer.startsWith("\xfe\xff")) {
        m_encoding = Encoding::Utf16Big;
        m_start = 2;
    }
}

bool TextDecoder::fill()
{
    if (m_atEnd)
        return false;
    m_buffer.remove(0, m_start);
    m_start = 0;
    const int before = m_buffer.size();
    m_buffer.resize(before + blockSize);
    const qint64 count = m_device.read(m_buffer.data() + before, blockSize);
    m_buffer.resize(before + int(std::max<qint64>(count, 0)));
    if (count < 0)
        fail(ChainTexts::tr("cannot be read: %1").arg(m_device.errorString()));
    m_bytesRead += count;
    m_atEnd = count == 0;
    return count > 0;
}

int TextDecoder::unitSize() const
{
    return m_encoding == Encoding::Utf16Little || m_encoding == Encoding::Utf16Big ? 2 : 1;
}

int TextDecoder::bufferedUnits() const
{
    return (m_buffer.size() - m_start) / unitSize();
}

ushort TextDecoder::unitAt(int index) const
{
    const auto byte = [this](int position) { return ushort(uchar(m_buffer.at(m_start + position))); };
    switch (m_encoding) {
    case Encoding::Utf16Little:
        return ushort(byte(2 * index) | byte(2 * index + 1) << 8);
    case Encoding::Utf16Big:
        return ushort(byte(2 * index) << 8 | byte(2 * index + 1));
    default:
        return byte(index);
    }
}

int TextDecoder::findLineEnd()
{
    for (int index = 0;; ++index) {
        while (index >= bufferedUnits()) {
            if (!fill())
                return -1;
        }
        const ushort unit = unitAt(index);
        if (unit == '\n' || unit == '\r')
            return index;
        if (unit < ' ' && unit != '\t')
            fail(notText());
        if (index >= maxLineLength)
            fail(ChainTexts::tr("the line is longer than %1 characters").arg(maxLineLength));
    }
}

bool TextDecoder::readLine(QString* line)
{
    line->clear();
    if (m_skipLineFeed) {
        m_skipLineFeed = false;
        while (bufferedUnits() == 0 && fill()) { }
        if (bufferedUnits() > 0 && unitAt(0) == '\n')
            m_start += unitSize();
    }
    ++m_lineNumber;
    const int end = findLineEnd();
    const int length = end < 0 ? bufferedUnits() : end;
    // Half a character at the end of the text.
    if (end < 0 && m_start + length * unitSize() < m_buffer.size())
        fail(notText());
    if (end < 0 && length == 0) {
        --m_lineNumber;
        return false;
    }
    *line = take(length);
    if (end >= 0) {
        m_skipLineFeed = unitAt(0) == '\r';
        m_start += unitSize();
    }
    return true;
}

QString TextDecoder::take(int units)
{
    QString text = unitSize() == 2 ? decodeUtf16(units) : decodeBytes(m_buffer.mid(m_start, units));
    m_start += units * unitSize();
    checkCharacters(text);
    return text;
}

QString TextDecoder::decodeBytes(const QByteArray& bytes)
{
    if (m_encoding == Encoding::Utf8) {
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
        if (state.invalidChars == 0 && state.remainingChars == 0)
            return text;
        if (m_hasMark)
            fail(ChainTexts::tr("the line is not UTF-8, which the file's first bytes announce"));
        m_encoding = Encoding::Windows1252;
    }
    QString text = QString::fromLatin1(bytes);
    for (QChar& character : text) {
        if (character.unicode() < 0x80 || character.unicode() > 0x9F)
            continue;
        character = QChar(windows1252.at(character.unicode() - 0x80U));
        if (character.isNull())
            fail(notText());
    }
    return text;
}

QString TextDecoder::decodeUtf16(int units) const
{
    QString text(units, Qt::Uninitialized);
    for (int index = 0; index < text.size(); ++index)
        text[index] = QChar(unitAt(index));
    if (!text.isValidUtf16())
        fail(notText());
    return text;
}

void TextDecoder::checkCharacters(const QString& line) const
{
    const bool binary = std::any_of(line.begin(), line.end(), [](QChar character) {
        return character.category() == QChar::Other_Control && character != QLatin1Char('\t');
    });
    if (binary)
        fail(notText());
}

void TextDecoder::fail(const QString& reason) const
{
    throw ChainError(m_name, m_lineNumber, reason);
}
