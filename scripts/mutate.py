#!/usr/bin/env python3
"""Mutation run: how many small faults in the core code does the test suite catch?

The script holds a fixed list of small faults ("mutants") in the core folders
(casedata/, engine/, payments/, penalties/, reports/). For each one it puts the
fault into the source, rebuilds what depends on the file, runs the whole test
suite, records whether the fault was caught (the build failed, or a test
failed) or missed, and puts the original text back. The table at the end shows
which faults the tests do not notice.

Run it from the repository root, on a build directory that is already
configured and built:

    cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo && cmake --build build -j2
    python3 scripts/mutate.py --list                  # the mutants, nothing is run
    python3 scripts/mutate.py --check                 # does every mutant still apply? (no build)
    nice -n 10 python3 scripts/mutate.py --out mutants.txt         # all mutants (hours)
    python3 scripts/mutate.py --only intcalc-days-no-plus-one,payroll-round-half-up  # some

Options:
    --build DIR         the configured build directory (default: build)
    --only ID[,ID...]   run only these mutants (may be given more than once)
    --list              print the mutants (id, file, description) and stop
    --check             only check that each mutant's original text occurs exactly
                        once in its file; exit status 1 when any is stale
    --jobs N            parallel jobs for the build and for ctest (default: 2)
    --timeout S         per-test timeout handed to ctest (default: 120)
    --out FILE          also write the result table to FILE
    --stop-on-failure   let ctest stop at the first failing test (faster; the
                        result then names only that test)
    --no-baseline       skip the first build and test run of the unchanged tree

What happens, in order:
  1. The unchanged tree is built and tested once (unless --no-baseline). Tests
     that already fail there are reported and do not count as catching a mutant.
  2. For each mutant: the original text must occur exactly once in the file,
     otherwise the mutant is "stale" (the code moved or changed: update its entry
     in MUTANTS). The file is changed, `cmake --build DIR -jN` rebuilds, and
     `ctest --test-dir DIR -jN --timeout S` runs with QT_QPA_PLATFORM=offscreen.
     Result: "caught (build failed: compile error | a build step)", "caught
     (tests: NAMES)" or "missed".
     The file is always restored (also on Ctrl-C or SIGTERM). A journal in the
     build directory (mutate-journal.json) lets a later run restore a file left
     behind by a run that was killed outright. The output of every build and
     test run is kept in DIR/mutate-logs/ (ID-build.log, ID-test.log).
  3. One last build, so that the build directory matches the sources again.

The figure printed at the end is "caught N of M (stale S)", where M counts the
mutants that applied.

Each entry in MUTANTS is (id, file, original text, replacement, description).
The original text must occur exactly once in the file; keep it short but
distinctive. Run --check after editing the list.
"""

from __future__ import annotations

import argparse
import json
import os
import re
import signal
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
JOURNAL_NAME = "mutate-journal.json"


@dataclass(frozen=True)
class Mutant:
    id: str
    file: str
    original: str
    replacement: str
    description: str


def M(id_: str, file: str, original: str, replacement: str, description: str) -> Mutant:
    return Mutant(id_, file, original, replacement, description)


MUTANTS: list[Mutant] = [
    # ---- casedata: case record, case files, date checks, initial inputs --------------
    M("datechecks-start-inclusive", "casedata/datechecks.cpp",
      "if (d <= start) {",
      "if (d < start) {",
      "a date on the start date of the calculation draws no warning"),
    M("datechecks-stop-inclusive", "casedata/datechecks.cpp",
      "if (d >= stop) {",
      "if (d > stop) {",
      "a date on the stop date of the calculation draws no warning"),
    M("datechecks-suggested-start", "casedata/datechecks.cpp",
      "FormatShortDate(start + 1)",
      "FormatShortDate(start)",
      "the warning suggests the start date itself instead of the day after it"),
    M("datechecks-extended-before-due", "casedata/datechecks.cpp",
      "if (d < init.dtDue)",
      "if (d <= init.dtDue)",
      "an extended due date equal to the due date is warned about"),
    M("extduedate-no-default", "casedata/extduedate.cpp",
      "if (in.dtExtended.dayNumber() == 0.0 || in.dtExtended.isNoDate())\n        in.dtExtended = in.dtDue;",
      "",
      "the extended due date is not preset to the due date"),
    M("casefile-old-layout-converter", "casedata/casefile.cpp",
      "case InitLayout::Before2000Q22:\n            ConvTo2000Q22(in, c.init);",
      "case InitLayout::Before2000Q22:\n            ConvTo2010Q311(in, c.init);",
      "a case file of the oldest layout is read as one of the 2000-2010 layout"),
    M("casefile-2010-layout-skipped", "casedata/casefile.cpp",
      "if (tag20 < std::string_view(\"Qrat2010Q3.11\"))",
      "if (tag20 < std::string_view(\"Qrat2000Q2.20\"))",
      "a case file written 2000-2010 is read with the current layout"),
    # Likely equivalent (no test can catch it): reading a case starts from a cleared case, which has the rate.
    M("casefile-old-accrel-rate", "casedata/casefile.cpp",
      "scratch.bAutoArrange = 0;\n    scratch.fAccRelRate = kNormalAccRelRate;",
      "scratch.bAutoArrange = 0;",
      "a case file of the oldest layout gets no accuracy-related rate"),
    M("casefile-negative-deposits", "casedata/casefile.cpp",
      "if (c.init.nPmts < 0 || c.init.nCharges < 0 || c.init.nDeposits < 0)",
      "if (c.init.nPmts < 0 || c.init.nCharges < 0)",
      "a case file with a negative deposit count is not reported as damaged"),
    M("casefile-empty-list-cleared", "casedata/casefile.cpp",
      "list.assign(1, T{});",
      "list.clear();",
      "an empty list read from a file lacks its one blank record"),
    M("caserecord-new-accrel-rate", "casedata/caserecord.cpp",
      "init.fAccRelRate = kNormalAccRelRate;",
      "",
      "a new case has no accuracy-related penalty rate"),
    M("caserecord-new-suspend-day0", "casedata/caserecord.cpp",
      "&init.dtIntSuspend, &init.dtRestart})",
      "&init.dtRestart})",
      "a new case has day 0 as its suspension date instead of none"),
    M("caserecord-counts-empty", "casedata/caserecord.cpp",
      "return count == 0 ? v.size() == 1 : v.size() == static_cast<std::size_t>(count);",
      "return v.size() == static_cast<std::size_t>(count);",
      "an empty list with its one blank record counts as inconsistent"),
    M("initialinputs-overpayment-sign", "casedata/initialinputs.cpp",
      "in.tlStart.cTax = -*balance;",
      "in.tlStart.cTax = *balance;",
      "an initial overpayment is stored as an amount owed"),
    M("initialinputs-overpayment-shown", "casedata/initialinputs.cpp",
      "f.initialBalance = FormatMoneyField(-in.tlStart.cTax);",
      "f.initialBalance = FormatMoneyField(in.tlStart.cTax);",
      "the dialog shows an initial overpayment as a negative amount"),
    M("initialinputs-stop-days-31", "casedata/initialinputs.cpp",
      "n < 0 || n > 30)",
      "n < 0 || n > 31)",
      "31 refund stop days are accepted (0 to 30 allowed)"),

    # ---- engine: interest, rates, time line, detail ----------------------------------
    M("intcalc-days-no-plus-one", "engine/intcalc.cpp",
      "std::nearbyint(r.dtEnd - r.dtBegin + 1.0)",
      "std::nearbyint(r.dtEnd - r.dtBegin)",
      "an interest row counts one day too few (end minus begin, not inclusive)"),
    M("intcalc-simple-366", "engine/intcalc.cpp",
      "row.dIntFactor = (rate * row.nDays) / 365.0;",
      "row.dIntFactor = (rate * row.nDays) / 366.0;",
      "simple interest divides by 366 instead of 365"),
    M("intcalc-compound-no-leap", "engine/intcalc.cpp",
      "const double basis = row.dtBegin.year() % 4 == 0 ? 366.0 : 365.0;",
      "const double basis = 365.0;",
      "daily compounding uses 365 days in leap years too"),
    M("intcalc-no-compounding", "engine/intcalc.cpp",
      "const Money base = compounds ? r.cTaxPen + r.cAccruedInt : r.cTaxPen;",
      "const Money base = r.cTaxPen;",
      "compound interest is not charged on accrued interest"),
    M("intcalc-stop-exclusive", "engine/intcalc.cpp",
      "if (stopDate <= r.dtEnd || static_cast<std::int32_t>(j) == stop) {",
      "if (stopDate < r.dtEnd || static_cast<std::int32_t>(j) == stop) {",
      "the walk does not end at a row reaching exactly the stop date"),
    M("intcalc-suspension-restart-day", "engine/intcalc.cpp",
      "r.dtBegin < in.dtRestart",
      "r.dtBegin <= in.dtRestart",
      "a row beginning on the restart date is still suspended"),
    M("intcalc-not-due-inclusive", "engine/intcalc.cpp",
      "} else if (r.dtBegin < in.dtDue) {",
      "} else if (r.dtBegin <= in.dtDue) {",
      "no interest on a row beginning on the due date"),
    M("intcalc-accrued-not-carried", "engine/intcalc.cpp",
      "rows[i + 1].cAccruedInt = r.cAccruedInt + r.cInterest;",
      "rows[i + 1].cAccruedInt = r.cInterest;",
      "accrued interest is not carried forward, only the last row's interest"),
    M("intcalc-payment-on-date-counts", "engine/intcalc.cpp",
      "if (p.dtPmt >= when) {",
      "if (p.dtPmt > when) {",
      "interest to a date counts a payment made on that very date"),
    M("ratesel-tax-motivated-125", "engine/ratesel.cpp",
      "static_cast<double>(fRate) * 1.2);",
      "static_cast<double>(fRate) * 1.25);",
      "the tax-motivated rate is 125 % instead of 120 % of the standard rate"),
    M("ratesel-corp-up-plus-2.5", "engine/ratesel.cpp",
      "rate = revise(fRate, 0.02);",
      "rate = revise(fRate, 0.025);",
      "the large corporate underpayment rate adds 2.5 points instead of 2"),
    M("ratesel-corp-op-minus-2", "engine/ratesel.cpp",
      "rate = revise(fRate, -0.025);",
      "rate = revise(fRate, -0.02);",
      "the large corporate overpayment rate subtracts 2 points instead of 2.5"),
    M("ratesel-overpay-1998-exclusive", "engine/ratesel.cpp",
      "(begin <= k19981231 || IsYes(init.bCorporate))",
      "(begin < k19981231 || IsYes(init.bCorporate))",
      "the overpayment differential misses a row beginning on 12/31/1998"),
    M("ratesel-overpay-noncorp", "engine/ratesel.cpp",
      "(begin <= k19981231 || IsYes(init.bCorporate))",
      "(begin <= k19981231 || true)",
      "after 1998 a non-corporate overpayment also gets the lower rate"),
    M("ratesel-state-refund-column", "engine/ratesel.cpp",
      "rate = tableRow.fOPRate;",
      "rate = tableRow.fUPRate;",
      "a state overpayment takes the underpayment column"),
    M("ratesel-label-overpmt", "engine/ratesel.cpp",
      "text = \"Overpmt Rate\";",
      "text = \"Undrpmt Rate\";",
      "a federal overpayment row is labelled as an underpayment"),
    M("ratesel-row-boundary", "engine/ratesel.cpp",
      "while (next_ < wr.size() && !(wr[next_].dtThru >= d))",
      "while (next_ < wr.size() && !(wr[next_].dtThru > d))",
      "the last day of a rate period takes the next period's rate"),
    M("timeline-due-point-at-start", "engine/timeline.cpp",
      "init.tlStart.dtDate < due && due < init.tlStop.dtDate",
      "init.tlStart.dtDate <= due && due < init.tlStop.dtDate",
      "a due date on the start date gets a due-date point of its own"),
    M("timeline-payment-sign", "engine/timeline.cpp",
      "p.cTax = -pm.cToTax;",
      "p.cTax = pm.cToTax;",
      "a payment's tax part increases the balance instead of reducing it"),
    M("timeline-charge-from-liability", "engine/timeline.cpp",
      "return HasInterestDate(ch) ? ch.dtIntStart : ch.dtLiab;",
      "return ch.dtLiab;",
      "interest on a charge runs from its liability date, ignoring its interest date"),
    M("timeline-tax-to-date-exclusive", "engine/timeline.cpp",
      "if (p.dtDate > d)\n                break;",
      "if (p.dtDate >= d)\n                break;",
      "the tax to a date leaves out that day's events"),
    M("detail-total-last-row", "engine/detail.cpp",
      "a.totalInterest += r.cInterest;",
      "a.totalInterest = r.cInterest;",
      "the detailed analysis total shows only the last row's interest"),
    M("detail-rate-2-decimals", "engine/detail.cpp",
      "static_cast<double>(row.fRate) * 100.0, 4, 1), 7)",
      "static_cast<double>(row.fRate) * 100.0, 2, 1), 7)",
      "the detail rate column shows 2 decimals instead of 4"),

    # ---- payments: payments and other charges ----------------------------------------
    M("payments-underallocated-accepted", "payments/payments.cpp",
      "if (allocated != rec.cAmount) {",
      "if (allocated > rec.cAmount) {",
      "a payment allocated for less than its amount is accepted"),
    M("payments-method-always-irs", "payments/payments.cpp",
      "rec.sMethod = form.irsMethod ? \"I\" : \"T\";",
      "rec.sMethod = \"I\";",
      "a payment allocated by the taxpayer is stored as allocated by the IRS method"),
    M("payments-unallocated-no-interest", "payments/payments.cpp",
      "- MoneyFieldOrZero(form.toPenalties) - MoneyFieldOrZero(form.toInterest);",
      "- MoneyFieldOrZero(form.toPenalties);",
      "the unallocated rest of a payment ignores the interest part"),
    M("payments-order-warning-flipped", "payments/payments.cpp",
      "if (rec.dtPmt < previous.dtPmt)",
      "if (rec.dtPmt > previous.dtPmt)",
      "the out-of-order warning fires for payments in order instead"),
    M("payments-edited-counts-itself", "payments/payments.cpp",
      "RemoveListEntry(kase.pmts, kase.init.nPmts, *edited_);",
      "(void)edited_;",
      "the payment being edited counts against what is owed on its own date"),
    M("charges-unallocated-no-penalty", "payments/charges.cpp",
      "MoneyFieldOrZero(form.toTax)\n                       - MoneyFieldOrZero(form.toPenalties);",
      "MoneyFieldOrZero(form.toTax);",
      "the unallocated rest of a charge ignores the penalty part"),
    M("charges-sorted-descending", "payments/charges.cpp",
      "return a.dtLiab < b.dtLiab; }",
      "return b.dtLiab < a.dtLiab; }",
      "charges are listed latest first"),
    M("charges-no-default-interest-date", "payments/charges.cpp",
      "rec.dtIntStart = rec.dtLiab;",
      "(void)0;",
      "a charge without an interest date keeps day 0 instead of its liability date"),

    # ---- penalties: failure to file/pay, accuracy, payroll, allocation -----------------
    M("alloc-excess-not-to-tax", "penalties/allocation.cpp",
      "a.tax += rest - owed.interest;",
      "(void)0;",
      "a payment larger than all that is owed leaves the excess unallocated"),
    M("alloc-no-cent-tolerance", "penalties/allocation.cpp",
      "return interestPart > withCent && withCent > Money();",
      "return interestPart > ceiling && withCent > Money();",
      "the interest-part warning fires one cent above the ceiling"),
    # Likely equivalent (no test can catch it): what is owed on a date leaves out payments made on it anyway.
    M("alloc-before-inclusive", "penalties/allocation.cpp",
      "(!before || p.dtPmt < *before)",
      "(!before || p.dtPmt <= *before)",
      "an IRS-method payment on the cut-off date is allocated too"),
    M("ftf-rate-4.5", "penalties/ftofile.cpp",
      "constexpr double kFtfMonthlyRate = 0.05;",
      "constexpr double kFtfMonthlyRate = 0.045;",
      "failure to file is 4.5 % a month instead of 5 %"),
    M("ftf-six-months", "penalties/ftofile.cpp",
      "if (r >= 0.25f)",
      "if (r >= 0.30f)",
      "failure to file runs six months instead of five"),
    M("ftf-not-net-of-ftp", "penalties/ftofile.cpp",
      "row.cNetFtf = row.cGrossFtf - row.cFtp;",
      "row.cNetFtf = row.cGrossFtf;",
      "failure to file is not reduced by the failure to pay of the same month"),
    M("ftf-minimum-not-capped", "penalties/ftofile.cpp",
      "point.cPen = base < minimum ? base : minimum;",
      "point.cPen = minimum;",
      "the minimum failure-to-file penalty is not capped at the tax due"),
    M("ftf-minimum-60-days-inclusive", "penalties/ftofile.cpp",
      "in.dtFiled - in.dtExtended > 60.0",
      "in.dtFiled - in.dtExtended >= 60.0",
      "the minimum applies to a return filed exactly 60 days late"),
    M("ftf-interest-from-assessment", "penalties/ftofile.cpp",
      "return assessDate < kFtfInterestChange ? assessDate : kFtfInterestChange;",
      "return assessDate;",
      "interest on an old failure-to-file penalty runs from assessment, past 7/19/1984"),
    M("ftp-base-rate-1", "penalties/ftofile.cpp",
      "if (!IsYes(in.b6651d1))\n            return 0.005f;",
      "if (!IsYes(in.b6651d1))\n            return 0.01f;",
      "failure to pay is 1 % a month instead of 0.5 %"),
    M("ftp-cap-exclusive", "penalties/ftofile.cpp",
      "return withThisMonth <= Money::fromCents(25) ? 0.01f : 0.0f;",
      "return withThisMonth < Money::fromCents(25) ? 0.01f : 0.0f;",
      "the increased failure-to-pay rate stops one month before 25 %"),
    M("ftp-negative-balance-kept", "penalties/ftofile.cpp",
      "if (row.cNetTax < Money())\n            row.cNetTax = Money();",
      "",
      "a negative net unpaid tax is not floored at zero"),
    M("ftp-balance-on-month-day", "penalties/ftofile.cpp",
      "if (!(p.dtDate < row.dtComp))",
      "if (!(p.dtDate <= row.dtComp))",
      "a payment on a month's computation date reduces that month's unpaid tax"),
    M("ftp-assessment-exclusive", "penalties/ftofile.cpp",
      "ftoRows[k].dtComp <= assess",
      "ftoRows[k].dtComp < assess",
      "a failure-to-pay month on the assessment date is not lumped into the assessment"),
    M("accrel-from-due-date", "penalties/accrel.cpp",
      "p.dtDate = c.init.dtExtended;",
      "p.dtDate = c.init.dtDue;",
      "interest on the accuracy-related penalty runs from the due date, not the extended one"),
    M("payroll-5-days-exclusive", "penalties/payroll.cpp",
      "if (daysLate <= 5)",
      "if (daysLate < 5)",
      "a deposit 5 days late is charged 5 % instead of 2 %"),
    M("payroll-16-days", "penalties/payroll.cpp",
      "if (daysLate <= 15)",
      "if (daysLate <= 16)",
      "a deposit 16 days late is charged 5 % instead of 10 %"),
    M("payroll-severe-10", "penalties/payroll.cpp",
      "return 0.15f;",
      "return 0.10f;",
      "the severe deposit penalty is 10 % instead of 15 %"),
    M("payroll-round-half-up", "penalties/payroll.cpp",
      "if (rem * 2 > Money::kScale || (rem * 2 == Money::kScale && (q & 1)))",
      "if (rem * 2 >= Money::kScale)",
      "a deposit piece's penalty rounds halves up instead of to even"),
    M("payroll-whole-payment", "penalties/payroll.cpp",
      "work.push_back({p.dtPmt, p.cToTax, p.cToTax});",
      "work.push_back({p.dtPmt, p.cAmount, p.cAmount});",
      "deposits are paid with the whole payment, not its tax part"),
    M("payroll-interest-from-due", "penalties/payroll.cpp",
      "p.dtDate = d.dtDepAssess;",
      "p.dtDate = d.dtDepDue;",
      "interest on a deposit penalty runs from the deposit's due date, not its assessment"),
    M("compute-stop-days-added", "penalties/compute.cpp",
      "init.tlStop.dtDate = init.tlStop.dtDate - init.nStopDays;",
      "init.tlStop.dtDate = init.tlStop.dtDate + init.nStopDays;",
      "refund stop days move the stop date later instead of earlier"),
    # Likely equivalent (no test can catch it): this comparison only keeps the lowest total, not the order.
    M("arrange-last-cheapest", "penalties/arrange.cpp",
      "if (first || total < best)",
      "if (first || total <= best)",
      "the payment order search breaks ties towards a later order"),

    # ---- reports: summary, analyses, printing ------------------------------------------
    M("summary-total-no-pmt-penalties", "reports/summary.cpp",
      "+ sums.pmtsToPenalties;",
      ";",
      "the summary total leaves out payments allocated to penalties"),
    M("summary-ftf-ftp-swapped", "reports/summary.cpp",
      "{code::kFailureToPay, &SummarySums::failureToPay},\n"
      "            {code::kFailureToFile, &SummarySums::failureToFile},",
      "{code::kFailureToPay, &SummarySums::failureToFile},\n"
      "            {code::kFailureToFile, &SummarySums::failureToPay},",
      "the summary swaps the failure to file and failure to pay amounts"),
    M("summary-label-ftp", "reports/summary.cpp",
      "\"Failure to pay penalty\"",
      "\"Failure to file penalty\"",
      "the failure to pay line is labelled as failure to file"),
    M("summary-refund-check-date", "reports/summary.cpp",
      "FormatShortDate(init.tlStop.dtDate + init.nStopDays)",
      "FormatShortDate(init.tlStop.dtDate)",
      "the refund note names the stop date instead of the check date"),
    M("ftoreport-totals-swapped", "reports/ftoreport.cpp",
      "last[4] = RtJustAmt(ftp);\n        last[5] = RtJustAmt(ftf);",
      "last[4] = RtJustAmt(ftf);\n        last[5] = RtJustAmt(ftp);",
      "the failure to file/pay grid swaps its two totals"),
    M("ftoreport-first-penalty-day", "reports/ftoreport.cpp",
      "FormatMMDDYYYY(init.dtDue + 1)",
      "FormatMMDDYYYY(init.dtDue)",
      "the printed first date of failure to pay is the due date itself"),
    M("payrollreport-total-of-bases", "reports/payrollreport.cpp",
      "total += e.cPenalty;",
      "total += e.cBase;",
      "the payroll report totals the penalty bases instead of the penalties"),
    M("payrollreport-no-due-groups", "reports/payrollreport.cpp",
      "const bool newDeposit = i == 0 || e.dtDepDue != previous;",
      "const bool newDeposit = i == 0;",
      "the payroll report prints only the first deposit due date heading"),
    M("accrelreport-no-rate", "reports/accrelreport.cpp",
      "Money AccRelReportPenalty(const InitInputs& init)\n{\n"
      "    return MulDouble(init.cAccRelAmt, static_cast<double>(init.fAccRelRate));",
      "Money AccRelReportPenalty(const InitInputs& init)\n{\n"
      "    return init.cAccRelAmt;",
      "the accuracy-related report shows the understatement as the penalty"),
    M("printdetail-total-last-row", "reports/detail.cpp",
      "total += r.cInterest;",
      "total = r.cInterest;",
      "the printed detail total is only the last row's interest"),
    M("printmanager-page-full-late", "reports/printmanager.cpp",
      "return (static_cast<std::int32_t>(nLinesPerPage()) - kFooterLines - 1) * lineHeight();",
      "return (static_cast<std::int32_t>(nLinesPerPage()) - kFooterLines) * lineHeight();",
      "a page takes one line more before the page break"),
    M("keeptogether-never", "reports/printmanager.cpp",
      "return 0;\n        const std::int64_t height = static_cast<std::int64_t>(lines) * lineHeight();\n        if (state_.usedHeight == 0\n            || (state_.usedHeight > state_.bodyTop && state_.usedHeight + height > bodyLimit())) {",
      "return 0;\n        const std::int64_t height = static_cast<std::int64_t>(lines) * lineHeight();\n        if (state_.usedHeight == 0\n            || (state_.usedHeight > state_.bodyTop && height < 0)) {",
      "a block of lines may begin in the last lines of a page (a heading left alone)"),
    M("provenance-estimate-from-verified-day", "reports/provenance.cpp",
      "std::max(prov.verifiedThrough + 1, init.tlStart.dtDate + 1)",
      "std::max(prov.verifiedThrough, init.tlStart.dtDate + 1)",
      "the estimated days are said to begin on the last verified day"),
    M("provenance-row-on-verified-day", "reports/provenance.cpp",
      "row.nDays > 0 && row.dtEnd > prov.verifiedThrough",
      "row.nDays > 0 && row.dtEnd >= prov.verifiedThrough",
      "a row ending on the last verified day is marked as an estimate"),
    M("rate-as-held-two-decimals", "base/numtext.cpp",
      "std::to_chars(buf, buf + sizeof buf, rate, std::chars_format::fixed);",
      "std::to_chars(buf, buf + sizeof buf, rate, std::chars_format::fixed, 2);",
      "a typed rate is shown rounded to two decimals (12.5 % as .13)"),
    M("csv-amount-grouped", "reports/csvexport.cpp",
      "    std::string s = FormatMoney(amount);\n    std::erase(s, ',');\n    return s;\n}\n\nstd::string CsvField",
      "    std::string s = FormatMoney(amount);\n    return s;\n}\n\nstd::string CsvField",
      "the CSV amounts keep their thousands separators"),
    M("overview-total-first-line", "reports/overview.cpp",
      "o.total = s.amount;  // the last line is the total",
      "if (!o.total) o.total = s.amount;",
      "the overview's total is its first figure (the unpaid tax)"),
    M("inputs-grid-application-modal", "ui/reports/reportwindows.cpp",
      "setWindowModality(Qt::WindowModal);",
      "setWindowModality(Qt::ApplicationModal);",
      "a list grid of the inputs window blocks every report window"),
    M("inputs-balance-zero", "reports/inputs.cpp",
      "\"Initial Balance: \" + FormatMoney(in.tlStart.cTax)",
      "\"Initial Balance: \" + FormatMoney(Money())",
      "the printed inputs show a zero initial balance"),
]


# ---- applying ---------------------------------------------------------------------


def locate(m: Mutant) -> tuple[Path | None, str | None, str]:
    """The file, its text, and '' when the mutant applies, or a reason it is stale."""
    path = ROOT / m.file
    if not path.is_file():
        return None, None, "file not found"
    text = path.read_text(encoding="latin-1")
    n = text.count(m.original)
    if n == 0:
        return path, text, "original text not found"
    if n > 1:
        return path, text, f"original text occurs {n} times"
    return path, text, ""


def write_text(path: Path, text: str) -> None:
    # Written in place (same inode); newline="" keeps the line ends as read.
    with open(path, "w", encoding="latin-1", newline="") as f:
        f.write(text)


class Journal:
    """The original of the file being mutated, kept on disk until it is restored."""

    def __init__(self, build: Path):
        self.path = build / JOURNAL_NAME

    def recover(self) -> None:
        if not self.path.exists():
            return
        data = json.loads(self.path.read_text(encoding="utf-8"))
        target = Path(data["file"])
        print(f"mutate: restoring {target} left behind by an interrupted run", file=sys.stderr)
        write_text(target, data["original"])
        self.path.unlink()

    def hold(self, path: Path, original: str) -> None:
        tmp = self.path.with_suffix(".tmp")
        tmp.write_text(json.dumps({"file": str(path), "original": original}), encoding="utf-8")
        os.replace(tmp, self.path)

    def release(self) -> None:
        try:
            self.path.unlink()
        except FileNotFoundError:
            pass


# ---- building and testing ------------------------------------------------------------


FAILED_LINE = re.compile(r"^\s*\d+\s+-\s+(\S+)\s+\((.+)\)\s*$")


def run(cmd: list[str], env: dict[str, str], log: Path) -> int:
    """Runs cmd in a process group of its own, so that an interruption ends
    the compilers and test programs under it as well."""
    with open(log, "w", encoding="utf-8", errors="replace") as out:
        proc = subprocess.Popen(cmd, stdout=out, stderr=subprocess.STDOUT, env=env, cwd=ROOT,
                                start_new_session=True)
        try:
            return proc.wait()
        except BaseException:
            for sig, wait in ((signal.SIGTERM, 20), (signal.SIGKILL, None)):
                try:
                    os.killpg(proc.pid, sig)
                except ProcessLookupError:
                    break
                try:
                    proc.wait(timeout=wait)
                    break
                except subprocess.TimeoutExpired:
                    continue
            raise


class Uninterrupted:
    """Holds back Ctrl-C and SIGTERM while a file is being restored."""

    SIGNALS = {signal.SIGINT, signal.SIGTERM}

    def __enter__(self):
        signal.pthread_sigmask(signal.SIG_BLOCK, self.SIGNALS)

    def __exit__(self, *exc):
        signal.pthread_sigmask(signal.SIG_UNBLOCK, self.SIGNALS)
        return False


def build(args, env, log: Path) -> bool:
    return run(["cmake", "--build", str(args.build), f"-j{args.jobs}"], env, log) == 0


def test(args, env, log: Path) -> tuple[bool, list[str]]:
    cmd = ["ctest", "--test-dir", str(args.build), f"-j{args.jobs}", "--timeout", str(args.timeout)]
    if args.stop_on_failure:
        cmd.append("--stop-on-failure")
    rc = run(cmd, env, log)
    failed: list[str] = []
    in_list = False
    for line in log.read_text(encoding="utf-8", errors="replace").splitlines():
        if line.startswith("The following tests FAILED"):
            in_list = True
            continue
        if in_list:
            mm = FAILED_LINE.match(line)
            if mm:
                name, kind = mm.group(1), mm.group(2)
                failed.append(name if kind == "Failed" else f"{name} [{kind}]")
            elif line.strip():
                in_list = False
    if rc != 0 and not failed:
        failed.append("(ctest failed)")
    return rc == 0, failed


def build_failure(log: Path) -> str:
    """A compiler's error, or a later step (a build-time tool run on the mutant)."""
    text = log.read_text(encoding="utf-8", errors="replace")
    return "compile error" if re.search(r": error:|: undefined reference", text) else "a build step"


def test_name(failure: str) -> str:
    return failure.split(" [", 1)[0]


def summarise(names: list[str], limit: int = 3) -> str:
    shown = ", ".join(names[:limit])
    if len(names) > limit:
        shown += f", +{len(names) - limit} more"
    return shown


# ---- output -------------------------------------------------------------------------


def table(rows: list[tuple[str, ...]], heads: tuple[str, ...] = ("id", "file", "description", "result")) -> str:
    widths = [max([len(h)] + [len(r[i]) for r in rows]) for i, h in enumerate(heads)]

    def line(cells) -> str:
        return "  ".join(c.ljust(w) for c, w in zip(cells, widths)).rstrip()

    out = [line(heads), line(tuple("-" * w for w in widths))]
    out += [line(r) for r in rows]
    return "\n".join(out)


def figure(results: list[str]) -> str:
    stale = sum(1 for r in results if r.startswith("stale"))
    caught = sum(1 for r in results if r.startswith("caught"))
    applied = sum(1 for r in results if r.startswith(("caught", "missed")))
    return f"caught {caught} of {applied} (stale {stale})"


# ---- main ---------------------------------------------------------------------------


def select(only: list[str] | None) -> list[Mutant]:
    if not only:
        return list(MUTANTS)
    wanted = [w.strip() for item in only for w in item.split(",") if w.strip()]
    by_id = {m.id: m for m in MUTANTS}
    unknown = [w for w in wanted if w not in by_id]
    if unknown:
        sys.exit(f"mutate: unknown mutant id(s): {', '.join(unknown)} (see --list)")
    return [by_id[w] for w in dict.fromkeys(wanted)]


def check_list() -> None:
    ids = [m.id for m in MUTANTS]
    dup = sorted({i for i in ids if ids.count(i) > 1})
    if dup:
        sys.exit(f"mutate: duplicate mutant ids: {', '.join(dup)}")
    same = [m.id for m in MUTANTS if m.original == m.replacement]
    if same:
        sys.exit(f"mutate: mutants that change nothing: {', '.join(same)}")


def on_sigterm(signum, frame):
    raise KeyboardInterrupt


def main() -> int:
    p = argparse.ArgumentParser(description=__doc__.split("\n\n")[0],
                                formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("--build", default="build", help="configured build directory (default: build)")
    p.add_argument("--only", action="append", metavar="ID[,ID]", help="run only these mutants")
    p.add_argument("--list", action="store_true", help="print the mutants and stop")
    p.add_argument("--check", action="store_true", help="only check that every mutant applies")
    p.add_argument("--jobs", type=int, default=2, help="parallel jobs for build and ctest (default: 2)")
    p.add_argument("--timeout", type=int, default=120, help="per-test timeout in seconds (default: 120)")
    p.add_argument("--out", metavar="FILE", help="also write the result table to FILE")
    p.add_argument("--stop-on-failure", action="store_true", help="ctest stops at the first failing test")
    p.add_argument("--no-baseline", action="store_true", help="skip the run of the unchanged tree")
    args = p.parse_args()

    check_list()
    mutants = select(args.only)

    if args.list:
        print(table([(m.id, m.file, m.description) for m in mutants], ("id", "file", "description")))
        print(f"{len(mutants)} mutants")
        return 0

    if args.check:
        rows, results = [], []
        for m in mutants:
            _, _, why = locate(m)
            res = f"stale: {why}" if why else "applies"
            rows.append((m.id, m.file, m.description, res))
            results.append(res)
        print(table(rows))
        stale = sum(1 for r in results if r.startswith("stale"))
        print(f"{len(mutants) - stale} of {len(mutants)} apply (stale {stale})")
        return 1 if stale else 0

    args.build = Path(args.build).resolve()
    if not (args.build / "CMakeCache.txt").is_file():
        sys.exit(f"mutate: {args.build} is not a configured build directory (no CMakeCache.txt)")
    logs = args.build / "mutate-logs"
    logs.mkdir(exist_ok=True)
    journal = Journal(args.build)
    journal.recover()

    env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    # SIGTERM is handled like Ctrl-C, so that the file is restored.
    signal.signal(signal.SIGTERM, on_sigterm)
    # Also when started in the background, where SIGINT would be ignored.
    signal.signal(signal.SIGINT, signal.default_int_handler)

    started = time.monotonic()
    known_failures: set[str] = set()
    rows: list[tuple[str, str, str, str]] = []
    results: list[str] = []
    interrupted = False
    try:
        if not args.no_baseline:
            print("mutate: building and testing the unchanged tree", flush=True)
            if not build(args, env, logs / "baseline-build.log"):
                sys.exit(f"mutate: the unchanged tree does not build; see {logs / 'baseline-build.log'}")
            ok, failed = test(args, env, logs / "baseline-test.log")
            if not ok:
                known_failures = {test_name(f) for f in failed}
                print(f"mutate: tests failing before any mutant (not counted): {', '.join(failed)}", flush=True)

        for n, m in enumerate(mutants, 1):
            t0 = time.monotonic()
            path, original, why = locate(m)
            if why:
                res = f"stale ({why})"
            else:
                assert path is not None and original is not None
                journal.hold(path, original)
                try:
                    write_text(path, original.replace(m.original, m.replacement, 1))
                    if not build(args, env, logs / f"{m.id}-build.log"):
                        res = f"caught (build failed: {build_failure(logs / f'{m.id}-build.log')})"
                    else:
                        ok, failed = test(args, env, logs / f"{m.id}-test.log")
                        new = [f for f in failed if test_name(f) not in known_failures]
                        res = f"caught (tests: {summarise(new)})" if new else "missed"
                finally:
                    with Uninterrupted():
                        write_text(path, original)
                        journal.release()
            rows.append((m.id, m.file, m.description, res))
            results.append(res)
            print(f"[{n}/{len(mutants)}] {m.id}: {res} ({time.monotonic() - t0:.0f} s)", flush=True)
    except KeyboardInterrupt:
        interrupted = True
        print("\nmutate: interrupted; the file was restored", file=sys.stderr, flush=True)

    try:
        print("mutate: rebuilding the restored tree", flush=True)
        if not build(args, env, logs / "final-build.log"):
            print(f"mutate: the final build failed; see {logs / 'final-build.log'}", file=sys.stderr)
    except KeyboardInterrupt:
        print("mutate: final build interrupted; run cmake --build again", file=sys.stderr)
        interrupted = True

    elapsed = time.monotonic() - started
    report = table(rows) + "\n\n" + figure(results)
    if interrupted:
        report += f" -- interrupted after {len(rows)} of {len(mutants)} mutants"
    report += f"\nwall time: {int(elapsed // 3600)}h{int(elapsed % 3600 // 60):02d}m{int(elapsed % 60):02d}s"
    if known_failures:
        report += f"\nfailing before any mutant (not counted): {', '.join(sorted(known_failures))}"
    print()
    print(report)
    if args.out:
        Path(args.out).write_text(report + "\n", encoding="utf-8")
    return 130 if interrupted else 0


if __name__ == "__main__":
    sys.exit(main())
