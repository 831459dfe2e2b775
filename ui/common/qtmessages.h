#pragma once
// Message boxes for the desktop program: the Qt side of rw::Messages.

#include "base/messages.h"

class QWidget;

namespace rw::ui {

class QtMessages : public Messages {
public:
    explicit QtMessages(QWidget* parent = nullptr)
        : parent_(parent)
    {
    }
    void setParent(QWidget* parent) { parent_ = parent; }

    void show(std::string_view title, std::string_view text, MsgIcon icon) override;
    bool ask(std::string_view title, std::string_view text, MsgIcon icon) override;
    SaveAnswer askSave(std::string_view title, std::string_view text) override;
    void beep() override;

private:
    QWidget* parent_;
};

}  // namespace rw::ui
