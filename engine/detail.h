#pragma once
// The detailed interest analysis as data: every result row of a computation
// as nine formatted cells, under nine headings, with the interest total at
// the foot. The window's grid, the command-line text and the printed report
// all show these cells.

#include "engine/intcalc.h"

#include <array>
#include <string>
#include <vector>

namespace rw {

inline constexpr std::size_t kDetailColumns = 9;
using DetailLine = std::array<std::string, kDetailColumns>;

// "BEGINNING DATE", "ENDING DATE", "DESCRIPTION", "INTEREST RATE",
// "BEGINNING TAX & PENALTIES", "ACCRUED INTEREST", "DAYS", "INTEREST FACTOR",
// "INTEREST".
const DetailLine& DetailHeadings();

// The cells of one result row: dates "mm/dd/yyyy"; the description's stored
// characters up to the first NUL (so a never-set one is empty), blanks kept;
// the rate x 100 (in double) as "#0.0000" right-aligned in 7; the balance and
// the accrued interest as 14-character amounts; days "##0"; the factor
// ".000000000"; the interest as a 14-character amount.
DetailLine DetailRowCells(const ResultPeriod& row);

// The foot: "Ending", "Interest", the total in the interest column.
DetailLine DetailTotalCells(Money total);

// Every column but DESCRIPTION is right-aligned; DESCRIPTION is twice as
// wide as the others, which share one width.
bool DetailColumnRightAligned(std::size_t column);
int DetailColumnWidthUnits(std::size_t column);

struct DetailAnalysis {
    std::vector<DetailLine> rows;  // one per result row, in order
    DetailLine total;
    Money totalInterest;

    // The grid: headings, the rows, the total (rows.size() + 2 lines).
    std::vector<DetailLine> grid() const;
};

// FillDetailIntDisp: the cells of every row and the total of cInterest.
DetailAnalysis MakeDetailAnalysis(const std::vector<ResultPeriod>& rows);

// The cells of one line joined by single blanks, as the command-line tool
// prints them.
std::string DetailText(const DetailLine& line);

}  // namespace rw
