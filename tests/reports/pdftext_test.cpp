// The PDF back end prints what the text back end prints: the command-line
// tool prints a case to a PDF file and, with the PDF's page metrics, to text;
// pdftotext -layout must find the same lines on the same pages (blanks
// normalised, empty lines ignored). Skipped where pdftotext or PDF output is
// not available.

#include "support/releases.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Page = std::vector<std::string>;

std::string readFile(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::string normalised(const std::string& line)
{
    std::string out;
    bool blank = false;
    for (char ch : line) {
        if (ch == ' ' || ch == '\t' || ch == '\r') {
            blank = true;
            continue;
        }
        if (blank && !out.empty())
            out += ' ';
        blank = false;
        out += ch;
    }
    return out;
}

// Pages split at form feeds, lines normalised, empty lines dropped, empty
// pages at the end dropped.
std::vector<Page> pagesOf(const std::string& text)
{
    std::vector<Page> pages(1);
    std::string line;
    auto flush = [&] {
        const std::string n = normalised(line);
        if (!n.empty())
            pages.back().push_back(n);
        line.clear();
    };
    for (char ch : text) {
        if (ch == '\f') {
            flush();
            pages.emplace_back();
        } else if (ch == '\n') {
            flush();
        } else {
            line += ch;
        }
    }
    flush();
    while (!pages.empty() && pages.back().empty())
        pages.pop_back();
    return pages;
}

int run(const std::string& command)
{
    return std::system(command.c_str());
}

std::string shellQuoted(const std::filesystem::path& p)
{
    return "'" + p.string() + "'";
}

TEST(PdfOutput, PdfTextFindsTheLinesOfTheTextBackEnd)
{
    if (run("pdftotext -v >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftotext is not installed";
    rwtest::TempDir dir;
    const std::filesystem::path kase = std::filesystem::path(RW_REPORTS_TESTDATA) / "pdfcase" / "case.json";
    // The tool computes with the tests' release of the rates, not the shipped one.
    const std::string cli
        = "RW_INSTALL_DIR=" + shellQuoted(rwtest::FixtureReleaseFolder()) + " " + shellQuoted(RW_CLI_PATH);
    const auto pdf = dir / "case.pdf";
    const auto printed = dir / "printed.txt";
    const auto extracted = dir / "extracted.txt";
    const int pdfStatus = run(cli + " print --reports all --pdf " + shellQuoted(pdf) + " " + shellQuoted(kase)
                              + " >/dev/null 2>" + shellQuoted(dir / "err.txt"));
    if (pdfStatus != 0 && readFile(dir / "err.txt").find("not part of this build") != std::string::npos)
        GTEST_SKIP() << "PDF output is not part of this build";
    ASSERT_EQ(pdfStatus, 0) << readFile(dir / "err.txt");
    ASSERT_EQ(run(cli + " print --reports all --text --pdf-metrics " + shellQuoted(kase) + " >" + shellQuoted(printed)
                  + " 2>/dev/null"),
              0);
    ASSERT_EQ(run("pdftotext -layout " + shellQuoted(pdf) + " " + shellQuoted(extracted)), 0);

    const std::vector<Page> want = pagesOf(readFile(printed));
    const std::vector<Page> got = pagesOf(readFile(extracted));
    ASSERT_GE(want.size(), 8u);  // every report, the inputs and the detail over several pages
    ASSERT_EQ(got.size(), want.size());
    for (std::size_t p = 0; p < want.size(); ++p) {
        ASSERT_EQ(got[p].size(), want[p].size()) << "page " << p + 1;
        for (std::size_t l = 0; l < want[p].size(); ++l)
            EXPECT_EQ(got[p][l], want[p][l]) << "page " << p + 1 << " line " << l + 1;
    }
}

}  // namespace
