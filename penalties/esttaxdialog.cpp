#include "penalties/esttaxdialog.h"

#include "base/numtext.h"
#include "casedata/casefile.h"

#include <algorithm>
#include <cctype>

namespace rw {

namespace {

constexpr int kFirstTaxYear = 2000;
// The last year whose return's due date the program can still read.
constexpr int kLastTaxYear = kLastReadableYear - 2;

struct MoneyField {
    FormField<EstTaxForm> field;
    const char* label;
};

constexpr MoneyField kMoneyFields[] = {
    {&EstTaxForm::currentTax, "Current Year Tax"},
    {&EstTaxForm::priorTax, "Prior Year Tax"},
    {&EstTaxForm::withholding, "Tax Withheld"},
    {&EstTaxForm::installment1, "Required Installment 1"},
    {&EstTaxForm::installment2, "Required Installment 2"},
    {&EstTaxForm::installment3, "Required Installment 3"},
    {&EstTaxForm::installment4, "Required Installment 4"},
};

const char* RowName(EstTaxList list)
{
    return list == EstTaxList::Payments ? "Payment" : "Withholding";
}

std::optional<int> WholeNumber(std::string_view text)
{
    const std::string_view t = TrimBlanks(text);
    if (t.empty() || t.size() > 4
        || !std::all_of(t.begin(), t.end(), [](char c) { return std::isdigit(c) != 0; }))
        return std::nullopt;
    int n = 0;
    for (char c : t)
        n = n * 10 + (c - '0');
    return n;
}

// An amount of 0 or more.
template<typename Form>
std::optional<Money> TakeNonNegative(Form& form, FormField<Form> field, std::string_view label,
                                     Messages& msgs)
{
    const std::optional<Money> m = TakeMoney(form, field, label, msgs);
    if (m && *m < Money()) {
        Refuse(form, field,
               "The " + std::string(label) + " entered as " + std::string(TrimBlanks(form.*field))
                   + " is negative.  Please enter an amount of 0 or more.",
               msgs);
        return std::nullopt;
    }
    return m;
}

std::optional<int> TakeTaxYear(EstTaxForm& form, Messages& msgs)
{
    const std::optional<int> y = WholeNumber(form.taxYear);
    if (!y || *y > kLastTaxYear) {
        Refuse(form, &EstTaxForm::taxYear,
               "The Tax Year entered as " + std::string(TrimBlanks(form.taxYear))
                   + " is not a year.  Please enter the year in which the tax year begins, such "
                     "as 2024.",
               msgs);
        return std::nullopt;
    }
    if (*y < kFirstTaxYear) {
        Refuse(form, &EstTaxForm::taxYear,
               "The estimated tax penalty is figured for tax years beginning in 2000 or later.  "
               "Please enter a Tax Year of 2000 or later.",
               msgs);
        return std::nullopt;
    }
    return y;
}

std::optional<int> TakeMonth(EstTaxForm& form, Messages& msgs)
{
    if (!form.corporation)
        return 12;
    const std::optional<int> m = WholeNumber(form.fiscalYearEndMonth);
    if (!m || *m < 1 || *m > 12) {
        Refuse(form, &EstTaxForm::fiscalYearEndMonth,
               "The Fiscal Year End Month entered as "
                   + std::string(TrimBlanks(form.fiscalYearEndMonth))
                   + " is not a month.  Please enter the month the tax year ends, 1 to 12.",
               msgs);
        return std::nullopt;
    }
    return m;
}

// The tax year of the form as far as it can be read, without telling
// anything: the dates a row may hold depend on it.
std::optional<EstTaxInput> YearOf(const EstTaxForm& form)
{
    const std::optional<int> y = WholeNumber(form.taxYear);
    const std::optional<int> m = form.corporation ? WholeNumber(form.fiscalYearEndMonth) : 12;
    if (!y || *y < kFirstTaxYear || *y > kLastTaxYear || !m || *m < 1 || *m > 12)
        return std::nullopt;
    EstTaxInput in;
    in.filer = form.corporation ? EstTaxFiler::Corporation : EstTaxFiler::Individual;
    in.taxYear = *y;
    in.fiscalYearEndMonth = *m;
    return in;
}

// A row's date and amount. Its date must lie within the tax year's reach:
// from the year's first day to the return's due date, after which a payment
// no longer changes the penalty.
std::optional<DatedAmount> TakeRow(const std::optional<EstTaxInput>& year, EstTaxRow& row,
                                   EstTaxList list, Messages& msgs)
{
    const std::string name = RowName(list);
    const std::optional<Date> d = TakeDate(row, &EstTaxRow::date, name, DateNeed::Needed, msgs);
    if (!d)
        return std::nullopt;
    if (year && (*d < EstTaxYearBegins(*year) || *d > EstTaxReturnDue(*year))) {
        Refuse(row, &EstTaxRow::date,
               "The " + name + " date " + FormatShortDate(*d) + " is outside the "
                   + std::to_string(year->taxYear) + " tax year's reach, "
                   + FormatShortDate(EstTaxYearBegins(*year)) + " to "
                   + FormatShortDate(EstTaxReturnDue(*year)) + ".  Please enter a date within it.",
               msgs);
        return std::nullopt;
    }
    const std::optional<Money> m = TakeNonNegative(row, &EstTaxRow::amount, name + " amount", msgs);
    if (!m)
        return std::nullopt;
    return DatedAmount{*d, *m};
}

// The rows of a list, skipping the empty row a list offers for the next
// entry; false at the first refused. The case file keeps a bounded number of
// entries in each list.
bool TakeRows(const std::optional<EstTaxInput>& year, std::vector<EstTaxRow>& rows, EstTaxList list,
              std::vector<DatedAmount>& out, Messages& msgs)
{
    for (EstTaxRow& row : rows) {
        row.refused = nullptr;
        if (IsBlankDate(row.date) && TrimBlanks(row.amount).empty())
            continue;
        if (out.size() == kMaxEstTaxEntries) {
            Refuse(row, &EstTaxRow::date,
                   "A case keeps at most " + GroupThousands(kMaxEstTaxEntries) + " " + RowName(list)
                       + " entries.  Please remove this entry and those after it.",
                   msgs);
            return false;
        }
        const std::optional<DatedAmount> p = TakeRow(year, row, list, msgs);
        if (!p)
            return false;
        out.push_back(*p);
    }
    return true;
}

// Notice and demand for the penalty comes after the tax year has ended.
std::optional<Date> TakeNotice(EstTaxForm& form, const std::optional<EstTaxInput>& year,
                               Messages& msgs)
{
    const std::optional<Date> d = TakeDate(form, &EstTaxForm::noticeAndDemand, "Notice and Demand",
                                           DateNeed::Optional, msgs);
    if (!d || d->isNoDate() || !year || *d > EstTaxYearEnds(*year))
        return d;
    Refuse(form, &EstTaxForm::noticeAndDemand,
           "The Notice and Demand date " + FormatShortDate(*d) + " is before the end of the "
               + std::to_string(year->taxYear) + " tax year on "
               + FormatShortDate(EstTaxYearEnds(*year))
               + ".  Please enter the day notice and demand for the penalty was made.",
           msgs);
    return std::nullopt;
}

std::string MoneyText(Money m)
{
    return FormatMoneyField(m);
}

std::vector<EstTaxRow> RowsOf(const std::vector<DatedAmount>& list)
{
    std::vector<EstTaxRow> rows;
    for (const DatedAmount& p : list)
        rows.push_back({InitCSDateCtrl(p.date), MoneyText(p.amount)});
    return rows;
}

}  // namespace

EstTaxDialog::EstTaxDialog(EstTaxInput& input, bool& on, Date& noticeAndDemand, Messages& msgs,
                           bool federalCase)
    : msgs_(msgs)
    , input_(input)
    , on_(on)
    , notice_(noticeAndDemand)
    , federalCase_(federalCase)
{
}

EstTaxForm EstTaxDialog::open() const
{
    const EstTaxInput& in = input_;
    EstTaxForm f;
    f.calculate = on_;
    f.corporation = in.filer == EstTaxFiler::Corporation;
    f.taxYear = in.taxYear == 0 ? std::string() : std::to_string(in.taxYear);
    f.fiscalYearEndMonth = std::to_string(in.fiscalYearEndMonth);
    f.currentTax = MoneyText(in.currentTax);
    f.priorTax = MoneyText(in.priorTax);
    f.priorYearUsable = in.priorYearUsable;
    f.highIncome = in.highIncome;
    f.largeCorporation = in.largeCorporation;
    f.withholding = MoneyText(in.withholding);
    f.withholdingByDate = !in.withholdingByDate.empty();
    f.withholdingRows = RowsOf(in.withholdingByDate);
    f.payments = RowsOf(in.estimatedPayments);
    f.ownInstallments = in.installments.has_value();
    if (in.installments) {
        f.installment1 = MoneyText((*in.installments)[0]);
        f.installment2 = MoneyText((*in.installments)[1]);
        f.installment3 = MoneyText((*in.installments)[2]);
        f.installment4 = MoneyText((*in.installments)[3]);
    }
    f.noticeAndDemand = InitCSDateCtrl(notice_);
    if (!federalCase_)
        f.note = std::string(kEstTaxStateCase);
    return f;
}

void EstTaxDialog::fieldLeft(EstTaxForm& form, FormField<EstTaxForm> field) const
{
    if (field == &EstTaxForm::taxYear) {
        TakeTaxYear(form, msgs_);
        return;
    }
    if (field == &EstTaxForm::fiscalYearEndMonth) {
        TakeMonth(form, msgs_);
        return;
    }
    if (field == &EstTaxForm::noticeAndDemand) {
        if (!IsBlankDate(form.noticeAndDemand))
            TakeNotice(form, YearOf(form), msgs_);
        return;
    }
    for (const MoneyField& m : kMoneyFields)
        if (m.field == field)
            TakeNonNegative(form, field, m.label, msgs_);
}

void EstTaxDialog::rowLeft(const EstTaxForm& form, EstTaxRow& row, EstTaxList list,
                           FormField<EstTaxRow> field) const
{
    const std::string name = RowName(list);
    if (field == &EstTaxRow::amount) {
        TakeNonNegative(row, field, name + " amount", msgs_);
        return;
    }
    if (IsBlankDate(row.date))
        return;
    EstTaxRow dateOnly{row.date, "0"};
    TakeRow(YearOf(form), dateOnly, list, msgs_);
    if (dateOnly.refused)
        row.refused = &EstTaxRow::date;
}

bool EstTaxDialog::accept(EstTaxForm& form)
{
    form.refused = nullptr;
    if (!form.calculate) {
        on_ = false;
        return true;
    }
    EstTaxInput in;
    in.filer = form.corporation ? EstTaxFiler::Corporation : EstTaxFiler::Individual;
    const std::optional<int> year = TakeTaxYear(form, msgs_);
    if (!year)
        return false;
    in.taxYear = *year;
    const std::optional<int> month = TakeMonth(form, msgs_);
    if (!month)
        return false;
    in.fiscalYearEndMonth = *month;

    std::optional<Money> amounts[std::size(kMoneyFields)];
    for (std::size_t i = 0; i < std::size(kMoneyFields); ++i) {
        const bool wanted = i < 3 || form.ownInstallments;
        if (wanted
            && !(amounts[i]
                 = TakeNonNegative(form, kMoneyFields[i].field, kMoneyFields[i].label, msgs_)))
            return false;
    }
    in.currentTax = *amounts[0];
    in.priorTax = *amounts[1];
    in.withholding = *amounts[2];
    if (form.ownInstallments)
        in.installments = std::array<Money, 4>{*amounts[3], *amounts[4], *amounts[5], *amounts[6]};
    in.priorYearUsable = form.priorYearUsable;
    in.highIncome = !form.corporation && form.highIncome;
    in.largeCorporation = form.corporation && form.largeCorporation;

    const std::optional<EstTaxInput> reach = in;
    if (form.withholdingByDate) {
        if (!TakeRows(reach, form.withholdingRows, EstTaxList::Withholding, in.withholdingByDate,
                      msgs_))
            return false;
        Money sum;
        for (const DatedAmount& p : in.withholdingByDate)
            sum += p.amount;
        if (sum != in.withholding) {
            Refuse(form, &EstTaxForm::withholding,
                   "The amounts withheld on their dates add up to " + FormatMoney(sum)
                       + ", not to the Tax Withheld of " + FormatMoney(in.withholding)
                       + ".  Please correct the amounts or the total.",
                   msgs_);
            return false;
        }
    }
    if (!TakeRows(reach, form.payments, EstTaxList::Payments, in.estimatedPayments, msgs_))
        return false;
    const std::optional<Date> notice = TakeNotice(form, reach, msgs_);
    if (!notice)
        return false;

    input_ = std::move(in);
    notice_ = *notice;
    on_ = true;
    return true;
}

}  // namespace rw
