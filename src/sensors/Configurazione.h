#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "project/DatiProgetto.h"
#include "shell/Voci.h"

namespace lapvane {

// What the editor of the general settings works with, apart from its window.

/// A list of the setup: its control, its field, its entries, the number of its caption.
struct ListaSetup {
    std::string_view Controllo;
    std::int16_t RecordProgetto::*Campo;
    const std::vector<std::string>* Voci;
    Voce Didascalia;
};
extern const std::array<ListaSetup, 4> kListeSetup;

/// A number box of the setup: its control, its field, the number of its caption. Sectors take 32
/// bits, the others 16, whatever their field holds.
struct NumeroSetup {
    std::string_view Controllo;
    CampoProgetto Campo;
    Voce Didascalia;
    bool Lungo = false;
};
extern const std::array<NumeroSetup, 9> kNumeriSetup;

/// The field as decimal text.
std::string MostraNumero(const NumeroSetup& numero, const RecordProgetto& record);
/// The whole text as a number, fraction rounded half to even; empty for what is no number of the
/// box.
std::optional<std::int32_t> LeggiNumero(const NumeroSetup& numero, std::string_view testo);
void SalvaNumero(const NumeroSetup& numero, std::int32_t valore, RecordProgetto& record);

/// The display pages while the editor is open, and which of them is on show.
class PagineSetup {
 public:
    static constexpr int kFlag = 10;     ///< page flags of a project
    static constexpr int kImmagini = 9;  ///< pages of the instrument's display

    /// Page 1 of a project. A number of pages that no flag stands for counts as 9.
    void Carica(const RecordProgetto& record);
    /// The page flags; all ten.
    void Salva(RecordProgetto& record) const;

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

/// Whether a project names a picture: neither nothing nor a single blank.
bool Nominata(std::string_view file);

}  // namespace lapvane
