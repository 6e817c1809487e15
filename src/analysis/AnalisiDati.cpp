#include "analysis/AnalisiDati.h"

#include <algorithm>

#include "analysis/FileMancante.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

namespace {

constexpr std::size_t kByteMassimi = 1 << 20;  // of a file that a person can look through

std::string TestoMisura(double valore) {
    return TestoNumero(valore, platform().DecimalSeparator());
}

}  // namespace

AnalisiDati::AnalisiDati(VistaAnalisi& vista, GraphControl& ntGraph1, GraphControl& ntGraphAll)
    : parti_{vista, *this},
      NTGraph1_(ntGraph1, parti_),
      NTGraphAll_(ntGraphAll, parti_),
      mappa_(vista),
      cursore_(parti_, mappa_),
      scorriCanali_(NTGraph1_, parti_, cursore_),
      scorriAllarmi_(NTGraphAll_, parti_, cursore_),
      elencoGiri_(parti_) {}

// --- load and life -------------------------------------------------------------------------------

bool AnalisiDati::Carica(const std::filesystem::path& nomeFileDati) {
    nomeFileDati_ = nomeFileDati;
    Ripara(nomeFileDati_);
    return CaricaLog();
}

void AnalisiDati::IniziaCaricamento() {
    parti_.Vista.SelezionaScheda(0);
    mappa_.Azzera();
    parti_.Finestra.RiportaDecimazione();
    MostraLettura(Voce::LetturaFileDati);
}

void AnalisiDati::MostraLettura(Voce testo) {
    principale().TestoPannello(Pannello::Percorso, Testo(testo));
    principale().TestoPannello(Pannello::Progresso, Testo(Voce::CaricamentoDati));
}

void AnalisiDati::MostraAvanzamento(const std::string& percento) {
    principale().TestoPannello(Pannello::Progresso, Testo(Voce::CaricamentoDati) + percento + " %");
}

bool AnalisiDati::Interrotto() {
    ImpostaFileLatiTrovati(false);
    ChiudiAnalisi();
    return false;
}

void AnalisiDati::LeggiTempi() {
    parti_.Giri.UnSettore();
    const std::filesystem::path percorso = SenzaFine(nomeFileDati_, 4, ".tim");
    std::string testo;
    try {
        if (!FileEsiste(percorso)) {
            FileMancante(TestoDaPercorso(percorso));
            return;
        }
        testo = LeggiFile(percorso, Lavoro::LeggereTempi, kByteMassimi);
    } catch (const ErroreRuntime&) {
        FileMancante(TestoDaPercorso(percorso));  // its text says "or cannot be accessed" as well
        return;
    }
    const FileTim file = LeggiFileTim(testo);
    PrimaRigaTempi(file.PrimaRiga);
    if (file.TroppiGiri) {
        platform().MsgBox(Testo(Voce::TroppiGiri), Buttons::Ok, Icon::Information,
                          platform().ExeName());
    }
    parti_.Giri.Prendi(file);
}

void AnalisiDati::MostraCanali() {
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        parti_.Vista.ColoreCanale(c, parti_.Canali[c].ColoreCanale);
        parti_.Vista.MostraCanale(c, c <= NumCampi());
        parti_.Vista.SegnaCanale(c, parti_.Canali[c].chkGrafico);
    }
    principale().TestoPannello(Pannello::Percorso, {});
    principale().TestoPannello(Pannello::Progresso, Testo(Voce::DatiCaricati));
    MostraNomiSchede();
}

void AnalisiDati::ImpostaCanali() {
    GraphControl& grafico = NTGraph1_.Controllo();
    grafico.Titolo({});
    grafico.EtichettaX({});
    grafico.EtichettaY({});
    grafico.PulisciGrafico();
    parti_.Giri.CercaGiri(Tabella());
    if (ultimaScheda_ == 0) {
        parti_.Canali.Nomina([this](int c) { return TitoloColonna(c); });
        for (int c = 1; c <= parti_.Canali.Ultimo(); ++c) {
            parti_.Vista.NomeCampo(c, parti_.Canali[c].NomeCampo);
            parti_.Vista.UnitaCampo(c, parti_.Canali[c].UnitaCampo);
        }
    }
    principale().TestoPannello(Pannello::Progetto, {});
    principale().TestoPannello(Pannello::Percorso, TestoDaPercorso(nomeFileDati_));
    principale().TestoPannello(Pannello::Progresso, {});
}

void AnalisiDati::ConcludiCaricamento() {
    sessione_.LeggiDatiSessione(nomeFileDati_, parti_.Canali);
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        parti_.Vista.ColoreCanale(c, parti_.Canali[c].ColoreCanale);
    }
    if (!DatiSessione.Circuito.empty()) parti_.Giri.LeggiSettori(DatiSessione.Circuito);
    CompilaTabellaGiri();
    NTGraphAll_.Prepara();
    NTGraphAll_.Disegna();
    AnalisiCaricata = true;
    SelezionaPrimoGiro();
}

void AnalisiDati::RefreshLanguage() {
    CalcolaBaseTesti();
    parti_.Canali.RefreshLanguage();
    for (int c = 1; c <= kUltimoNomeInTabella; ++c) {
        parti_.Vista.NomeCampo(c, parti_.Canali[c].NomeCampo);
    }
    MostraNomiSchede();
}

void AnalisiDati::MostraNomiSchede() {
    const std::string giro = giroScelto_ ? elencoGiri_.EtichettaGiro() : std::string();
    parti_.Vista.TestoScheda(0, Testo(Voce::Grafici) + giro);
    parti_.Vista.TestoScheda(1, Testo(Voce::Allarmi) + giro);
}

void AnalisiDati::ChiudiAnalisi() {
    AnalisiCaricata = false;
    principale().TestoPannello(Pannello::Progetto, DatiProgetto.NomeProgetto);
    principale().TestoPannello(Pannello::Percorso, TestoDaPercorso(PercorsoProgetto));
    principale().TestoPannello(Pannello::Progresso, {});
    parti_.Vista.Scarica();
}

void AnalisiDati::Form_Unload() {
    scorriCanali_.Abbandona();
    scorriAllarmi_.Abbandona();
    if (fileLatiTrovati_) {
        SalvaDatiSessione();
        NTGraph1_.Controllo().PulisciGrafico();
        NTGraphAll_.Controllo().PulisciGrafico();
    }
    AnalisiCaricata = false;
    AnalisiInCorso = false;
}

// --- what is asked of it -------------------------------------------------------------------------

std::string AnalisiDati::NumRigheTesto() const {
    return TestoNumero(numRighe_);
}

std::string AnalisiDati::GetMinVal(int c) const {
    return TestoMisura(parti_.Canali.Di(c).MinCanale);
}

std::string AnalisiDati::GetMaxVal(int c) const {
    return TestoMisura(parti_.Canali.Di(c).MaxCanale);
}

std::string AnalisiDati::GetMediaVal(int c) const {
    return TestoMisura(parti_.Canali.Di(c).MediaCanale);
}

std::string AnalisiDati::GetNomeMisura(int c) const {
    return parti_.Canali.TitoloCanale(IndiceChiesto(c, kUltimoCanale));
}

std::string AnalisiDati::GetSessioneTempo(int giro) const {
    return parti_.Giri.GetSessioneTempo(giro);
}

std::string AnalisiDati::GetVelocitaGiro(int giro) const {
    return VelocitaGiro(GetTempoGiro(giro));
}

// --- laps ----------------------------------------------------------------------------------------

void AnalisiDati::CompilaTabellaGiri() {
    if (NumGiri() >= 1) {
        elencoGiri_.Compila();
        return;
    }
    // The whole session counts as one lap.
    parti_.Vista.MostraGriglia(false);
    parti_.Giri.Seleziona(2);
    MostraControlli(true);
    CalcolaScale();
    Ridisegna();
}

void AnalisiDati::MSFlexGrid1_Click(int riga, int colonna) {
    // The last row of a full table lies past the last lap index, and has rows of the log all the
    // same.
    if (riga < 1 || riga > std::max(kGiriMassimi, parti_.Giri.NumRigheTabella() - 1)) return;
    // Kept: only the column of the lap times selects a lap.
    if (colonna == kColonnaTempoGiro) SelezionaGiro(riga);
    elencoGiri_.EvidenziaTempi();
}

void AnalisiDati::SelezionaGiro(int giro) {
    elencoGiri_.TogliScelta();
    parti_.Giri.Seleziona(giro);
    giroScelto_ = true;
    MostraNomiSchede();
    elencoGiri_.MostraScelta();
    const bool haRighe = parti_.Giri.RigheGiro() >= 1;
    MostraControlli(haRighe);
    if (!haRighe) return;
    CalcolaScale();
    NTGraph1_.RinnovaScala();  // the channel's factor is another one in each lap
    Ridisegna();
}

void AnalisiDati::SelezionaPrimoGiro() {
    const int giro = parti_.Giri.PrimoGiroValido();
    if (giro > kGiriMassimi) return;  // no stretch has rows: a window without curves
    parti_.Vista.CellaCorrente(giro, kColonnaTempoGiro);
    MSFlexGrid1_Click(giro, kColonnaTempoGiro);
}

void AnalisiDati::MostraControlli(bool visibile) {
    parti_.Vista.MostraControlli(visibile);
    if (mappa_.TracciatoVisibile()) parti_.Vista.MostraMappa(visibile);
}

void AnalisiDati::RicompilaTabella() {
    elencoGiri_.Svuota();
    parti_.Vista.CellaCorrente(1, 1);
    parti_.Giri.LeggiSettori(DatiSessione.Circuito);
    CompilaTabellaGiri();
    if (mappa_.TracciatoVisibile()) mappa_.Carica();  // another circuit has another map, or none
    if (NumGiri() < 1) {
        SelezionaPrimoGiro();  // the table knows of no lap, and the log has its one stretch
        return;
    }
    // The lap that is drawn stays the chosen one.
    elencoGiri_.MostraScelta();
    elencoGiri_.EvidenziaTempi();
}

bool AnalisiDati::CiSonoGiri() const {
    if (NumGiri() >= 1) return true;
    platform().MsgBox(Testo(Voce::NessunGiroCompleto), Buttons::Ok, Icon::Information,
                      platform().ExeName());
    return false;
}

}  // namespace lapvane
