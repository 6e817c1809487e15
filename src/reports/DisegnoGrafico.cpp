#include "reports/DisegnoGrafico.h"

#include <QDate>
#include <QFontMetricsF>
#include <algorithm>
#include <array>

#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr double kMargine = 1.5;  // all lengths in cm
constexpr double kAltoTitolo = 0.95;
constexpr double kAltoRiga = 0.55;
constexpr double kAltoValore = 0.5;
constexpr double kSpazio = 0.3;
constexpr double kAltoPiede = 0.6;
constexpr double kCampione = 0.22;
constexpr double kColonna = 5.2;  // least width of a column of values
constexpr double kGrosso = 1.6;   // pixels
constexpr double kFino = 0.5;
const QColor kInchiostro(0x17, 0x1C, 0x24);
const QColor kTenue(0x4D, 0x58, 0x66);

/// The page from its top down: each part takes what it needs.
class Pagina {
 public:
    Pagina(QtPrinter& stampante, const TestiStampaGrafico& testi)
        : stampante_(stampante), testi_(testi), misura_(stampante.Pagina()) {
        alto_ = kMargine;
        basso_ = misura_.height() - kMargine;
        larghezza_ = misura_.width() - 2 * kMargine;
    }

    void Titolo() {
        const QRectF posto = Parte(0.0, 1.0, alto_, kAltoTitolo);
        const double log =
            Scrivi(posto, Qt::AlignRight | Qt::AlignBottom, InQt(testi_.Log), 11.0, false, kTenue);
        Scrivi(posto.adjusted(0.0, 0.0, -log - Pixel(kSpazio), 0.0),
               Qt::AlignLeft | Qt::AlignBottom, InQt(testi_.Titolo), 20.0, true, kInchiostro);
        alto_ += kAltoTitolo + kSpazio / 2;
        Filo(alto_, kGrosso, kInchiostro);
        alto_ += kSpazio / 2;
    }

    /// Session, date, time; circuit, vehicle, drivers; notes. A tall page gives the drivers a row.
    void Sessione() {
        struct Posto {
            int Riga;
            double Da, A;
        };
        constexpr std::array<Posto, 7> kLarghi = {{{0, 0.0, 0.4},
                                                   {0, 0.4, 0.7},
                                                   {0, 0.7, 1.0},
                                                   {1, 0.0, 0.4},
                                                   {1, 0.4, 0.7},
                                                   {1, 0.7, 1.0},
                                                   {2, 0.0, 1.0}}};
        constexpr std::array<Posto, 7> kAlti = {{{0, 0.0, 0.5},
                                                 {0, 0.5, 0.78},
                                                 {0, 0.78, 1.0},
                                                 {1, 0.0, 0.5},
                                                 {1, 0.5, 1.0},
                                                 {2, 0.0, 1.0},
                                                 {3, 0.0, 1.0}}};
        const auto& posti = misura_.width() > misura_.height() ? kLarghi : kAlti;
        for (std::size_t i = 0; i < posti.size(); ++i) {
            Campo(Parte(posti[i].Da, posti[i].A, alto_ + posti[i].Riga * kAltoRiga, kAltoRiga)
                      .adjusted(0.0, 0.0, -Pixel(kSpazio), 0.0),
                  InQt(testi_.Righe[i]));
        }
        alto_ += (posti.back().Riga + 1) * kAltoRiga + kSpazio;
    }

    /// Below the graph, which has what is left.
    void Piede() {
        const QRectF posto = Parte(0.0, 1.0, basso_ - kAltoPiede, kAltoPiede);
        const double data =
            Scrivi(posto, Qt::AlignRight | Qt::AlignBottom,
                   InQt(Testo(Voce::StampatoIl))
                       .arg(QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))),
                   8.0, false, kTenue);
        Scrivi(posto.adjusted(0.0, 0.0, -data - Pixel(kSpazio), 0.0),
               Qt::AlignLeft | Qt::AlignBottom, InQt(testi_.Legenda), 8.0, false, kTenue);
        basso_ -= kAltoPiede;
        Filo(basso_, kFino, kTenue);
        basso_ -= kSpazio / 2;
    }

    void Valori() {
        const auto numero = static_cast<int>(testi_.Valori.size());
        if (numero == 0) return;
        const int colonne = std::max(1, static_cast<int>(larghezza_ / kColonna));
        const int righe = (numero + colonne - 1) / colonne;
        const double titolo = basso_ - (righe + 1) * kAltoValore;
        Scrivi(Parte(0.0, 1.0, titolo, kAltoValore), Qt::AlignLeft | Qt::AlignVCenter,
               InQt(Testo(Voce::ValoriAlCursore)), 9.0, true, kInchiostro);
        for (int n = 0; n < numero; ++n) {
            const double da = static_cast<double>(n / righe) / colonne;
            Valore(
                Parte(da, da + 1.0 / colonne, titolo + (n % righe + 1) * kAltoValore, kAltoValore)
                    .adjusted(0.0, 0.0, -Pixel(2 * kSpazio), 0.0),
                testi_.Valori[static_cast<std::size_t>(n)]);
        }
        basso_ = titolo - kSpazio / 2;
    }

    QRectF Grafico() const { return Parte(0.0, 1.0, alto_, basso_ - alto_); }

 private:
    double Pixel(double cm) const { return stampante_.Rettangolo(0.0, 0.0, cm, 0.0).width(); }
    /// A part of the inner width, 0 to 1.
    QRectF Parte(double da, double a, double alto, double altezza) const {
        return stampante_.Rettangolo(kMargine + da * larghezza_, alto, (a - da) * larghezza_,
                                     altezza);
    }
    void Filo(double y, double spessore, const QColor& colore) {
        const QRectF riga = Parte(0.0, 1.0, y, 0.0);
        stampante_.Penna().fillRect(riga.adjusted(0.0, 0.0, 0.0, spessore), colore);
    }
    /// One line of text; what it takes of the width.
    double Scrivi(const QRectF& posto, Qt::Alignment dove, const QString& testo, double punti,
                  bool grassetto, const QColor& colore) {
        QPainter& penna = stampante_.Penna();
        penna.setFont(QtPrinter::Carattere(punti, grassetto));
        penna.setPen(colore);
        const QFontMetricsF misura(penna.font(), penna.device());
        const QString intero = misura.elidedText(testo, Qt::ElideRight, posto.width());
        penna.drawText(posto, static_cast<int>(dove | Qt::TextSingleLine), intero);
        return misura.horizontalAdvance(intero);
    }
    /// "Label: value", the label lighter.
    void Campo(const QRectF& posto, const QString& riga) {
        const auto taglio = riga.indexOf(QStringLiteral(": ")) + 2;
        const double nome =
            Scrivi(posto, Qt::AlignLeft | Qt::AlignVCenter, riga.left(taglio), 10.0, false, kTenue);
        Scrivi(posto.adjusted(nome, 0.0, 0.0, 0.0), Qt::AlignLeft | Qt::AlignVCenter,
               riga.mid(taglio), 10.0, true, kInchiostro);
    }
    void Valore(const QRectF& posto, const ValoreStampato& valore) {
        const double lato = Pixel(kCampione);
        stampante_.Penna().fillRect(QRectF(posto.left(), posto.center().y() - lato / 2, lato, lato),
                                    InQColor(valore.Tinta));
        const auto dove = Qt::AlignRight | Qt::AlignVCenter;
        const double unita = Pixel(1.1);
        Scrivi(QRectF(posto.right() - unita, posto.top(), unita, posto.height()),
               Qt::AlignLeft | Qt::AlignVCenter, InQt(valore.Unita), 8.0, false, kTenue);
        const QRectF prima = posto.adjusted(2 * lato, 0.0, -unita - Pixel(0.1), 0.0);
        const double largo = Scrivi(prima, dove, InQt(valore.Valore), 10.0, true, kInchiostro);
        Scrivi(prima.adjusted(0.0, 0.0, -largo - Pixel(0.1), 0.0), Qt::AlignLeft | Qt::AlignVCenter,
               InQt(valore.Nome), 9.0, false, kInchiostro);
    }

    QtPrinter& stampante_;
    const TestiStampaGrafico& testi_;
    QSizeF misura_;
    double alto_ = 0.0;
    double basso_ = 0.0;
    double larghezza_ = 0.0;
};

}  // namespace

void StampaControllo(QtPrinter& stampante, const TestiStampaGrafico& testi,
                     const std::function<void(QPainter&, const QRectF&)>& disegna) {
    Pagina pagina(stampante, testi);
    pagina.Titolo();
    pagina.Sessione();
    pagina.Piede();
    pagina.Valori();
    QPainter& penna = stampante.Penna();
    penna.save();
    disegna(penna, pagina.Grafico());
    penna.restore();
    stampante.EndDoc();
}

}  // namespace lapvane
