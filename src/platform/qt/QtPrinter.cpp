#include "platform/qt/QtPrinter.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPdfWriter>
#include <QPrinter>
#include <algorithm>
#include <utility>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"

namespace lapvane {

namespace {

constexpr int kPixelPollice = 96;
constexpr double kPixelCm = kPixelPollice / 2.54;
constexpr double kStrettaMinima = 0.8;  // how far a text is condensed before it is cut
constexpr double kSpessoreLinea = 0.8;  // 0.6 points

QPageLayout Impaginazione(const QPageSize& carta, QPageLayout::Orientation verso) {
    QPageLayout pagina(carta, verso, QMarginsF());
    // Positions count from the edge of the paper, whatever margins the device has.
    pagina.setMode(QPageLayout::FullPageMode);
    return pagina;
}

}  // namespace

QtPrinter::QtPrinter(std::filesystem::path file, QPageLayout::Orientation verso)
    : file_(std::move(file)) {
    pdf_.open(QIODevice::WriteOnly);
    auto scrittore = std::make_unique<QPdfWriter>(&pdf_);
    scrittore->setCreator(QStringLiteral("Lapvane"));
    scrittore->setPageLayout(Impaginazione(Carta(), verso));
    // Lines and letters stay vectors; the resolution only sets the unit of the painter.
    scrittore->setResolution(kPixelPollice);
    foglio_ = std::move(scrittore);
    FontSize(10.0);
}

QtPrinter::QtPrinter(const QPrinterInfo& stampante, QPageLayout::Orientation verso)
    : stampante_(stampante.printerName()) {
    if (stampante.isNull()) Guasto();
    auto carta = std::make_unique<QPrinter>(stampante, QPrinter::HighResolution);
    carta->setCreator(QStringLiteral("Lapvane"));
    carta->setPageLayout(Impaginazione(Carta(stampante), verso));
    carta->setResolution(kPixelPollice);
    foglio_ = std::move(carta);
    FontSize(10.0);
}

QtPrinter::~QtPrinter() = default;

void QtPrinter::Titolo(const QString& titolo) {
    if (auto* pdf = dynamic_cast<QPdfWriter*>(foglio_.get())) pdf->setTitle(titolo);
    if (auto* carta = dynamic_cast<QPrinter*>(foglio_.get())) carta->setDocName(titolo);
}

QPageSize QtPrinter::Carta(const QPrinterInfo& stampante) {
    const QPageSize::PageSizeId sua =
        stampante.isNull() ? QPageSize::Custom : stampante.defaultPageSize().id();
    if (sua == QPageSize::A4 || sua == QPageSize::Letter) return QPageSize(sua);
    const bool americana = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    return QPageSize(americana ? QPageSize::Letter : QPageSize::A4);
}

void QtPrinter::Sheet(double width, double height) {
    const QSizeF pagina = Pagina();
    scala_ = std::min({1.0, pagina.width() / width, pagina.height() / height});
    sinistra_ = (pagina.width() - width * scala_) / 2.0;
}

QFont QtPrinter::Carattere(double punti, bool grassetto) {
    QFont carattere;
    // The families that printed forms are made of, and the one that is always there.
    carattere.setFamilies({QStringLiteral("Arial"), QStringLiteral("Liberation Sans"),
                           QStringLiteral("Helvetica"), QStringLiteral("DejaVu Sans")});
    carattere.setPointSizeF(punti);
    carattere.setBold(grassetto);
    return carattere;
}

void QtPrinter::FontSize(double points) {
    carattere_ = Carattere(points, carattere_.bold());
}

QPainter& QtPrinter::Penna() {
    if (!penna_.isActive()) {
        if (!penna_.begin(foglio_.get())) Guasto();
        penna_.setPen(QPen(Qt::black, kSpessoreLinea));
    } else if (paginaNuova_ && !foglio_->newPage()) {
        Guasto();
    }
    paginaNuova_ = false;
    return penna_;
}

QRectF QtPrinter::Rettangolo(double x, double y, double larghezza, double altezza) const {
    return {x * kPixelCm, y * kPixelCm, larghezza * kPixelCm, altezza * kPixelCm};
}

QSizeF QtPrinter::Pagina() const {
    return foglio_->pageLayout().fullRect(QPageLayout::Millimeter).size() / 10.0;
}

void QtPrinter::Line(double x1, double y1, double x2, double y2) {
    const QPointF origine(sinistra_, 0.0);
    Penna().drawLine((origine + QPointF(x1, y1) * scala_) * kPixelCm,
                     (origine + QPointF(x2, y2) * scala_) * kPixelCm);
}

void QtPrinter::Text(double x, double y, double right, const std::string& text) {
    if (text.empty()) return;
    QPainter& penna = Penna();
    penna.setFont(carattere_);
    const QFontMetricsF misura(carattere_, foglio_.get());
    const double larghezza = (right - x) * kPixelCm;
    QString testo = InQt(text);
    double stretta = 1.0;
    if (const double lungo = misura.horizontalAdvance(testo); lungo > larghezza) {
        stretta = larghezza / lungo;
        if (stretta < kStrettaMinima) {
            stretta = 1.0;
            testo = misura.elidedText(testo, Qt::ElideRight, larghezza);
        }
    }
    penna.save();
    penna.translate((sinistra_ + x * scala_) * kPixelCm, (y * kPixelCm + misura.ascent()) * scala_);
    penna.scale(stretta * scala_, scala_);
    penna.drawText(QPointF(), testo);
    penna.restore();
}

void QtPrinter::NewPage() {
    paginaNuova_ = penna_.isActive();
}

void QtPrinter::EndDoc() {
    if (!penna_.isActive()) return;
    if (!penna_.end()) Guasto();
    if (const auto* carta = dynamic_cast<const QPrinter*>(foglio_.get())) {
        const QPrinter::PrinterState stato = carta->printerState();
        if (stato == QPrinter::Error || stato == QPrinter::Aborted) Guasto();
    } else {
        Salva();
    }
}

void QtPrinter::Salva() const {
    const QByteArray& byte = pdf_.data();
    try {
        ScriviFile(file_, {byte.constData(), static_cast<std::size_t>(byte.size())},
                   Lavoro::Stampare);
    } catch (const ErroreRuntime&) {
        Guasto();
    }
}

void QtPrinter::Guasto() const {
    throw ErroreRuntime(NumeroErrore::PrinterError, Lavoro::Stampare,
                        file_.empty() ? PercorsoDaQt(stampante_) : file_);
}

}  // namespace lapvane
