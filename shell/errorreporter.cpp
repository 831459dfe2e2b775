#include "shell/errorreporter.h"

#include "shell/filecommands.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

namespace rw {

namespace {

// The maker's repair tool, which looks for program files that are damaged or
// replaced by other programs' versions.
constexpr std::string_view kRepairAdvice
    = "run Ratewright Repair (in the Tools folder of the Ratewright program group) to look for "
      "program "
      "files that are damaged or in conflict with other programs.";

// The error log keeps every report of the run and of runs before. A log
// that cannot be written is told; the report goes on.
void AppendLogLine(ShellContext& ctx, const std::string& line)
{
    const std::filesystem::path file = ctx.session.paths.errorLog();
    std::error_code ec;
    std::filesystem::create_directories(file.parent_path(), ec);
    errno = 0;
    std::ofstream log(file, std::ios::app | std::ios::binary);
    if (log)
        log << line << "\n" << std::flush;
    if (!log)
        TellNotWritten(ctx.msgs, "Error Log", "The error log", file,
                       errno != 0 ? std::strerror(errno) : "the file could not be opened");
}

}  // namespace

std::string ErrorReportText(int number, std::string_view procedure, std::string_view detail)
{
    return "Error " + std::to_string(number) + ", " + ErrorDescription(number)
           + ", encountered.  Location of error: " + std::string(procedure)
           + (detail.empty() ? std::string() : " (" + std::string(detail) + ")")
           + ".  Do you want to save your data before the program ABORTS?";
}

std::string PossibleSolutionText(int number)
{
    if (number == kErrSubscript)
        return "If this error took place in GetInterest(), " + std::string(kRepairAdvice) + "\n\n"
               + "Sometimes error 9 occurs when a transaction date, "
               + "other than the due date, has the same date as "
               + "the Start Date (Initial Inputs), or when a transaction date is "
               + "on the Stop Date (Initial Inputs).";
    if (number == kErrInvalidFormat)
        return "To look for the cause, " + std::string(kRepairAdvice) + "\n\n"
               + "Sometimes reinstalling the program or getting a "
               + "replacement program solves the problem.";
    return {};
}

void ReportError(ShellContext& ctx, const Fault& fault)
{
    ReportError(ctx, fault.number(), fault.procedure(), fault.detail());
}

void ReportError(ShellContext& ctx, int number, std::string_view procedure, std::string_view detail)
{
    Session& s = ctx.session;
    // Nothing may stop the report: a copy or a save that fails is told and
    // passed over.
    try {
        WriteRecoveryCopy(s, ctx.msgs);
    } catch (const std::exception&) {
    }
    const std::string text = ErrorReportText(number, procedure, detail);
    if (ctx.msgs.ask("WARNING!", text, MsgIcon::Exclamation)) {
        try {
            FileSaveAs(ctx);
        } catch (const std::exception& e) {
            ctx.msgs.show("WARNING!", std::string("The case could not be saved: ") + e.what(),
                          MsgIcon::Exclamation);
        }
    }
    try {
        AppendLogLine(ctx, FormatMMDDYYYYDashed(ctx.clock.today()) + " -> " + text);
    } catch (const std::exception&) {
    }
    if (const std::string hint = PossibleSolutionText(number); !hint.empty())
        ctx.msgs.show("Possible Solution:", hint, MsgIcon::Information);
    ctx.program.endProgram();
}

bool RunCommand(ShellContext& ctx, std::string_view name, const std::function<void()>& fn)
{
    try {
        fn();
        return true;
    } catch (const Refusal& r) {
        // Expected: the case asks for what the rates cannot give. The user is
        // told why; the program, the case and its file stay as they were.
        ctx.msgs.show(r.title(), std::string(r.text()), MsgIcon::Exclamation);
    } catch (const Fault& f) {
        ReportError(ctx, f);
    } catch (const std::bad_alloc&) {
        ReportError(ctx, kErrOutOfMemory, name);
    } catch (const std::exception&) {
        ReportError(ctx, kErrInvalidCall, name);
    }
    return false;
}

}  // namespace rw
