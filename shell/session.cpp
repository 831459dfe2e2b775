#include "shell/session.h"

#include "casedata/casefile.h"

#include <filesystem>

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

std::string RefreshTitle(Session& s)
{
    if (s.gsFileName.empty())
        s.gsFileName = "Untitled.INT";
    s.title = s.release.description + " Ratewright" + " - " + s.gsFileName
              + (s.gbSaved != kYes ? "*" : "");
    return s.title;
}

void WriteRecoveryCopy(const Session& s)
{
    WriteCase(s.paths.recoveryCopy().string(), s.kase);
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
