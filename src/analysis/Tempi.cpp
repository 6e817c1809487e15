#include "analysis/AnalisiDati.h"
#include "platform/ErroreRuntime.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "shell/FileTesto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kByteMassimi = 1 << 20;  // of a file that a person can look through

}  // namespace

fs::path SenzaFine(const fs::path& percorso, std::size_t meno, std::string_view fine) {
    fs::path::string_type testo = percorso.native();
    testo.resize(testo.size() - std::min(meno, testo.size()));
    return testo + fs::path(fine).native();
}

void AnalisiDati::LeggiTempi() {
    const fs::path percorso = SenzaFine(NomeFileDati, 4, ".tim");
    std::string testo;
    try {
        if (!FileEsiste(percorso)) {
            FileMancante(TestoDaPercorso(percorso));
            return;
        }
        testo = LeggiFile(percorso, "reading the lap times", kByteMassimi);
    } catch (const ErroreRuntime&) {
        FileMancante(TestoDaPercorso(percorso));  // its text says "or cannot be accessed" as well
        return;
    }
    const FileTim file = LeggiFileTim(testo);
    PrimaRigaTempi(file.PrimaRiga);
    for (std::size_t i = 0; i < file.Righe.size(); ++i) {
        TempiGiro[i + 2][1] = file.Righe[i].Tempo;
        TempiSessione[i + 2] = file.Righe[i].Sessione;
    }
    // The first line, the empty last line and the line index past the end are no laps.
    NumRigheTabella = file.IndiceFine();
    NumGiri = NumRigheTabella - 3;
}

void AnalisiDati::LeggiSettori() {
    NumSettori = 1;
    const fs::path percorso =
        platform().AppPath() / "tracks" / PercorsoDaTesto(DatiSessione.Circuito + ".sec");
    std::string testo;
    try {
        if (!FileEsiste(percorso)) return;
        testo = LeggiFile(percorso, "reading the sectors", kByteMassimi);
    } catch (const ErroreRuntime&) {
        return;  // a division that cannot be read is as good as none
    }
    DistanzeSettori.fill(0.0);
    LettoreRighe righe(testo);
    righe.Prossima();  // length of the track
    std::size_t numero = 0;
    while (!righe.Fine() && numero < DistanzeSettori.size()) {
        const std::string_view riga = righe.Prossima();
        const double lunghezza = CampoNumerico(riga.data(), riga.data() + riga.size());
        if (lunghezza == 0.0) break;  // the end of the list
        DistanzeSettori[numero++] = lunghezza;
    }
    NumSettori = static_cast<int>(numero) + 1;
}

void AnalisiDati::LeggiDatiSessione() {
    NomeFileSessione = SenzaFine(NomeFileDati, 3, "ses");
    DatiSessione = {};
    DatiProgetto.Veicolo.clear();
    std::string testo;
    try {
        if (!FileEsiste(NomeFileSessione)) return;
        testo = LeggiFile(NomeFileSessione, "reading the session", kByteMassimi);
    } catch (const ErroreRuntime&) {
        return;
    }
    LettoreRighe righe(testo);
    const auto prossima = [&] {
        if (righe.Fine()) {
            throw ErroreRuntime(NumeroErrore::InputPastEnd, "reading the session", NomeFileSessione,
                                righe.Numero() + 1);
        }
        return righe.Prossima();
    };
    const auto valore = [&] {
        const std::string_view riga = prossima();
        const std::size_t uguale = riga.find('=');  // the key is not looked at
        return std::string(
            Rifila(uguale == std::string_view::npos ? riga : riga.substr(uguale + 1)));
    };
    DatiSessione.Sessione = valore();
    DatiSessione.DataSessione = valore();
    DatiSessione.OraSessione = valore();
    DatiSessione.Circuito = valore();
    DatiSessione.LunghTracciato = valore();
    DatiProgetto.Veicolo = valore();  // Kept: the project's vehicle, not the session's
    DatiSessione.Piloti = valore();
    DatiSessione.NoteSessione = valore();
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) LeggiCanaleSessione(c, prossima());
}

void AnalisiDati::LeggiCanaleSessione(int c, std::string_view riga) {
    const auto i = static_cast<std::size_t>(c);
    std::array<std::string_view, 6> campi;
    for (std::size_t f = 0; f < campi.size(); ++f) {
        const std::size_t fine =
            f + 1 == campi.size() ? riga.size() : std::min(riga.find(';'), riga.size());
        campi[f] = riga.substr(0, fine);
        riga.remove_prefix(std::min(fine + 1, riga.size()));
    }
    // The first field, a caption, is dropped. A field that is no number leaves what the channel
    // has.
    if (const auto filtro = LeggiInt16(campi[1])) FiltroCanale[i] = *filtro;
    if (const auto colore = LeggiInt32(campi[2])) {
        ColoreCanale[i] = static_cast<Colore>(*colore) & 0xFFFFFFu;
        vista_.ColoreCanale(c, ColoreCanale[i]);
    }
    if (const auto spessore = LeggiInt16(campi[3])) SpessoreCanale[i] = *spessore;
    if (const auto minimo = LeggiNumero(campi[4])) MinCanale[i] = *minimo;
    if (const auto massimo = LeggiNumero(campi[5])) MaxCanale[i] = *massimo;
}

}  // namespace lapvane
