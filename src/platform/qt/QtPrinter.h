#pragma once

#include <QBuffer>
#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrinterInfo>
#include <QSizeF>
#include <filesystem>
#include <memory>

#include "platform/Printer.h"

namespace lapvane {

/// A printer of the system, or a PDF file, on the paper of the country. No file is touched before
/// `EndDoc`.
class QtPrinter final : public Printer {
 public:
    /// Prints into a PDF file. An old file of that name stays whole until the new one is complete.
    explicit QtPrinter(std::filesystem::path file,
                       QPageLayout::Orientation verso = QPageLayout::Portrait);
    /// Prints on a printer of the system.
    explicit QtPrinter(const QPrinterInfo& stampante,
                       QPageLayout::Orientation verso = QPageLayout::Portrait);
    ~QtPrinter() override;
    QtPrinter(const QtPrinter&) = delete;
    QtPrinter& operator=(const QtPrinter&) = delete;

    /// Name of the document, for the printer's queue and the file's properties.
    void Titolo(const QString& titolo);

    /// A4, or Letter where the printer has that or, without one, the country's measures are so.
    static QPageSize Carta(const QPrinterInfo& stampante = {});

    void Sheet(double width, double height) override;
    void FontSize(double points) override;
    void FontBold(bool bold) override { carattere_.setBold(bold); }
    void Line(double x1, double y1, double x2, double y2) override;
    void Text(double x, double y, double right, const std::string& text) override;
    void NewPage() override;
    void EndDoc() override;

    /// The painter of the current page, for drawings of one's own. Its unit is a pixel of 1/96 inch
    /// as on a screen, so that sizes in pixels and in points mean the same as there; its origin is
    /// the corner of the page. Leave it as it was.
    QPainter& Penna();
    /// The face of printed texts, in points.
    static QFont Carattere(double punti, bool grassetto = false);
    /// A rectangle of the page in the painter's units; the arguments are centimetres.
    QRectF Rettangolo(double x, double y, double larghezza, double altezza) const;
    /// Width and height of the page in centimetres.
    QSizeF Pagina() const;

 private:
    [[noreturn]] void Guasto() const;
    void Salva() const;

    std::filesystem::path file_;  ///< empty: a printer
    QString stampante_;           ///< its name; empty: a file
    QBuffer pdf_;
    std::unique_ptr<QPagedPaintDevice> foglio_;
    QPainter penna_;
    QFont carattere_;
    double scala_ = 1.0;     ///< of the sheet on this paper
    double sinistra_ = 0.0;  ///< where the sheet begins, centimetres
    bool paginaNuova_ = false;
};

}  // namespace lapvane
