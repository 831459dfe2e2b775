#include "qtprint/qtprinter.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>

#include "base/fault.h"

#include <algorithm>

namespace rw {

namespace {

QString fromLatin1(std::string_view s)
{
    return QString::fromLatin1(s.data(), static_cast<qsizetype>(s.size()));
}

}  // namespace

void QtPrinter::MapReportFonts()
{
    const QString courier = QStringLiteral("Courier New");
    if (QFontDatabase::families().contains(courier, Qt::CaseInsensitive))
        return;
    if (!QFont::substitutes(courier).contains(QStringLiteral("Liberation Mono")))
        QFont::insertSubstitution(courier, QStringLiteral("Liberation Mono"));
}

QFont QtPrinter::ReportFont(const QString& family, qreal pointSize)
{
    MapReportFonts();
    QFont f(family);
    f.setPointSizeF(pointSize);
    f.setStyleHint(QFont::TypeWriter, QFont::PreferMatch);
    f.setFixedPitch(true);
    f.setKerning(false);
    return f;
}

void QtPrinter::SetReportPageLayout(QPagedPaintDevice& device)
{
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                     QMarginsF(0.5, 0.5, 0.2, 0.5), QPageLayout::Inch));
}

QtPrinter::QtPrinter(QPagedPaintDevice* device)
    : device_(device)
{
    font_ = ReportFont(fromLatin1(fontName_), fontSize_);
}

QtPrinter::~QtPrinter()
{
    try {
        endDoc();
    } catch (const Fault&) {
        // The device could not be opened; there is nothing to finish.
    }
}

void QtPrinter::openPainter()
{
    painter_ = std::make_unique<QPainter>();
    if (!painter_->begin(device_)) {
        painter_.reset();
        failed_ = true;
        ThrowFault(kErrDeviceIO, "Printer", "the printer or the output file cannot be opened");
    }
    painter_->setFont(font_);
    painter_->setPen(Qt::black);
}

void QtPrinter::setFont(std::string_view name, float size)
{
    fontName_ = std::string(name);
    fontSize_ = size;
    font_ = ReportFont(fromLatin1(fontName_), static_cast<qreal>(size));
    if (painter_)
        painter_->setFont(font_);
}

std::int32_t QtPrinter::pageHeight() const
{
    return device_->height();
}

std::int32_t QtPrinter::textHeight(std::string_view sample) const
{
    const QFontMetrics fm(font_, device_);
    const auto lines = 1 + std::count(sample.begin(), sample.end(), '\n');
    return static_cast<std::int32_t>(lines) * fm.height();
}

qreal QtPrinter::columnWidth() const
{
    return QFontMetricsF(font_, device_).horizontalAdvance(QLatin1Char('0'));
}

void QtPrinter::beginLine()
{
    if (lineOpen_)
        return;
    if (failed_)
        ThrowFault(kErrDeviceIO, "Printer", "the printer or the output file cannot be opened");
    if (!painter_) {
        openPainter();
        anyPage_ = true;
        pagePending_ = false;
        y_ = 0;
    }
    const int h = textHeight("Sample");
    if (!pagePending_ && y_ > 0 && y_ + h > pageHeight()) {
        // Off the bottom of the sheet: the printer feeds a new one.
        ++pageNo_;
        pagePending_ = true;
    }
    if (pagePending_) {
        device_->newPage();
        pagePending_ = false;
        y_ = 0;
    }
    lineOpen_ = true;
    open_.clear();
}

void QtPrinter::printAt(int column, std::string_view text)
{
    beginLine();
    const std::size_t at = column > 1 ? static_cast<std::size_t>(column - 1) : 0;
    if (open_.size() < at + text.size())
        open_.resize(at + text.size(), ' ');
    for (std::size_t i = 0; i < text.size(); ++i)
        open_[at + i] = text[i] == '\0' ? ' ' : text[i];
}

void QtPrinter::endLine()
{
    beginLine();
    const QFontMetrics fm(font_, device_);
    const qreal cell = columnWidth();
    const int baseline = y_ + fm.ascent();
    // Every run of non-blank characters is painted at its own column, so the
    // columns stay exact whatever the painter does with blanks.
    std::size_t i = 0;
    while (i < open_.size()) {
        if (open_[i] == ' ') {
            ++i;
            continue;
        }
        std::size_t j = i;
        while (j < open_.size() && open_[j] != ' ')
            ++j;
        painter_->drawText(QPointF(cell * static_cast<qreal>(i), baseline),
                           fromLatin1(std::string_view(open_).substr(i, j - i)));
        i = j;
    }
    y_ += fm.height();
    open_.clear();
    lineOpen_ = false;
}

void QtPrinter::newPage()
{
    if (lineOpen_)
        endLine();
    if (!painter_ || pagePending_) {
        // A page break on a page with nothing on it leaves a blank sheet.
        beginLine();
        lineOpen_ = false;
    }
    ++pageNo_;
    pagePending_ = true;
}

void QtPrinter::endDoc()
{
    if (ended_ || failed_)
        return;
    if (lineOpen_)
        endLine();
    if (!painter_)
        openPainter();  // nothing printed: one blank page
    painter_->end();
    painter_.reset();
    ended_ = true;
}

}  // namespace rw
