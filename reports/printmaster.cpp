#include "reports/printmaster.h"

#include "base/fault.h"
#include "penalties/payroll.h"
#include "reports/accrelreport.h"
#include "reports/detail.h"
#include "reports/esttaxreport.h"
#include "reports/ftoreport.h"
#include "reports/payrollreport.h"
#include "reports/summary.h"

namespace rw {

namespace {

constexpr ReportChoiceEntry kEntries[] = {
    {kRptInputs, "Inputs"},
    {kRptSummary, "Summary of Results"},
    {kRptDetail, "Detailed Analysis"},
    {kRptFailFilePay, "Failure To File or Pay"},
    {kRptAccRel, "Accuracy Related Pen"},
    {kRptPayroll, "Payroll Deposit Pen"},
    {kRptEstTax, "Estimated Tax Pen"},
};

bool chosen(std::int32_t choice, std::int32_t value)
{
    return (choice & value) != 0;
}

bool needsComputation(std::int32_t choice)
{
    return choice >= 2;
}

CaseComputation computeFor(const Case& c, const ReportSources& sources)
{
    if (!sources.compute)
        ThrowFault(kErrInvalidCall, "PrintMaster", "no computation for the reports");
    return sources.compute(c);
}

// The payroll analysis builds its table afresh from the deposits and the
// payments in list order, whether or not the time line took payroll points.
std::vector<PRPenTblElement> payrollTableFor(const CaseComputation& comp)
{
    std::vector<PRPenTblElement> table;
    CalcUSPRPen(comp.kase, comp.kase.payments(), table);
    return table;
}

bool ftoRequested(const InitInputs& in)
{
    return IsYes(in.bFtoFile) || IsYes(in.bFtoPay);
}

}  // namespace

std::span<const ReportChoiceEntry> ReportChoiceEntries()
{
    return kEntries;
}

ReportChoiceForm ReportChoiceDialog::open() const
{
    ReportChoiceForm f;
    for (std::size_t i = 0; i < std::size(kEntries); ++i)
        f.checked[i] = chosen(choice_.mask, kEntries[i].value);
    f.setupVisible = forPrinting_;
    return f;
}

void ReportChoiceDialog::accept(const ReportChoiceForm& form)
{
    std::int32_t sum = 0;
    for (std::size_t i = 0; i < std::size(kEntries); ++i)
        if (form.checked[i])
            sum += kEntries[i].value;
    choice_.mask = sum;
}

void PrintReports(std::int32_t choice, std::int16_t copies, const Case& c, PrintJob& job,
                  const ReportSources& sources)
{
    WithFaultName("PrintMaster", [&] {
        std::optional<CaseComputation> comp;
        if (needsComputation(choice))
            comp = computeFor(c, sources);
        auto status = [&](std::string_view s) {
            if (job.status)
                job.status(s);
        };
        PrintManager pm(job.printer, job.state, job.msgs);
        for (std::int16_t copy = 0; copy < copies; ++copy) {
            if (chosen(choice, kRptInputs)) {
                status(kPrintingInputs);
                PrintInputs(pm, c, sources.provenance);
            }
            if (chosen(choice, kRptSummary)) {
                status(kPrintingSummary);
                PrnSummary(pm, comp->timeline, comp->kase.init, comp->interest, sources.provenance);
            }
            if (chosen(choice, kRptDetail)) {
                status(kPrintingDetail);
                PrintDetail(pm, comp->kase.init, comp->rows, sources.provenance);
            }
            if (chosen(choice, kRptFailFilePay) && ftoRequested(comp->kase.init)) {
                status(kPrintingFailFilePay);
                PrnFtoFilePay(pm, comp->kase.init, comp->ftoRows, comp->ftfMinimumNote);
            }
            if (chosen(choice, kRptAccRel) && IsYes(comp->kase.init.bAccRel)) {
                status(kPrintingAccRel);
                PrnAccRelPen(pm, c.init, comp->kase.init);
            }
            if (chosen(choice, kRptPayroll) && comp->kase.init.nDeposits > 0) {
                status(kPrintingPayroll);
                ReportPRPen(comp->kase.init, payrollTableFor(*comp), 1, &pm);
            }
            if (chosen(choice, kRptEstTax) && comp->estTax) {
                status(kPrintingEstTax);
                PrnEstTax(pm, comp->kase.init, comp->kase.estTax.input, *comp->estTax);
            }
            if (job.repaint)
                job.repaint();
        }
        job.printer.endDoc();
        status(kPrintingDone);
    });
}

void PrintMaster(std::int16_t copies, const Case& c, ReportChoice& choice, ReportChooser& chooser,
                 PrintJob& job, const ReportSources& sources)
{
    const bool chosen = chooser.chooseReports(choice, true);
    if (job.repaint)
        job.repaint();
    if (!chosen)
        return;
    PrintReports(choice.mask, copies, c, job, sources);
}

std::vector<ReportWindow> ReportWindows(std::int32_t choice, const Case& c,
                                        const ReportSources& sources)
{
    return WithFaultName("ReportDisplay", [&] {
        std::vector<ReportWindow> out;
        std::optional<CaseComputation> comp;
        if (needsComputation(choice))
            comp = computeFor(c, sources);
        if (chosen(choice, kRptSummary)) {
            ReportWindow w;
            w.kind = ReportWindowKind::Summary;
            w.name = "frmSummary";
            w.caption = "Summary";
            w.text
                = DispSummary(comp->timeline, comp->kase.init, comp->interest, sources.provenance);
            out.push_back(std::move(w));
        }
        if (chosen(choice, kRptDetail)) {
            ReportWindow w;
            w.kind = ReportWindowKind::DetailedInterest;
            w.name = "frmRptDetail";
            w.caption = "Detailed Interest Analysis";
            w.grid = DetailGrid(comp->rows, sources.provenance);
            w.text = DetailNote(comp->kase.init, comp->rows, sources.provenance);
            out.push_back(std::move(w));
        }
        if (chosen(choice, kRptFailFilePay) && ftoRequested(comp->kase.init)) {
            ReportWindow w;
            w.kind = ReportWindowKind::FailFilePay;
            w.name = "frmRptFailFilePay";
            w.caption = "Failure To File & Pay Analysis";
            w.grid = FailFilePayGrid(comp->ftoRows);
            w.text = comp->ftfMinimumNote;  // shown under the grid when not empty
            out.push_back(std::move(w));
        }
        if (chosen(choice, kRptAccRel) && IsYes(comp->kase.init.bAccRel)) {
            ReportWindow w;
            w.kind = ReportWindowKind::AccuracyRelated;
            w.name = "frmRptAccRelPen";
            w.caption = "Accuracy Related Penalty";
            w.text = DispAccRelPen(comp->kase.init);
            out.push_back(std::move(w));
        }
        if (chosen(choice, kRptPayroll) && comp->kase.init.nDeposits > 0) {
            ReportWindow w;
            w.kind = ReportWindowKind::PayrollPenalty;
            w.name = "frmRptPRDepPen";
            w.caption = "Payroll Deposit Penalty";
            w.text = ReportPRPen(comp->kase.init, payrollTableFor(*comp), 0, nullptr);
            out.push_back(std::move(w));
        }
        if (chosen(choice, kRptEstTax) && comp->estTax) {
            ReportWindow w;
            w.kind = ReportWindowKind::EstimatedTax;
            w.name = "frmRptEstTax";
            w.caption = "Estimated Tax Penalty";
            w.text = DispEstTax(comp->kase.estTax.input, *comp->estTax, comp->kase.init);
            out.push_back(std::move(w));
        }
        if (chosen(choice, kRptInputs)) {
            ReportWindow w;
            w.kind = ReportWindowKind::Inputs;
            w.name = "frmDispIP";
            w.caption = "Inputs";
            w.inputs = InputsWindow(c, sources.provenance);
            w.text = w.inputs->text;
            out.push_back(std::move(w));
        }
        return out;
    });
}

std::vector<ReportWindow> ReportDisplayCommand(const Case& c, ReportChoice& choice,
                                               ReportChooser& chooser, const ReportSources& sources)
{
    if (!chooser.chooseReports(choice, false))
        return {};
    return ReportWindows(choice.mask, c, sources);
}

}  // namespace rw
