#include "analysis/AnalisiDatiFoglio.h"

#include <new>
#include <system_error>

#include "analysis/LettoreDati.h"
#include "analysis/Statistiche.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"

namespace lapvane {

namespace fs = std::filesystem;

bool AnalisiDatiFoglio::Carica() {
    const PuntatoreOccupato occupato;
    IniziaCaricamento();
    CaricaFoglio(Piano::Dati, NomeFileDati);
    NumRighe = tabella_.NumeroRighe();
    NumRigheTesto = TestoNumero(NumRighe);
    NumCampi = tabella_.NumeroColonne(Piano::Dati);
    MostraCanali();
    if (!CercaFileLaterale()) return false;
    principale().TestoPannello(Pannello::Percorso, Testo(301));
    principale().TestoPannello(Pannello::Progresso, Testo(141));
    CaricaFoglio(Piano::Laterale, SenzaFine(NomeFileDati, 4, ".txt"));
    NumSettori = 1;
    LeggiTempi();
    ImpostaCanali(NTGraph1);
    ConcludiCaricamento();
    return true;
}

void AnalisiDatiFoglio::CaricaFoglio(Piano piano, const fs::path& percorso) {
    try {
        tabella_.CaricaFile(piano, LeggiLog(percorso), [](int percento) {
            MostraAvanzamento(TestoNumeroConSpazio(percento));
        });
    } catch (const std::bad_alloc&) {
        tabella_.CaricaFile(piano, {}, {});
    }
}

bool AnalisiDatiFoglio::CercaFileLaterale() {
    // Kept: the test asks for any entry of the current folder at all, not for the side file, so
    // that a missing side file is not noticed here; the overview stays empty then.
    FileLatiTrovati = true;
    std::error_code errore;
    if (!fs::is_empty(platform().CurDir(), errore) && !errore) return true;
    FileMancante({});
    FileLatiTrovati = false;
    constexpr const char* kSoloEstensione = ".alm";
    if (fs::exists(platform().CurDir() / kSoloEstensione, errore)) return true;
    FileMancante(kSoloEstensione);
    ChiudiAnalisi();
    return false;
}

RigheGiri AnalisiDatiFoglio::TrovaGiri() const {
    return CercaGiriColonna(tabella_.Colonna(kColonnaGiro, Piano::Laterale), tabella_.PrimaRiga());
}

double AnalisiDatiFoglio::MassimoCanale(int c, std::int32_t da, std::int32_t a) const {
    return MassimoCelle(tabella_.Righe(c, Piano::Dati, da, a));
}

double AnalisiDatiFoglio::MinimoCanale(int c, std::int32_t da, std::int32_t a) const {
    return MinimoCelle(tabella_.Righe(c, Piano::Dati, da, a));
}

double AnalisiDatiFoglio::MediaDelCanale(int c, std::int32_t da, std::int32_t a) const {
    const auto celle = tabella_.Righe(c, Piano::Dati, da, a);
    return MediaColonna(celle, static_cast<double>(celle.size()));
}

void AnalisiDatiFoglio::DisegnaElemento(GraphControl& grafico, int c, double scala, int passo) {
    const auto i = static_cast<std::size_t>(c);
    grafico.DisegnaArray(tabella_.Righe(ColonnaX(), Piano::Dati, RigaDa, RigaA),
                         tabella_.Righe(c, Piano::Dati, RigaDa, RigaA), ElementoCanale[i][0], scala,
                         passo, {MinCanale[i], MaxCanale[i], MediaCanale[i]});
}

void AnalisiDatiFoglio::DisegnaAllarme(GraphControl& grafico, int c, int passo) {
    grafico.DisegnaArray(tabella_.Righe(ColonnaX(), Piano::Laterale, RigaDa, RigaA),
                         tabella_.Righe(c, Piano::Laterale, RigaDa, RigaA),
                         ElementoCanale[static_cast<std::size_t>(c)][1], 1.0, passo, {});
}

}  // namespace lapvane
