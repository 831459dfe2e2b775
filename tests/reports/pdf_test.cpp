// The PDF back end (the Qt painter on a PDF file). It prints what the text
// back end prints: the command-line tool prints a case to a PDF file and,
// with the PDF's page metrics, to text; pdftotext -layout must find the same
// lines on the same pages (blanks normalised, empty lines ignored; skipped
// where pdftotext or PDF output is not available). Its report font is fixed
// pitch, and a device that cannot be opened is a fault.

#include "base/fault.h"
#include "qtprint/pdfoutput.h"
#include "qtprint/qtprinter.h"
#include "support/casebuilder.h"
#include "support/releases.h"
#include "support/tempdir.h"

#include <QFontInfo>
#include <QPdfWriter>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>

namespace {

using Page = std::vector<std::string>;

std::string readFile(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

// Pages split at form feeds; blanks inside a line made one, at its ends
// dropped; empty lines and empty pages at the end dropped.
std::vector<Page> pagesOf(const std::string& text)
{
    std::vector<Page> pages(1);
    std::istringstream in(std::regex_replace(text, std::regex("\f"), "\n\f\n"));
    for (std::string line; std::getline(in, line);) {
        line = std::regex_replace(std::regex_replace(line, std::regex("[ \t\r]+"), " "),
                                  std::regex("^ | $"), "");
        if (line == "\f")
            pages.emplace_back();
        else if (!line.empty())
            pages.back().push_back(line);
    }
    while (!pages.empty() && pages.back().empty())
        pages.pop_back();
    return pages;
}

int run(const std::string& command)
{
    return std::system(command.c_str());
}

std::string quoted(const std::filesystem::path& p)
{
    return "'" + p.string() + "'";
}

TEST(PdfOutput, PdfTextFindsTheLinesOfTheTextBackEnd)
{
    if (run("pdftotext -v >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftotext is not installed";
    rwtest::TempDir dir;
    const std::filesystem::path kase
        = std::filesystem::path(RW_REPORTS_TESTDATA) / "pdfcase" / "case.json";
    // The tool computes with the tests' release of the rates, not the shipped one.
    const std::string cli
        = "RW_INSTALL_DIR=" + quoted(rwtest::FixtureReleaseFolder()) + " " + quoted(RW_CLI_PATH);
    const auto pdf = dir / "case.pdf";
    const int pdfStatus = run(cli + " print --reports all --pdf " + quoted(pdf) + " " + quoted(kase)
                              + " >/dev/null 2>" + quoted(dir / "err.txt"));
    if (pdfStatus != 0
        && readFile(dir / "err.txt").find("not part of this build") != std::string::npos)
        GTEST_SKIP() << "PDF output is not part of this build";
    ASSERT_EQ(pdfStatus, 0) << readFile(dir / "err.txt");
    ASSERT_EQ(run(cli + " print --reports all --text --pdf-metrics " + quoted(kase) + " >"
                  + quoted(dir / "printed.txt") + " 2>/dev/null"),
              0);
    ASSERT_EQ(run("pdftotext -layout " + quoted(pdf) + " " + quoted(dir / "extracted.txt")), 0);

    const std::vector<Page> want = pagesOf(readFile(dir / "printed.txt"));
    const std::vector<Page> got = pagesOf(readFile(dir / "extracted.txt"));
    ASSERT_GE(want.size(), 8u);  // every report, the inputs and the detail over several pages
    ASSERT_EQ(got.size(), want.size());
    for (std::size_t p = 0; p < want.size(); ++p)
        EXPECT_EQ(got[p], want[p]) << "page " << p + 1;
}

TEST(QtPrinter, FixedPitchReportFontAndADeviceThatCannotBeOpenedIsAFault)
{
    rw::EnsureGuiApplication();
    const QFont f = rw::QtPrinter::ReportFont(QStringLiteral("Courier New"), 8.0);
    EXPECT_TRUE(QFontInfo(f).fixedPitch()) << QFontInfo(f).family().toStdString();
    QPdfWriter writer(QStringLiteral("/nonexistent-folder/x.pdf"));
    rw::QtPrinter printer(&writer);
    EXPECT_TRUE(rwtest::FaultOf([&] {
                    printer.printLine(1, "x");
                }).starts_with(std::to_string(rw::kErrDeviceIO)));
}

}  // namespace
