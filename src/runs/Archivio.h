#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "runs/CamminoCartelle.h"
#include "runs/LetturaUscita.h"
#include "runs/Uscita.h"

namespace lapvane {

/// The runs of a folder and of the folders below it. Whoever shows them calls `Passo` from the
/// event loop until it is through.
///
/// Opened, it has what the index knows, without a look at any file. The first pieces list the
/// folders and compare; those behind them read the runs that are new or have changed. A run whose
/// file is gone leaves the list when everything is listed; one whose drive or folder can't be
/// looked at stays, with `Sparito`. Hidden files and folders are left out, links are followed once.
class Archivio {
 public:
    enum class Fase { Ferma, Elenca, Legge };

    Archivio();
    ~Archivio();

    /// Takes a folder: the list is what the index has of it, `Passo` brings it up to date. The
    /// folder before is written to the index. The same folder again: everything is looked at anew.
    void Apri(const std::filesystem::path& cartella);
    const std::filesystem::path& Cartella() const { return cartella_; }

    /// Works for about `ms` milliseconds, at least one file or one entry of a folder. False: there
    /// is nothing more to do. Raises nothing.
    bool Passo(int ms);
    /// What is not read yet stays as it was, or out of the list, until the next `Apri`.
    void Ferma();

    Fase InCorso() const { return fase_; }
    /// "Reading 137 of 214": runs that had to be read and have been, in phase `Legge`.
    int Lette() const { return lette_; }
    int DaLeggere() const { return static_cast<int>(coda_.size()); }
    /// Runs that were found so far, in phase `Elenca`.
    int Trovate() const { return trovate_; }
    /// What of the folder's path is not there ("E:", a folder above it or itself), or the folder
    /// where it can't be looked at; empty: nothing hinders.
    const std::filesystem::path& Mancante() const { return mancante_; }
    /// Folders below that could not be looked at, as many as there are.
    int CartelleNegate() const;

    const std::vector<Uscita>& Uscite() const { return uscite_; }
    /// Place in `Uscite`; -1: none.
    int Trova(const std::filesystem::path& csv) const;
    /// Grows with every change of `Uscite`. Places hold only as long as it stays.
    std::uint64_t Revisione() const { return revisione_; }

    /// Reads the log of one run in pieces (see `LetturaLog`); one log at a time, a call for another
    /// run begins with that. True: it is read, as far as it can be, and its values stand in
    /// `Uscite`, where they move nothing: the revision stays.
    bool LeggiLogDi(int uscita, int ms);
    /// Reads anew what lies beside one run, as after its notes were saved.
    void Rileggi(int uscita);

    /// Writes the index, where anything is new. A disk that takes nothing is no matter.
    void Salva();

 private:
    void UnPasso();
    void LeggiUna();
    void Prendi(const TrovataUscita& trovata);
    void Metti(Uscita uscita);
    void TogliSparite();
    void FineElenco();
    void Segnala(const std::filesystem::path& sparito);
    void Indicizza();
    std::uint32_t Divisione(const std::string& circuito);

    std::filesystem::path cartella_;
    std::filesystem::path mancante_;
    std::vector<Uscita> uscite_;
    std::vector<Uscita> altre_;  // of other folders, for the index
    std::unordered_map<std::filesystem::path::string_type, std::size_t> posti_;
    std::vector<char> viste_;  // by place: the folder has it
    std::unique_ptr<CamminoCartelle> cammino_;
    std::vector<TrovataUscita> coda_;
    std::map<std::string, std::uint32_t> divisioni_;
    LetturaLog lettura_;
    Fase fase_ = Fase::Ferma;
    int lette_ = 0;
    int trovate_ = 0;
    std::uint64_t revisione_ = 0;
    bool daSalvare_ = false;
};

}  // namespace lapvane
