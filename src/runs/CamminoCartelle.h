#pragma once

#include <deque>
#include <filesystem>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/Cartelle.h"
#include "runs/Uscita.h"

namespace lapvane {

/// A data file with the states of what lies beside it.
struct TrovataUscita {
    std::filesystem::path Csv;
    FileUscita File;
};

/// The state of a file, links followed; that of none where it can't be told or is no plain file.
StatoFile StatoDi(const std::filesystem::path& file);
/// The states of a run's files, each asked for by its name.
FileUscita StatiDi(const std::filesystem::path& csv);

/// What of a path is not there, from the top ("E:\"); empty: all of it is.
std::filesystem::path PrimoMancante(const std::filesystem::path& percorso);

/// Whether a path lies in a folder or below it, by its letters.
bool SottoCartella(const std::filesystem::path& percorso, const std::filesystem::path& cartella);

/// Walks through a folder and those below it, an entry at a time. Hidden names are left out, and
/// those that begin with "$"; a folder that is reached twice, by links, counts once, by its own
/// name where it lies below.
class CamminoCartelle {
 public:
    explicit CamminoCartelle(const std::filesystem::path& radice) { daFare_.push_back(radice); }

    /// One entry, or the end of a folder: then its data files come out.
    std::vector<TrovataUscita> Passo();
    bool Fine() const { return !aperta_ && daFare_.empty() && collegate_.empty(); }

    using Nome = std::filesystem::path::string_type;

    /// Folders that can't be looked at, or were gone in the middle: what lies in them is not known.
    /// By their keys (`ChiavePercorso`).
    const std::set<Nome>& Negate() const { return negate_; }

 private:
    void Apri();
    void Guarda();
    std::vector<TrovataUscita> Chiudi();
    StatoFile Stato(const std::filesystem::path& file) const;

    std::deque<std::filesystem::path> daFare_;
    std::deque<std::filesystem::path> collegate_;  // behind links, when all others are through
    std::set<std::filesystem::path> viste_;        // by their true names
    std::set<Nome> negate_;
    std::filesystem::path qui_;
    LettoreCartella voci_;
    bool aperta_ = false;
    std::unordered_map<Nome, StatoFile> file_;
    std::unordered_set<Nome> minuscoli_;
    std::vector<std::filesystem::path> csv_;
};

}  // namespace lapvane
