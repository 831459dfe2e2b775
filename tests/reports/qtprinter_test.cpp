// The Qt painter back end on a PDF file: fonts, metrics, page breaks, and a
// file that cannot be written. No pixel widths are asserted.

#include "support/tempdir.h"
#include "base/fault.h"
#include "reports/printmanager.h"
#include "support/recordingmessages.h"
#include "qtprint/pdfoutput.h"
#include "qtprint/qtprinter.h"

#include <QFontInfo>
#include <QPdfWriter>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using namespace rw;

int pdfPageCount(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    const std::string s = ss.str();
    int n = 0;
    for (std::size_t pos = s.find("/Type /Page"); pos != std::string::npos; pos = s.find("/Type /Page", pos + 1))
        if (s.compare(pos, 12, "/Type /Pages") != 0)
            ++n;
    return n;
}

TEST(QtPrinter, CourierNewIsAFixedPitchFont)
{
    EnsureGuiApplication();
    const QFont f = QtPrinter::ReportFont(QStringLiteral("Courier New"), 8.0);
    EXPECT_TRUE(QFontInfo(f).fixedPitch()) << QFontInfo(f).family().toStdString();
}

TEST(QtPrinter, CapacityFollowsTheFont)
{
    rwtest::TempDir dir;
    auto printer = MakePdfPrinter((dir / "m.pdf").string());
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm(*printer, state, msgs);
    printer->setFont("Courier New", 12.0f);
    const int at12 = pm.nLinesPerPage();
    printer->setFont("Courier New", 8.0f);
    const int at8 = pm.nLinesPerPage();
    // Ten printable inches: about 52 lines of 12 points, 79 of 8 points.
    EXPECT_GT(at12, 40);
    EXPECT_LT(at12, 60);
    EXPECT_GT(at8, at12 * 4 / 3);
    const PageMetrics m = PdfPageMetrics();
    EXPECT_EQ(m.pageHeight, printer->pageHeight());
    EXPECT_EQ(m.lineHeight("Courier New", 8.0f), printer->textHeight("Sample"));
}

TEST(QtPrinter, PagesOfAJobAndLazyPageBreaks)
{
    rwtest::TempDir dir;
    const auto path = dir / "job.pdf";
    {
        auto printer = MakePdfPrinter(path.string());
        printer->printLine(3, "first page");
        printer->newPage();
        EXPECT_EQ(printer->page(), 2);
        printer->printLine(3, "second page");
        printer->newPage();
        printer->endDoc();  // no third sheet
    }
    EXPECT_EQ(pdfPageCount(path), 2);
}

TEST(QtPrinter, NothingPrintedStillMakesAValidFile)
{
    rwtest::TempDir dir;
    const auto path = dir / "empty.pdf";
    MakePdfPrinter(path.string())->endDoc();
    EXPECT_EQ(pdfPageCount(path), 1);
}

TEST(QtPrinter, DeviceThatCannotBeOpenedIsAFault)
{
    EnsureGuiApplication();
    QPdfWriter writer(QStringLiteral("/nonexistent-folder/x.pdf"));
    QtPrinter printer(&writer);
    try {
        printer.printLine(1, "text");
        FAIL() << "no fault";
    } catch (const Fault& f) {
        EXPECT_EQ(f.number(), kErrDeviceIO);
    }
}

}  // namespace
