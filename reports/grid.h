#pragma once
// The contents of a report grid as plain data, for the window that shows it
// and for the command-line tool: row 0 holds the column headings, the other
// rows the entries in order (and a totals row where the report has one).

#include <string>
#include <vector>

namespace rw {

enum class CellAlign { Left, Right };

struct GridData {
    std::string caption;  // the caption of the window that shows the grid
    std::vector<std::vector<std::string>> cells;  // [row][column], row 0 = headings
    std::vector<CellAlign> align;  // one per column
    std::vector<int> widthUnits;  // relative widths, one per column

    std::size_t columns() const { return align.size(); }
    std::size_t rows() const { return cells.size(); }
    friend bool operator==(const GridData&, const GridData&) = default;
};

// A grid of `rows` rows (headings included) with the given headings, all
// columns of one width and alignment.
GridData MakeGrid(std::string caption, std::vector<std::string> headings, std::size_t rows,
                  CellAlign align);

// The grid as text: every column padded to its widest cell (left- or
// right-aligned as the column is), columns separated by one space, trailing
// blanks removed, one line per row ending with "\n".
std::string GridAsText(const GridData& grid);

}  // namespace rw
