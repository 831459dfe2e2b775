#include "qtprint/pdfoutput.h"

#include "qtprint/qtprinter.h"

#include <QBuffer>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPdfWriter>

#include <cstdio>

namespace rw {

namespace {

constexpr int kResolution = 1200;

// A PDF printer that owns its writer.
class PdfFilePrinter : public QtPrinter {
public:
    explicit PdfFilePrinter(std::unique_ptr<QPdfWriter> writer)
        : QtPrinter(writer.get())
        , writer_(std::move(writer))
    {
    }
    ~PdfFilePrinter() override { endDoc(); }

private:
    std::unique_ptr<QPdfWriter> writer_;
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
    auto writer = std::make_unique<QPdfWriter>(
        QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size())));
    prepareWriter(*writer);
    return std::make_unique<PdfFilePrinter>(std::move(writer));
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
