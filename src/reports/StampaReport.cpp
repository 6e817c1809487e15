#include "reports/StampaReport.h"

#include <algorithm>
#include <array>
#include <utility>

#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr int kGiriPagina = 80;
constexpr int kGiriGruppo = 40;
constexpr double kSinistra = 1.0;  // of both frames, as the next
constexpr double kDestra = 19.0;
constexpr double kLarghezza = 21.0;  // of the page that the positions are meant for
constexpr double kAltezza = 29.7;
constexpr double kSottoTitoli = 6.55;
constexpr double kPiede = 28.3;
constexpr double kNumeroPagina = 16.5;
constexpr double kDistacco = 0.15;  // between a text and what stands right of it

/// Columns of one group and where the group ends.
struct Gruppo {
    std::array<double, 4> X;
    double Fine;
};
constexpr std::array<Gruppo, 2> kGruppi = {
    {{{1.5, 3.0, 4.5, 7.0}, 10.5}, {{10.5, 12.0, 13.5, 16.0}, kDestra}}};

void Cornice(Printer& stampante, double alto, double basso) {
    stampante.Line(kSinistra, alto, kDestra, alto);
    stampante.Line(kDestra, alto, kDestra, basso);
    stampante.Line(kDestra, basso, kSinistra, basso);
    stampante.Line(kSinistra, basso, kSinistra, alto);
}

/// The text in one line: each line break becomes `invece`.
std::string InUnaRiga(const std::string& testo, const char* invece) {
    std::string riga;
    for (std::size_t i = 0; i < testo.size(); ++i) {
        if (testo[i] != '\r' && testo[i] != '\n') {
            riga += testo[i];
            continue;
        }
        riga += invece;
        if (testo[i] == '\r' && i + 1 < testo.size() && testo[i + 1] == '\n') ++i;
    }
    return riga;
}

void StampaSessione(Printer& stampante) {
    constexpr double kMeta = 9.0;
    const auto riga = [&](double x, double y, double fine, Voce testo, const std::string& valore) {
        stampante.Text(x, y, fine - kDistacco, Testo(testo) + valore);
    };
    riga(1.5, 1.5, kDestra, Voce::StampaSessione, DatiSessione.Sessione);
    riga(1.5, 2.0, kMeta, Voce::StampaData, DatiSessione.DataSessione);
    riga(kMeta, 2.0, kDestra, Voce::StampaOra, DatiSessione.OraSessione);
    riga(1.5, 2.5, kMeta, Voce::StampaCircuito, DatiSessione.Circuito);
    riga(kMeta, 2.5, kDestra, Voce::StampaVettura, DatiProgetto.Veicolo);
    riga(1.5, 3.0, kDestra, Voce::StampaPiloti, InUnaRiga(DatiSessione.Piloti, ", "));
    riga(1.5, 3.5, kDestra, Voce::StampaNote, InUnaRiga(DatiSessione.NoteSessione, " "));
}

std::string NumeroDiPagina(int pagina, int tutte) {
    std::string testo = Testo(Voce::ArchivioPagina);
    for (const auto& [segno, numero] : {std::pair{"%1", pagina}, {"%2", tutte}}) {
        const std::size_t dove = testo.find(segno);
        if (dove != std::string::npos) testo.replace(dove, 2, TestoNumero(numero));
    }
    return testo;
}

void StampaRiga(Printer& stampante, const Gruppo& gruppo, double y, const RigaReport& riga) {
    const std::array<const std::string*, 4> testi = {&riga.Sessione, &riga.Giro, &riga.Tempo,
                                                     &riga.Velocita};
    for (std::size_t c = 0; c < testi.size(); ++c) {
        const double fine = c + 1 < gruppo.X.size() ? gruppo.X[c + 1] : gruppo.Fine;
        stampante.Text(gruppo.X[c], y, fine - kDistacco, *testi[c]);
    }
}

}  // namespace

std::string TitoloVelocita() {
    // Kept: the unit is part of the report, whatever unit the project uses.
    return Testo(Voce::Velocita) + " (Km/h)";
}

void StampaReport(Printer& stampante, const std::vector<RigaReport>& giri,
                  const std::string& piede) {
    const RigaReport titoli{Testo(Voce::Sessione), Testo(Voce::Giro), Testo(Voce::Tempo),
                            TitoloVelocita()};
    const int numGiri = static_cast<int>(giri.size());
    const int tutte = (numGiri + kGiriPagina - 1) / kGiriPagina;
    stampante.Sheet(kLarghezza, kAltezza);
    int pagine = 0;
    int giriPagina = std::min(numGiri, kGiriPagina);
    while (giriPagina > 0) {
        stampante.FontSize(10.0);
        Cornice(stampante, 1.0, 5.0);
        StampaSessione(stampante);
        Cornice(stampante, 5.5, 28.0);
        stampante.FontSize(9.0);
        stampante.FontBold(true);
        for (const Gruppo& gruppo : kGruppi) StampaRiga(stampante, gruppo, 6.0, titoli);
        stampante.FontBold(false);
        for (const Gruppo& gruppo : kGruppi) {
            stampante.Line(gruppo.X[0], kSottoTitoli, gruppo.Fine - 0.5, kSottoTitoli);
        }
        // Kept: the last lap of each page stays out.
        for (int k = 1; k < giriPagina; ++k) {
            const bool primo = k <= kGiriGruppo;
            const double y = 0.5 * (primo ? k : k - kGiriGruppo) + 6.5;
            StampaRiga(stampante, kGruppi[primo ? 0 : 1], y,
                       giri[static_cast<std::size_t>(kGiriPagina * pagine + k - 1)]);
        }
        stampante.FontSize(8.0);
        stampante.Text(kSinistra, kPiede, kNumeroPagina - kDistacco, piede);
        stampante.Text(kNumeroPagina, kPiede, kDestra - kDistacco,
                       NumeroDiPagina(pagine + 1, tutte));
        stampante.NewPage();
        ++pagine;
        giriPagina = std::min(numGiri - kGiriPagina * pagine, kGiriPagina);
    }
    stampante.EndDoc();
}

}  // namespace lapvane
