// mkmanual: builds the user manual (manqrat.pdf) from its Markdown text.
//
//   mkmanual MANUAL.md OUT.pdf [PLACEHOLDER=FILE.md ...]
//
// Each "{{PLACEHOLDER}}" in the text is replaced by the contents of its file
// (the state table notes, the coverage page built with the rate tables). The
// text is laid out on Letter pages with margins and page numbers and written
// as a PDF whose text can be searched. Needs only Qt GUI; run it with
// QT_QPA_PLATFORM=offscreen where there is no display.

#include "base/binio.h"

#include <QBuffer>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextStream>

#include <cstdio>

namespace {

bool readText(const QString& path, QString& out)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text)) {
        std::fprintf(stderr, "mkmanual: cannot read %s\n", qPrintable(path));
        return false;
    }
    out = QString::fromUtf8(f.readAll());
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = QGuiApplication::arguments();
    if (args.size() < 3) {
        std::fprintf(stderr, "usage: mkmanual MANUAL.md OUT.pdf [PLACEHOLDER=FILE.md ...]\n");
        return 2;
    }
    QString text;
    if (!readText(args[1], text))
        return 1;
    for (qsizetype i = 3; i < args.size(); ++i) {
        const qsizetype eq = args[i].indexOf(QLatin1Char('='));
        if (eq <= 0) {
            std::fprintf(stderr, "mkmanual: expected PLACEHOLDER=FILE, got %s\n",
                         qPrintable(args[i]));
            return 2;
        }
        const QString key = QStringLiteral("{{") + args[i].left(eq) + QStringLiteral("}}");
        QString part;
        if (!readText(args[i].mid(eq + 1), part))
            return 1;
        if (!text.contains(key)) {
            std::fprintf(stderr, "mkmanual: the manual has no %s\n", qPrintable(key));
            return 1;
        }
        text.replace(key, part.trimmed());
    }
    if (const qsizetype open = text.indexOf(QStringLiteral("{{")); open >= 0) {
        std::fprintf(
            stderr, "mkmanual: placeholder left unfilled: %s\n",
            qPrintable(text.mid(open, text.indexOf(QStringLiteral("}}"), open) + 2 - open)));
        return 1;
    }

    QTextDocument doc;
    QFont body(QStringLiteral("DejaVu Sans"));
    body.setPointSizeF(10.0);
    doc.setDefaultFont(body);
    doc.setDocumentMargin(0);
    doc.setDefaultStyleSheet(
        QStringLiteral("table { border-collapse: collapse; } th, td { padding: 2px 6px; }"));
    doc.setMarkdown(text, QTextDocument::MarkdownDialectGitHub);
    doc.setMetaInformation(QTextDocument::DocumentTitle, QStringLiteral("Ratewright User Manual"));

    // Painted into memory, then written whole: an interrupted build never
    // leaves a cut-off manual that looks up to date.
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&out);
    pdf.setTitle(QStringLiteral("Ratewright User Manual"));
    pdf.setCreator(QStringLiteral("Ratewright mkmanual"));
    pdf.setPageLayout(
        QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    pdf.setResolution(300);
    // QTextDocument::print breaks the text into pages of the writer's size,
    // keeps a 2 cm margin around it and numbers the pages at the foot.
    doc.print(&pdf);
    try {
        rw::WriteFileAtomically(args[2].toStdString(),
                                std::vector<char>(out.data().begin(), out.data().end()),
                                "mkmanual");
    } catch (const rw::Fault& f) {
        std::fprintf(stderr, "mkmanual: %s\n", f.detail().c_str());
        return 1;
    }
    return 0;
}
