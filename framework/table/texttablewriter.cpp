#include "table/texttablewriter.h"

#include <algorithm>
#include <limits>

namespace ZB {

namespace {

constexpr int maximumLength = std::numeric_limits<int>::max() / 4;

bool needsQuotes(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar mark) {
        return mark == QLatin1Char('\t') || mark == QLatin1Char('\n') || mark == QLatin1Char('\r') ||
               mark == QLatin1Char('"');
    });
}

QString quoted(QString text)
{
    text.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

TextTableWriter::TextTableWriter(bool header, std::shared_ptr<QString> targetText)
    : withHeader(header), target(std::move(targetText))
{
}

TextTableWriter::~TextTableWriter() = default;

bool TextTableWriter::begin(const std::vector<ExportColumn> &columns, qint64)
{
    if (!withHeader)
        return true;
    for (const ExportColumn &column : columns)
        append(column.header, &column == &columns.front());
    text += QLatin1Char('\n');
    return true;
}

bool TextTableWriter::writeRow(const std::vector<CellValue> &values)
{
    for (const CellValue &value : values)
        append(plainText(value), &value == &values.front());
    text += QLatin1Char('\n');
    return text.size() < maximumLength;
}

bool TextTableWriter::finish()
{
    *target = std::move(text);
    return true;
}

QString TextTableWriter::errorText() const
{
    return text.size() < maximumLength ? QString() : QStringLiteral("内容过多，无法复制");
}

void TextTableWriter::append(const QString &cell, bool first)
{
    if (!first)
        text += QLatin1Char('\t');
    text += needsQuotes(cell) ? quoted(cell) : cell;
}

} // namespace ZB
