// The main window's overview of the case: after each kind of change its total
// is the summary report's; a double-click on the payments opens their list;
// the sample cases shown (pictures when RW_UI_SHOTS names a folder).

#include "tests/ui/main/mainwindowrig.h"

#include "casejson/casejson.h"
#include "reports/standardsources.h"
#include "shell/session.h"
#include "ui/main/mainwindow.h"

#include <QTableWidget>

using namespace rwtest;

namespace {

struct Program : MainWindowRig {
    explicit Program(const rw::Case& c)
    {
        session.kase = c;
        rw::MarkSaved(session);
        rw::EnableOutputs(session, true);
        window.refresh();
        showActive();
    }
    // The overview's total: the amount of the figures' last line.
    QString shownTotal()
    {
        auto* t = Child<QTableWidget>(&window, "ovFigures");
        return t->rowCount() > 0 ? t->item(t->rowCount() - 1, 2)->text() : QString();
    }
    // The total line of the summary report's window.
    QString summaryTotal()
    {
        const auto summary = rw::ReportWindows(
            rw::kRptSummary, session.kase,
            rw::StandardReportSources(session.gRates, session.release.ftfMinimums));
        for (const QString& line : AsShown(summary.at(0).text).split(u'\n'))
            if (line.startsWith(QStringLiteral("Total")))
                return line.mid(5).trimmed();
        return QStringLiteral("<no total>");
    }
};

using Steps = std::vector<std::pair<const char*, ModalDriver::Action>>;

ModalDriver::Action Fill(std::vector<std::pair<const char*, const char*>> fields)
{
    return [fields = std::move(fields)](QWidget* d) {
        for (const auto& [field, text] : fields) {
            Put(d, field, text);
            if (qobject_cast<QLineEdit*>(Child(d, field)))
                Leave(d, field);
        }
        Click(d, "btnOK");
    };
}

const ModalDriver::Action AddLine = [](QWidget* list) {
    Click(list, "btnAdd");
    Click(list, "btnClose");
};

}  // namespace

class OverviewTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void theTotalIsTheSummarysAfterEveryChange()
    {
        Program p(FederalCase(D(2016, 4, 15), D(2016, 12, 31), "90000"));
        QCOMPARE(p.shownTotal(), p.summaryTotal());
        const std::tuple<const char*, const char*, Steps> changes[] = {
            {"initial inputs",
             "mnuInputsInitial",
             {{"Initial Inputs", Fill({{"txtInitBal", "250,000.00"}})}}},
            {"a payment",
             "mnuInputsPayments",
             {{"Payments", AddLine},
              {"Payment Information", Fill({{"CSdtPmt", "8/1/2016"}, {"CScurPmt", "500"}})}}},
            {"an other charge",
             "mnuInputsCharges",
             {{"Other Charges", AddLine},
              {"Addition To Tax", Fill({{"CSdtLiab", "9/1/2016"},
                                        {"CSdtIntStart", "9/1/2016"},
                                        {"CScurChrg", "500"},
                                        {"CScurPen", "500"}})}}},
            {"a penalty",
             "mnuPenFTPay",
             {{"Failure To Pay Inputs", Fill({{"radCalcPen", "Yes"}, {"txtAssess", "5/1/2016"}})}}},
            {"an interest option",
             "mnuOptionsInterest",
             {{"Optional Rates",
               Fill({{"radCorpUPRateYes", "x"}, {"CSdtCorpUPRateStart", "6/1/2016"}})}}},
            {"a suspension",
             "mnuOptionsSuspend",
             {{"Suspended Interest Inputs",
               Fill({{"CSdtIntSuspend", "6/1/2016"}, {"CSdtRestart", "7/1/2016"}})}}},
        };
        for (const auto& [name, entry, steps] : changes) {
            const QString before = p.shownTotal();
            ModalDriver drive;
            for (const auto& [title, action] : steps)
                drive.when(title, action);
            p.action(entry)->trigger();
            RW_VERIFY_DRIVEN(drive);
            QVERIFY2(p.shownTotal() != before, name);
            QCOMPARE(p.shownTotal(), p.summaryTotal());
        }
        QVERIFY(!p.program.ends);
    }

    void doubleClickOnThePaymentsOpensTheirList()
    {
        rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
        AddPayment(c, D(2016, 6, 13), {.tax = "4000"});
        Program p(c);
        auto* payments = Child<QTableWidget>(&p.window, "ovPayments");
        ModalDriver drive;
        drive.when("Payments", [](QWidget* list) { Click(list, "btnClose"); });
        QTest::mouseDClick(payments->viewport(), Qt::LeftButton, {},
                           payments->visualItemRect(payments->item(0, 1)).center());
        RW_VERIFY_DRIVEN(drive);
    }

    void sampleCasesShowTheSummarysTotal()
    {
        for (const char* sample : {"DEMO_INC", "DEMO941"}) {
            rw::Case c;
            std::string error;
            QVERIFY2(
                rw::LoadCaseFile(std::string(RW_SAMPLE_CASES "/") + sample + ".json", c, error),
                error.c_str());
            Program p(c);
            QCOMPARE(p.shownTotal(), p.summaryTotal());
            Shoot(&p.window, (std::string("overview-") + sample).c_str());
            p.window.resize(p.window.width() * 3 / 2, p.window.height() * 5 / 4);
            Shoot(&p.window, (std::string("overview-") + sample + "-wide").c_str());
            p.window.resize(p.window.width() / 2, p.window.height());
            Shoot(&p.window, (std::string("overview-") + sample + "-narrow").c_str());
        }
    }
};

QTEST_MAIN(OverviewTest)
#include "overview_test.moc"
