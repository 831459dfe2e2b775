#include "casedata/extduedate.h"

#include "casedata/datechecks.h"

namespace rw {

namespace {
constexpr const char* kFieldName = "Extended";
}

ExtDueDateDialog::ExtDueDateDialog(Case& c, Messages& msgs)
    : case_(c)
    , msgs_(msgs)
{
}

ExtDueDateForm ExtDueDateDialog::open()
{
    InitInputs& in = case_.init;
    if (in.dtExtended.dayNumber() == 0.0 || in.dtExtended.isNoDate())
        in.dtExtended = in.dtDue;
    ChkExtendedDate(in.dtExtended, in, msgs_);
    return ExtDueDateForm{InitCSDateCtrl(in.dtExtended)};
}

void ExtDueDateDialog::extendedLeft(const ExtDueDateForm& form) const
{
    Date working;
    DateValid(form.extended, kFieldName, working, msgs_);
    ChkExtendedDate(working, case_.init, msgs_);
}

bool ExtDueDateDialog::accept(const ExtDueDateForm& form)
{
    return DateValid(form.extended, kFieldName, case_.init.dtExtended, msgs_);
}

}  // namespace rw
