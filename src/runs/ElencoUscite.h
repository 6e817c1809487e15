#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "runs/Uscita.h"
#include "shell/Voci.h"

namespace lapvane {

/// The columns of the list. Date and time sort alike, by day and minute.
enum class ColonnaUscite : int {
    Data,
    Ora,
    Circuito,
    Sessione,
    Piloti,
    Veicolo,
    Giri,
    Migliore,
    Media,
    Ideale,
    Durata
};
constexpr int kColonneUscite = 11;

/// The text that heads a column.
Voce TitoloColonna(ColonnaUscite colonna);
/// What a column shows of a run, for a person, with `decimale` in its times: "17 May 2026",
/// "1:04.22", "15:36"; empty where nothing is known.
std::string TestoColonna(const Uscita& uscita, ColonnaUscite colonna, char decimale);
/// The session has no name: its column has the file's in its place.
bool SenzaNome(const Uscita& uscita);
/// Hundredths as "1:04.22" or "58.20", as the comparison shows them; empty for 0.
std::string TestoTempo(std::int32_t centesimi, char decimale);
/// Tenths of a second as "15:36" or "1:02:05", cut to whole seconds; empty for 0.
std::string TestoDurata(std::int32_t decimi);

enum class GruppoPer : int { Nessuno, Circuito, Giorno };

/// A group of the list, of what is shown.
struct GruppoUscite {
    std::string Nome;            ///< circuit as the first run has it, or the day
    std::string LunghTracciato;  ///< metres, as the first run that tells them; circuits only
    int Quante = 0;
    std::int32_t Migliore = 0;  ///< best lap, hundredths; 0: none has one
};

/// One line of the list.
struct RigaElenco {
    int Uscita = -1;  ///< place in the list of runs; -1: the heading of the group
    int Gruppo = 0;   ///< place in `Gruppi`; 0 without grouping
};

/// A text in which case and accents make no difference (Windows-1252): "PERCHÉ" gives "perche".
std::string Piegato(std::string_view testo);

/// Which runs are shown, and in what order. It keeps places in the list that `Prendi` was given,
/// which has to live as long.
class ElencoUscite {
 public:
    /// Takes a list, or takes it anew after it has changed.
    void Prendi(const std::vector<Uscita>& uscite);

    /// Shows the runs in whose texts (date in several forms, circuit, session, drivers, vehicle,
    /// notes, name of the file) each of the words occurs, without regard to case and accents.
    void Cerca(std::string_view testo);
    /// Empty values come last in both directions, runs of equal values by time, the newest first.
    void Ordina(ColonnaUscite colonna, bool discendente);
    /// Circuits come by name, days by time, newest first or last as the order of the date is, else
    /// the newest first; runs without a circuit last.
    void Raggruppa(GruppoPer gruppo);

    ColonnaUscite Ordine() const { return colonna_; }
    bool Discendente() const { return discendente_; }
    GruppoPer Gruppo() const { return gruppo_; }

    /// The lines, groups with their headings.
    const std::vector<RigaElenco>& Righe() const { return righe_; }
    const std::vector<GruppoUscite>& Gruppi() const { return gruppi_; }
    int Mostrate() const { return mostrate_; }  ///< runs among them
    int Tutte() const { return static_cast<int>(pronte_.size()); }
    /// Whether the run has the best lap of its circuit, of all runs, shown or not; of several equal
    /// ones the oldest. A circuit without a name has none.
    bool MiglioreDelCircuito(int uscita) const {
        return pronte_[static_cast<std::size_t>(uscita)].Migliore;
    }

 private:
    struct Pronta {
        std::string Cercabile;  // folded
        std::string Circuito;   // folded
        bool Migliore = false;
    };

    void SegnaMigliori();
    void Riordina();
    void Dividi();
    void Componi();
    std::string NomeGruppo(const Uscita& uscita) const;
    void AggiungiAlGruppo(const Uscita& uscita);

    const std::vector<Uscita>* uscite_ = nullptr;
    std::vector<Pronta> pronte_;
    std::vector<int> ordine_;
    std::vector<int> posto_;  // of each run's group among the groups
    std::vector<std::string> parole_;
    std::vector<RigaElenco> righe_;
    std::vector<GruppoUscite> gruppi_;
    ColonnaUscite colonna_ = ColonnaUscite::Data;
    bool discendente_ = true;
    GruppoPer gruppo_ = GruppoPer::Nessuno;
    int mostrate_ = 0;
};

}  // namespace lapvane
