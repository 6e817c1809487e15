#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "project/DatiProgetto.h"
#include "shell/Editor.h"

namespace lapvane::record {

/// "name=value" pairs between bars.
inline std::vector<std::pair<std::string, std::string>> Coppie(std::string_view testo) {
    std::vector<std::pair<std::string, std::string>> coppie;
    while (!testo.empty()) {
        const std::string_view coppia = testo.substr(0, testo.find('|'));
        testo.remove_prefix(std::min(testo.size(), coppia.size() + 1));
        const std::size_t uguale = coppia.find('=');
        coppie.emplace_back(coppia.substr(0, uguale), coppia.substr(uguale + 1));
    }
    return coppie;
}

/// An editor without a window: each control's value as text, and "name!" whether it is enabled.
class EditorProva : public Editor, public ControlliEditor {
 public:
    explicit EditorProva(std::string nome, std::string_view valori = {}) : nome_(std::move(nome)) {
        Imposta(valori);
    }
    void Imposta(std::string_view valori) {
        for (const auto& [controllo, valore] : Coppie(valori)) valori_[controllo] = valore;
    }
    /// Everything that is set, by name.
    std::string Stato() const {
        std::string stato;
        for (const auto& [controllo, valore] : valori_) {
            stato += (stato.empty() ? "" : "|") + controllo + "=" + valore;
        }
        return stato;
    }

    std::string_view Nome() const override { return nome_; }
    void AbilitaStrumento(bool) override {}
    ControlliEditor* Controlli() override { return this; }
    std::string Testo(std::string_view c) const override { return valori_.at(std::string(c)); }
    void Testo(std::string_view c, const std::string& t) override { valori_[std::string(c)] = t; }
    int Indice(std::string_view c) const override { return std::stoi(Testo(c)); }
    void Indice(std::string_view c, int i) override { Testo(c, std::to_string(i)); }
    bool Spunta(std::string_view c) const override { return Testo(c) == "1"; }
    void Spunta(std::string_view c, bool s) override { Testo(c, s ? "1" : "0"); }
    void Abilita(std::string_view c, bool a) override { Spunta(std::string(c) + "!", a); }

 private:
    std::string nome_;
    std::map<std::string, std::string> valori_;
};

/// One field of the project as text (a flag is 1 or 0), read and set.
inline std::string Campo(const RecordProgetto& record, std::string_view nome) {
    return std::visit(
        [&record](auto membro) {
            if constexpr (std::is_same_v<decltype(membro), std::string RecordProgetto::*>) {
                return record.*membro;
            } else {
                return std::to_string(record.*membro);
            }
        },
        kCampiProgetto[PosizioneCampo(nome)].Campo);
}
inline void ImpostaCampo(std::string_view nome, const std::string& valore) {
    std::visit(
        [&valore](auto membro) {
            auto& dove = DatiProgetto.*membro;
            using T = std::remove_reference_t<decltype(dove)>;
            if constexpr (std::is_same_v<T, std::string>) {
                dove = valore;
            } else {
                dove = static_cast<T>(std::stoi(valore));
            }
        },
        kCampiProgetto[PosizioneCampo(nome)].Campo);
}
/// An empty project but for these fields.
inline void Progetto(std::string_view valori) {
    DatiProgetto = {};
    for (const auto& [nome, valore] : Coppie(valori)) ImpostaCampo(nome, valore);
}

}  // namespace lapvane::record
