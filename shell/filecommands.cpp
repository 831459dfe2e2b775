#include "shell/filecommands.h"

#include "casedata/casefile.h"
#include "rates/ratetable.h"
#include "shell/settings.h"

#include <algorithm>

namespace rw {

namespace {

constexpr std::string_view kRecentSection = "Recent Files";

// Writes one setting. A settings file that cannot be written is told once a
// run; the command goes on, as the setting only helps the next run.
void WriteSetting(ShellContext& ctx, std::string_view section, std::string_view key,
                  std::string_view value)
{
    Session& s = ctx.session;
    const std::filesystem::path file = s.paths.iniFile();
    WriteOrTellOnce(ctx.msgs, s.settingsFailureTold, "Settings", "The program's settings", file,
                    [&] { SettingsFile(file).write(section, key, value); });
}

void SaveRecentFiles(ShellContext& ctx)
{
    const std::vector<std::string>& recent = ctx.session.recentFiles;
    for (std::size_t i = 0; i < kRecentFiles; ++i)
        WriteSetting(ctx, kRecentSection, "File" + std::to_string(i + 1),
                     i < recent.size() ? recent[i] : std::string());
}

void RememberRecent(ShellContext& ctx, const std::string& name)
{
    std::vector<std::string>& recent = ctx.session.recentFiles;
    std::erase(recent, name);
    recent.insert(recent.begin(), name);
    if (recent.size() > kRecentFiles)
        recent.resize(kRecentFiles);
    SaveRecentFiles(ctx);
}

void RememberDataFolder(ShellContext& ctx, const std::string& fileName)
{
    ctx.session.gsDataPath = FolderOf(fileName);
    WriteSetting(ctx, "Data Files", "Data File Path", ctx.session.gsDataPath);
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

// Writes the case to path; told when the file cannot be written. A write to
// the recovery copy's path leaves the saved state as it is.
bool WriteToFile(ShellContext& ctx, const std::string& path)
{
    Session& s = ctx.session;
    if (!WriteOrTell(ctx.msgs, "Save", "The case", path, [&] { WriteCase(path, s.kase); }))
        return false;
    if (!IsRecoveryCopy(s, path)) {
        MarkSaved(s);
        RememberRecent(ctx, path);
    }
    return true;
}

}  // namespace

std::string_view RateTableNotACaseText()
{
    return "A rate table file is not a case and was not opened. The rate table of a case follows "
           "the taxing authority chosen under Rate Table in the Initial Inputs window (Inputs - "
           "Initial Inputs).";
}

std::string SaveChangesText(const Session& s)
{
    return "Save changes to " + DisplayName(s) + "?";
}

bool ConfirmDiscard(ShellContext& ctx)
{
    Session& s = ctx.session;
    if (s.gbSaved == kYes)
        return true;
    switch (ctx.msgs.askSave("Ratewright", SaveChangesText(s))) {
    case SaveAnswer::Save:
        return FileSave(ctx);
    case SaveAnswer::DontSave:
        return true;
    case SaveAnswer::Cancel:
        break;
    }
    return false;
}

void FileNew(ShellContext& ctx)
{
    if (!ConfirmDiscard(ctx))
        return;
    Session& s = ctx.session;
    Session previous = s;
    ClearInputs(s.kase);
    s.menus.saveAsEnabled = true;
    EnableSave(s, false);
    EnableOutputs(s, false);
    s.menus.initialInputsChecked = false;
    s.kase.init.sTaxAuth = "US  ";
    OpenRates("US  ", s.paths, ctx.msgs, s.gRates);
    MarkSaved(s);
    s.gsFileName = std::string(kUntitled);
    DrawMenuMarks(s);
    RefreshTitle(s);
    if (!ctx.dialogs.showInitialInputs(s)) {
        // Cancelled: the new case was never begun.
        s = std::move(previous);
        return;
    }
    s.menus.note = std::string(kNextStepNote);
    EnableSave(s, false);
    s.menus.saveAsEnabled = true;
}

void FileOpen(ShellContext& ctx)
{
    if (!ConfirmDiscard(ctx))
        return;
    const std::optional<std::string> chosen = ctx.files.openCase(ctx.session.gsDataPath);
    if (!chosen)
        return;
    RememberDataFolder(ctx, *chosen);
    OpenCaseFile(ctx, *chosen);
}

void FileOpenRecent(ShellContext& ctx, const std::string& path)
{
    if (!ConfirmDiscard(ctx))
        return;
    if (!OpenCaseFile(ctx, path)) {
        std::erase(ctx.session.recentFiles, path);
        SaveRecentFiles(ctx);
    }
}

void OpenSampleCase(ShellContext& ctx, std::string_view sample)
{
    if (!ConfirmDiscard(ctx))
        return;
    OpenCaseFile(ctx, (ctx.session.paths.installDir / sample).string(), true);
}

bool OpenCaseFile(ShellContext& ctx, const std::string& name, bool asCopy)
{
    Session& s = ctx.session;
    if (EndsWithTBL(name)) {
        ctx.msgs.show("Open", RateTableNotACaseText(), MsgIcon::Information);
        return false;
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
        return false;
    }
    s.kase = std::move(read);
    MarkSaved(s);
    if (asCopy) {
        // A copy with the sample's name and no file: Save asks where to keep it.
        s.gsFileName = std::filesystem::path(name).filename().string();
    } else {
        s.gsFileName = name;
        RememberRecent(ctx, name);
    }
    s.menus.initialInputsChecked = true;
    OpenRates(s.kase.init.sTaxAuth.view(), s.paths, ctx.msgs, s.gRates);
    NoteCaseChanges(s, ctx.msgs);
    EnableOutputs(s, true);
    EnableSave(s, false);
    ctx.dialogs.showInitialInputs(s);
    s.menus.note = std::string(kNextStepNote);
    EnableSave(s, !asCopy);
    return true;
}

bool FileSave(ShellContext& ctx)
{
    Session& s = ctx.session;
    if (!s.menus.saveEnabled) {
        // The case has no file of the user's choosing yet.
        return FileSaveAs(ctx);
    }
    const bool saved = WriteToFile(ctx, s.gsFileName);
    RefreshTitle(s);
    return saved;
}

bool FileSaveAs(ShellContext& ctx)
{
    Session& s = ctx.session;
    const std::optional<std::string> chosen = ctx.files.saveCase(s.gsDataPath);
    if (!chosen)
        return false;
    if (!WriteToFile(ctx, *chosen))
        return false;
    s.gsFileName = *chosen;
    RememberDataFolder(ctx, s.gsFileName);
    RefreshTitle(s);
    EnableSave(s, true);
    return true;
}

void ExitProgram(ShellContext& ctx, bool saveFirst)
{
    Session& s = ctx.session;
    WriteSetting(ctx, "Options", "ToolBar", s.menus.showToolBarChecked ? "True" : "False");
    WriteSetting(ctx, "Options", "ToolTips", s.menus.showToolTipsChecked ? "True" : "False");
    ctx.program.hideMainWindow();
    if (saveFirst)
        FileSaveAs(ctx);
    ctx.program.endProgram();
}

bool CloseMainWindow(ShellContext& ctx)
{
    if (!ConfirmDiscard(ctx))
        return false;
    ExitProgram(ctx, false);
    return true;
}

void InitialInputsAccepted(ShellContext& ctx)
{
    Session& s = ctx.session;
    s.menus.initialInputsChecked = true;
    EnableOutputs(s, true);
    NoteCaseChanges(s, ctx.msgs);
}

void InitialInputsSaveAndExit(ShellContext& ctx)
{
    InitialInputsAccepted(ctx);
    FileSaveAs(ctx);
    ctx.program.endProgram();
}

void LoadRecentFiles(Session& s)
{
    const SettingsFile settings(s.paths.iniFile());
    s.recentFiles.clear();
    for (std::size_t i = 0; i < kRecentFiles; ++i) {
        std::string name = settings.read(kRecentSection, "File" + std::to_string(i + 1), "");
        if (!name.empty() && std::ranges::find(s.recentFiles, name) == s.recentFiles.end())
            s.recentFiles.push_back(std::move(name));
    }
}

}  // namespace rw
