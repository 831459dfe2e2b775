#include "reportcases.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace reporttest {

using namespace rw;

Money M(const char* text)
{
    const auto m = Money::parse(text);
    EXPECT_TRUE(m.has_value()) << text;
    return m.value_or(Money());
}

TLPoint Point(const char* code, const char* desc, Date d, const char* tax, const char* pen, const char* interest)
{
    TLPoint p;
    p.sCode = code;
    p.sDesc = desc;
    p.dtDate = d;
    p.cTax = M(tax);
    p.cPen = M(pen);
    p.cInt = M(interest);
    return p;
}

ResultPeriod Row(const char* desc, Date begin, Date end, float rate, const char* taxPen, const char* accrued,
                 int days, double factor, const char* interest)
{
    ResultPeriod r;
    r.sDesc = desc;
    r.dtBegin = begin;
    r.dtEnd = end;
    r.fRate = rate;
    r.cTaxPen = M(taxPen);
    r.cAccruedInt = M(accrued);
    r.nDays = days;
    r.dIntFactor = factor;
    r.cInterest = M(interest);
    return r;
}

namespace {

Case federalCase(const char* name, const char* second, Date due, Date start, Date stop, const char* balance)
{
    Case c;
    ClearInputs(c);
    c.init.sName = name;
    c.init.s2ndLine = second;
    c.init.sTaxAuth = "US  ";
    c.init.dtDue = due;
    c.init.tlStart.dtDate = start;
    c.init.tlStart.cTax = M(balance);
    c.init.tlStop.dtDate = stop;
    return c;
}

PaymentRec payment(const char* desc, Date d, const char* amount, const char* toTax, const char* toInt,
                   const char* toPen, const char* method)
{
    PaymentRec p;
    p.sDesc = desc;
    p.dtPmt = d;
    p.cAmount = M(amount);
    p.cToTax = M(toTax);
    p.cToInt = M(toInt);
    p.cToPen = M(toPen);
    p.sMethod = method;
    return p;
}

PRPenTblElement piece(Date due, const char* beg, const char* paid, Date dtPaid, std::int16_t late,
                      const char* end, float rate, const char* base, const char* penalty, Flag severe)
{
    PRPenTblElement e;
    e.dtDepDue = due;
    e.cBegBal = M(beg);
    e.cPaid = M(paid);
    e.dtPaid = dtPaid;
    e.nDaysLate = late;
    e.cEndBal = M(end);
    e.fRate = rate;
    e.cBase = M(base);
    e.cPenalty = M(penalty);
    e.bSevere = severe;
    return e;
}

FtoRow month(Date d, const char* netTax, float rate, const char* ftp, const char* gross, const char* net)
{
    FtoRow r;
    r.dtComp = d;
    r.cNetTax = M(netTax);
    r.fFtpRate = rate;
    r.cFtp = M(ftp);
    r.cGrossFtf = M(gross);
    r.cNetFtf = M(net);
    return r;
}

}  // namespace

CaseComputation NewCase()
{
    CaseComputation comp;
    comp.kase = federalCase("Jordan A. Example", "Form 1040, tax year 2015", D(2016, 4, 15), D(2016, 4, 15),
                            D(2016, 12, 31), "10000.00");
    comp.timeline = {
        Point("0BT ", "Start Interest", D(2016, 4, 15), "10000.00"),
        Point("ZRT ", "End Rate Period", D(2016, 6, 30)),
        Point("ZRT ", "End Rate Period", D(2016, 9, 30)),
        Point("ZRT ", "End Rate Period", D(2016, 12, 31)),
        Point("ZZSD", "Stop Interest", D(2016, 12, 31)),
    };
    comp.rows = {
        Row("Start Interest", D(2016, 4, 15), D(2016, 4, 15), 0.0f, "10000.00", "0", 0, 0.0, "0"),
        Row("Compound Int.", D(2016, 4, 16), D(2016, 6, 30), 0.04f, "10000.00", "0", 76, 0.008340000123, "83.40"),
        Row("Compound Int.", D(2016, 7, 1), D(2016, 9, 30), 0.04f, "10000.00", "83.40", 92, 0.010190000456,
            "101.91"),
        Row("Compound Int.", D(2016, 10, 1), D(2016, 12, 31), 0.04f, "10000.00", "185.31", 92, 0.012345678912,
            "102.93"),
    };
    comp.interest = M("288.24");
    return comp;
}

CaseComputation OverpaymentCase()
{
    CaseComputation comp;
    comp.kase = federalCase("Pat Q. Refund", "", D(2016, 4, 15), D(2016, 4, 15), D(2016, 10, 31), "-1234.56");
    comp.kase.init.bOverpayment = kYes;
    comp.kase.init.nStopDays = 5;
    comp.timeline = {
        Point("0BT ", "Start Interest", D(2016, 4, 15), "-1234.56"),
        Point("ZRT ", "End Rate Period", D(2016, 6, 30)),
        Point("ZRT ", "End Rate Period", D(2016, 9, 30)),
        Point("ZZSD", "Stop Interest", D(2016, 10, 31)),
    };
    comp.rows = {
        Row("Start Interest", D(2016, 4, 15), D(2016, 4, 15), 0.0f, "-1234.56", "0", 0, 0.0, "0"),
        Row("Compound Int.", D(2016, 4, 16), D(2016, 10, 31), 0.03f, "-1234.56", "0", 199, 0.036990001, "-45.67"),
    };
    comp.interest = M("-45.67");
    return comp;
}

CaseComputation EveryPenaltyCase()
{
    CaseComputation comp;
    Case c = federalCase("Acme Widget Co.", "Form 941, first quarter 2016", D(2016, 4, 15), D(2016, 4, 15),
                         D(2016, 12, 31), "10000.00");
    InitInputs& in = c.init;
    in.bPayroll = kYes;
    in.bAnyPenalties = kYes;
    in.bFtoFile = kYes;
    in.bFtoPay = kYes;
    in.b6651d1 = kYes;
    in.bAccRel = kYes;
    in.bNegFlat = kYes;
    in.bNegTime = kYes;
    in.bOVal = kYes;
    in.bSUP = kYes;
    in.bFraudFlat = kYes;
    in.bFraudTime = kYes;
    in.dtExtended = D(2016, 4, 15);
    in.dtFtoFileAssess = D(2016, 9, 30);
    in.dtFiled = D(2016, 9, 10);
    in.dtFtoPayAssess = D(2016, 5, 15);
    in.cAmtOnReturn = M("10000.00");
    in.dt6651d1Start = D(2016, 12, 1);
    in.cAccRelAmt = M("10000.00");
    in.fAccRelRate = 0.2f;
    in.dtIntSuspend = D(2016, 8, 1);
    c.pmts = {
        payment("Check 1001", D(2016, 5, 18), "650.00", "600.00", "0", "50.00", "I"),
        payment("Check 1002", D(2016, 6, 10), "400.00", "400.00", "0", "0", "T"),
        payment("Check 1003", D(2016, 6, 15), "1025.00", "1000.00", "25.00", "0", "I"),
    };
    in.nPmts = 3;
    ChargeRec ch1;
    ch1.sDesc = "Excise addition";
    ch1.dtLiab = D(2016, 6, 20);
    ch1.dtIntStart = D(2016, 7, 1);
    ch1.cTotal = M("500.00");
    ch1.cToTax = M("300.00");
    ch1.cToPen = M("200.00");
    ChargeRec ch2;
    ch2.sDesc = "Late charge";
    ch2.dtLiab = D(2016, 8, 1);
    ch2.dtIntStart = NoDate;
    ch2.cTotal = M("100.00");
    ch2.cToTax = M("100.00");
    c.charges = {ch1, ch2};
    in.nCharges = 2;
    DepositRec d1;
    d1.dtDepDue = D(2016, 5, 15);
    d1.dtDepAssess = D(2016, 6, 30);
    d1.cRequired = M("1000.00");
    d1.dtDelinqNotice = NoDate;
    d1.dtJeopardy = NoDate;
    DepositRec d2 = d1;
    d2.dtDepDue = D(2016, 6, 15);
    d2.cRequired = M("2000.00");
    d2.bSevere = kYes;
    d2.dtDelinqNotice = D(2016, 7, 1);
    DepositRec d3 = d1;
    d3.dtDepDue = D(2016, 6, 15);
    d3.cRequired = M("500.00");
    c.deposits = {d1, d2, d3};
    in.nDeposits = 3;
    comp.kase = c;

    comp.timeline = {
        Point("0BT ", "Start Interest", D(2016, 4, 15), "10000.00"),
        Point("FFP ", "Failure To File", D(2016, 4, 15), "0", "2250.00"),
        Point("PAR ", "Accuracy Rel", D(2016, 4, 15), "0", "2000.00"),
        Point("PRD ", "T/R due next day", D(2016, 4, 15)),
        Point("DDD ", "PR Liability", D(2016, 5, 15), "1000.00"),
        Point("FPP ", "Failure To Pay", D(2016, 5, 15), "0", "250.00"),
        Point("PMT ", "Check 1001", D(2016, 5, 18), "-600.00", "-50.00"),
        Point("PMT ", "Check 1002", D(2016, 6, 10), "-400.00"),
        Point("DDD ", "PR Liability", D(2016, 6, 15), "2000.00"),
        Point("DDD ", "PR Liability", D(2016, 6, 15), "500.00"),
        Point("PMT ", "Check 1003", D(2016, 6, 15), "-1000.00", "0", "-25.00"),
        Point("PDP ", "PR Penalty", D(2016, 6, 30), "0", "52.00"),
        Point("PDP ", "PR Penalty", D(2016, 6, 30), "0", "200.00"),
        Point("ZRT ", "End Rate Period", D(2016, 6, 30)),
        Point("OTHC", "Excise addition", D(2016, 7, 1), "300.00", "200.00"),
        Point("ST0 ", "Suspend Int.", D(2016, 8, 1)),
        Point("FPP ", "Failure To Pay", D(2016, 9, 16), "0", "50.00"),
        Point("ZRT ", "End Rate Period", D(2016, 9, 30)),
        Point("FPP ", "Failure To Pay", D(2016, 10, 16), "0", "50.00"),
        Point("FPP ", "Failure To Pay", D(2016, 11, 16), "0", "50.00"),
        Point("FPP ", "Failure To Pay", D(2016, 12, 16), "0", "100.00"),
        Point("ZRT ", "End Rate Period", D(2016, 12, 31)),
        Point("ZZSD", "Stop Interest", D(2016, 12, 31)),
    };
    // The charge without an interest start date sorts first.
    comp.timeline.insert(comp.timeline.begin(), Point("OTHC", "Late charge", NoDate, "100.00"));
    comp.rows = {
        Row("Start Interest", D(2016, 4, 15), D(2016, 4, 15), 0.0f, "10000.00", "0", 0, 0.0, "0"),
        Row("Failure To File", D(2016, 4, 15), D(2016, 4, 15), 0.0f, "12250.00", "0", 0, 0.0, "0"),
    };
    comp.interest = M("1234.57");
    comp.ftoRows = {
        month(D(2016, 4, 16), "10000.00", 0.005f, "50.00", "500.00", "450.00"),
        month(D(2016, 5, 16), "10000.00", 0.005f, "50.00", "500.00", "450.00"),
        month(D(2016, 6, 16), "10000.00", 0.005f, "50.00", "500.00", "450.00"),
        month(D(2016, 7, 16), "10000.00", 0.005f, "50.00", "500.00", "450.00"),
        month(D(2016, 8, 16), "10000.00", 0.005f, "50.00", "500.00", "450.00"),
        month(D(2016, 9, 16), "10000.00", 0.005f, "50.00", "0", "0"),
        month(D(2016, 10, 16), "10000.00", 0.005f, "50.00", "0", "0"),
        month(D(2016, 11, 16), "10000.00", 0.005f, "50.00", "0", "0"),
        month(D(2016, 12, 16), "10000.00", 0.01f, "100.00", "0", "0"),
    };
    comp.prTable = {
        piece(D(2016, 5, 15), "1000.00", "600.00", D(2016, 5, 18), 3, "400.00", 0.02f, "600.00", "12.00", kNo),
        piece(D(2016, 5, 15), "400.00", "400.00", D(2016, 6, 10), 26, "0", 0.1f, "400.00", "40.00", kNo),
        piece(D(2016, 6, 15), "2000.00", "1000.00", D(2016, 6, 15), 0, "1000.00", 0.0f, "1000.00", "0", kYes),
        piece(D(2016, 6, 15), "1000.00", "0", D(2016, 12, 31), 199, "1000.00", 0.15f, "1000.00", "150.00", kYes),
        piece(D(2016, 6, 15), "500.00", "0", D(2016, 12, 31), 199, "500.00", 0.1f, "500.00", "50.00", kNo),
    };
    return comp;
}

CaseComputation LongPaymentsCase()
{
    CaseComputation comp = NewCase();
    Case& c = comp.kase;
    c.pmts.clear();
    for (int i = 1; i <= 50; ++i) {
        const std::string desc = std::string("Payment ") + (i < 10 ? "0" : "") + std::to_string(i);
        c.pmts.push_back(payment(desc.c_str(), D(2016, 5, 2) + (i - 1), "100.00", "100.00", "0", "0", "T"));
    }
    c.init.nPmts = 50;
    return comp;
}

ReportSources SourcesFor(const CaseComputation& comp)
{
    ReportSources s;
    s.compute = [comp](const Case&) { return comp; };
    return s;
}

std::string Expected(const std::string& caseName, const std::string& file)
{
    const std::string path = std::string(RW_REPORTS_TESTDATA) + "/" + caseName + "/" + file;
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.good()) << "missing expected text " << path;
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::string CrLfToLf(const std::string& text)
{
    std::string out;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t lf = text.find('\n', pos);
        if (lf == std::string::npos) {
            ADD_FAILURE() << "last line has no CR LF: \"" << text.substr(pos) << "\"";
            out += text.substr(pos);
            break;
        }
        EXPECT_TRUE(lf > pos && text[lf - 1] == '\r') << "line without CR before LF: \"" << text.substr(pos, lf - pos)
                                                       << "\"";
        out += text.substr(pos, lf > pos && text[lf - 1] == '\r' ? lf - 1 - pos : lf - pos);
        out += '\n';
        pos = lf + 1;
    }
    return out;
}

}  // namespace reporttest
