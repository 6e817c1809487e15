#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "project/DatiProgetto.h"

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
