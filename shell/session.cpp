#include "shell/session.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "casedata/casefile.h"

#include <filesystem>
#include <optional>

namespace rw {

void EnableInputs(Session& s)
{
    const InitInputs& in = s.kase.init;
    s.menus.initialInputsEnabled = true;
    s.menus.paymentsChecked = in.nPmts >= 1;
    s.menus.chargesChecked = in.nCharges >= 1;
    if (in.dtIntSuspend.isGiven())
        s.menus.suspendChecked = true;
}

void SetPenaltyChecks(Session& s)
{
    const InitInputs& in = s.kase.init;
    s.menus.ftPayChecked = IsYes(in.bFtoPay) || IsYes(in.b6651d1);
    s.menus.ftFileChecked = IsYes(in.bFtoFile);
    s.menus.accuracyChecked = IsYes(in.bAccRel);
    s.menus.payrollChecked = in.nDeposits >= 1;
    s.menus.estTaxChecked = s.kase.estTax.on;
}

void SetOptionChecks(Session& s)
{
    const InitInputs& in = s.kase.init;
    s.menus.interestRatesChecked
        = IsYes(in.bTaxMotivated) || IsYes(in.bCorpUPRate) || IsYes(in.bCorpOPRate);
    s.menus.suspendChecked = in.dtIntSuspend.isGiven();
}

void EnableOutputs(Session& s, bool on)
{
    s.menus.printEnabled = on;
    s.menus.reportsEnabled = on;
    s.menus.printButtonVisible = on;
    s.menus.viewButtonVisible = on;
}

void EnableSave(Session& s, bool on)
{
    s.menus.saveEnabled = on;
    s.menus.saveButtonVisible = on;
}

std::string DisplayName(const Session& s)
{
    return std::filesystem::path(s.gsFileName).filename().string();
}

std::string RefreshTitle(Session& s)
{
    if (s.gsFileName.empty())
        s.gsFileName = "Untitled.INT";
    s.title = s.release.description + " Ratewright" + " - " + DisplayName(s)
              + (s.gbSaved != kYes ? "*" : "");
    return s.title;
}

void MarkSaved(Session& s)
{
    s.savedCase = s.kase;
    s.gbSaved = kYes;
}

void DrawMenuMarks(Session& s)
{
    EnableInputs(s);
    SetPenaltyChecks(s);
    SetOptionChecks(s);
}

void NoteCaseChanges(Session& s, Messages& msgs)
{
    if (s.kase != s.copiedCase)
        WriteRecoveryCopy(s, msgs);
    s.gbSaved = s.kase == s.savedCase ? kYes : kNo;
    DrawMenuMarks(s);
    RefreshTitle(s);
}

namespace {

// Runs write into file's folder (created when missing); the reason when the
// file could not be written.
std::optional<std::string> TryWrite(const std::filesystem::path& file,
                                    const std::function<void()>& write)
{
    try {
        std::error_code ec;
        std::filesystem::create_directories(file.parent_path(), ec);
        write();
        return std::nullopt;
    } catch (const Fault& f) {
        if (!IsWriteFault(f))
            throw;
        return f.detail();
    }
}

}  // namespace

void TellNotWritten(Messages& msgs, std::string_view title, std::string_view what,
                    const std::filesystem::path& file, std::string_view reason)
{
    msgs.show(title,
              std::string(what) + " could not be written.\n\nFile: " + Utf8ToLatin1(file.string())
                  + "\nReason: " + Utf8ToLatin1(reason),
              MsgIcon::Exclamation);
}

bool WriteOrTell(Messages& msgs, std::string_view title, std::string_view what,
                 const std::filesystem::path& file, const std::function<void()>& write)
{
    const std::optional<std::string> failure = TryWrite(file, write);
    if (failure)
        TellNotWritten(msgs, title, what, file, *failure);
    return !failure;
}

bool WriteOrTellOnce(Messages& msgs, bool& told, std::string_view title, std::string_view what,
                     const std::filesystem::path& file, const std::function<void()>& write)
{
    const std::optional<std::string> failure = TryWrite(file, write);
    if (failure && !told)
        TellNotWritten(msgs, title, what, file, *failure);
    told = told || failure.has_value();
    return !failure;
}

bool WriteRecoveryCopy(Session& s, Messages& msgs)
{
    const std::filesystem::path copy = s.paths.recoveryCopy();
    const bool written = WriteOrTellOnce(
        msgs, s.recoveryCopyFailureTold, "Recovery Copy",
        "The recovery copy of the case, kept in case the program stops unexpectedly,", copy,
        [&] { WriteCase(copy.string(), s.kase); });
    if (written)
        s.copiedCase = s.kase;
    return written;
}

bool IsRecoveryCopy(const Session& s, const std::string& path)
{
    namespace fs = std::filesystem;
    const fs::path copy = s.paths.recoveryCopy();
    std::error_code ec;
    if (fs::exists(path, ec) && fs::exists(copy, ec))
        return fs::equivalent(path, copy, ec);
    return fs::absolute(path, ec).lexically_normal() == fs::absolute(copy, ec).lexically_normal();
}

}  // namespace rw
