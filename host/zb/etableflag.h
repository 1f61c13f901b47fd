#pragma once

namespace ZB {

/// Entries of a table's context menu, as bits. An entry that is left out takes its key along.
enum ETableMenu : int
{
    MenuCopy = 0x1,
    MenuCopyWithHeader = 0x2,
    MenuSelectAll = 0x4,
    MenuFind = 0x8,
    MenuClearFilter = 0x10,
    MenuColumns = 0x20,
    MenuFitColumns = 0x40,
    MenuFreezeColumns = 0x80,
    MenuExport = 0x100,
    MenuAll = 0x1ff
};

/// What a table shows and does beside its rows, as bits.
enum ETableFlag : int
{
    TableRowNumbers = 0x4,    ///< a column of row numbers at the left edge
    TableOddEvenRows = 0x400, ///< every second row on the second background
    TablePaged = 0x40000000   ///< shows one page; a bar below asks for others by event 277
};

/// How a paged table asks for its pages.
enum EPagingQueryType : int
{
    PagingNone = 0,
    PagingByIndex = 3 ///< event 277 with the page's first index and its number of rows
};

} // namespace ZB
