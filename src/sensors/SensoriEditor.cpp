#include "sensors/SensoriEditor.h"

#include <algorithm>
#include <span>
#include <utility>

#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

/// Kept: the gear channel takes no part; it can share an input with anything.
constexpr std::array<std::pair<std::size_t, std::size_t>, 3> kCoppie = {{
    {kCanaleSG, kCanalePT},
    {kCanaleSG, kCanaleLambda},
    {kCanalePT, kCanaleLambda},
}};
constexpr std::array<std::pair<std::size_t, std::size_t>, 3> kCoppieAmmesse = {{
    {kCanaleSG, kCanaleCambio},
    {kCanaleCambio, kCanalePT},
    {kCanaleCambio, kCanaleLambda},
}};

/// The first of the pairs whose channels are on and share an input.
std::optional<std::pair<std::size_t, std::size_t>> Insieme(
    std::span<const std::pair<std::size_t, std::size_t>> coppie, const ControlliEditor& controlli) {
    for (const auto& [primo, secondo] : coppie) {
        const CanaleSensore& a = kCanaliSensore[primo];
        const CanaleSensore& b = kCanaliSensore[secondo];
        // An input's list is enabled exactly when its channel is on.
        if (controlli.Spunta(a.chkAbil) && controlli.Spunta(b.chkAbil) &&
            controlli.Testo(a.cboChann) == controlli.Testo(b.cboChann)) {
            return std::pair{primo, secondo};
        }
    }
    return std::nullopt;
}

std::int16_t Scelta(const ControlliEditor& controlli, std::string_view lista) {
    return static_cast<std::int16_t>(std::max(controlli.Indice(lista), 0));
}

}  // namespace

std::vector<std::string> NomiSensori(std::size_t canale) {
    std::vector<std::string> nomi;
    for (const CSensore& sensore : LibreriaSensori) {
        if (sensore.Tipo() == kCanaliSensore[canale].Sensore->Tipo) nomi.push_back(sensore.Nome());
    }
    return nomi;
}

void MostraDatiSensori(const RecordProgetto& record, ControlliEditor& controlli) {
    for (const NumeroSensori& numero : kNumeriSensori) {
        controlli.Testo(numero.Casella, TestoNumero(std::int64_t{record.*numero.Campo}));
    }
    for (const FrequenzaSensori& frequenza : kFrequenzeSensori) {
        controlli.Testo(frequenza.Lista, record.*frequenza.Campo);
    }
    for (const LivelloSensori& livello : kLivelliSensori) {
        controlli.Indice(livello.Lista, record.*livello.Campo);
    }
    for (const CanaleSensore& canale : kCanaliSensore) {
        controlli.Testo(canale.cboNome, record.*canale.Nome);
        controlli.Testo(canale.cboTCamp, record.*canale.TCamp);
        if (canale.Chann != nullptr) controlli.Indice(canale.cboChann, record.*canale.Chann);
        controlli.Spunta(canale.chkAbil, record.*canale.Abil);
        AbilitaCanale(canale, controlli);
        controlli.Abilita(canale.cboTCamp, controlli.Spunta(canale.chkAbil));
    }
}

void AbilitaCanale(const CanaleSensore& canale, ControlliEditor& controlli) {
    // Kept: a click leaves the list of sampling rates as it was when the window opened.
    const bool acceso = controlli.Spunta(canale.chkAbil);
    controlli.Abilita(canale.cboNome, acceso);
    if (!canale.cboChann.empty()) controlli.Abilita(canale.cboChann, acceso);
}

std::optional<std::size_t> CanaleSenzaNome(const ControlliEditor& controlli) {
    for (const std::size_t i : kOrdineControllo) {
        const CanaleSensore& canale = kCanaliSensore[i];
        if (controlli.Spunta(canale.chkAbil) && controlli.Testo(canale.cboNome).empty()) return i;
    }
    return std::nullopt;
}

std::optional<std::pair<std::size_t, std::size_t>> CanaliInConflitto(
    const ControlliEditor& controlli) {
    return Insieme(kCoppie, controlli);
}

std::optional<std::pair<std::size_t, std::size_t>> CanaliInsieme(const ControlliEditor& controlli) {
    const auto vietata = CanaliInConflitto(controlli);
    return vietata ? vietata : Insieme(kCoppieAmmesse, controlli);
}

std::optional<std::int16_t> LeggiNumero(const NumeroSensori& numero, std::string_view testo) {
    if (numero.VuotoZero && Rifila(testo).empty()) return std::int16_t{0};
    return LeggiInt16(testo);
}

void SalvaDatiSensori(const ControlliEditor& controlli, RecordProgetto& record) {
    for (const NumeroSensori& numero : kNumeriSensori) {
        const auto valore = LeggiNumero(numero, controlli.Testo(numero.Casella));
        record.*numero.Campo = valore.value_or(record.*numero.Campo);
    }
    for (const FrequenzaSensori& frequenza : kFrequenzeSensori) {
        record.*frequenza.Campo = controlli.Testo(frequenza.Lista);
    }
    for (const LivelloSensori& livello : kLivelliSensori) {
        record.*livello.Campo = Scelta(controlli, livello.Lista);
    }
    for (const CanaleSensore& canale : kCanaliSensore) {
        record.*canale.TCamp = controlli.Testo(canale.cboTCamp);
        record.*canale.Abil = controlli.Spunta(canale.chkAbil);
        record.*canale.Nome = controlli.Testo(canale.cboNome);
    }
}

void SalvaIngressiSensori(const ControlliEditor& controlli, RecordProgetto& record) {
    for (const CanaleSensore& canale : kCanaliSensore) {
        if (canale.Chann != nullptr) record.*canale.Chann = Scelta(controlli, canale.cboChann);
    }
}

void PreparaCurva(std::size_t canale, const ControlliEditor& controlli) {
    // Kept: the acceleration curve goes out when the turbo channel is on, and zeros when that is
    // off, whatever the acceleration's own box says.
    const std::size_t decide = canale == kCanaleSG ? kCanalePT : canale;
    if (controlli.Spunta(kCanaliSensore[decide].chkAbil)) {
        // Kept: a name that the library lacks leaves the curve of the channel before.
        CaricaCurvaSensore(controlli.Testo(kCanaliSensore[canale].cboNome));
    } else {
        AzzeraCurvaSensore();
    }
}

void NominaCurva(std::size_t canale, ControlliEditor& controlli) {
    const TipoSensore& tipo = *kCanaliSensore[canale].Sensore;
    for (std::size_t i = 0; i < CSensore::kPunti; ++i) CurvaY[i] /= tipo.Fattore;
    controlli.Testo(kCanaliSensore[canale].cboNome, CercaNomeSensore(tipo.Tipo));
}

}  // namespace lapvane
