#include "casedata/extduedate.h"

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

void ExtDueDateDialog::extendedLeft(ExtDueDateForm& form) const
{
    if (const auto d = DateLeft(form, &ExtDueDateForm::extended, kFieldName, msgs_))
        ChkExtendedDate(*d, case_.init, msgs_);
}

bool ExtDueDateDialog::accept(ExtDueDateForm& form)
{
    const auto d = TakeDate(form, &ExtDueDateForm::extended, kFieldName, DateNeed::Needed, msgs_);
    if (d)
        case_.init.dtExtended = *d;
    return d.has_value();
}

}  // namespace rw
