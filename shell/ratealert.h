#pragma once
// The rate currency alert: the rate tables of a release are verified through
// one date and estimated through a later one. A stop date past the verified
// date makes the result an estimate; past the estimated date the program
// cannot go on and ends. Checked when the End Calculation field of the
// Initial Inputs dialog loses the focus.

#include "rates/release.h"
#include "shell/services.h"

#include <string>
#include <string_view>

namespace rw {

enum class RateAlertKind { None, Estimate, End };

// What the "Update Alert" window (frmGetUpdate) shows.
struct RateAlert {
    RateAlertKind kind = RateAlertKind::None;
    std::string message;  // lblUpdateMessage
    std::string exitCaption;  // btnExitDialog: "Continue With Current Program" or "End Program"
    std::string updateCaption = "Check For More Current Version";  // OKButton
    std::string updatePage;  // what OKButton opens in the browser
};

inline constexpr std::string_view kUpdateAlertTitle = "Update Alert";
inline constexpr std::string_view kUpdatePage = "www.brindlecote.example/ratewright/update";

// The alert for the End Calculation field's text, exactly as typed. Nothing
// for an empty text, a text that is not a date, the no-date value, or a date
// on or before the verified date. Without a release (its file could not be
// read) every date ends the program.
RateAlert CheckRateCurrency(std::string_view endCalculationText, const ReleaseInfo& release);

// The window that shows the alert modally (the window layer implements it).
class RateAlertWindow {
public:
    virtual ~RateAlertWindow() = default;
    virtual void showModal(const RateAlert& alert) = 0;
};

// Checks, shows the alert when there is one, and after an End alert ends the
// program at once, without saving. True when the dialog may go on.
bool RunRateCurrencyCheck(std::string_view endCalculationText, const ReleaseInfo& release,
                          RateAlertWindow& window, ProgramControl& program);

}  // namespace rw
