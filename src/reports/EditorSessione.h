#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "reports/Circuiti.h"
#include "reports/DivisioneSettori.h"

namespace lapvane {

/// The session dialog without its window: the circuit that is chosen, the division of its track,
/// and what OK checks and writes.
class EditorSessione {
 public:
    /// What stands in the boxes.
    struct Campi {
        std::string Sessione;
        std::string DataSessione;
        std::string OraSessione;
        std::string Circuito;
        std::string LunghTracciato;
        std::string Veicolo;
        std::string Piloti;
        std::string NoteSessione;
    };
    enum class Esito {
        Fatto,
        SettoreNegativo,  ///< `PrimoNegativo` of the division
        LunghezzaErrata,  ///< the track length begins with no number
        SommaDiversa,     ///< the sectors do not add up to it
    };

    /// Fills `ListaCircuiti` anew. Error 76 if the folder of the tracks is missing.
    EditorSessione();

    /// The boxes as `DatiSessione` and the project fill them, each trimmed.
    static Campi Leggi();

    /// Reads outline and division of a circuit; true if it has a division. Kept: where the division
    /// names a track length, that of the open log's session changes here, whatever ends the dialog.
    bool ScegliCircuito(const std::string& nome);
    /// Divides the track into equal sectors.
    void Dividi(int numero);
    /// The track length. Kept: it is the session of the open log that changes, even if Cancel
    /// follows.
    static const std::string& LunghTracciato();
    static void LunghTracciato(const std::string& testo);
    /// Another length of a sector, at the cost of its neighbour; what is no length changes nothing.
    void CambiaSettore(int i, const std::string& testo);

    const std::vector<PuntoTracciato>& Punti() const { return punti_; }
    const DivisioneSettori& Divisione() const { return divisione_; }
    /// Metres that the sectors share on the outline; 0 for a length that begins with no number.
    static double LunghezzaDisegno();
    /// Circuit and track length in one line; empty without a circuit.
    static std::string Titolo(const std::string& circuito);

    /// Checks division and length and, if they hold, takes the boxes over, untrimmed, and writes
    /// the division beside the outline. Nothing changes otherwise.
    Esito Conferma(const Campi& campi) const;

 private:
    void ScriviSettori() const;

    DivisioneSettori divisione_;
    std::vector<PuntoTracciato> punti_;
    std::filesystem::path FileSettori_;  ///< empty: no outline, so no division to write
};

}  // namespace lapvane
