#pragma once
// The three list dialogs of a case (payments, other charges, payroll
// deposits) over a case from 4/15/2016 to 12/31/2016 owing 600.00, each entry
// dialog's showings scripted: every showing records the form it received in
// `seen` and runs the next step of `steps` (OK: true, Cancel: false).

#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/releases.h"

#include "payments/charges.h"
#include "payments/payments.h"
#include "penalties/depositdialogs.h"

#include <deque>
#include <functional>

namespace rwtest {

template <typename Form>
struct Scripted {
    rw::Case kase = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "600.00");
    RecordingMessages msgs;
    std::deque<std::function<bool(Form&)>> steps;
    std::vector<Form> seen;

    std::function<bool(Form&)> show()
    {
        return [this](Form& f) {
            seen.push_back(f);
            if (steps.empty())
                return false;
            auto step = steps.front();
            steps.pop_front();
            return step(f);
        };
    }
};

// enter(): the next entry, its date and amount wholly to tax; Cancel when !ok.
struct PaymentList : Scripted<rw::PaymentForm> {
    rw::RateTable rates = SimpleTable(0.05f);
    rw::PaymentsDialog dlg{kase, rates, Minimums2018(), msgs, show()};
    rw::PaymentsForm form = dlg.open();
    std::vector<rw::PaymentRec>& list = kase.pmts;
    std::int16_t& count = kase.init.nPmts;

    void enter(const char* date, const char* amount, bool ok = true)
    {
        steps.push_back([=](rw::PaymentForm& f) {
            f.date = date;
            f.amount = f.toTax = amount;
            f.irsMethod = false;
            return ok;
        });
    }
};

struct ChargeList : Scripted<rw::ChargeForm> {
    rw::ChargesDialog dlg{kase, msgs, show()};
    rw::ChargesForm form = dlg.open();
    std::vector<rw::ChargeRec>& list = kase.charges;
    std::int16_t& count = kase.init.nCharges;

    void enter(const char* date, const char* amount, bool ok = true, const char* desc = "")
    {
        steps.push_back([=](rw::ChargeForm& f) {
            f.description = desc;
            f.liabilityDate = f.interestDate = date;
            f.total = f.toTax = amount;
            return ok;
        });
    }
};

struct DepositList : Scripted<rw::DepositForm> {
    rw::DepositListDialog dlg{kase, msgs, show()};
    rw::DepositListForm form = dlg.open();
    std::vector<rw::DepositRec>& list = kase.deposits;
    std::int16_t& count = kase.init.nDeposits;

    void enter(const char* date, const char* amount, bool ok = true, bool severe = false)
    {
        steps.push_back([=](rw::DepositForm& f) {
            f.dueDate = date;
            f.required = amount;
            f.assessDate = "9/1/2016";
            f.severe = severe;
            return ok;
        });
    }
};

}  // namespace rwtest
