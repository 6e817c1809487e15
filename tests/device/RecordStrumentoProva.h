#pragma once

#include <gtest/gtest.h>
#include <algorithm>
#include <filesystem>
#include <limits>
#include <map>
#include "device/SerialComm.h"
#include "instrument/Sensori.h"
#include "instrument/SerialeStrumento.h"
#include "instrument/Strumento.h"
#include "project/DatiProgetto.h"
#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "shell/Editor.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/PlatformProva.h"
#include "support/SerialeProva.h"

#include "device/RecordStrumento.h"

namespace lapvane::record {

using ::lapvane::prova::PlatformProva;
using ::lapvane::prova::PrincipaleProva;
using ::lapvane::prova::SerialeProva;
using strumento::SerialeStrumento;
using strumento::Strumento;

/// Bytes of hexadecimal digits; blanks and bars separate, "*n" repeats the byte before n times.
inline std::string Hex(std::string_view testo) {
    const auto cifra = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
    std::string byte;
    for (std::size_t i = 0; i < testo.size();) {
        if (testo[i] == ' ' || testo[i] == '|') {
            ++i;
        } else if (testo[i] == '*') {
            int volte = 0;
            for (++i; i < testo.size() && testo[i] >= '0' && testo[i] <= '9'; ++i) {
                volte = volte * 10 + cifra(testo[i]);
            }
            byte.append(static_cast<std::size_t>(volte - 1), byte.back());
        } else {
            byte += static_cast<char>(cifra(testo[i]) * 16 + cifra(testo[i + 1]));
            i += 2;
        }
    }
    return byte;
}

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
inline void NelProgetto(std::string_view attesi) {
    for (const auto& [nome, valore] : Coppie(attesi)) {
        EXPECT_EQ(Campo(DatiProgetto, nome), valore) << nome;
    }
}

constexpr const char* kConferma18 = "52 12 36 34 2A";
constexpr const char* kConferma20 = "52 14 36 36 2A";
constexpr const char* kConferma22 = "52 16 36 38 2A";
constexpr const char* kConferma24 = "52 18 36 41 2A";
constexpr const char* kConferma28 = "52 1C 36 45 2A";
constexpr const char* kChiedi19 = "48 13 35 42";
constexpr const char* kChiedi21 = "48 15 35 44";
constexpr const char* kChiedi23 = "48 17 35 46";
constexpr const char* kChiedi29 = "48 1D 36 35";

/// A machine with a port; what is behind it is up to the test.
class Base : public ::testing::Test {
 protected:
    Base() {
        prova::CaricaTestiVeri(1);
        FaseComunicazione = 18;
    }
    ~Base() override { prova::AzzeraTutto(); }

    /// The one message box of a transfer that failed.
    void AttesoMessaggio(const std::string& testo, Icon icona = Icon::None) {
        ASSERT_EQ(macchina.Mostrati.size(), 1u);
        EXPECT_EQ(macchina.Mostrati[0].Testo, testo);
        EXPECT_EQ(macchina.Mostrati[0].Icona, icona);
        macchina.Mostrati.clear();
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
};

}  // namespace lapvane::record
