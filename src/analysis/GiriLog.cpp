#include "analysis/GiriLog.h"

#include <algorithm>

#include "reports/Circuiti.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

constexpr int kCentesimiRiga = 10;  // one row is a tenth of a second

int Indice(int giro) {
    return IndiceChiesto(giro, kGiriMassimi);
}

}  // namespace

void GiriLog::CercaGiri(const TabellaDati& tabella) {
    righe_ = lapvane::CercaGiri(tabella);
}

void GiriLog::Prendi(const FileTim& file) {
    int giro = 2;
    for (const RigaTim& riga : file.Righe) {
        Tempi(giro)[kColonnaTempoGiro] = riga.Tempo;
        TempiSessione_[giro] = riga.Sessione;
        ++giro;
    }
    // The first line, the empty last line and the line index past the end are no laps.
    numRigheTabella_ = file.IndiceFine();
    numGiri_ = numRigheTabella_ - 3;
}

void GiriLog::LeggiSettori(const std::string& circuito) {
    numSettori_ = 1;
    const auto file = LeggiFileSettori(circuito, kNumCanali);
    if (!file) return;
    DistanzeSettori_ = {};
    int s = 0;
    for (const double lunghezza : file->Settori) DistanzeSettori_[s++] = lunghezza;
    numSettori_ = s + 1;
}

int GiriLog::UltimaColonna() const {
    return std::min(numSettori_, kNumCanali - 1);
}

std::int32_t GiriLog::InizioGiro(int giro) const {
    return giro < 0 || giro > kUltimaRiga ? 0 : righe_.Inizio[giro];
}

std::int32_t GiriLog::FineGiro(int giro) const {
    return giro < 0 || giro > kUltimaRiga ? 0 : righe_.Fine[giro];
}

int GiriLog::PrimoGiroValido() const {
    int giro = 1;
    while (giro <= kGiriMassimi && FineGiro(giro) <= 2) ++giro;
    return giro;
}

double GiriLog::NumeroGiro(const TabellaDati& tabella, int giro) const {
    return righe_.Esiste(giro) ? tabella.Valore(kColonnaGiro, Piano::Laterale, InizioGiro(giro))
                               : giro - 1;
}

void GiriLog::Seleziona(int giro) {
    giroSelezionato_ = giro;
    righeGiro_ = FineGiro(giro) - InizioGiro(giro);
}

PerCanale<std::string>& GiriLog::Tempi(int giro) {
    const auto i = static_cast<std::size_t>(giro);
    if (i >= TempiGiro_.size()) TempiGiro_.resize(i + 1);
    return TempiGiro_[i];
}

const std::string& GiriLog::TempoGiro(int giro, int colonna) const {
    static const std::string nessuno;
    return giro < std::ssize(TempiGiro_) ? TempiGiro_.begin()[giro][colonna] : nessuno;
}

std::string GiriLog::GetTempoGiro(int giro) const {
    return TempoGiro(Indice(giro), kColonnaTempoGiro);
}

std::string GiriLog::GetSessioneTempo(int giro) const {
    return TempiSessione_[Indice(giro)];
}

void GiriLog::CalcolaSettoriGiro(int giro, const TabellaDati& tabella) {
    PerCanale<std::string>& tempi = Tempi(Indice(giro));
    for (int c = kColonnaTempoGiro + 1; c < kNumCanali; ++c) tempi[c].clear();
    const std::int32_t ultima = FineGiro(giro);
    std::int32_t confine = InizioGiro(giro);
    double soglia = DistanzeSettori_[0];
    int s = 0;
    const auto scrivi = [&](std::int32_t riga) {
        const int colonna = s + 2;
        if (colonna < kNumCanali)
            tempi[colonna] = CentesimiInTempo((riga - confine) * kCentesimiRiga);
    };
    std::int32_t r = confine;
    for (; r <= ultima; ++r) {
        if (tabella.Valore(kColonnaDistanza, Piano::Laterale, r) < soglia) continue;
        scrivi(r);
        ++s;
        confine = r;
        if (s > numSettori_) break;
        if (s < kNumCanali) soglia += DistanzeSettori_[s];
    }
    // The last sector ends with the lap: its time runs to the end of the last row.
    scrivi(r);
}

GiriLog::Estremi GiriLog::MiglioreEPeggiore(int colonna) const {
    // Kept: times are compared as texts, which their fixed width allows, and a lap of equal time
    // takes no mark from an earlier one.
    Estremi estremi{2, 2};
    for (int r = 3; r <= NumGiri() + 1; ++r) {
        const std::string& tempo = TempoGiro(r, colonna);
        if (tempo < TempoGiro(estremi.Migliore, colonna)) estremi.Migliore = r;
        if (tempo > TempoGiro(estremi.Peggiore, colonna)) estremi.Peggiore = r;
    }
    return estremi;
}

int GiriLog::GiroMigliore() const {
    return NumGiri() < 1 ? 0 : MiglioreEPeggiore(kColonnaTempoGiro).Migliore - 1;
}

int GiriLog::GiroPeggiore() const {
    return NumGiri() < 1 ? 0 : MiglioreEPeggiore(kColonnaTempoGiro).Peggiore - 1;
}

}  // namespace lapvane
