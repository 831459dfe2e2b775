#pragma once
// What the input dialogs of penalties and payments share: the menu check mark
// an accepted dialog asks the window to set (money fields are read with the
// shared field helpers of casedata/datechecks.h).

#include "casedata/datechecks.h"

namespace rw {

// The check mark of the dialog's menu entry after it closes.
enum class MenuMark { Keep, Set, Clear };

// What OK did: stored (the dialog closes) or not (the user was told why and
// the dialog stays open), and the menu check mark to set or clear.
struct Accepted {
    bool stored = false;
    MenuMark mark = MenuMark::Keep;
};

}  // namespace rw
