#pragma once
// Stand-ins for what surrounds the shell's commands: file dialogs answering
// from a script, the modal dialogs, the program's end, the clock, the rate
// alert window; and plain file helpers. No test framework.

#include "shell/ratealert.h"
#include "shell/services.h"

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace rwtest {

// File dialogs answering from queues; an empty queue, or an empty answer, is
// a cancel.
class ScriptedFiles : public rw::FileDialogs {
public:
    std::optional<std::string> openCase(const std::string& initialFolder) override
    {
        openFolders.push_back(initialFolder);
        return next(opens);
    }
    std::optional<std::string> saveCase(const std::string& initialFolder) override
    {
        saveFolders.push_back(initialFolder);
        return next(saves);
    }
    std::deque<std::optional<std::string>> opens, saves;  // answers
    std::vector<std::string> openFolders, saveFolders;  // the folders they started in

private:
    static std::optional<std::string> next(std::deque<std::optional<std::string>>& q)
    {
        if (q.empty())
            return std::nullopt;
        auto a = q.front();
        q.pop_front();
        return a;
    }
};

// The modal dialogs the shell opens, answered by a script.
class ScriptedDialogs : public rw::ModalDialogs {
public:
    bool showInitialInputs(rw::Session& s) override
    {
        ++initialInputsShown;
        if (onInitialInputs)
            onInitialInputs(s);
        return accept;
    }
    int initialInputsShown = 0;
    bool accept = true;  // false: the user cancels the dialog
    std::function<void(rw::Session&)> onInitialInputs;
};

// Records the end of the program instead of ending the test.
class RecordingProgram : public rw::ProgramControl {
public:
    void hideMainWindow() override { ++hides; }
    void endProgram() override { ++ends; }
    int hides = 0;
    int ends = 0;
};

class FixedClock : public rw::Clock {
public:
    rw::Date today() const override { return day; }
    rw::Date day = rw::Date::fromCivil(2018, 3, 31);
};

// Records the rate alerts instead of showing them.
class RecordingAlertWindow : public rw::RateAlertWindow {
public:
    void showModal(const rw::RateAlert& alert) override { alerts.push_back(alert); }
    std::vector<rw::RateAlert> alerts;
};

inline void WriteBytes(const std::filesystem::path& p, const std::vector<char>& bytes)
{
    std::ofstream(p, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::vector<char> ReadBytes(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::vector<char>(std::istreambuf_iterator<char>(in), {});
}

inline std::string ReadText(const std::filesystem::path& p)
{
    const std::vector<char> b = ReadBytes(p);
    return std::string(b.begin(), b.end());
}

}  // namespace rwtest
