#pragma once
// What the input dialogs of this folder share: the fault-carrying dialog of
// every window, at a fixed size.

#include "ui/common/dialogkit.h"

namespace rw::ui {

// The input dialogs of this folder keep the size their layout asks for.
class InputDialog : public GuardedDialog {
    Q_OBJECT
public:
    using GuardedDialog::GuardedDialog;

protected:
    void finishSetup()
    {
        GuardedDialog::finishSetup();
        setFixedSize(sizeHint());
    }
};

}  // namespace rw::ui
