#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

/// Reads a device as lines of text, keeping no more than one line and one block of it in memory.
///
/// A byte order mark decides for UTF-8 or UTF-16; without one a line is UTF-8, and from the first line on
/// that is not, Windows-1252. Lines end in LF, CR or CRLF. Throws ChainError for a NUL or another control
/// character than the tab (binary data), bytes of no character, a line of more than maxLineLength units,
/// and for a failure of the device.
class TextDecoder {
public:
    static constexpr int maxLineLength = 65536;

    /// The device is open and outlives the decoder; the name is for the errors.
    TextDecoder(QIODevice& device, const QString& name);

    /// The next line without its end; false, with an empty line, at the end of the text.
    bool readLine(QString* line);

    /// The number of the line that readLine() gave last, from 1; 0 before the first.
    int lineNumber() const { return m_lineNumber; }
    /// Bytes taken from the device so far.
    qint64 bytesRead() const { return m_bytesRead; }
    QString name() const { return m_name; }

private:
    enum class Encoding { Utf8, Windows1252, Utf16Little, Utf16Big };

    void detectEncoding();
    bool fill();
    int unitSize() const;
    int bufferedUnits() const;
    ushort unitAt(int index) const;
    /// The index of the line end in the buffer, which is filled as needed; -1 when the text ends first.
    int findLineEnd();
    QString take(int units);
    QString decodeBytes(const QByteArray& bytes);
    QString decodeUtf16(int units) const;
    void checkCharacters(const QString& line) const;
    [[noreturn]] void fail(const QString& reason) const;

    QIODevice& m_device;
    QString m_name;
    QByteArray m_buffer;
    /// Bytes of the buffer that are used up.
    int m_start = 0;
    Encoding m_encoding = Encoding::Utf8;
    bool m_hasMark = false;
    bool m_atEnd = false;
    bool m_skipLineFeed = false;
    int m_lineNumber = 0;
    qint64 m_bytesRead = 0;
};
