#include "reportcases.h"

#include "casejson/casejson.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace reporttest {

using namespace rw;
using Json = nlohmann::json;

namespace {

const std::string kFolder = RW_REPORTS_TESTDATA;

Money money(const Json& o, const char* key)
{
    return M(o.value(key, "0"));
}

std::string_view text(const Json& o, const char* key)
{
    return o.at(key).get_ref<const std::string&>();
}

Date date(const Json& o, const char* key)
{
    const Json v = o.value(key, Json());
    return v.is_null() ? NoDate : ParseMMDDYYYY(v.get<std::string>()).value();
}

}  // namespace

CaseComputation Computation(const std::string& caseName)
{
    CaseComputation comp;
    std::string error;
    if (!LoadCaseFile(kFolder + "/" + caseName + "/case.json", comp.kase, error))
        ADD_FAILURE() << error;
    std::ifstream in(kFolder + "/" + caseName + "/computation.json");
    if (!in)
        return comp;
    const Json j = Json::parse(in);
    comp.interest = money(j, "interest");
    for (const Json& p : j.value("timeline", Json::array()))
        comp.timeline.push_back({{},
                                 text(p, "sDesc"),
                                 text(p, "sCode"),
                                 date(p, "dtDate"),
                                 money(p, "cTax"),
                                 money(p, "cPen"),
                                 money(p, "cInt")});
    for (const Json& r : j.value("rows", Json::array()))
        comp.rows.push_back({text(r, "sDesc"), date(r, "dtBegin"), date(r, "dtEnd"),
                             r.value("fRate", 0.0f), money(r, "cTaxPen"), money(r, "cAccruedInt"),
                             r.value("nDays", 0), r.value("dIntFactor", 0.0),
                             money(r, "cInterest")});
    for (const Json& m : j.value("ftoRows", Json::array()))
        comp.ftoRows.push_back({date(m, "dtComp"), money(m, "cNetTax"), m.value("fFtpRate", 0.0f),
                                money(m, "cFtp"), money(m, "cGrossFtf"), money(m, "cNetFtf")});
    for (const Json& e : j.value("payrollTable", Json::array()))
        comp.prTable.push_back({date(e, "dtDepDue"), money(e, "cBegBal"), money(e, "cPaid"),
                                date(e, "dtPaid"), e.value("nDaysLate", std::int16_t(0)),
                                money(e, "cEndBal"), e.value("fRate", 0.0f), money(e, "cBase"),
                                money(e, "cPenalty"), e.value("bSevere", false) ? kYes : kNo});
    return comp;
}

TLPoint Point(std::string_view code, Date d, std::string_view tax, std::string_view pen,
              std::string_view interest)
{
    return {{}, {}, code, d, M(tax), M(pen), M(interest)};
}

ReportSources SourcesFor(const CaseComputation& comp)
{
    return {[comp](const Case&) { return comp; }, {}};
}

std::string Expected(const std::string& caseAndFile)
{
    std::ifstream in(kFolder + "/" + caseAndFile, std::ios::binary);
    EXPECT_TRUE(in.good()) << "missing expected text " << caseAndFile;
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::string CrLfToLf(const std::string& text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text.compare(i, 2, "\r\n") != 0)  // the CR of a pair goes
            out += text[i];
    const auto count = [&](char c) { return std::count(text.begin(), text.end(), c); };
    EXPECT_TRUE(out.find('\r') == out.npos && count('\r') == count('\n')
                && (out.empty() || out.back() == '\n'))
        << "a line without CR LF in\n"
        << text;
    return out;
}

}  // namespace reporttest
