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

CsvTableWriter::CsvTableWriter(const QString &path, StopFlag &flag) : stopFlag(flag), file(path) {}

CsvTableWriter::~CsvTableWriter() = default;

bool CsvTableWriter::begin(const std::vector<ExportColumn> &columns, qint64)
{
    if (!file.open(QIODevice::WriteOnly))
        return false;
    buffer.reserve(bufferSize + bufferSize / 4);
    buffer = QByteArrayLiteral("\xEF\xBB\xBF");
    lineStart = buffer.size();
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
    return flush() && stopFlag.commit() && file.commit();
}

QString CsvTableWriter::errorText() const
{
    if (file.error() != QFileDevice::NoError)
        return file.errorString();
    return failed ? QStringLiteral("磁盘已满，或文件无法写入") : QString();
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
    if (buffer.size() == lineStart)
        buffer += "\"\"";
    buffer += "\r\n";
    lineStart = buffer.size();
    return buffer.size() < bufferSize || flush();
}

bool CsvTableWriter::flush()
{
    failed = failed || file.write(buffer) != buffer.size(); // what a full disk cuts short is no error of the file's
    buffer.resize(0);
    lineStart = 0;
    return !failed;
}

} // namespace ZB
