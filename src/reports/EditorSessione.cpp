#include "reports/EditorSessione.h"

#include <optional>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "shell/FrasiErrore.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

std::string Rifilato(const std::string& testo) {
    return std::string(Rifila(testo));
}

/// The number that a track length begins with; none for a text that begins with no number.
std::optional<double> Metri(const std::string& testo) {
    if (const auto intero = LeggiNumero(testo)) return intero;
    const double inizio = CampoNumerico(testo.data(), testo.data() + testo.size());
    return inizio == 0.0 ? std::nullopt : std::optional(inizio);
}

}  // namespace

EditorSessione::EditorSessione() {
    ListaCircuiti.clear();
    CaricaListaCircuiti();
}

EditorSessione::Campi EditorSessione::Leggi() {
    return {Rifilato(DatiSessione.Sessione),       Rifilato(DatiSessione.DataSessione),
            Rifilato(DatiSessione.OraSessione),    Rifilato(DatiSessione.Circuito),
            Rifilato(DatiSessione.LunghTracciato), Rifilato(DatiProgetto.Veicolo),
            Rifilato(DatiSessione.Piloti),         Rifilato(DatiSessione.NoteSessione)};
}

bool EditorSessione::ScegliCircuito(const std::string& nome) {
    // Nothing of the circuit before may be written to the files of this one, or the other way
    // round.
    FileSettori_.clear();
    divisione_ = {};
    const auto punti = LeggiFileTracciato(nome);
    punti_ = punti.value_or(std::vector<PuntoTracciato>{});
    if (!punti) return false;
    FileSettori_ = FileCircuito(nome, "sec");
    const auto file = LeggiFileSettori(nome, kSettoriMassimi);
    if (!file) return false;
    divisione_.Prendi(file->Settori);
    if (file->Lunghezza) DatiSessione.LunghTracciato = TestoNumero(*file->Lunghezza);
    return true;
}

void EditorSessione::Dividi(int numero) {
    divisione_.Dividi(MetriInteri(DatiSessione.LunghTracciato), numero);
}

const std::string& EditorSessione::LunghTracciato() {
    return DatiSessione.LunghTracciato;
}

void EditorSessione::LunghTracciato(const std::string& testo) {
    DatiSessione.LunghTracciato = testo;
}

void EditorSessione::CambiaSettore(int i, const std::string& testo) {
    const auto nuovo = LeggiIntero(testo);
    if (nuovo) divisione_.Cambia(i, *nuovo, MetriInteri(DatiSessione.LunghTracciato));
}

double EditorSessione::LunghezzaDisegno() {
    return Metri(DatiSessione.LunghTracciato).value_or(0.0);
}

std::string EditorSessione::Titolo(const std::string& circuito) {
    const std::string lunghezza = Rifilato(DatiSessione.LunghTracciato);
    return circuito.empty() || lunghezza.empty() ? circuito : circuito + " - " + lunghezza + " m.";
}

EditorSessione::Esito EditorSessione::Conferma(const Campi& campi) const {
    if (divisione_.PrimoNegativo() >= 0) return Esito::SettoreNegativo;
    const auto lunghezza = Metri(campi.LunghTracciato);
    if (!lunghezza) return Esito::LunghezzaErrata;
    if (static_cast<double>(divisione_.Somma()) != *lunghezza) return Esito::SommaDiversa;
    DatiSessione.Sessione = campi.Sessione;
    DatiSessione.DataSessione = campi.DataSessione;
    DatiSessione.OraSessione = campi.OraSessione;
    DatiSessione.Circuito = campi.Circuito;
    DatiSessione.LunghTracciato = campi.LunghTracciato;
    // Kept: the vehicle of the project, not that of the session.
    DatiProgetto.Veicolo = campi.Veicolo;
    DatiSessione.Piloti = campi.Piloti;
    DatiSessione.NoteSessione = campi.NoteSessione;
    ScriviSettori();
    return Esito::Fatto;
}

void EditorSessione::ScriviSettori() const {
    if (FileSettori_.empty()) return;
    const std::string testo =
        ScriviTestoSettori(DatiSessione.LunghTracciato, divisione_.SettoriCircuito);
    try {
        ScriviFile(FileSettori_, testo, Lavoro::ScrivereSettori);
    } catch (const ErroreRuntime& errore) {
        // A program folder that cannot be written to is no matter while nothing changes there.
        try {
            if (LeggiFile(FileSettori_, Lavoro::LeggereSettori, testo.size() + 1) == testo) return;
        } catch (const ErroreRuntime&) {
            // The message is the same.
        }
        SegnalaScrittura(errore, Voce::SettoriNonSalvati);
    }
}

}  // namespace lapvane
