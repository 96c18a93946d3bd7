#include "chain/chainreader.h"

#include "chain/chainbuilder.h"
#include "chain/chainerror.h"
#include "chain/chainfilename.h"
#include "chain/chaintexts.h"
#include "chain/rowparser.h"
#include "chain/textdecoder.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>

namespace {

Q_LOGGING_CATEGORY(importLog, "optiondesk.import", QtWarningMsg)

// So many rows decide what the header leaves open.
constexpr int sampleRows = 1000;

/// Reads one device.
class ChainReading {
public:
    ChainReading(QIODevice& device, const QString& name, const ChainProgress& progress);

    OptionChain read();

private:
    bool readRow(CsvReader& reader, CsvRow* row);
    void parseRows(CsvReader& reader, RowParser& parser, const QVector<CsvRow>& first);
    void report();
    bool isFooter(const CsvRow& row) const;

    QString m_name;
    const ChainProgress& m_progress;
    qint64 m_total = 0;
    qint64 m_reported = -1;
    TextDecoder m_text;
    int m_cellCount = 0;
};

ChainReading::ChainReading(QIODevice& device, const QString& name, const ChainProgress& progress)
    : m_name(name)
    , m_progress(progress)
    , m_total(device.isSequential() ? 0 : device.size())
    , m_text(device, name)
{
}

void ChainReading::report()
{
    if (!m_progress || m_text.bytesRead() == m_reported)
        return;
    m_reported = m_text.bytesRead();
    if (!m_progress(m_reported, m_total))
        throw ChainError::cancelled(m_name);
}

bool ChainReading::readRow(CsvReader& reader, CsvRow* row)
{
    const bool read = reader.readRow(row);
    report();
    return read;
}

// A sentence behind the last row, as vendors add their name and the time.
bool ChainReading::isFooter(const CsvRow& row) const
{
    if (row.cells.size() != 1 || m_cellCount < 2)
        return false;
    const QStringList words = row.cells.first().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const auto isWord = [](const QString& word) { return word.size() > 1 && word.at(0).isLetter(); };
    return std::count_if(words.begin(), words.end(), isWord) >= 3;
}

void ChainReading::parseRows(CsvReader& reader, RowParser& parser, const QVector<CsvRow>& first)
{
    int next = 0;
    CsvRow row;
    CsvRow footer;
    const auto take = [&] {
        if (next >= first.size())
            return readRow(reader, &row);
        row = first.at(next++);
        return true;
    };
    while (take()) {
        if (footer.line > 0)
            parser.parse(footer);
        if (isFooter(row))
            footer = row;
        else
            parser.parse(row);
    }
}

OptionChain ChainReading::read()
{
    report();
    const ChainHeader header = findHeader(m_text);
    m_cellCount = header.columns.cellCount();
    CsvReader reader(m_text, header.delimiter);
    QVector<CsvRow> first;
    CsvRow row;
    while (first.size() < sampleRows && readRow(reader, &row))
        first.append(row);
    const RowFormat format = formatOfRows(m_name, header, first);
    ChainBuilder builder(m_name);
    RowParser parser(format, &builder);
    parseRows(reader, parser, first);
    OptionChain chain = builder.finish();
    if (!chain.asOf.isValid())
        chain.asOf = dateFromFileName(m_name);
    chain.baseCode = parser.baseCode();
    if (chain.baseCode.isEmpty())
        chain.baseCode = baseCodeFromFileName(m_name);
    return chain;
}

}

OptionChain readChain(const QString& fileName, const ChainProgress& progress)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        throw ChainError(fileName, 0, ChainTexts::tr("there is no such file"));
    if (info.isDir())
        throw ChainError(fileName, 0, ChainTexts::tr("is a folder"));
    if (!info.isFile())
        throw ChainError(fileName, 0, ChainTexts::tr("is not an ordinary file"));
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw ChainError(fileName, 0, ChainTexts::tr("cannot be opened: %1").arg(file.errorString()));
    return readChain(file, fileName, progress);
}

OptionChain readChain(QIODevice& device, const QString& name, const ChainProgress& progress)
{
    OptionChain chain = ChainReading(device, name, progress).read();
    qCDebug(importLog) << name << "holds" << chain.series.size() << "series of" << chain.baseCode
                       << "with prices of" << chain.asOf;
    return chain;
}
