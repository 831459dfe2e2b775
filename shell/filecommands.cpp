#include "shell/filecommands.h"

#include "casedata/casefile.h"
#include "rates/ratetable.h"
#include "shell/settings.h"

namespace rw {

namespace {

void RememberDataFolder(Session& s, const std::string& fileName)
{
    s.gsDataPath = FolderOf(fileName);
    SettingsFile(s.paths.iniFile()).write("Data Files", "Data File Path", s.gsDataPath);
}

bool EndsWithTBL(std::string_view name)
{
    if (name.size() < 3)
        return false;
    const std::string_view end = name.substr(name.size() - 3);
    const auto up
        = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    return up(end[0]) == 'T' && up(end[1]) == 'B' && up(end[2]) == 'L';
}

// WriteCase to the case's own file; a write to the recovery copy's path
// leaves the saved state as it is.
void WriteToFile(Session& s, const std::string& path)
{
    WriteCase(path, s.kase);
    if (!IsRecoveryCopy(s, path))
        s.gbSaved = kYes;
}

}  // namespace

std::string_view RateTableNotACaseText()
{
    return "A rate table file is not a case and was not opened. The rate table of a case follows "
           "the "
           "taxing authority chosen under Rate Table in the Initial Inputs window (Inputs - "
           "Initial Inputs).";
}

void FileNew(ShellContext& ctx)
{
    Session& s = ctx.session;
    ClearInputs(s.kase);
    s.menus.saveAsEnabled = true;
    EnableSave(s, false);
    EnableInputs(s);
    EnableOutputs(s, false);
    s.menus.initialInputsChecked = false;
    s.menus.ftPayChecked = false;
    s.menus.ftFileChecked = false;
    s.menus.accuracyChecked = false;
    s.menus.payrollChecked = false;
    s.kase.init.sTaxAuth = "US  ";
    OpenRates("US  ", s.paths, ctx.msgs, s.gRates);
    SetOptionChecks(s);
    s.gbSaved = kYes;
    ctx.dialogs.showInitialInputs(s);
    s.menus.note = std::string(kNextStepNote);
    s.gsFileName = std::string(kUntitled);
    RefreshTitle(s);
    EnableSave(s, false);
    s.menus.saveAsEnabled = true;
}

void FileOpen(ShellContext& ctx)
{
    Session& s = ctx.session;
    const std::optional<std::string> chosen = ctx.files.openCase(s.gsDataPath);
    if (!chosen)
        return;
    const std::string& name = *chosen;
    RememberDataFolder(s, name);
    if (EndsWithTBL(name)) {
        ctx.msgs.show("Open", RateTableNotACaseText(), MsgIcon::Information);
        return;
    }

    Case read = s.kase;
    switch (ReadCaseReporting(name, read, ctx.msgs)) {
    case CaseReadResult::Status::Ok:
        break;
    case CaseReadResult::Status::Damaged:
    case CaseReadResult::Status::NotFound:
    case CaseReadResult::Status::BadMarker:
        // Told; the case in memory, its file name and the menus stay, so
        // nothing the user has not saved is lost to a damaged file.
        return;
    }
    s.kase = std::move(read);
    s.gsFileName = name;
    s.menus.initialInputsChecked = true;
    EnableInputs(s);
    OpenRates(s.kase.init.sTaxAuth.view(), s.paths, ctx.msgs, s.gRates);
    SetPenaltyChecks(s);
    SetOptionChecks(s);
    WriteRecoveryCopy(s);

    s.gbSaved = kYes;
    EnableOutputs(s, true);
    RefreshTitle(s);
    ctx.dialogs.showInitialInputs(s);
    s.menus.note = std::string(kNextStepNote);
    EnableSave(s, true);
}

void FileSave(ShellContext& ctx)
{
    Session& s = ctx.session;
    if (!s.menus.saveEnabled) {
        // The case has no file of the user's choosing yet.
        FileSaveAs(ctx);
        return;
    }
    WriteToFile(s, s.gsFileName);
    RefreshTitle(s);
}

bool FileSaveAs(ShellContext& ctx)
{
    Session& s = ctx.session;
    const std::optional<std::string> chosen = ctx.files.saveCase(s.gsDataPath);
    if (!chosen)
        return false;
    s.gsFileName = *chosen;
    RememberDataFolder(s, s.gsFileName);
    WriteToFile(s, s.gsFileName);
    RefreshTitle(s);
    EnableSave(s, true);
    return true;
}

void ExitPrompt(ShellContext& ctx)
{
    Session& s = ctx.session;
    if (s.gbSaved == kYes)
        return;
    if (ctx.msgs.ask("Warning",
                     "File " + s.gsFileName
                         + " has not been saved.  Do you want to save your data before exiting?",
                     MsgIcon::Exclamation))
        FileSaveAs(ctx);
}

void ExitProgram(ShellContext& ctx, bool saveFirst)
{
    Session& s = ctx.session;
    SettingsFile settings(s.paths.iniFile());
    settings.write("Options", "ToolBar", s.menus.showToolBarChecked ? "True" : "False");
    settings.write("Options", "ToolTips", s.menus.showToolTipsChecked ? "True" : "False");
    ctx.program.hideMainWindow();
    if (saveFirst)
        FileSaveAs(ctx);
    ctx.program.endProgram();
}

void CloseMainWindow(ShellContext& ctx)
{
    ExitPrompt(ctx);
    ExitProgram(ctx, false);
}

void InitialInputsAccepted(ShellContext& ctx)
{
    Session& s = ctx.session;
    s.gbSaved = kNo;
    s.menus.initialInputsChecked = true;
    EnableOutputs(s, true);
    WriteRecoveryCopy(s);
    RefreshTitle(s);
}

void InitialInputsSaveAndExit(ShellContext& ctx)
{
    InitialInputsAccepted(ctx);
    FileSaveAs(ctx);
    ctx.program.endProgram();
}

}  // namespace rw
