// What leaves the comparison: pictures, paper, tables, numbers.
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QTabWidget>

#include "analysis/compare/CsvConfronto.h"
#include "analysis/compare/DisegnoNumeri.h"
#include "analysis/compare/DisegnoParti.h"
#include "analysis/compare/DisegnoQuadri.h"
#include "analysis/compare/DisegnoValori.h"
#include "analysis/compare/dlgCsvConfronto.h"
#include "analysis/compare/frmConfronto.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/QtPrinter.h"
#include "platform/qt/TestoQt.h"
#include "shell/Domande.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "widgets/Stampante.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr double kRapportoImmagine = 2.0;  // pixels of a saved picture to one of the screen
constexpr double kMargineCarta = 1.0;      // cm

}  // namespace

std::filesystem::path frmConfronto::NomeProposto(const char* fine) const {
    const auto primo = confronto_.Di(kRiferimento);
    std::filesystem::path nome =
        primo ? confronto_.Log(primo->Log).File().stem() : std::filesystem::path("laps");
    nome += fine;
    return nome;
}

/// Who is who: letter, lap, time and gap of each chosen lap; the height that it took.
double frmConfronto::DipingiGiri(QPainter& penna, const QRectF& foglio) const {
    const Colori& colori = ColoriDi(Tema::Chiaro);
    const QFont corpo = Carattere(*this, Scrittura::Corpo);
    penna.setFont(corpo);
    const double riga = QFontMetricsF(corpo).height() + kSpazio;
    const double lato = Misure(*this).Lettera;
    double x = foglio.left();
    double y = foglio.top();
    const auto primo = confronto_.Di(kRiferimento);
    for (const char lettera : std::string(1, kRiferimento) + confronto_.Accanto()) {
        const auto giro = confronto_.Di(lettera);
        if (!giro) continue;
        const std::int32_t tempo = confronto_.Giro(*giro).Centesimi;
        QString testo = NomeGiro(*giro, true) + QStringLiteral("  ") + TempoGiro(tempo);
        const std::int32_t riferimento = confronto_.Giro(*primo).Centesimi;
        if (lettera != kRiferimento && tempo > 0 && riferimento > 0) {
            testo += QStringLiteral("  ") + Differenza((tempo - riferimento) / 100.0, 2);
        }
        const double largo =
            lato + kSpazio + QFontMetricsF(corpo).horizontalAdvance(testo) + 3 * kSpazio;
        if (x > foglio.left() && x + largo > foglio.right()) {
            x = foglio.left();
            y += riga;
        }
        LetteraGiro(penna, QRectF(x, y + (riga - lato) / 2, lato, lato), GiroDi(colori, lettera),
                    font());
        penna.setFont(corpo);
        penna.setPen(colori.Text);
        penna.drawText(QRectF(x + lato + kSpazio, y, largo, riga), Qt::AlignVCenter, testo);
        x += largo;
    }
    return y + riga - foglio.top();
}

/// The picture of the tab in sight under the names of its laps, as for paper.
void frmConfronto::DipingiFoglio(QPainter& penna, const QRectF& foglio) const {
    penna.save();
    penna.setRenderHint(QPainter::Antialiasing);
    penna.fillRect(foglio, Qt::white);
    penna.setFont(Carattere(*this, Scrittura::Forte));
    penna.setPen(ColoriDi(Tema::Chiaro).Text);
    const auto primo = confronto_.Di(kRiferimento);
    QString titolo = windowTitle();
    if (primo) {
        const RecordSessione& sessione = confronto_.Log(primo->Log).Sessione();
        if (!sessione.DataSessione.empty()) {
            titolo += QStringLiteral(" · ") + InQt(sessione.DataSessione);
        }
    }
    const double alto = penna.fontMetrics().height();
    penna.drawText(QRectF(foglio.left(), foglio.top(), foglio.width(), alto), Qt::AlignLeft,
                   titolo);
    QRectF resto = foglio.adjusted(0, alto, 0, 0);
    resto.setTop(resto.top() + DipingiGiri(penna, resto) + kSpazio / 2.0);
    if (schede_->currentWidget() == grafico_) {
        grafico_->DisegnaSu(penna, resto);
    } else {
        QWidget* const pagina = schede_->currentWidget();
        const double scala =
            std::min(resto.width() / pagina->width(), resto.height() / pagina->height());
        penna.translate(resto.topLeft());
        penna.scale(scala, scala);
        pagina->render(&penna, QPoint(), QRegion(), QWidget::DrawChildren);
    }
    penna.restore();
}

QImage frmConfronto::Immagine() const {
    const QSizeF misura(schede_->currentWidget()->width(),
                        schede_->currentWidget()->height() + 5.0 * Misure(*this).Linea);
    QImage immagine((misura * kRapportoImmagine).toSize(), QImage::Format_RGB32);
    immagine.fill(Qt::white);
    QPainter penna(&immagine);
    penna.scale(kRapportoImmagine, kRapportoImmagine);
    DipingiFoglio(penna, QRectF(QPointF(), misura).adjusted(kSpazio, kSpazio, -kSpazio, -kSpazio));
    return immagine;
}

void frmConfronto::CopiaImmagine() {
    QGuiApplication::clipboard()->setImage(Immagine());
}

void frmConfronto::CopiaTabelle() {
    QGuiApplication::clipboard()->setText(parti_->Testo() + QLatin1Char('\n') + valori_->Testo());
}

/// Writes a file that was chosen, or says what hinders it.
void frmConfronto::Scrivi(const std::filesystem::path& file, const std::function<void()>& scrivi) {
    if (!PuoSostituire(file)) return;
    try {
        scrivi();
        Dici({});
        lblStato_->setText(InQt(Testo(Voce::ConfrontoSalvato)) + QStringLiteral(": ") +
                           PercorsoInQt(file));
    } catch (const ErroreRuntime& errore) {
        Dici(PercorsoInQt(file) + QStringLiteral(": ") +
             InQt(FraseErrore(ParoleDi(errore.Numero()))));
    }
    AggiornaAvviso();
}

void frmConfronto::DisegnaPagina(QtPrinter& stampante) const {
    stampante.NewPage();
    const QSizeF pagina = stampante.Pagina();
    DipingiFoglio(stampante.Penna(), stampante.Rettangolo(kMargineCarta, kMargineCarta,
                                                          pagina.width() - 2 * kMargineCarta,
                                                          pagina.height() - 2 * kMargineCarta));
    stampante.EndDoc();
}

/// PNG or, where the chosen name says so, PDF.
void frmConfronto::SalvaImmagine() {
    const auto scelto = platform().AskSave({Testo(Voce::SalvaImmagine),
                                            {},
                                            "PNG, PDF (*.png *.pdf)|*.png *.pdf",
                                            NomeProposto(".png"),
                                            {}});
    if (!scelto) return;
    std::filesystem::path file = *scelto;
    if (file.extension().empty()) file += ".png";
    Scrivi(file, [&] {
        if (UgualiSenzaMaiuscole(file.extension().string(), ".pdf")) {
            QtPrinter stampante(file, QPageLayout::Landscape);
            stampante.Titolo(windowTitle());
            DisegnaPagina(stampante);
            return;
        }
        QByteArray png;
        QBuffer posto(&png);
        posto.open(QIODevice::WriteOnly);
        Immagine().save(&posto, "PNG");
        ScriviFile(file, {png.constData(), static_cast<std::size_t>(png.size())},
                   Lavoro::ScrivereConfronto);
    });
}

void frmConfronto::SalvaCsv() {
    dlgCsvConfronto forma(this);
    if (forma.exec() != QDialog::Accepted) return;
    const auto scelto = platform().AskSave({Testo(Voce::SalvaCsvConfronto),
                                            {},
                                            "CSV (*.csv)|*.csv",
                                            NomeProposto("-laps.csv"),
                                            ".csv"});
    if (!scelto) return;
    std::vector<std::string> canali;
    for (const std::string& chiave : ChiaviQuadri()) {
        if (chiave != kChiaveDistacco) canali.push_back(chiave);
    }
    Scrivi(*scelto, [&] {
        ScriviFile(*scelto, CsvConfronto(confronto_, canali, forma.Forma()),
                   Lavoro::ScrivereConfronto);
    });
}

void frmConfronto::Stampa() {
    const auto stampante =
        ScegliStampante(Testo(Voce::StampaConfronto), NomeProposto(".pdf"), QPageLayout::Landscape);
    if (!stampante) return;
    try {
        DisegnaPagina(*stampante);
    } catch (const ErroreRuntime& errore) {
        Dici(InQt(Testo(Voce::StampaConfronto)) + QStringLiteral(": ") +
             InQt(FraseErrore(ParoleDi(errore.Numero()))));
        AggiornaAvviso();
    }
}

}  // namespace lapvane
