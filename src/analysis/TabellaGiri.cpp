#include <algorithm>
#include <string>

#include "analysis/AnalisiDati.h"
#include "platform/FileTesto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

constexpr int kUltimaColonna = kNumCanali - 1;  // of the lap table
constexpr int kCentesimiRiga = 10;              // one row is a tenth of a second
constexpr Colore kBianco = Rgb(255, 255, 255);
constexpr Colore kNero = Rgb(0, 0, 0);
constexpr Colore kVerde = Rgb(0, 255, 0);
constexpr Colore kRosso = Rgb(255, 0, 0);
constexpr Colore kBlu = Rgb(0, 0, 255);

}  // namespace

std::int32_t AnalisiDati::InizioGiro(int giro) const {
    return giro < 0 || giro > kUltimaRiga ? 0 : RigheDeiGiri.Inizio[static_cast<std::size_t>(giro)];
}

std::int32_t AnalisiDati::FineGiro(int giro) const {
    return giro < 0 || giro > kUltimaRiga ? 0 : RigheDeiGiri.Fine[static_cast<std::size_t>(giro)];
}

int AnalisiDati::PrimoGiroValido() const {
    int giro = 1;
    while (giro <= kGiriMassimi && FineGiro(giro) <= 2) ++giro;
    return giro;
}

void AnalisiDati::CompilaTabellaGiri() {
    if (NumGiri < 1) {
        vista_.MostraGriglia(false);
        RigheGiro = FineGiro(2) - InizioGiro(2);
        GiroSelezionato = 2;
        MostraControlli(true);
        CalcolaScale(NTGraph1);
        Ridisegna();
        return;
    }
    vista_.MostraGriglia(true);
    vista_.RigheGriglia(NumRigheTabella);
    vista_.Cella(0, 1, Testo(Voce::ColonnaTempoGiro));
    vista_.LarghezzaColonna(1, 1100);
    const int ultimoSettore = std::min(NumSettori, kUltimaColonna);
    for (int c = 2; c <= ultimoSettore; ++c)
        vista_.Cella(0, c, Testo(Voce::ColonnaSettore) + TestoNumero(c - 1));
    for (int c = 2; c <= kUltimaColonna; ++c) vista_.LarghezzaColonna(c, 850);
    vista_.Cella(1, 0, "Start");
    int r = 2;
    for (; r <= NumRigheTabella - 2; ++r) {
        const auto& tempi = TempiGiro[static_cast<std::size_t>(r)];
        if (InizioGiro(r) == FineGiro(r)) {
            // The instrument timed the lap, and the log has no rows of it.
            vista_.Cella(r, 0, Testo(Voce::RigaGiro) + TestoNumero(r - 1));
            vista_.Cella(r, 1, tempi[1]);
            continue;
        }
        CalcolaSettoriGiro(r);
        vista_.Cella(r, 0,
                     Testo(Voce::RigaGiro) + TestoNumero(Tabella().Valore(
                                                 kColonnaGiro, Piano::Laterale, InizioGiro(r))));
        for (int c = 1; c <= ultimoSettore; ++c)
            vista_.Cella(r, c, tempi[static_cast<std::size_t>(c)]);
    }
    vista_.Cella(r, 0, "End");
    EvidenziaTempi();
}

void AnalisiDati::CalcolaSettoriGiro(int giro) {
    auto& tempi = TempiGiro.at(static_cast<std::size_t>(giro));
    std::fill(tempi.begin() + 2, tempi.end(), std::string());
    const std::int32_t ultima = FineGiro(giro);
    std::int32_t confine = InizioGiro(giro);
    double soglia = DistanzeSettori[0];
    int s = 0;
    const auto scrivi = [&](std::int32_t riga) {
        const std::size_t colonna = static_cast<std::size_t>(s) + 2;
        if (colonna >= tempi.size()) return;
        tempi[colonna] = CentesimiInTempo((riga - confine) * kCentesimiRiga);
    };
    std::int32_t r = confine;
    for (; r <= ultima; ++r) {
        if (Tabella().Valore(kColonnaDistanza, Piano::Laterale, r) < soglia) continue;
        scrivi(r);
        ++s;
        confine = r;
        if (s > NumSettori) break;
        if (s < kNumCanali) soglia += DistanzeSettori[static_cast<std::size_t>(s)];
    }
    // The last sector ends with the lap: its time runs to the end of the last row.
    scrivi(r);
}

void AnalisiDati::EvidenziaTempi() {
    if (NumGiri < 1) return;
    for (int c = 1; c <= std::min(NumSettori, kUltimaColonna); ++c) {
        const auto colonna = static_cast<std::size_t>(c);
        // Kept: times are compared as texts, which their fixed width allows, and a lap of equal
        // time takes no mark from an earlier one.
        int migliore = 2;
        int peggiore = 2;
        for (int r = 2; r <= NumGiri + 1; ++r) {
            const std::string& tempo = TempiGiro[static_cast<std::size_t>(r)][colonna];
            vista_.Cella(r, c, tempo);
            if (tempo < TempiGiro[static_cast<std::size_t>(migliore)][colonna]) migliore = r;
            if (tempo > TempiGiro[static_cast<std::size_t>(peggiore)][colonna]) peggiore = r;
        }
        vista_.SfondoCella(migliore, c, kVerde);
        vista_.SfondoCella(peggiore, c, kRosso);
        if (c == 1) {
            GiroPeggiore = peggiore - 1;
            GiroMigliore = migliore - 1;
        }
    }
}

void AnalisiDati::ColoraRiga(int riga, Colore sfondo, Colore caratteri) {
    for (int c = 2; c <= kUltimaColonna; ++c) {
        vista_.SfondoCella(riga, c, sfondo);
        vista_.CaratteriCella(riga, c, caratteri);
    }
}

void AnalisiDati::ColoraGiroSelezionato() {
    ColoraRiga(GiroSelezionato, kBlu, kBianco);
    vista_.SegnaGiro(GiroSelezionato);
}

void AnalisiDati::SvuotaTabella(int riga) {
    if (riga > 0) ColoraRiga(riga, kBianco, kNero);
    for (int c = 2; c <= kUltimaColonna; ++c) vista_.Cella(riga, c, {});
}

std::string AnalisiDati::EtichettaGiro(int giro) const {
    // A lap that the log has no rows of is called as its row of the table is.
    const double numero = RigheDeiGiri.Esiste(giro)
                              ? Tabella().Valore(kColonnaGiro, Piano::Laterale, InizioGiro(giro))
                              : giro - 1;
    return " " + Testo(Voce::Giro) + " " + TestoNumero(numero);
}

std::string AnalisiDati::NomeGiro() const {
    std::string nome = EtichettaGiro(GiroSelezionato).substr(1);
    const bool completo = GiroSelezionato >= 2 && GiroSelezionato <= NumGiri + 1;
    if (completo) nome += " - " + GetTempoGiro(GiroSelezionato);
    return nome;
}

void AnalisiDati::MSFlexGrid1_Click(int riga, int colonna) {
    // The last row of a full table lies past the last lap index, and has rows of the log all the
    // same.
    if (riga < 1 || riga > std::max(kGiriMassimi, NumRigheTabella - 1)) return;
    // Kept: only the column of the lap times selects a lap.
    if (colonna == 1) {
        if (GiroSelezionato >= 1) ColoraRiga(GiroSelezionato, kBianco, kNero);
        RigheGiro = FineGiro(riga) - InizioGiro(riga);
        GiroSelezionato = riga;
        giroScelto_ = true;
        MostraNomiSchede();
        ColoraGiroSelezionato();
        if (RigheGiro < 1) {
            MostraControlli(false);
        } else {
            MostraControlli(true);
            CalcolaScale(NTGraph1);
            RinnovaScala();  // the channel's factor is another one in each lap
            Ridisegna();
        }
    }
    EvidenziaTempi();
}

}  // namespace lapvane
