#pragma once
// A dialog's OK on a form that must be refused. No test framework.

#include "support/recordingmessages.h"

#include "casedata/datechecks.h"

#include <string>

namespace rwtest {

// OK on the form: empty when the dialog refuses exactly `field`, tells one
// box and leaves the case as it was; otherwise what went wrong.
template<typename Dialog, typename Form>
std::string RefusalProblem(rw::Case c, Form f, rw::FormField<Form> field)
{
    const rw::Case before = c;
    RecordingMessages msgs;
    if (Dialog(c, msgs).accept(f))
        return "accepted";
    if (f.refused != field)
        return "another field refused";
    if (msgs.shown.size() != 1)
        return std::to_string(msgs.shown.size()) + " boxes";
    return c == before ? "" : "the case changed";
}

}  // namespace rwtest
