#pragma once
// The printer back end that paints with QPainter on a paged device: a
// QPdfWriter (a PDF file) or a QPrinter (the system printer). It measures and
// paints; page breaking stays with the page manager.
//
// Metrics, in the device's pixels:
// - page height: the height of the device's printable area (its paint rect,
//   inside the page margins);
// - line height: QFontMetrics::height() of the current font on the device;
// - one print column: the horizontal advance of "0" in the current font, so
//   column c starts (c - 1) advances right of the left margin.
//
// Fonts: "Courier New" is asked for by name; where the system does not have
// it, it is mapped to the metric-compatible Liberation Mono (MapReportFonts).
//
// One QtPrinter prints one document: it begins painting with the first line
// and ends with endDoc() (or when destroyed). A document with nothing printed
// still ends as one blank page, as a PDF cannot have none. A device that
// cannot be opened (a file that cannot be written) is a fault, error 57.

#include "reports/printer.h"

#include <QFont>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QString>

#include <functional>
#include <memory>
#include <string>

namespace rw {

class QtPrinter : public Printer {
public:
    // device is not owned and must outlive the printer. Its page layout
    // (size, orientation, margins) is used as it is; see SetReportPageLayout.
    explicit QtPrinter(QPagedPaintDevice* device);
    ~QtPrinter() override;
    QtPrinter(const QtPrinter&) = delete;
    QtPrinter& operator=(const QtPrinter&) = delete;

    std::string fontName() const override { return fontName_; }
    float fontSize() const override { return fontSize_; }
    void setFont(std::string_view name, float size) override;

    std::int32_t pageHeight() const override;
    std::int32_t textHeight(std::string_view sample) const override;

    void printAt(int column, std::string_view text) override;
    void endLine() override;

    int page() const override { return pageNo_; }
    void newPage() override;
    void endDoc() override;

    // The set-up dialog of a system printer is the desktop's: it installs a
    // handler (a QPrintDialog on its QPrinter) that answers whether the user
    // confirmed. Without one, set-up confirms at once.
    void setSetupHandler(std::function<bool()> handler) { setupHandler_ = std::move(handler); }
    bool setup() override { return setupHandler_ ? setupHandler_() : true; }

    // Pages painted so far (a page counts once its first line is painted).

    // The font a report asks for, as painted: family mapped, size in points,
    // fixed pitch.
    static QFont ReportFont(const QString& family, qreal pointSize);
    // Maps "Courier New" to Liberation Mono when the font database has no
    // "Courier New" of its own. Safe to call more than once.
    static void MapReportFonts();
    // Letter, portrait; half an inch at the top, left and bottom, 0.2 inch
    // at the right: the widest lines (a detailed analysis row, 116 cells at
    // 8 points; the accuracy-related explanation, 78 cells at 12 points)
    // then end inside the printable area.
    static void SetReportPageLayout(QPagedPaintDevice& device);

private:
    void openPainter();
    void beginLine();
    qreal columnWidth() const;

    QPagedPaintDevice* device_;
    std::unique_ptr<QPainter> painter_;
    QFont font_;
    std::string fontName_ = "Courier New";
    float fontSize_ = 12.0f;
    std::string open_;
    bool lineOpen_ = false;
    bool pagePending_ = false;  // the next line begins a new sheet
    bool anyPage_ = false;  // a page has been begun
    int y_ = 0;  // top of the next line
    int pageNo_ = 1;
    bool ended_ = false;
    bool failed_ = false;  // the device could not be opened
    std::function<bool()> setupHandler_;
};

}  // namespace rw
