// What leaves the list of runs: rows on the clipboard, a file, paper.
#include <QDate>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>
#include <array>

#include "analysis/compare/dlgCsvConfronto.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/QtPrinter.h"
#include "platform/qt/TestoQt.h"
#include "runs/CsvArchivio.h"
#include "runs/DisegnoModello.h"
#include "runs/DisegnoUscite.h"
#include "runs/frmArchivio.h"
#include "shell/LoadStrings.h"
#include "widgets/MenuUscita.h"
#include "widgets/Stampante.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr double kMargineCarta = 1.0;  // cm
constexpr double kRigaCarta = 17.0;    // 1/96 inch, with letters of 8 points
constexpr double kFraColonne = 8.0;
constexpr double kTitoloCarta = 26.0;
constexpr double kPiedeCarta = 18.0;
constexpr double kPunti = 8.0;
// What is wrong with a run stands in the place of driver and vehicle.
constexpr ColonnaUscite kDaGuaio = ColonnaUscite::Piloti;
constexpr ColonnaUscite kFinoGuaio = ColonnaUscite::Giri;

QString T(Voce voce) {
    return InQt(Testo(voce));
}

/// The columns as they stand on paper.
struct ColonneCarta {
    std::array<double, kColonneUscite> Da{};
    std::array<double, kColonneUscite> Larga{};  ///< 0: left out
};

/// Each as wide as its longest text; the texts of a person give way where the sheet is too narrow.
ColonneCarta DisponiCarta(const DisegnoModello& modello, const QFontMetricsF& metrica, double larga,
                          bool conCircuito) {
    ColonneCarta colonne;
    const auto massima = [&](int c) {
        double suo = metrica.horizontalAdvance(
            modello.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString());
        for (int riga = 0; riga < modello.rowCount(); ++riga) {
            if (modello.TestataA(riga)) continue;
            suo = std::max(suo,
                           metrica.horizontalAdvance(
                               modello.data(modello.index(riga, c), Qt::DisplayRole).toString()));
        }
        return suo + kFraColonne;
    };
    double somma = 0.0;
    double parole = 0.0;
    const auto testo = [](int c) {
        return c >= static_cast<int>(ColonnaUscite::Circuito) &&
               c <= static_cast<int>(ColonnaUscite::Veicolo);
    };
    for (int c = 0; c < kColonneUscite; ++c) {
        if (!conCircuito && c == static_cast<int>(ColonnaUscite::Circuito)) continue;
        const auto i = static_cast<std::size_t>(c);
        colonne.Larga[i] = massima(c);
        somma += colonne.Larga[i];
        if (testo(c)) parole += colonne.Larga[i];
    }
    // What is left over, or lacks, is that of the texts.
    const double fattore = parole > 0.0 ? std::max(0.2, (parole + larga - somma) / parole) : 1.0;
    double x = 0.0;
    for (int c = 0; c < kColonneUscite; ++c) {
        const auto i = static_cast<std::size_t>(c);
        if (testo(c)) colonne.Larga[i] *= fattore;
        colonne.Da[i] = x;
        x += colonne.Larga[i];
    }
    return colonne;
}

/// The painting of the rows on one sheet after the other.
class PitturaCarta {
 public:
    PitturaCarta(QPainter& penna, const DisegnoModello& modello, const ColonneCarta& colonne,
                 const QFont& base)
        : penna_(penna), modello_(modello), colonne_(colonne), corpo_(base), forte_(base) {
        corpo_.setPointSizeF(kPunti);
        forte_.setPointSizeF(kPunti);
        forte_.setWeight(QFont::DemiBold);
    }

    void Testata(const QRectF& riga) {
        penna_.setFont(corpo_);
        penna_.setPen(colori_.Text2);
        for (int c = 0; c < kColonneUscite; ++c) {
            Scrivi(riga, c, modello_.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString());
        }
        FiloBasso(penna_, riga, colori_.Text2);
    }

    void Riga(const QRectF& riga, int quale) {
        const QModelIndex indice = modello_.index(quale, 0);
        if (modello_.TestataA(quale)) {
            Gruppo(riga, indice);
        } else {
            Uscita(riga, indice);
        }
        FiloBasso(penna_, riga, colori_.Grid);
    }

 private:
    void Gruppo(const QRectF& riga, const QModelIndex& indice) {
        penna_.fillRect(riga, colori_.Alt);
        penna_.setFont(forte_);
        penna_.setPen(colori_.Text);
        const QString nome = modello_.data(indice, Qt::DisplayRole).toString();
        penna_.drawText(riga, Qt::AlignVCenter, nome);
        const double largo = QFontMetricsF(forte_).horizontalAdvance(nome) + kFraColonne;
        penna_.setFont(corpo_);
        penna_.setPen(colori_.Text2);
        penna_.drawText(riga.adjusted(largo, 0, 0, 0), Qt::AlignVCenter,
                        modello_.data(indice, RuoloSotto).toString());
    }

    void Uscita(const QRectF& riga, const QModelIndex& indice) {
        const QString guaio = modello_.data(indice, RuoloGuaio).toString();
        const bool primo = modello_.data(indice, RuoloPrimo).toBool();
        for (int c = 0; c < kColonneUscite; ++c) {
            const auto colonna = static_cast<ColonnaUscite>(c);
            if (!guaio.isEmpty() && colonna >= kDaGuaio && colonna < kFinoGuaio) continue;
            const bool forte = primo && colonna == ColonnaUscite::Migliore;
            penna_.setFont(forte ? forte_ : corpo_);
            penna_.setPen(forte ? colori_.Ok : colori_.Text);
            Scrivi(riga, c, modello_.data(indice.siblingAtColumn(c), Qt::DisplayRole).toString());
        }
        if (guaio.isEmpty()) return;
        penna_.setFont(corpo_);
        penna_.setPen(colori_.Text);
        QRectF dove = riga;
        dove.setLeft(riga.left() + colonne_.Da[static_cast<std::size_t>(kDaGuaio)]);
        dove.setRight(riga.left() + colonne_.Da[static_cast<std::size_t>(kFinoGuaio)]);
        penna_.drawText(dove, Qt::AlignVCenter,
                        QFontMetricsF(corpo_).elidedText(QStringLiteral("▲ ") + guaio,
                                                         Qt::ElideRight, dove.width()));
    }

    void Scrivi(const QRectF& riga, int c, const QString& testo) {
        const auto i = static_cast<std::size_t>(c);
        if (colonne_.Larga[i] <= 0.0) return;
        const QRectF cella(riga.left() + colonne_.Da[i], riga.top(),
                           colonne_.Larga[i] - kFraColonne, riga.height());
        const bool cifre = c >= static_cast<int>(ColonnaUscite::Giri);
        penna_.drawText(
            cella, (cifre ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter,
            QFontMetricsF(penna_.font()).elidedText(testo, Qt::ElideRight, cella.width()));
    }

    QPainter& penna_;
    const DisegnoModello& modello_;
    const ColonneCarta& colonne_;
    QFont corpo_;
    QFont forte_;
    const Colori& colori_ = ColoriDi(Tema::Chiaro);
};

}  // namespace

/// The chosen rows as a spreadsheet takes them, with their heading.
void frmArchivio::CopiaRighe() {
    const char decimale = platform().DecimalSeparator();
    RigheTabella righe(1);
    for (int c = 0; c < kColonneUscite; ++c) {
        righe[0].push_back(Testo(TitoloColonna(static_cast<ColonnaUscite>(c))));
    }
    for (const std::filesystem::path& csv : Scelte()) {
        const Uscita* uscita = modello_->UscitaA(modello_->RigaDi(csv));
        if (uscita == nullptr) continue;
        righe.emplace_back();
        for (int c = 0; c < kColonneUscite; ++c) {
            righe.back().push_back(TestoColonna(*uscita, static_cast<ColonnaUscite>(c), decimale));
        }
    }
    CopiaTesto(ConTabulazioni(righe));
}

void frmArchivio::MostraFile() {
    const Uscita* uscita = Corrente();
    if (uscita == nullptr) return;
    const std::filesystem::path cartella = uscita->Csv.parent_path();
    if (!platform().OpenOutside(cartella, {})) {
        Annuncia(T(Voce::ArchivioNonMostrata).arg(PercorsoInQt(cartella)));
    }
}

void frmArchivio::SalvaCsv() {
    dlgCsvConfronto forma(this, Voce::ArchivioCsv);
    if (scelte_.Decimale != 0 && scelte_.Campi != 0) forma.Scegli(scelte_.Decimale, scelte_.Campi);
    if (forma.exec() != QDialog::Accepted) return;
    scelte_.Decimale = forma.Forma().Decimale;
    scelte_.Campi = forma.Forma().Campi;
    const std::filesystem::path proposto =
        archivio_.Cartella() / PercorsoDaQt(T(Voce::VoceArchivio) + QStringLiteral(".csv"));
    const auto scelto = ScegliFile(Voce::ArchivioCsv, "CSV (*.csv)|*.csv", proposto, {".csv"});
    if (!scelto) return;
    ScriviOAvvisa([&] {
        ScriviFile(
            *scelto,
            CsvArchivio(modello_->Uscite(), modello_->Elenco(), scelte_.Decimale, scelte_.Campi),
            Lavoro::ScrivereTabella);
        Annuncia(T(Voce::ArchivioSalvato) + QStringLiteral(": ") + PercorsoInQt(*scelto));
    });
}

void frmArchivio::Stampa() {
    const std::filesystem::path proposto =
        archivio_.Cartella() / PercorsoDaQt(T(Voce::VoceArchivio) + QStringLiteral(".pdf"));
    StampaOAvvisa(Voce::ArchivioStampa, [&] {
        const auto stampante =
            ScegliStampante(Testo(Voce::ArchivioStampa), proposto, QPageLayout::Landscape);
        if (stampante) DisegnaPagine(*stampante);
    });
}

/// The list as shown, on as many sheets as it takes.
void frmArchivio::DisegnaPagine(QtPrinter& stampante) const {
    const QSizeF pagina = stampante.Pagina();
    const QRectF foglio =
        stampante.Rettangolo(kMargineCarta, kMargineCarta, pagina.width() - 2 * kMargineCarta,
                             pagina.height() - 2 * kMargineCarta);
    QFont corpo = font();
    corpo.setPointSizeF(kPunti);
    const bool conCircuito = modello_->Elenco().Gruppo() != GruppoPer::Circuito;
    stampante.NewPage();
    const ColonneCarta colonne = DisponiCarta(
        *modello_, QFontMetricsF(corpo, stampante.Penna().device()), foglio.width(), conCircuito);
    PitturaCarta pittura(stampante.Penna(), *modello_, colonne, font());
    const double sopra = foglio.top() + kTitoloCarta + kRigaCarta;
    const int perPagina =
        std::max(1, static_cast<int>((foglio.bottom() - kPiedeCarta - sopra) / kRigaCarta));
    const int pagine = std::max(1, (modello_->rowCount() + perPagina - 1) / perPagina);
    QFont titolo = corpo;
    titolo.setPointSizeF(kPunti + 3);
    titolo.setWeight(QFont::DemiBold);
    for (int p = 0; p < pagine; ++p) {
        if (p > 0) stampante.NewPage();
        QPainter& penna = stampante.Penna();
        const Colori& colori = ColoriDi(Tema::Chiaro);
        penna.setFont(titolo);
        penna.setPen(colori.Text);
        penna.drawText(foglio, Qt::AlignLeft | Qt::AlignTop, T(Voce::VoceArchivio));
        penna.setFont(corpo);
        penna.setPen(colori.Text2);
        penna.drawText(foglio, Qt::AlignRight | Qt::AlignTop, DettoDellaPagina());
        penna.drawText(foglio, Qt::AlignRight | Qt::AlignBottom,
                       T(Voce::ArchivioPagina).arg(p + 1).arg(pagine));
        QRectF riga(foglio.left(), foglio.top() + kTitoloCarta, foglio.width(), kRigaCarta);
        pittura.Testata(riga);
        const int fine = std::min(modello_->rowCount(), (p + 1) * perPagina);
        for (int r = p * perPagina; r < fine; ++r) {
            riga.translate(0, kRigaCarta);
            pittura.Riga(riga, r);
        }
    }
    stampante.EndDoc();
}

/// Folder, search, number of runs and the day of the print.
QString frmArchivio::DettoDellaPagina() const {
    QStringList parti;
    parti << T(Voce::ArchivioSottocartelle).arg(PercorsoInQt(archivio_.Cartella()));
    const QString cercato = txtCerca_->text().simplified();
    if (!cercato.isEmpty()) parti << QLatin1Char('"') + cercato + QLatin1Char('"');
    parti << lblConto_->text();
    const QDate oggi = QDate::currentDate();
    parti << InQt(TestoGiorno(oggi.year() * 10000 + oggi.month() * 100 + oggi.day()));
    return parti.join(QStringLiteral("  ·  "));
}

}  // namespace lapvane
