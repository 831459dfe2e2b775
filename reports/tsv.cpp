#include "reports/tsv.h"

#include "base/numtext.h"

#include <algorithm>

namespace rw {

namespace {

bool isBreak(char c)
{
    return c == '\t' || c == '\r' || c == '\n' || c == '\0';
}

// A cell as one field: breaks made blanks, the padding around it gone.
std::string field(std::string_view cell)
{
    std::string out(cell);
    std::replace_if(out.begin(), out.end(), isBreak, ' ');
    return std::string(TrimBlanks(out));
}

// A heading as one field: its lines joined by single blanks.
std::string heading(std::string_view cell)
{
    std::string out;
    bool blank = false;
    for (char c : cell) {
        if (c == ' ' || isBreak(c)) {
            blank = true;
            continue;
        }
        if (blank && !out.empty())
            out += ' ';
        blank = false;
        out += c;
    }
    return out;
}

void appendLine(std::string& out, const std::vector<std::string>& row, std::size_t first,
                std::size_t last, std::string (*shown)(std::string_view))
{
    for (std::size_t c = first; c <= last; ++c) {
        if (c != first)
            out += '\t';
        if (c < row.size())
            out += shown(row[c]);
    }
    out += '\n';
}

}  // namespace

GridBlock WholeGrid(const GridData& grid)
{
    GridBlock b;
    b.lastRow = grid.rows() > 1 ? grid.rows() - 2 : 0;
    b.lastColumn = grid.columns() > 0 ? grid.columns() - 1 : 0;
    return b;
}

std::string GridBlockAsTsv(const GridData& grid, const GridBlock& block)
{
    std::string out;
    if (grid.columns() == 0 || grid.rows() == 0)
        return out;
    const std::size_t firstColumn = std::min(block.firstColumn, grid.columns() - 1);
    const std::size_t lastColumn = std::clamp(block.lastColumn, firstColumn, grid.columns() - 1);
    appendLine(out, grid.cells[0], firstColumn, lastColumn, heading);
    const std::size_t entries = grid.rows() - 1;
    for (std::size_t r = block.firstRow; r <= block.lastRow && r < entries; ++r)
        appendLine(out, grid.cells[r + 1], firstColumn, lastColumn, field);
    return out;
}

}  // namespace rw
