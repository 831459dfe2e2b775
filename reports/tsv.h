#pragma once
// A block of a report grid as text for the clipboard: tab-separated cells
// under a heading line, which a spreadsheet pastes into its own columns.

#include "reports/grid.h"

#include <cstddef>
#include <string>

namespace rw {

// The entries and columns copied, both ends included. Rows count the grid's
// entries, the headings not among them: row 0 is the grid's row 1.
struct GridBlock {
    std::size_t firstRow = 0;
    std::size_t lastRow = 0;
    std::size_t firstColumn = 0;
    std::size_t lastColumn = 0;
};

// The whole grid: every entry (a totals row included) and every column.
GridBlock WholeGrid(const GridData& grid);

// The block as text: one line of the columns' headings (a heading of several
// lines on one, its parts joined by a blank), then one line per row. Cells
// are separated by tabs and trimmed of the padding that aligns them in the
// window; a tab, a line end or a NUL inside a cell becomes a blank. Every
// line ends with "\n". The block is cut to the grid; an empty grid gives the
// heading line alone.
std::string GridBlockAsTsv(const GridData& grid, const GridBlock& block);

}  // namespace rw
