// "Optional Rates", "Suspended Interest Inputs" and "Extended Due Date"
// driven through their widgets.

#include "casedata/caserecord.h"
#include "support/recordingmessages.h"
#include "ui/inputs/optionwindows.h"
#include "ui/inputs/windowkit.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QtTest>

using namespace rwtest;
using rw::Date;

namespace {

rw::Case NewCase(Date due = Date::fromCivil(2016, 4, 15))
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.dtDue = due;
    c.init.tlStart.dtDate = due;
    c.init.tlStop.dtDate = Date::fromCivil(2017, 12, 31);
    return c;
}

bool hasLabel(QWidget* w, const QString& text)
{
    const auto labels = w->findChildren<QLabel*>();
    for (const QLabel* l : labels)
        if (l->text() == text)
            return true;
    return false;
}

}  // namespace

class OptionWindowsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void optionalRatesCaptions();
    void optionalRatesOpenWithEverythingOff();
    void corporateUnderpaymentProposesTheDueDate();
    void corporateUnderpaymentProposesJanuary1991ForAnEarlyReturn();
    void corporateOverpaymentDateTooEarlyIsWarnedWhenLeft();
    void sayingNoKeepsTheStoredStartDate();
    void taxMotivatedWarnsForALateReturn();
    void cancelStoresNoOption();
    void suspensionStoresAValidPair();
    void restartOnTheSuspensionDayIsWarnedAndNotStored();
    void suspensionShowsTheStoredPair();
    void extendedDueDateProposesTheDueDate();
    void extendedDueDateStoresTheTypedDate();
    void extendedDueDateWarnsWhenLeftBeforeTheDueDate();
    void enterMovesOnInTheOptionDialogs();
};

void OptionWindowsTest::optionalRatesCaptions()
{
    rw::Case c = NewCase();
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QCOMPARE(w.windowTitle(), QStringLiteral("Optional Rates"));
    QCOMPARE(child<QGroupBox>(&w, "radTaxMot")->title(),
             QStringLiteral("Tax Motivated Rates For Returns Due Before 1/1/90"));
    QCOMPARE(child<QGroupBox>(&w, "radCorpUPRate")->title(),
             QStringLiteral("Use Large Corporation Underpayment Rate After 12/31/90"));
    QCOMPARE(child<QGroupBox>(&w, "radCorpOPRate")->title(),
             QStringLiteral("Use Large Corporation Overpayment Rate After 12/31/94"));
    for (const char* group : {"radTaxMot", "radCorpUPRate", "radCorpOPRate"}) {
        const QByteArray yes = QByteArray(group) + "Yes";
        const QByteArray no = QByteArray(group) + "No";
        QCOMPARE(child<QRadioButton>(&w, yes.constData())->text(), QStringLiteral("Yes"));
        QCOMPARE(child<QRadioButton>(&w, no.constData())->text(), QStringLiteral("No"));
    }
    QVERIFY(hasLabel(&w, QStringLiteral("Start Date for Corporate Underpayment Rate:")));
    QVERIFY(hasLabel(&w, QStringLiteral("Start Date for Corporate Overpayment Rate:")));
    QVERIFY(hasLabel(&w, QStringLiteral("6621(c) *OLD*")));
    QVERIFY(hasLabel(&w, QStringLiteral("6621(c) *NEW*")));
    SaveShot(&w, "dlgOptRates");
}

void OptionWindowsTest::optionalRatesOpenWithEverythingOff()
{
    rw::Case c = NewCase();
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QVERIFY(child<QRadioButton>(&w, "radTaxMotNo")->isChecked());
    QVERIFY(child<QRadioButton>(&w, "radCorpUPRateNo")->isChecked());
    QVERIFY(child<QRadioButton>(&w, "radCorpOPRateNo")->isChecked());
    QVERIFY(!child<QLineEdit>(&w, "CSdtCorpUPRateStart")->isEnabled());
    QVERIFY(!child<QLineEdit>(&w, "CSdtCorpOPRateStart")->isEnabled());
    QCOMPARE(child<QLineEdit>(&w, "CSdtCorpUPRateStart")->text(), QString());
    QVERIFY(msgs.shown.empty());
}

void OptionWindowsTest::corporateUnderpaymentProposesTheDueDate()
{
    rw::Case c = NewCase(Date::fromCivil(1992, 4, 15));
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateYes"), Qt::LeftButton);
    auto* start = child<QLineEdit>(&w, "CSdtCorpUPRateStart");
    QVERIFY(start->isEnabled());
    QCOMPARE(start->text(), QStringLiteral("4/15/1992"));
    click(&w, "btnOK");
    QCOMPARE(w.result(), int(QDialog::Accepted));
    QVERIFY(w.interestRatesChecked());
    QCOMPARE(c.init.bCorpUPRate, rw::kYes);
    QCOMPARE(c.init.dtCorpUPRateStart, Date::fromCivil(1992, 4, 15));
    QCOMPARE(c.init.bCorpOPRate, rw::kNo);
    QCOMPARE(c.init.bTaxMotivated, rw::kNo);
}

void OptionWindowsTest::corporateUnderpaymentProposesJanuary1991ForAnEarlyReturn()
{
    rw::Case c = NewCase(Date::fromCivil(1990, 4, 15));
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateYes"), Qt::LeftButton);
    QCOMPARE(child<QLineEdit>(&w, "CSdtCorpUPRateStart")->text(), QStringLiteral("1/1/1991"));
    // No blanks and disables the field again.
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateNo"), Qt::LeftButton);
    QCOMPARE(child<QLineEdit>(&w, "CSdtCorpUPRateStart")->text(), QString());
    QVERIFY(!child<QLineEdit>(&w, "CSdtCorpUPRateStart")->isEnabled());
}

void OptionWindowsTest::corporateOverpaymentDateTooEarlyIsWarnedWhenLeft()
{
    rw::Case c = NewCase(Date::fromCivil(1994, 4, 15));
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpOPRateYes"), Qt::LeftButton);
    auto* start = child<QLineEdit>(&w, "CSdtCorpOPRateStart");
    QCOMPARE(start->text(), QStringLiteral("1/1/1995"));
    typeInto(start, QStringLiteral("12/31/1994"));
    QTest::keyClick(start, Qt::Key_Return);
    QTRY_VERIFY(!start->hasFocus());
    QCOMPARE(msgs.shown.size(), std::size_t(1));
    QCOMPARE(msgs.shown[0].title, std::string("WARNING"));
    QCOMPARE(msgs.shown[0].text,
             std::string("The special interest rate on large corporate overpayments is for periods after 12/31/1994.  "
                         "You might want to double check the date you entered, which appears to be too early."));
    msgs.clear();
    typeInto(start, QStringLiteral("1/1/1995"));
    QTest::keyClick(start, Qt::Key_Tab);
    QTRY_VERIFY(!start->hasFocus());
    QVERIFY(msgs.shown.empty());
    click(&w, "btnOK");
    QCOMPARE(c.init.dtCorpOPRateStart, Date::fromCivil(1995, 1, 1));
    QCOMPARE(c.init.bCorpOPRate, rw::kYes);
}

void OptionWindowsTest::sayingNoKeepsTheStoredStartDate()
{
    rw::Case c = NewCase(Date::fromCivil(1996, 4, 15));
    c.init.bCorpUPRate = rw::kYes;
    c.init.dtCorpUPRateStart = Date::fromCivil(1997, 2, 1);
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    auto* start = child<QLineEdit>(&w, "CSdtCorpUPRateStart");
    QVERIFY(child<QRadioButton>(&w, "radCorpUPRateYes")->isChecked());
    QCOMPARE(start->text(), QStringLiteral("2/1/1997"));
    // No blanks the field; Yes again shows the stored date, not the default.
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateNo"), Qt::LeftButton);
    QCOMPARE(start->text(), QString());
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateYes"), Qt::LeftButton);
    QCOMPARE(start->text(), QStringLiteral("2/1/1997"));
    // Storing No keeps the date.
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateNo"), Qt::LeftButton);
    click(&w, "btnOK");
    QVERIFY(!w.interestRatesChecked());
    QCOMPARE(c.init.bCorpUPRate, rw::kNo);
    QCOMPARE(c.init.dtCorpUPRateStart, Date::fromCivil(1997, 2, 1));
}

void OptionWindowsTest::taxMotivatedWarnsForALateReturn()
{
    rw::Case c = NewCase(Date::fromCivil(2016, 4, 15));
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QTest::mouseClick(child<QRadioButton>(&w, "radTaxMotYes"), Qt::LeftButton);
    QCOMPARE(msgs.shown.size(), std::size_t(1));
    QCOMPARE(msgs.shown[0].text,
             std::string("The tax motivated rates are for returns due on or before 12/31/1989.  You might want to "
                         "double check the date you entered, which appears to be too late."));
    msgs.clear();
    click(&w, "btnOK");
    QCOMPARE(c.init.bTaxMotivated, rw::kYes);
    QVERIFY(w.interestRatesChecked());
    QCOMPARE(msgs.shown.size(), std::size_t(1));
    QCOMPARE(msgs.shown[0].text,
             std::string("The due date for using tax motivated rates should be between 1/1/85 and 12/31/89."));
}

void OptionWindowsTest::cancelStoresNoOption()
{
    rw::Case c = NewCase(Date::fromCivil(1992, 4, 15));
    const rw::Case before = c;
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateYes"), Qt::LeftButton);
    click(&w, "btnCancel");
    QCOMPARE(w.result(), int(QDialog::Rejected));
    QVERIFY(c == before);
}

void OptionWindowsTest::suspensionStoresAValidPair()
{
    rw::Case c = NewCase();
    RecordingMessages msgs;
    rw::ui::SuspendWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QCOMPARE(w.windowTitle(), QStringLiteral("Suspended Interest Inputs"));
    QVERIFY(hasLabel(&w, QStringLiteral("Date Interest Is Suspended:")));
    QVERIFY(hasLabel(&w, QStringLiteral("Date Suspended Interest Is Restarted:")));
    SaveShot(&w, "dlgSusp");
    typeInto(child<QLineEdit>(&w, "CSdtIntSuspend"), QStringLiteral("6/1/2016"));
    QTest::keyClick(child<QLineEdit>(&w, "CSdtIntSuspend"), Qt::Key_Return);
    QTRY_VERIFY(child<QLineEdit>(&w, "CSdtRestart")->hasFocus());
    QTest::keyClicks(child<QLineEdit>(&w, "CSdtRestart"), QStringLiteral("9/1/2016"));
    click(&w, "btnOK");
    QCOMPARE(w.result(), int(QDialog::Accepted));
    QVERIFY(w.stored());
    QVERIFY(msgs.shown.empty());
    QCOMPARE(c.init.dtIntSuspend, Date::fromCivil(2016, 6, 1));
    QCOMPARE(c.init.dtRestart, Date::fromCivil(2016, 9, 1));
}

void OptionWindowsTest::restartOnTheSuspensionDayIsWarnedAndNotStored()
{
    rw::Case c = NewCase();
    RecordingMessages msgs;
    rw::ui::SuspendWindow w(c, msgs);
    QVERIFY(showActive(&w));
    typeInto(child<QLineEdit>(&w, "CSdtIntSuspend"), QStringLiteral("6/1/2016"));
    typeInto(child<QLineEdit>(&w, "CSdtRestart"), QStringLiteral("6/1/2016"));
    QTest::keyClick(child<QLineEdit>(&w, "CSdtRestart"), Qt::Key_Return);
    QTRY_VERIFY(!child<QLineEdit>(&w, "CSdtRestart")->hasFocus());
    QCOMPARE(msgs.shown.size(), std::size_t(1));
    QCOMPARE(msgs.shown[0].text, std::string("The date interest is suspended, 6/1/2016, must be before the date "
                                             "interest is restarted, 6/1/2016."));
    click(&w, "btnOK");
    QVERIFY(!w.stored());
    QVERIFY(c.init.dtIntSuspend.isNoDate());
    QVERIFY(c.init.dtRestart.isNoDate());
}

void OptionWindowsTest::suspensionShowsTheStoredPair()
{
    rw::Case c = NewCase();
    c.init.dtIntSuspend = Date::fromCivil(2016, 7, 4);
    c.init.dtRestart = Date::fromCivil(2016, 8, 1);
    RecordingMessages msgs;
    rw::ui::SuspendWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QCOMPARE(child<QLineEdit>(&w, "CSdtIntSuspend")->text(), QStringLiteral("7/4/2016"));
    QCOMPARE(child<QLineEdit>(&w, "CSdtRestart")->text(), QStringLiteral("8/1/2016"));
}

void OptionWindowsTest::extendedDueDateProposesTheDueDate()
{
    rw::Case c = NewCase();
    RecordingMessages msgs;
    rw::ui::ExtDueDateWindow w(c, msgs);
    QVERIFY(showActive(&w));
    QCOMPARE(w.windowTitle(), QStringLiteral("Extended Due Date"));
    QVERIFY(hasLabel(&w, QStringLiteral("Date Return Extended To:")));
    QVERIFY(hasLabel(&w, QStringLiteral("The interest on this penalty runs from the extended due date of the return.")));
    SaveShot(&w, "dlgExtIP");
    QCOMPARE(child<QLineEdit>(&w, "txtExtended")->text(), QStringLiteral("4/15/2016"));
    QVERIFY(msgs.shown.empty());
    // Opening gave the case the due date, even though the dialog is cancelled.
    click(&w, "btnCancel");
    QCOMPARE(c.init.dtExtended, Date::fromCivil(2016, 4, 15));
}

void OptionWindowsTest::extendedDueDateStoresTheTypedDate()
{
    rw::Case c = NewCase();
    RecordingMessages msgs;
    rw::ui::ExtDueDateWindow w(c, msgs);
    QVERIFY(showActive(&w));
    typeInto(child<QLineEdit>(&w, "txtExtended"), QStringLiteral("10/15/2016"));
    click(&w, "btnOK");
    QCOMPARE(w.result(), int(QDialog::Accepted));
    QCOMPARE(c.init.dtExtended, Date::fromCivil(2016, 10, 15));
    QVERIFY(msgs.shown.empty());
}

void OptionWindowsTest::extendedDueDateWarnsWhenLeftBeforeTheDueDate()
{
    rw::Case c = NewCase();
    RecordingMessages msgs;
    rw::ui::ExtDueDateWindow w(c, msgs);
    QVERIFY(showActive(&w));
    auto* field = child<QLineEdit>(&w, "txtExtended");
    typeInto(field, QStringLiteral("4/14/2016"));
    QTest::keyClick(field, Qt::Key_Return);
    QTRY_VERIFY(!field->hasFocus());
    QCOMPARE(msgs.shown.size(), std::size_t(1));
    QCOMPARE(msgs.shown[0].text, std::string("The extended due date, 4/14/2016, should NOT be earlier that the due "
                                             "date, 4/15/2016.  Please change the extended due date to 4/15/2016 or "
                                             "later."));
    // Leaving only advises: the case keeps the date it had.
    QCOMPARE(c.init.dtExtended, Date::fromCivil(2016, 4, 15));
}

void OptionWindowsTest::enterMovesOnInTheOptionDialogs()
{
    rw::Case c = NewCase(Date::fromCivil(1992, 4, 15));
    RecordingMessages msgs;
    rw::ui::OptRatesWindow w(c, msgs);
    QVERIFY(showActive(&w));
    auto* no = child<QRadioButton>(&w, "radTaxMotNo");
    no->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(no->hasFocus());
    QTest::keyClick(no, Qt::Key_Return);
    QTRY_VERIFY(!no->hasFocus());
    QVERIFY(w.isVisible());
    QTest::mouseClick(child<QRadioButton>(&w, "radCorpUPRateYes"), Qt::LeftButton);
    auto* start = child<QLineEdit>(&w, "CSdtCorpUPRateStart");
    start->setFocus(Qt::TabFocusReason);
    QTest::keyClick(start, Qt::Key_Return);
    QTRY_VERIFY(!start->hasFocus());
    QVERIFY(w.isVisible());
    QCOMPARE(w.result(), 0);
}

QTEST_MAIN(OptionWindowsTest)
#include "optionwindows_test.moc"
