#pragma once
// The reports as CSV files, for a spreadsheet or another program: one file
// per report, a heading row and one row per line of the report, RFC 4180
// quoting. Figures are plain numbers: amounts without thousands separators
// or padding ("1234.56", "-50.00"), rates and factors as numbers, dates
// mm/dd/yyyy.

#include "base/money.h"
#include "casedata/caserecord.h"
#include "reports/printmaster.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rw {

// One report as a table: rows[0] holds the headings. Texts are Latin-1, as
// every text inside the program.
struct CsvTable {
    std::string report;  // "Summary", "Detailed Interest Analysis", ...
    std::vector<std::vector<std::string>> rows;
};

// The report names, as the files are named after them.
inline constexpr std::string_view kCsvSummary = "Summary";
inline constexpr std::string_view kCsvDetail = "Detailed Interest Analysis";
inline constexpr std::string_view kCsvFailFilePay = "Failure To File and Pay Analysis";
inline constexpr std::string_view kCsvAccRel = "Accuracy Related Penalty";
inline constexpr std::string_view kCsvPayroll = "Payroll Deposit Penalty";
inline constexpr std::string_view kCsvEstTax = "Estimated Tax Penalty";
inline constexpr std::string_view kCsvPayments = "Payments";
inline constexpr std::string_view kCsvCharges = "Other Charges";
inline constexpr std::string_view kCsvDeposits = "Payroll Deposits";

// The tables of the reports of `choice` (the report choice's values) that
// the case has, in this order: the summary (label, amount; the total last);
// the detailed interest analysis (every column of its window, the total row
// last); the failure to file and pay analysis (when either penalty is
// requested; the totals row last); the accuracy-related penalty (when
// requested); the payroll deposit penalty analysis (when the case has a
// deposit; a deposit's due date on each of its pieces, the total last); the
// estimated tax penalty (when the computation has it: one row per worksheet
// line, the total last); for
// the inputs, the lists of payments, other charges and payroll deposits
// that have entries. Computes once through sources.compute when any but the
// lists is chosen. The reports show amounts to the cent, as their windows
// do; the lists keep every decimal an entry holds.
std::vector<CsvTable> CsvTables(std::int32_t choice, const Case& c, const ReportSources& sources);

// An amount as the reports' windows show it, without separators: two
// decimals rounded half away from zero ("1234.56", "-50.00").
std::string CsvAmount(Money amount);

// One field, quoted when it holds a comma, a double quote, a CR or a LF
// (its double quotes doubled).
std::string CsvField(std::string_view text);

// The table as CSV text: fields separated by commas, every row ended by
// CR LF. Latin-1.
std::string CsvText(const CsvTable& table);

// What the file holds: the CSV text in UTF-8, led by the byte order mark
// through which spreadsheets recognise UTF-8.
std::string CsvFileBytes(const CsvTable& table);

// "CASE - REPORT.csv": the case's name (its file's name without the folder
// and the extension; "UNTITLED" when empty) and the report's. Characters a
// file name cannot hold become "_".
std::string CsvFileName(std::string_view caseName, std::string_view report);

// The case's name for the file names of its reports: the file name's stem
// (C:\cases\DEMO_INC.INT -> DEMO_INC).
std::string CsvCaseName(std::string_view caseFile);

// The message that the files were written: how many, the folder, their
// names. Paths are UTF-8 and shown in Latin-1.
std::string CsvWrittenText(std::string_view folder, const std::vector<std::string>& files);

// The question before files of the same names are replaced.
std::string CsvReplaceQuestion(std::string_view folder, const std::vector<std::string>& files);

}  // namespace rw
