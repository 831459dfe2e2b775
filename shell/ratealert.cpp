#include "shell/ratealert.h"

namespace rw {

RateAlert CheckRateCurrency(std::string_view text, const ReleaseInfo& release)
{
    RateAlert alert;
    const std::optional<Date> stop = ParseUserDate(text);
    if (!stop || stop->isNoDate())
        return alert;
    if (!release.loaded()) {
        // Without a readable release nothing says how far the rates reach.
        alert.kind = RateAlertKind::End;
        alert.exitCaption = "End Program";
        alert.updatePage = std::string(kUpdatePage);
        alert.message
            = "The interest rates installed with this program can not be read, so the program can "
              "not "
              "continue.  Please install Ratewright again, from www.brindlecote.example/ratewright "
              "(click \"Check For More Current Version\").";
        return alert;
    }
    if (*stop <= release.verifiedThrough)
        return alert;
    const std::string head
        = "This program has verified interest rates through " + release.verifiedThroughText
          + ".  The program has estimated interest rates through " + release.estimatedThroughText
          + ".  Since your stop date of " + std::string(text) + " is past ";
    alert.updatePage = std::string(kUpdatePage);
    if (*stop <= release.estimatedThrough) {
        alert.kind = RateAlertKind::Estimate;
        alert.exitCaption = "Continue With Current Program";
        alert.message = head + release.verifiedThroughText + ", but not past "
                        + release.estimatedThroughText
                        + ", this calculation should be considered an ESTIMATE.  " + "\n\n"
                        + "A version of Ratewright with verified rates for later periods may be "
                          "available.  Click \"Check "
                          "For More Current Version\" or visit www.brindlecote.example/ratewright "
                          "to find out, or write to "
                          "support@brindlecote.example.";
    } else {
        alert.kind = RateAlertKind::End;
        alert.exitCaption = "End Program";
        alert.message
            = head + release.estimatedThroughText + ", the program can not continue.  "
              + "Please install the most recent update of Ratewright, from "
                "www.brindlecote.example/ratewright "
                "(click \"Check For More Current Version\"), and then run this calculation again.";
    }
    return alert;
}

bool RunRateCurrencyCheck(std::string_view text, const ReleaseInfo& release,
                          RateAlertWindow& window, ProgramControl& program)
{
    const RateAlert alert = CheckRateCurrency(text, release);
    if (alert.kind == RateAlertKind::None)
        return true;
    window.showModal(alert);
    if (alert.kind == RateAlertKind::End) {
        program.endProgram();
        return false;
    }
    return true;
}

}  // namespace rw
