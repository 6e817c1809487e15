#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "shell/Editor.h"
#include "shell/StatoShell.h"

namespace lapvane::prova {

/// An editor without a window: each control's value as text, and "name!" whether it is enabled.
class EditorProva : public Editor, public ControlliEditor {
 public:
    using Valori = std::map<std::string, std::string, std::less<>>;
    explicit EditorProva(std::string_view nome, Valori v = {}) : valori(std::move(v)), nome_(nome) {
        ImpostaFormAttiva(this);
    }
    ~EditorProva() override { ImpostaFormAttiva(nullptr); }
    std::string Stato() const {
        std::string stato;
        for (const auto& [controllo, valore] : valori) stato += controllo + "=" + valore + "|";
        return stato;
    }
    std::string_view Nome() const override { return nome_; }
    void AbilitaStrumento(bool) override {}
    ControlliEditor* Controlli() override { return this; }
    std::string Testo(std::string_view c) const override { return valori.find(c)->second; }
    void Testo(std::string_view c, const std::string& t) override { valori[std::string(c)] = t; }
    int Indice(std::string_view c) const override { return std::stoi(Testo(c)); }
    void Indice(std::string_view c, int i) override { Testo(c, std::to_string(i)); }
    bool Spunta(std::string_view c) const override { return Testo(c) == "1"; }
    void Spunta(std::string_view c, bool s) override { Testo(c, s ? "1" : "0"); }
    void Abilita(std::string_view c, bool a) override { Spunta(std::string(c) + "!", a); }
    Valori valori;

 private:
    std::string nome_;
};

}  // namespace lapvane::prova
