#include "reports/grid.h"

#include "base/numtext.h"

#include <algorithm>

namespace rw {

GridData MakeGrid(std::string caption, std::vector<std::string> headings, std::size_t rows,
                  CellAlign align)
{
    GridData g;
    g.caption = std::move(caption);
    const std::size_t cols = headings.size();
    g.cells.assign(rows < 1 ? 1 : rows, std::vector<std::string>(cols));
    g.cells[0] = std::move(headings);
    g.align.assign(cols, align);
    g.widthUnits.assign(cols, 1);
    return g;
}

std::string GridAsText(const GridData& grid)
{
    const std::size_t cols = grid.columns();
    std::vector<std::size_t> width(cols, 0);
    for (const auto& row : grid.cells)
        for (std::size_t c = 0; c < cols && c < row.size(); ++c)
            width[c] = std::max(width[c], row[c].size());
    std::string out;
    for (const auto& row : grid.cells) {
        std::string line;
        for (std::size_t c = 0; c < cols; ++c) {
            const std::string cell = c < row.size() ? row[c] : std::string();
            if (c != 0)
                line += ' ';
            line += grid.align[c] == CellAlign::Right ? RightAlign(cell, width[c])
                                                      : LeftAlign(cell, width[c]);
        }
        out += TrimRight(line);
        out += '\n';
    }
    return out;
}

}  // namespace rw
