#include "engine/suspend.h"

#include "base/fault.h"

#include "casedata/datechecks.h"

namespace rw {

SuspendDialog::SuspendDialog(Case& c, Messages& msgs)
    : case_(c)
    , msgs_(msgs)
{
}

SuspendForm SuspendDialog::open() const
{
    return WithFaultName("InitDlgSusp", [&] {
        SuspendForm f;
        const InitInputs& in = case_.init;
        if (in.dtIntSuspend.isGiven()) {
            f.suspendDate = InitCSDateCtrl(in.dtIntSuspend);
            f.restartDate = InitCSDateCtrl(in.dtRestart);
        }
        return f;
    });
}

void SuspendDialog::suspendChanged(const SuspendForm& form) const
{
    Date d;
    DateValid(form.suspendDate, "Interest Suspension", d, msgs_);
}

void SuspendDialog::restartChanged(const SuspendForm& form) const
{
    Date restart;
    if (!DateValid(form.restartDate, "Interest Restart", restart, msgs_))
        return;
    const auto suspend = ParseUserDate(form.suspendDate);
    if (suspend && restart <= *suspend)
        Warn(msgs_, "The date interest is suspended, " + FormatShortDate(*suspend)
                        + ", must be before the date interest is restarted, "
                        + FormatShortDate(restart) + ".");
}

bool SuspendDialog::accept(const SuspendForm& form)
{
    return WithFaultName("DlgSuspData", [&] {
        Date suspend;
        Date restart;
        const bool suspendOk = DateValid(form.suspendDate, "Interest Suspension", suspend, msgs_);
        const bool restartOk = DateValid(form.restartDate, "Interest Restart", restart, msgs_);
        if (!suspendOk || !restartOk || restart <= suspend)
            return false;
        case_.init.dtIntSuspend = suspend;
        case_.init.dtRestart = restart;
        return true;
    });
}

}  // namespace rw
