#include "sensors/SensoriEditor.h"

#include <algorithm>
#include <utility>

#include "sensors/CSensore.h"
#include "sensors/CanaliSensore.h"
#include "sensors/Curve.h"
#include "shell/NumeroTesto.h"
#include "shell/TabelleNomi.h"

namespace lapvane {

namespace {

using R = RecordProgetto;

constexpr std::size_t kTurbo = 7, kLambda = 6, kAccelerazione = 8;

/// The order in which missing sensors are told.
constexpr std::array<std::size_t, 9> kOrdineNomi = {0, 1,      3, 2, 4, kTurbo, kAccelerazione,
                                                    5, kLambda};

/// Kept: the gear channel takes no part; it can share an input with anything.
constexpr std::array<std::pair<std::size_t, std::size_t>, 3> kCoppie = {{
    {kAccelerazione, kTurbo},
    {kAccelerazione, kLambda},
    {kTurbo, kLambda},
}};

std::int16_t Scelta(const ControlliEditor& controlli, std::string_view lista) {
    return static_cast<std::int16_t>(std::max(controlli.Indice(lista), 0));
}

}  // namespace

const std::array<CanaleEditor, 9> kCanaliEditor = {{
    {"fraTempOlio", Voce::TemperaturaOlio, "chkAbilTO", "lblNomeTO", "cboTemperaturaOlio0",
     "lblTCTO", "cboTCampTO", &R::TCampTO, Voce::IncompletoTemperaturaOlio, "chkAbilTO"},
    {"fraPressOlio", Voce::PressioneOlio, "chkAbilPO", "lblNomePO", "cboPressione0", "lblTCPO",
     "cboTCampPO", &R::TCampPO, Voce::IncompletoPressioneOlio, "chkAbilPO"},
    {"fraPressBenzina", Voce::PressioneBenzina, "chkAbilPB", "lblNomePB", "cboPressione1",
     "lblTCPB", "cboTCampPB", &R::TCampPB, Voce::IncompletoPressioneBenzina, "chkAbilPB"},
    {"fraTempAcqua", Voce::TemperaturaAcqua, "chkAbilTA", "lblNomeTA", "cboTemperaturaAcqua0",
     "lblTCTA", "cboTCampTA", &R::TCampTA, Voce::IncompletoTemperaturaAcqua, "chkAbilTA"},
    {"fraLivBenzina", Voce::LivelloBenzina, "chkAbilLB", "lblNomeLB", "cboLivelloBenzina0",
     "lblTCLB", "cboTCampLB", &R::TCampLB, Voce::IncompletoLivelloBenzina, "chkAbilLB"},
    {"fraCambio", Voce::Marcia, "chkAbilCambio", "lblNomeCambio", "cboAltro0", "lblTCCambio",
     "cboTCampCambio", &R::TCampCambio, Voce::IncompletoMarcia, "chkAbilCambio", "lblCanaleCambio",
     "cboChannCambio", &R::ChannCambio},
    {"fraSensoreLambda", Voce::SondaLambda, "chkAbilSensoreLambda", "lblNomeLambda",
     "cboSensoreLambda", "lblTCLambda", "cboTCampSensoreLambda", &R::TCampSensoreLambda,
     Voce::IncompletoLambda, "chkAbilSensoreLambda", "lblCanaleLambda", "cboChannSensoreLambda",
     &R::ChannSensoreLambda},
    {"fraPressioneTurbo", Voce::PressioneTurbo, "chkAbilPT", "lblNomePT", "cboPressioneTurbo",
     "lblTCPT", "cboTCampPT", &R::TCampPT, Voce::IncompletoPressioneTurbo, "chkAbilPT",
     "lblCanalePT", "cboChannPT", &R::ChannPT},
    // Kept: the acceleration curve goes out when the turbo channel is on, and zeros when that is
    // off, whatever the acceleration's own box says.
    {"fraSensoreG", Voce::SensoreG, "chkAbilSG", "lblNomeG", "cboSG", "lblTCG", "cboTCampSG",
     &R::TCampSG, Voce::IncompletoSensoreG, "chkAbilPT", "lblCanaleSG", "cboChannSG", &R::ChannSG},
}};

const std::array<NumeroSensori, 3> kNumeriSensori = {{
    {"txtNumAccRPM", "lblNumAcc", Voce::AccensioniPerGiro, &R::NumAccRPM},
    {"txtImpulsiRuota", "lblNumImpulsi", Voce::ImpulsiRuota, &R::ImpulsiRuota, true},
    {"txtDiametroRuota", "lblDiametroRuota", Voce::DiametroRuota, &R::DiametroRuota, true},
}};

const std::array<FrequenzaSensori, 2> kFrequenzeSensori = {{
    {"cboTCampRPM", "lblTCRPM", &R::TCampRPM},
    {"cboTCampVV", "lblTCVV", &R::TCampVV},
}};

const std::array<LivelloSensori, 2> kLivelliSensori = {{
    {"fraPompaOlio", Voce::CornicePompaOlio, "cboLAPO", "lblLAPO", &R::LAPO, &ListaCanaliA},
    {"fraAlternatore", Voce::CorniceAlternatore, "cboLAAL", "lblLAAL", &R::LAAL, &ListaCanaliB},
}};

std::vector<std::string> NomiSensori(std::size_t canale) {
    std::vector<std::string> nomi;
    for (const CSensore& sensore : LibreriaSensori) {
        if (sensore.Tipo() == kCanaliSensore[canale].Tipo) nomi.push_back(sensore.Nome());
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
    for (std::size_t i = 0; i < kCanaliEditor.size(); ++i) {
        const CanaleEditor& canale = kCanaliEditor[i];
        controlli.Testo(canale.Nome, record.*kCanaliSensore[i].Nome);
        controlli.Testo(canale.TCamp, record.*canale.CampoTCamp);
        if (canale.CampoChann != nullptr) controlli.Indice(canale.Chann, record.*canale.CampoChann);
        controlli.Spunta(canale.Abil, record.*kCanaliSensore[i].Abil);
        AbilitaCanale(canale, controlli);
        controlli.Abilita(canale.TCamp, controlli.Spunta(canale.Abil));
    }
}

void AbilitaCanale(const CanaleEditor& canale, ControlliEditor& controlli) {
    // Kept: a click leaves the list of sampling rates as it was when the window opened.
    const bool acceso = controlli.Spunta(canale.Abil);
    controlli.Abilita(canale.Nome, acceso);
    if (!canale.Chann.empty()) controlli.Abilita(canale.Chann, acceso);
}

std::optional<std::size_t> CanaleSenzaNome(const ControlliEditor& controlli) {
    for (const std::size_t i : kOrdineNomi) {
        const CanaleEditor& canale = kCanaliEditor[i];
        if (controlli.Spunta(canale.Abil) && controlli.Testo(canale.Nome).empty()) return i;
    }
    return std::nullopt;
}

std::optional<std::pair<std::size_t, std::size_t>> CanaliInConflitto(
    const ControlliEditor& controlli) {
    for (const auto& [primo, secondo] : kCoppie) {
        const CanaleEditor& a = kCanaliEditor[primo];
        const CanaleEditor& b = kCanaliEditor[secondo];
        // An input's list is enabled exactly when its channel is on.
        if (controlli.Spunta(a.Abil) && controlli.Spunta(b.Abil) &&
            controlli.Testo(a.Chann) == controlli.Testo(b.Chann)) {
            return std::pair{primo, secondo};
        }
    }
    return std::nullopt;
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
    for (std::size_t i = 0; i < kCanaliEditor.size(); ++i) {
        const CanaleEditor& canale = kCanaliEditor[i];
        record.*canale.CampoTCamp = controlli.Testo(canale.TCamp);
        record.*kCanaliSensore[i].Abil = controlli.Spunta(canale.Abil);
        record.*kCanaliSensore[i].Nome = controlli.Testo(canale.Nome);
    }
}

void SalvaIngressiSensori(const ControlliEditor& controlli, RecordProgetto& record) {
    for (const CanaleEditor& canale : kCanaliEditor) {
        if (canale.CampoChann != nullptr)
            record.*canale.CampoChann = Scelta(controlli, canale.Chann);
    }
}

void PreparaCurva(std::size_t canale, const ControlliEditor& controlli) {
    if (controlli.Spunta(kCanaliEditor[canale].AbilCurva)) {
        // Kept: a name that the library lacks leaves the curve of the channel before.
        CaricaCurvaSensore(controlli.Testo(kCanaliEditor[canale].Nome));
    } else {
        AzzeraCurvaSensore();
    }
}

void NominaCurva(std::size_t canale, ControlliEditor& controlli) {
    const std::string_view tipo = kCanaliSensore[canale].Tipo;
    const int fattore = FattoreSensore(tipo);
    for (std::size_t i = 0; i < CSensore::kPunti; ++i) CurvaY[i] /= fattore;
    controlli.Testo(kCanaliEditor[canale].Nome, CercaNomeSensore(tipo));
}

}  // namespace lapvane
