#include "analysis/ElencoCanali.h"

#include <algorithm>
#include <array>
#include <vector>

#include "analysis/Statistiche.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr double kMassimoNullo = 0.01;  // stands for a maximum of 0, so that a factor exists

/// Line colours of channels 3 to 20 until a session file says otherwise.
constexpr std::array<Colore, 18> kColoriCanali = {
    Rgb(192, 0, 0),     Rgb(255, 0, 0),     Rgb(192, 64, 0),    Rgb(255, 128, 0), Rgb(192, 192, 0),
    Rgb(128, 128, 0),   Rgb(0, 192, 0),     Rgb(0, 128, 0),     Rgb(0, 192, 192), Rgb(0, 128, 128),
    Rgb(128, 128, 255), Rgb(0, 0, 192),     Rgb(128, 0, 128),   Rgb(192, 0, 192), Rgb(255, 0, 255),
    Rgb(255, 128, 255), Rgb(255, 192, 255), Rgb(192, 192, 255),
};

std::string NomeDaTabella(int c) {
    // The lambda in its two units, columns 15 and 16, has one name.
    return Testo(c == kUltimoNomeInTabella ? Voce::CanaleLambda : Dopo(Voce::CanaleTempo, c - 1));
}

}  // namespace

ElencoCanali::ElencoCanali() {
    int c = kPrimoCanale;
    for (const Colore colore : kColoriCanali) {
        Canale& canale = canali_[c++];
        canale.ColoreCanale = colore;
        canale.FiltroCanale = 1;
        canale.SpessoreCanale = 1;
    }
}

const Canale& ElencoCanali::Di(int c) const {
    return canali_[IndiceChiesto(c, kUltimoCanale)];
}

int ElencoCanali::Ultimo() const {
    return std::min(numCampi_, kUltimoCanale);
}

std::string ElencoCanali::TitoloCanale(int c) const {
    return canali_[c].NomeCampo + " " + canali_[c].UnitaCampo;
}

void ElencoCanali::Nomina(const std::function<std::string(int)>& titolo) {
    std::string unita;
    for (int c = 1; c <= Ultimo(); ++c) {
        std::string nome = titolo(c);
        // Kept: a title without a unit stays the channel's name and takes the unit of the channel
        // before it.
        if (const std::size_t parentesi = nome.find('['); parentesi != std::string::npos) {
            unita = nome.substr(parentesi);
            nome = NomeDaTabella(c);
        }
        Canale& canale = canali_[c];
        canale.NomeCampo = nome;
        canale.UnitaCampo = unita;
        canale.FiltroCanale = 1;
        canale.SpessoreCanale = 1;
    }
}

void ElencoCanali::RefreshLanguage() {
    for (int c = 1; c <= kUltimoNomeInTabella; ++c) {
        if (!canali_[c].NomeDato) canali_[c].NomeCampo = NomeDaTabella(c);
    }
}

bool ElencoCanali::Spunta(int c, bool spuntato) {
    if (c < kPrimoCanale || c > kUltimoCanale || canali_[c].chkGrafico == spuntato) return false;
    canali_[c].chkGrafico = spuntato;
    numCanaliAttivi_ += spuntato ? 1 : -1;
    return true;
}

int ElencoCanali::PrimoSpuntato() const {
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        if (canali_[c].chkGrafico) return c;
    }
    return 0;
}

ImpostazioniCanale ElencoCanali::Impostazioni(int c) const {
    const Canale& canale = Di(c);
    ImpostazioniCanale valori;
    valori.NumeroCanale = c;
    valori.NomeCampo = canale.NomeCampo;
    valori.UnitaCampo = canale.UnitaCampo;
    valori.ColoreCanale = canale.ColoreCanale;
    valori.FiltroDialogo = canale.FiltroCanale;
    valori.SpessoreDialogo = canale.SpessoreCanale;
    valori.MinDialogo = canale.MinCanale;
    valori.MaxDialogo = canale.MaxCanale;
    return valori;
}

void ElencoCanali::Imposta(const ImpostazioniCanale& valori) {
    const int c = IndiceChiesto(valori.NumeroCanale, kUltimoCanale);
    Canale& canale = canali_[c];
    // A name that is the table's own follows the language.
    if (valori.NomeCampo != canale.NomeCampo) {
        canale.NomeDato = c > kUltimoNomeInTabella || valori.NomeCampo != NomeDaTabella(c);
    }
    canale.NomeCampo = valori.NomeCampo;
    canale.UnitaCampo = valori.UnitaCampo;
    canale.ColoreCanale = valori.ColoreCanale;
    canale.FiltroCanale = valori.FiltroDialogo;
    canale.SpessoreCanale = valori.SpessoreDialogo;
    canale.MinCanale = valori.MinDialogo;
    canale.MaxCanale = valori.MaxDialogo;
}

void ElencoCanali::SetMinVal(int c, double valore) {
    canali_[IndiceChiesto(c, kUltimoCanale)].MinCanale = valore;
}

void ElencoCanali::SetMaxVal(int c, double valore) {
    // Kept: the minimum takes the value here too; the graph settings exchange the maximum through
    // `MaxDialogo`.
    canali_[IndiceChiesto(c, kUltimoCanale)].MinCanale = valore;
}

ElencoCanali::IntervalloY ElencoCanali::CalcolaScale(const FormaDati& forma, std::int32_t da,
                                                     std::int32_t a) {
    const int ultimo = Ultimo();
    double yMax = 0.0;
    std::vector<std::span<const double>> colonne;
    for (int c = kPrimoCanale; c <= ultimo; ++c) {
        Canale& canale = canali_[c];
        const auto celle = forma.Tabella().Righe(c, da, a);
        canale.MaxCanale = forma.Massimo(celle);
        if (canale.MaxCanale == 0.0) canale.MaxCanale = kMassimoNullo;
        canale.MinCanale = forma.Minimo(celle);
        if (canale.MaxCanale > yMax) yMax = canale.MaxCanale;
        colonne.push_back(celle);
    }
    const auto medie = MediaColonne(colonne, 1.0 + a - da);
    double yMin = ultimo < kPrimoCanale ? 0.0 : canali_[kPrimoCanale].MinCanale;
    int c = kPrimoCanale;
    for (const double media : medie) {
        Canale& canale = canali_[c++];
        canale.MediaCanale = media;
        canale.FattoreScala = yMax / canale.MaxCanale;
        const double minimo = canale.FattoreScala * canale.MinCanale;
        if (minimo < yMin) yMin = minimo;
    }
    // Kept: the margin of a negative minimum moves it towards 0, not away from it.
    return {yMin - yMin * 0.2, yMax + yMax * 0.1};
}

CanaliSessione ElencoCanali::PerSessione() const {
    CanaliSessione scritti;
    int c = kPrimoCanale;
    for (CanaleSessione& scritto : scritti) {
        const Canale& canale = canali_[c++];
        scritto = {canale.NomeCampo,      canale.FiltroCanale, canale.ColoreCanale,
                   canale.SpessoreCanale, canale.MinCanale,    canale.MaxCanale};
    }
    return scritti;
}

void ElencoCanali::Prendi(const CanaliSessione& letti) {
    int c = kPrimoCanale;
    for (const CanaleSessione& letto : letti) {
        Canale& canale = canali_[c++];
        canale.FiltroCanale = letto.Filtro;
        canale.ColoreCanale = letto.Tinta;
        canale.SpessoreCanale = letto.Spessore;
        canale.MinCanale = letto.Minimo;
        canale.MaxCanale = letto.Massimo;
    }
}

}  // namespace lapvane
