#include "engine/suspend.h"

#include "base/fault.h"

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

namespace {

constexpr const char* kSuspendName = "Interest Suspension";
constexpr const char* kRestartName = "Interest Restart";

// Interest restarts after it was suspended: warned about when the restart is
// left, refused on OK.
std::string restartNotAfter(Date suspend, Date restart)
{
    return "The date interest is suspended, " + FormatShortDate(suspend)
           + ", must be before the date interest is restarted, " + FormatShortDate(restart) + ".";
}

}  // namespace

void SuspendDialog::suspendChanged(SuspendForm& form) const
{
    DateLeft(form, &SuspendForm::suspendDate, kSuspendName, msgs_);
}

void SuspendDialog::restartChanged(SuspendForm& form) const
{
    const auto restart = DateLeft(form, &SuspendForm::restartDate, kRestartName, msgs_);
    const auto suspend = ParseUserDate(form.suspendDate);
    if (restart && suspend && !(*suspend < *restart))
        Warn(msgs_, restartNotAfter(*suspend, *restart));
}

bool SuspendDialog::accept(SuspendForm& form)
{
    return WithFaultName("DlgSuspData", [&] {
        InitInputs& in = case_.init;
        if (IsBlankDate(form.suspendDate) && IsBlankDate(form.restartDate)) {
            in.dtIntSuspend = in.dtRestart = NoDate;
            return true;
        }
        const auto suspend
            = TakeDate(form, &SuspendForm::suspendDate, kSuspendName, DateNeed::Needed, msgs_);
        const auto restart = suspend ? TakeDate(form, &SuspendForm::restartDate, kRestartName,
                                                DateNeed::Needed, msgs_)
                                     : std::nullopt;
        if (!restart)
            return false;
        if (!(*suspend < *restart)) {
            Refuse(form, &SuspendForm::restartDate, restartNotAfter(*suspend, *restart), msgs_);
            return false;
        }
        in.dtIntSuspend = *suspend;
        in.dtRestart = *restart;
        return true;
    });
}

}  // namespace rw
