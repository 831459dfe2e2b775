#pragma once
// A scripted stand-in for the message boxes: records every box shown and
// answers questions from a queue.

#include "base/messages.h"

#include <deque>
#include <string>
#include <vector>

namespace rwtest {

struct ShownMessage {
    std::string title;
    std::string text;
    rw::MsgIcon icon = rw::MsgIcon::None;
    bool question = false;
};

class RecordingMessages : public rw::Messages {
public:
    void show(std::string_view title, std::string_view text, rw::MsgIcon icon) override;
    bool ask(std::string_view title, std::string_view text, rw::MsgIcon icon) override;
    rw::SaveAnswer askSave(std::string_view title, std::string_view text) override;
    void beep() override { ++beeps; }

    // Queues the answer of the next question (true = Yes).
    void answerNext(bool yes) { answers.push_back(yes); }
    // Queues the answer of the next "Save changes" question.
    void answerSaveNext(rw::SaveAnswer a) { saveAnswers.push_back(a); }
    std::vector<std::string> texts() const;
    void clear() { shown.clear(); }

    std::vector<ShownMessage> shown;
    std::deque<bool> answers;
    std::deque<rw::SaveAnswer> saveAnswers;  // Cancel when none is queued
    bool defaultAnswer = true;  // when no answer is queued
    int beeps = 0;
};

}  // namespace rwtest
