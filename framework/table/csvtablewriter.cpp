#include "table/csvtablewriter.h"

namespace ZB {

namespace {

constexpr int bufferSize = 1 << 18;

bool startsLikeFormula(const QString &text)
{
    return !text.isEmpty() && QStringLiteral("=+-@\t\r").contains(text[0]);
}

bool needsQuotes(const QString &text)
{
    for (const QChar mark : text)
        if (mark == QLatin1Char('"') || mark == QLatin1Char(',') || mark == QLatin1Char('\n') ||
            mark == QLatin1Char('\r'))
            return true;
    return false;
}

} // namespace

CsvTableWriter::CsvTableWriter(const QString &path) : file(path) {}

CsvTableWriter::~CsvTableWriter() = default;

bool CsvTableWriter::begin(const std::vector<ExportColumn> &columns, qint64)
{
    if (!file.open(QIODevice::WriteOnly))
        return false;
    buffer.reserve(bufferSize + bufferSize / 4);
    buffer = QByteArrayLiteral("\xEF\xBB\xBF");
    for (const ExportColumn &column : columns) {
        if (&column != &columns.front())
            buffer += ',';
        appendText(column.header);
    }
    return endLine();
}

bool CsvTableWriter::writeRow(const std::vector<CellValue> &values)
{
    bool first = true;
    for (const CellValue &value : values) {
        if (!first)
            buffer += ',';
        first = false;
        if (const auto *text = std::get_if<QString>(&value))
            appendText(*text);
        else
            buffer += plainText(value).toLatin1();
    }
    return endLine();
}

bool CsvTableWriter::finish()
{
    return flush() && file.commit();
}

QString CsvTableWriter::errorText() const
{
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

void CsvTableWriter::appendText(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    if (startsLikeFormula(text))
        bytes.prepend('\'');
    if (needsQuotes(text)) {
        bytes.replace('"', "\"\"");
        buffer += '"' + bytes + '"';
    } else {
        buffer += bytes;
    }
}

bool CsvTableWriter::endLine()
{
    buffer += "\r\n";
    return buffer.size() < bufferSize || flush();
}

bool CsvTableWriter::flush()
{
    const bool written = file.write(buffer) == buffer.size();
    buffer.resize(0);
    return written;
}

} // namespace ZB
