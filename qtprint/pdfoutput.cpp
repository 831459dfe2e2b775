#include "qtprint/pdfoutput.h"

#include "base/binio.h"
#include "qtprint/qtprinter.h"

#include <QBuffer>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPdfWriter>

#include <cstdio>

namespace rw {

namespace {

constexpr int kResolution = 1200;

// A PDF printer that paints into memory and writes the file only when the
// job ends (endDoc), through the safe writer: a job that fails half way, or
// a file that cannot be written, leaves any file of that name as it was.
class PdfFilePrinter : public QtPrinter {
public:
    PdfFilePrinter(std::string path, std::unique_ptr<QBuffer> buffer,
                   std::unique_ptr<QPdfWriter> writer)
        : QtPrinter(writer.get())
        , path_(std::move(path))
        , buffer_(std::move(buffer))
        , writer_(std::move(writer))
    {
    }
    ~PdfFilePrinter() override
    {
        try {
            QtPrinter::endDoc();  // the painter lets go of the writer; nothing is written
        } catch (const Fault&) {
        }
    }
    void endDoc() override
    {
        if (written_)
            return;
        QtPrinter::endDoc();
        const QByteArray& pdf = buffer_->data();
        WriteFileAtomically(path_, std::vector<char>(pdf.begin(), pdf.end()), "PrintPdf");
        written_ = true;
    }

private:
    std::string path_;
    std::unique_ptr<QBuffer> buffer_;
    std::unique_ptr<QPdfWriter> writer_;
    bool written_ = false;
};

void prepareWriter(QPdfWriter& w)
{
    w.setResolution(kResolution);
    w.setCreator(QStringLiteral("Ratewright"));
    QtPrinter::SetReportPageLayout(w);
}

}  // namespace

void EnsureGuiApplication()
{
    if (QGuiApplication::instance())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "qratcalc-cli";
    static char* argv[] = {name, nullptr};
    // The platform's start-up notes (a missing runtime folder and the like)
    // mean nothing to a program without windows.
    const QtMessageHandler previous
        = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& msg) {
              if (type == QtFatalMsg)
                  std::fputs(qPrintable(msg), stderr);
          });
    static QGuiApplication* app = new QGuiApplication(argc, argv);
    (void)app;
    qInstallMessageHandler(previous);
}

std::unique_ptr<Printer> MakePdfPrinter(const std::string& path)
{
    EnsureGuiApplication();
    auto buffer = std::make_unique<QBuffer>();
    buffer->open(QIODevice::WriteOnly);
    auto writer = std::make_unique<QPdfWriter>(buffer.get());
    prepareWriter(*writer);
    return std::make_unique<PdfFilePrinter>(path, std::move(buffer), std::move(writer));
}

PageMetrics PdfPageMetrics()
{
    EnsureGuiApplication();
    // A writer on a buffer that is never painted: it only answers for metrics.
    struct Probe {
        QBuffer buffer;
        std::unique_ptr<QPdfWriter> writer;
        Probe()
        {
            buffer.open(QIODevice::WriteOnly);
            writer = std::make_unique<QPdfWriter>(&buffer);
            prepareWriter(*writer);
        }
    };
    auto probe = std::make_shared<Probe>();
    PageMetrics m;
    m.pageHeight = probe->writer->height();
    m.lineHeight = [probe](std::string_view font, float size) {
        const QFont f = QtPrinter::ReportFont(
            QString::fromLatin1(font.data(), static_cast<qsizetype>(font.size())),
            static_cast<qreal>(size));
        return static_cast<std::int32_t>(QFontMetrics(f, probe->writer.get()).height());
    };
    return m;
}

}  // namespace rw
