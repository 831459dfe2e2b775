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
    void beep() override { ++beeps; }

    // Queues the answer of the next question (true = Yes).
    void answerNext(bool yes) { answers.push_back(yes); }
    std::vector<std::string> texts() const;
    void clear() { shown.clear(); }

    std::vector<ShownMessage> shown;
    std::deque<bool> answers;
    bool defaultAnswer = true;  // when no answer is queued
    int beeps = 0;
};

}  // namespace rwtest
