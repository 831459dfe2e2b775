#pragma once
// The case file (".INT"): the marker "NOTVB3", a 20-character version tag, the
// case record, then the payments, the other charges and the payroll deposits
// (each list only when its count is above 0). Older files, told apart by their
// version tag, hold a shorter record that is converted on reading.
//
// A case with the estimated tax penalty (asked for or filled in) carries the
// tag kCaseVersionTagEstTax and, after the deposits, the estimated tax block:
//     "ESTX", on (flag), filer (integer: 0 individual, 1 corporation),
//     tax year (integer: 0 or 1800-2199), fiscal year end month (1-12),
//     current tax, prior tax (currency), prior year usable, high income,
//     large corporation (flags), withholding (currency), installments given
//     (flag), the four installments (currency, 0 when not given), the notice
//     and demand date, the count of dated withholding and its entries (date,
//     currency), the count of estimated payments and their entries;
// and nothing after it. Its record holds the count of payments as -1 - count:
// programs from before the block read every later tag in the current layout
// and would drop the block on saving; a negative count makes them refuse the
// file instead, as they refuse any damaged one. Every other case keeps the
// older tag and ends after its deposits, so its file is the same as before,
// byte for byte.

#include "base/binio.h"
#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/recordfields.h"

#include <string>
#include <string_view>
#include <vector>

namespace rw {

inline constexpr std::string_view kFileMarker = "NOTVB3";
// The version tag this program writes (padded to 20 characters in the file).
inline constexpr std::string_view kCaseVersionTag = "Qrat2018Q1.10";
// The tag of a case file that carries the estimated tax block.
inline constexpr std::string_view kCaseVersionTagEstTax = "Qrat2018Q1.11";

// Record sizes in the file.
inline constexpr std::size_t kInitSize = 488;
inline constexpr std::size_t kInitSize2000Q22 = 482;  // tags below "Qrat2000Q2.20"
inline constexpr std::size_t kInitSize2010Q311 = 484;  // tags below "Qrat2010Q3.11"
inline constexpr std::size_t kTLPointSize = 64;
inline constexpr std::size_t kPaymentSize = 57;
inline constexpr std::size_t kChargeSize = 56;
inline constexpr std::size_t kDepositSize = 42;
inline constexpr std::size_t kCaseHeaderSize = 26;
// The estimated tax block: its fixed part, one dated amount, and the most
// entries each of its two lists may hold.
inline constexpr std::size_t kEstTaxFixedSize = 88;
inline constexpr std::size_t kDatedAmountSize = 16;
inline constexpr std::size_t kMaxEstTaxEntries = 1000;
// The largest case file there can be: every list at its most, 32,767 entries,
// and the estimated tax block with both its lists full.
inline constexpr std::size_t kMaxCaseFileSize
    = kCaseHeaderSize + kInitSize + 32767 * (kPaymentSize + kChargeSize + kDepositSize)
      + kEstTaxFixedSize + 2 * kMaxEstTaxEntries * kDatedAmountSize;

// Which layout a 20-character tag selects. Tags compare as whole fields, byte
// by byte: "Qrat2000Q2.20" followed by blanks is not below "Qrat2000Q2.20".
InitLayout LayoutForTag(std::string_view tag20);

// The file image of a case: with the older tag and no estimated tax block
// while c.estTax is empty. Estimated tax inputs the block cannot hold (a tax
// year or month out of range, more than kMaxEstTaxEntries entries) are a
// fault (kErrOverflow) named "WriteCase".
std::vector<char> EncodeCase(const Case& c);

// Writes the case to path (a temporary file renamed over the target).
// Failures are faults named "WriteCase".
void WriteCase(const std::string& path, const Case& c);

// Read the record part of the two older layouts into init (the rest of the
// file reads alike in all layouts). ConvTo2000Q22 clears bAutoArrange; both
// set the accuracy-related rate to 0.2, which those files do not hold.
void ConvTo2000Q22(BinReader& in, InitInputs& init);
void ConvTo2010Q311(BinReader& in, InitInputs& init);

struct CaseReadResult {
    enum class Status { Ok, NotFound, BadMarker, Damaged };
    Status status = Status::Ok;
    Case kase;
    std::string detail;  // for Damaged: the description of the error
};

// The first date of the case (its record and the list entries in use) that
// is neither NoDate nor a day of the years 1800 to 2199, as "payments[1].dtPmt:
// not a date from 01/01/1800 to 12/31/2199: day 1e+300"; empty when there is none.
std::string DateOutOfRange(const Case& c);

// Decodes a case file image without touching any case in memory. A file
// larger than any case file, or holding a date DateOutOfRange names, is
// damaged; so is a file whose tag begins with "Qrat" and sorts above
// kCaseVersionTagEstTax (written by a later version, whose additions this
// program would lose), and an estimated tax block out of its bounds.
CaseReadResult DecodeCase(const std::vector<char>& bytes);
CaseReadResult ReadCaseFile(const std::string& path);

// Reads path into c, telling the user when the file is missing, lacks its
// marker or cannot be read; c changes only when the whole file was read.
// Returns true when the case was replaced.
bool ReadCase(const std::string& path, Case& c, Messages& msgs);
// ReadCase telling how it went: after Damaged (the "Retrieve (Open) Error"
// message) the program ends.
CaseReadResult::Status ReadCaseReporting(const std::string& path, Case& c, Messages& msgs);

// The part of path before its last path separator, without it; empty when
// there is none.
std::string FolderOf(std::string_view path);

}  // namespace rw
