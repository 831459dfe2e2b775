#include "engine/detail.h"

#include "base/fault.h"

#include "base/numtext.h"

namespace rw {

namespace {

constexpr std::size_t kDescColumn = 2;

std::string storedText(const FixedText<16>& t)
{
    const std::string_view v = t.view();
    return std::string(v.substr(0, v.find('\0')));
}

}  // namespace

const DetailLine& DetailHeadings()
{
    static const DetailLine headings{"BEGINNING DATE",
                                     "ENDING DATE",
                                     "DESCRIPTION",
                                     "INTEREST RATE",
                                     "BEGINNING TAX & PENALTIES",
                                     "ACCRUED INTEREST",
                                     "DAYS",
                                     "INTEREST FACTOR",
                                     "INTEREST"};
    return headings;
}

DetailLine DetailRowCells(const ResultPeriod& row)
{
    return DetailLine{FormatMMDDYYYY(row.dtBegin),
                      FormatMMDDYYYY(row.dtEnd),
                      storedText(row.sDesc),
                      RightAlign(FormatFixed(static_cast<double>(row.fRate) * 100.0, 4, 1), 7),
                      RtJustAmt(row.cTaxPen),
                      RtJustAmt(row.cAccruedInt),
                      std::to_string(row.nDays),
                      FormatFixed(row.dIntFactor, 9, 0),
                      RtJustAmt(row.cInterest)};
}

DetailLine DetailTotalCells(Money total)
{
    DetailLine line;
    line[0] = "Ending";
    line[1] = "Interest";
    line[8] = RtJustAmt(total);
    return line;
}

bool DetailColumnRightAligned(std::size_t column)
{
    return column != kDescColumn;
}

int DetailColumnWidthUnits(std::size_t column)
{
    return column == kDescColumn ? 2 : 1;
}

std::vector<DetailLine> DetailAnalysis::grid() const
{
    std::vector<DetailLine> g;
    g.reserve(rows.size() + 2);
    g.push_back(DetailHeadings());
    g.insert(g.end(), rows.begin(), rows.end());
    g.push_back(total);
    return g;
}

DetailAnalysis MakeDetailAnalysis(const std::vector<ResultPeriod>& rows)
{
    return WithFaultName("FillDetailIntDisp", [&] {
        DetailAnalysis a;
        a.rows.reserve(rows.size());
        for (const ResultPeriod& r : rows) {
            a.rows.push_back(DetailRowCells(r));
            a.totalInterest += r.cInterest;
        }
        a.total = DetailTotalCells(a.totalInterest);
        return a;
    });
}

std::string DetailText(const DetailLine& line)
{
    std::string out;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (i != 0)
            out += ' ';
        out += line[i];
    }
    return out;
}

}  // namespace rw
