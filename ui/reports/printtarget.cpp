#include "ui/reports/printtarget.h"

#include "qtprint/pdfoutput.h"
#include "qtprint/qtprinter.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QWidget>

namespace rw::ui {

namespace {

// Holds the run's printer as a child of the main window.
class RunPrinterHolder : public QObject {
public:
    explicit RunPrinterHolder(QObject* parent)
        : QObject(parent)
        , printer(QPrinter::HighResolution)
    {
        setObjectName(QStringLiteral("rwRunPrinter"));
        QtPrinter::SetReportPageLayout(printer);
    }
    QPrinter printer;
};

bool defaultPrinterSetup(QPrinter& printer, QWidget* parent)
{
    QPrintDialog dlg(&printer, parent);
    dlg.setWindowTitle(QStringLiteral("Print Reports"));
    dlg.setOption(QAbstractPrintDialog::PrintToFile, false);
    dlg.setOption(QAbstractPrintDialog::PrintSelection, false);
    dlg.setOption(QAbstractPrintDialog::PrintPageRange, false);
    dlg.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
    return dlg.exec() == QDialog::Accepted;
}

QString defaultPdfFile(QWidget* parent)
{
    QString name
        = QFileDialog::getSaveFileName(parent, QStringLiteral("Print Reports to a PDF File"),
                                       QString(), QStringLiteral("PDF files (*.pdf)"));
    if (!name.isEmpty() && QFileInfo(name).suffix().isEmpty())
        name += QStringLiteral(".pdf");
    return name;
}

}  // namespace

QPrinter& RunPrinter(QWidget* mainWindow, std::unique_ptr<QPrinter>& fallback)
{
    if (mainWindow) {
        if (auto* holder = mainWindow->findChild<RunPrinterHolder*>(QStringLiteral("rwRunPrinter"),
                                                                    Qt::FindDirectChildrenOnly))
            return holder->printer;
        return (new RunPrinterHolder(mainWindow))->printer;
    }
    fallback = std::make_unique<QPrinter>(QPrinter::HighResolution);
    QtPrinter::SetReportPageLayout(*fallback);
    return *fallback;
}

PrintTarget::PrintTarget(QPrinter& printer, const ReportHooks& hooks, QWidget* parent)
    : printer_(printer)
    , hooks_(hooks)
    , parent_(parent)
{
}

bool PrintTarget::printerAvailable() const
{
    // A printer of the system, or the printer's own output to a file when its
    // set-up offers one.
    if (printer_.outputFormat() == QPrinter::PdfFormat)
        return !printer_.outputFileName().isEmpty();
    return !printer_.printerName().isEmpty() && printer_.isValid()
           && !QPrinterInfo::availablePrinters().isEmpty();
}

QString PrintTarget::describe() const
{
    if (!pdfFile_.isEmpty())
        return QStringLiteral("PDF file: ") + QFileInfo(pdfFile_).fileName();
    if (printerAvailable()) {
        if (printer_.outputFormat() == QPrinter::PdfFormat)
            return QStringLiteral("PDF file: ") + QFileInfo(printer_.outputFileName()).fileName();
        return QStringLiteral("Printer: ") + printer_.printerName();
    }
    return QStringLiteral("No printer installed: the reports go to a PDF file.");
}

bool PrintTarget::setup()
{
    const bool confirmed = hooks_.printerSetup ? hooks_.printerSetup(printer_, parent_)
                                               : defaultPrinterSetup(printer_, parent_);
    if (confirmed && printerAvailable())
        pdfFile_.clear();
    return confirmed;
}

bool PrintTarget::choosePdfFile()
{
    const QString name
        = hooks_.choosePdfFile ? hooks_.choosePdfFile(parent_) : defaultPdfFile(parent_);
    if (name.isEmpty())
        return false;
    pdfFile_ = name;
    return true;
}

bool PrintTarget::resolve()
{
    if (!pdfFile_.isEmpty() || printerAvailable())
        return true;
    return choosePdfFile();
}

QString PrintTarget::pdfFile() const
{
    if (!pdfFile_.isEmpty())
        return pdfFile_;
    if (printer_.outputFormat() == QPrinter::PdfFormat)
        return printer_.outputFileName();
    return {};
}

std::unique_ptr<rw::Printer> PrintTarget::makePrinter()
{
    if (!pdfFile_.isEmpty())
        return MakePdfPrinter(pdfFile_.toStdString());
    auto p = std::make_unique<QtPrinter>(&printer_);
    p->setSetupHandler([this] { return setup(); });
    return p;
}

}  // namespace rw::ui
