#include "cli/cmd_report.h"

#include "base/numtext.h"
#include "cli/cmd_compute.h"
#include "reports/printmaster.h"
#include "reports/standardsources.h"
#include "reports/textprinter.h"

#ifdef RW_HAVE_QTPRINT
#include "qtprint/pdfoutput.h"
#endif

#include <charconv>
#include <memory>
#include <ostream>

namespace rw::cli {

namespace {

constexpr const char* kUsage
    = "qratcalc-cli print: usage: print [--reports LIST] [--copies N] "
      "[--prepared MM/DD/YYYY] (--pdf OUT.pdf | --text [--lines N | --pdf-metrics]) CASE\n";

std::optional<int> positive(const std::string& s)
{
    int v = 0;
    const auto res = std::from_chars(s.data(), s.data() + s.size(), v);
    if (res.ec != std::errc() || res.ptr != s.data() + s.size() || v < 1)
        return std::nullopt;
    return v;
}

}  // namespace

// print --reports LIST --pdf OUT.pdf CASE: prints the chosen reports as one
// job through the page manager into a PDF file (Letter, half-inch margins).
// print --reports LIST --text CASE: the same job on the text back end, its
// pages on standard output; pages are separated by a line holding a single
// form feed. A text page holds 60 lines in every font (--lines N for another
// number); --pdf-metrics lays the pages out as the PDF file would be.
// Progress texts and message boxes go to standard error. --prepared
// MM/DD/YYYY: the day the reports name as prepared (today).
int CmdPrint(CliEnv& env)
{
    bool missing = false;
    const std::optional<std::string> list = TakeOption(env.args, "--reports", "-r", &missing);
    const std::optional<std::string> pdf = TakeOption(env.args, "--pdf", "", &missing);
    const std::optional<std::string> copiesText = TakeOption(env.args, "--copies", "", &missing);
    const std::optional<std::string> linesText = TakeOption(env.args, "--lines", "", &missing);
    const bool text = TakeSwitch(env.args, "--text");
    const bool pdfMetrics = TakeSwitch(env.args, "--pdf-metrics");
    const std::optional<ReportProvenance> provenance = TakeProvenance(env, "print");
    if (!provenance)
        return kExitBadInput;
    if (missing || env.args.size() != 1 || env.args[0].starts_with("-") || (pdf.has_value() == text)
        || (!text && (linesText || pdfMetrics)) || (linesText && pdfMetrics)) {
        env.err << kUsage;
        return kExitBadInput;
    }
    std::string error;
    const std::optional<std::int32_t> choice = ParseReportList(list ? *list : "all", error);
    if (!choice) {
        env.err << "qratcalc-cli print: " << error << "\n";
        return kExitBadInput;
    }
    int copies = 1;
    if (copiesText) {
        const auto v = positive(*copiesText);
        if (!v || *v > 99) {
            env.err << "qratcalc-cli print: --copies needs a number from 1 to 99\n";
            return kExitBadInput;
        }
        copies = *v;
    }
    PageMetrics metrics = PageMetrics::Lines(60);
    if (linesText) {
        const auto v = positive(*linesText);
        if (!v || *v > 1000) {
            env.err << "qratcalc-cli print: --lines needs a number from 1 to 1000\n";
            return kExitBadInput;
        }
        metrics = PageMetrics::Lines(*v);
    }
#ifndef RW_HAVE_QTPRINT
    if (pdf || pdfMetrics) {
        env.err << "qratcalc-cli print: PDF output is not part of this build (it needs Qt)\n";
        return kExitBadInput;
    }
#else
    if (pdfMetrics)
        metrics = PdfPageMetrics();
#endif
    Case c;
    RateTable rates;
    if (int status = LoadCaseAndTable(env, "print", env.args[0], c, rates); status != kExitOk)
        return status;

    std::unique_ptr<Printer> printer;
    TextPrinter* textPrinter = nullptr;
    if (text) {
        auto tp = std::make_unique<TextPrinter>(metrics);
        textPrinter = tp.get();
        printer = std::move(tp);
    }
#ifdef RW_HAVE_QTPRINT
    else
        printer = MakePdfPrinter(*pdf);  // the file is written when the job ends, whole
#endif
    StreamMessages msgs(env.err);
    PrintState state;
    PrintJob job{*printer, state, msgs, [&](std::string_view s) { env.err << s << "\n"; }, {}};
    try {
        PrintReports(*choice, static_cast<std::int16_t>(copies), c, job,
                     StandardReportSources(rates, env.release.info.ftfMinimums, *provenance));
    } catch (const Refusal& r) {
        WriteRefusal(env, r);
        return kExitBadInput;
    } catch (const Fault& f) {
        if (pdf && IsWriteFault(f))
            return TellNotWritten(env, "print", *pdf, f);
        WriteFault(env, f);
        return kExitBadInput;
    }
    if (textPrinter)
        env.out << Latin1ToUtf8(textPrinter->text());
    printer.reset();
    return kExitOk;
}

}  // namespace rw::cli
