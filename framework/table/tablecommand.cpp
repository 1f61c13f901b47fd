#include "table/tablecommand.h"

#include "zb/etableflag.h"

namespace ZB {

const std::vector<TableCommandEntry> &tableCommands()
{
    using C = TableCommand;
    const auto keys = [](int sequence) { return QKeySequence(sequence); };
    static const std::vector<TableCommandEntry> all = {
        {C::Copy, MenuCopy, QStringLiteral("复制"), keys(Qt::CTRL | Qt::Key_C), false},
        {C::CopyWithHeader, MenuCopyWithHeader, QStringLiteral("复制(含表头)"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
         false},
        {C::SelectAll, MenuSelectAll, QStringLiteral("全选"), keys(Qt::CTRL | Qt::Key_A), true},
        {C::Find, MenuFind, QStringLiteral("查找…"), keys(Qt::CTRL | Qt::Key_F), false},
        {C::FindNext, MenuFind, QString(), keys(Qt::Key_F3), false},
        {C::FindPrevious, MenuFind, QString(), keys(Qt::SHIFT | Qt::Key_F3), false},
        {C::ClearFilter, MenuClearFilter, QStringLiteral("清除筛选"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_L), true},
        {C::Columns, MenuColumns, QStringLiteral("列设置…"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_O), false},
        {C::FitColumns, MenuFitColumns, QStringLiteral("最适合的列宽"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_W), false},
        {C::FreezeColumns, MenuFreezeColumns, QStringLiteral("冻结列…"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_R), true},
        {C::RowMarks, 0, QStringLiteral("大单标记…"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_M), false},
        {C::Pause, 0, QStringLiteral("暂停刷新"), keys(Qt::Key_Pause), true},
        {C::Export, MenuExport, QStringLiteral("导出数据…"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_E), false},
    };
    return all;
}

} // namespace ZB
