#include "support/recordingmessages.h"

namespace rwtest {

void RecordingMessages::show(std::string_view title, std::string_view text, rw::MsgIcon icon)
{
    shown.push_back({std::string(title), std::string(text), icon, false});
}

bool RecordingMessages::ask(std::string_view title, std::string_view text, rw::MsgIcon icon)
{
    shown.push_back({std::string(title), std::string(text), icon, true});
    if (answers.empty())
        return defaultAnswer;
    const bool a = answers.front();
    answers.pop_front();
    return a;
}

rw::SaveAnswer RecordingMessages::askSave(std::string_view title, std::string_view text)
{
    shown.push_back({std::string(title), std::string(text), rw::MsgIcon::Question, true});
    if (saveAnswers.empty())
        return rw::SaveAnswer::Cancel;
    const rw::SaveAnswer a = saveAnswers.front();
    saveAnswers.pop_front();
    return a;
}

std::vector<std::string> RecordingMessages::texts() const
{
    std::vector<std::string> out;
    for (const auto& m : shown)
        out.push_back(m.text);
    return out;
}

}  // namespace rwtest
