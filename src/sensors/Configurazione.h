#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "project/DatiProgetto.h"
#include "sensors/CampiEditor.h"
#include "shell/Editor.h"

namespace lapvane {

// What the editor of the general settings works with, apart from its window.

/// The whole text as a number, fraction rounded half to even; empty for what is no number of the
/// box.
std::optional<std::int32_t> LeggiNumero(const NumeroSetup& numero, std::string_view testo);

/// Position in `kNumeriSetup` of the first box that holds no number of its own.
std::optional<std::size_t> NumeroErrato(const ControlliEditor& controlli);

/// The display pages while the editor is open, and which of them is on show.
class PagineSetup {
 public:
    static constexpr int kFlag = 10;     ///< page flags of a project
    static constexpr int kImmagini = 9;  ///< pages of the instrument's display

    /// Page 1 of a project. A number of pages that no flag stands for counts as 9.
    void Carica(const RecordProgetto& record);
    /// The page flags; all ten.
    void Salva(RecordProgetto& record) const;

    int Numero() const { return ultima_; }  ///< of pages
    int Corrente() const { return corrente_; }
    bool Prima() const { return corrente_ == 1; }
    bool Ultima() const { return corrente_ == ultima_; }
    void Avanti();
    void Indietro();
    /// " 2/ 9"
    std::string Conteggio() const;

    /// Flag of a page; `indice` 0 is page 1.
    bool Abilitata(int indice) const { return abilitate_.at(static_cast<std::size_t>(indice)); }
    void Abilita(int indice, bool accesa) {
        abilitate_.at(static_cast<std::size_t>(indice)) = accesa;
    }

    /// Whether the page on show can carry a picture of the user's.
    bool ConFile() const { return Prima() || Ultima(); }
    /// The path that the page on show names.
    const std::string& File(const RecordProgetto& record) const;
    /// Stores the picture chosen for the page on show.
    void Scegli(RecordProgetto& record, const std::string& file) const;

 private:
    int corrente_ = 1;
    int ultima_ = kImmagini;
    std::array<bool, kFlag> abilitate_{};
};

/// Shows a project, except for its pages. An index that its list does not have shows nothing.
void MostraDatiSetup(const RecordProgetto& record, ControlliEditor& controlli);

/// Stores everything; the number boxes hold numbers.
void SalvaDatiSetup(const ControlliEditor& controlli, const PagineSetup& pagine,
                    RecordProgetto& record);

/// Whether a project names a picture: neither nothing nor a single blank.
bool Nominata(std::string_view file);

}  // namespace lapvane
