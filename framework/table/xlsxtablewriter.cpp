#include "table/xlsxtablewriter.h"

#include <xlsxwriter.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QUuid>
#include <algorithm>
#include <cmath>
#include <filesystem>

#include "table/xlsxcheck.h"

namespace ZB {

namespace {

constexpr qint64 largestExactInteger = qint64(1) << 53;
constexpr int maximumDecimals = 8;
/// Sheets beyond 4 GB of text need the wide form of the archive, which some programs offer to repair.
constexpr qint64 cellsThatNeedZip64 = 40000000;

/// Where a link leads, so that the link itself stays when the file behind it is replaced.
QString withoutLinks(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
}

std::filesystem::path systemPath(const QString &path)
{
    return std::filesystem::path(path.toStdU16String());
}

/// A text that looks like the code of a character ("_x0041_") would be read as that character.
QString withoutCodes(QString text)
{
    static const QRegularExpression code(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    return text.contains(QLatin1String("_x")) ? text.replace(code, QStringLiteral("_x005F_")) : text;
}

} // namespace

XlsxTableWriter::XlsxTableWriter(const QString &path, StopFlag &flag, int rows)
    : target(withoutLinks(path)), stopFlag(flag), rowsPerSheet(std::clamp(rows, 2, 1048576)),
      working(target + QLatin1Char('.') + QUuid::createUuid().toString(QUuid::Id128))
{
}

XlsxTableWriter::~XlsxTableWriter()
{
    lxw_workbook_free(workbook);
    QFile::remove(working);
}

bool XlsxTableWriter::begin(const std::vector<ExportColumn> &all, qint64 rowCount)
{
    columns = all;
    const QFileInfo info(target);
    if (info.exists() && (!info.isFile() || !info.isWritable()))
        return fail(QStringLiteral("文件不可写"));
    QFile file(working);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return fail(file.errorString());
    file.close();
    QByteArray folder = QFile::encodeName(info.absolutePath());
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = folder.data();
    options.use_zip64 = rowCount * qint64(columns.size()) > cellsThatNeedZip64;
    workbook = workbook_new_opt(QFile::encodeName(working).constData(), &options);
    if (!workbook)
        return fail(QStringLiteral("无法创建工作簿"));
    headerFormat = workbook_add_format(workbook);
    format_set_bold(headerFormat);
    format_set_bottom(headerFormat, LXW_BORDER_THIN);
    return beginSheet();
}

bool XlsxTableWriter::beginSheet()
{
    const QString name = QStringLiteral("数据%1").arg(cellsOfSheets.size() + 1);
    sheet = workbook_add_worksheet(workbook, name.toUtf8().constData());
    if (!sheet)
        return fail(QStringLiteral("无法创建工作表"));
    cellsOfSheets.push_back(0);
    row = 0;
    worksheet_freeze_panes(sheet, 1, 0);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const auto number = lxw_col_t(column);
        worksheet_set_column(sheet, number, number, columns[column].characters, nullptr);
        if (!writeText(int(column), columns[column].header, headerFormat))
            return false;
    }
    ++row;
    return true;
}

void XlsxTableWriter::endSheet()
{
    if (!columns.empty())
        worksheet_autofilter(sheet, 0, 0, lxw_row_t(row - 1), lxw_col_t(columns.size() - 1));
}

bool XlsxTableWriter::writeRow(const std::vector<CellValue> &values)
{
    if (row == rowsPerSheet) {
        endSheet();
        if (!beginSheet())
            return false;
    }
    int column = 0;
    for (const CellValue &value : values)
        if (!writeCell(column++, value))
            return false;
    ++row;
    return true;
}

bool XlsxTableWriter::writeCell(int column, const CellValue &value)
{
    if (const auto *text = std::get_if<QString>(&value))
        return writeText(column, *text, nullptr);
    if (const auto *number = std::get_if<CellNumber>(&value))
        return writeNumber(column, *number);
    return true;
}

bool XlsxTableWriter::writeText(int column, const QString &text, lxw_format *format)
{
    if (text.isEmpty())
        return true;
    const QByteArray bytes = withoutCodes(text.left(maximumTextLength)).left(maximumTextLength).toUtf8();
    if (worksheet_write_string(sheet, lxw_row_t(row), lxw_col_t(column), bytes.constData(), format) != LXW_NO_ERROR)
        return fail(QStringLiteral("无法写入单元格"));
    ++cellsOfSheets.back();
    return true;
}

/// Spreadsheets count in doubles: an order number that a double does not hold exactly goes in as a text.
bool XlsxTableWriter::writeNumber(int column, const CellNumber &number)
{
    const auto *integer = std::get_if<qint64>(&number.value);
    if (integer && (*integer > largestExactInteger || *integer < -largestExactInteger))
        return writeText(column, QString::number(*integer), nullptr);
    if (worksheet_write_number(sheet, lxw_row_t(row), lxw_col_t(column), toDouble(number), formatOf(number)) !=
        LXW_NO_ERROR)
        return fail(QStringLiteral("无法写入单元格"));
    ++cellsOfSheets.back();
    return true;
}

lxw_format *XlsxTableWriter::formatOf(const CellNumber &number)
{
    const int decimals = std::min(number.decimals, maximumDecimals);
    lxw_format *&format = formats[{decimals, number.percent, number.grouped}];
    if (!format) {
        QByteArray pattern = number.grouped ? "#,##0" : "0";
        if (decimals)
            pattern += '.' + QByteArray(decimals, '0');
        if (number.percent)
            pattern += '%';
        format = workbook_add_format(workbook);
        format_set_num_format(format, pattern.constData());
    }
    return format;
}

bool XlsxTableWriter::finish()
{
    endSheet();
    lxw_workbook *whole = std::exchange(workbook, nullptr);
    const lxw_error state = workbook_close(whole);
    if (state != LXW_NO_ERROR)
        return fail(QString::fromUtf8(lxw_strerror(state)));
    if (!isWholeWorkbook(working, cellsOfSheets, stopFlag))
        return fail(QStringLiteral("文件写入不完整"));
    return stopFlag.commit() && moveToTarget();
}

bool XlsxTableWriter::moveToTarget()
{
    const QFile old(target);
    QFile::setPermissions(working, old.exists()
                                       ? old.permissions()
                                       : QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    std::error_code state;
    std::filesystem::rename(systemPath(working), systemPath(target), state);
    if (state)
        return fail(QString::fromLocal8Bit(state.message().c_str()));
    return true;
}

bool XlsxTableWriter::fail(const QString &reason)
{
    if (error.isEmpty())
        error = reason;
    return false;
}

QString XlsxTableWriter::errorText() const
{
    return error;
}

} // namespace ZB
