#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "project/DatiProgetto.h"
#include "shell/TabelleNomi.h"
#include "shell/Voci.h"

namespace lapvane {

// The fields of the editors of the instrument's settings that belong to no channel: controls, field
// of the project, name to a person. The link reads them here as well.

/// A list of the setup and its entries.
struct ListaSetup {
    std::string_view Lista;
    std::int16_t RecordProgetto::*Campo;
    const std::vector<std::string>* Voci;
    Voce Didascalia;
};
inline constexpr std::size_t kLingua = 0, kVelocita = 1, kTemperatura = 2, kPressione = 3;
inline constexpr std::array<ListaSetup, 4> kListeSetup = {{
    {"cboLingua", &RecordProgetto::Lingua, &ListaLingue, Voce::LinguaDisplay},
    {"cboUMVelocita", &RecordProgetto::UMVel, &ListaUMVelocita, Voce::UnitaVelocita},
    {"cboUMTemperatura", &RecordProgetto::UMTemp, &ListaUMTemperatura, Voce::UnitaTemperatura},
    {"cboUMPressione", &RecordProgetto::UMPress, &ListaUMPressione, Voce::UnitaPressione},
}};

/// A number box of the setup. Sectors take 32 bits, the others 16, whatever their field holds.
struct NumeroSetup {
    std::string_view Casella;
    CampoProgetto Campo;
    Voce Didascalia;
    bool Lungo = false;
};
inline constexpr std::size_t kRecVel = 0, kStopRec = 1, kMsgGiro = 2, kVisGiro = 3, kSettore = 4;
inline constexpr std::array<NumeroSetup, 9> kNumeriSetup = {{
    {"txtAbilRecVel", &RecordProgetto::mskAbilRecVel, Voce::AvvioOltreLaVelocita},
    {"txtStopRecSecondi", &RecordProgetto::mskStopRecSecondi, Voce::ArrestoDopo},
    {"txtTempoMsgGiro", &RecordProgetto::TempoMsgGiro, Voce::MessaggioGiro},
    {"txtTempoVisGiro", &RecordProgetto::TempoVisGiro, Voce::VisualizzazioneTempoGiro},
    {"txtSettoreCrono0", &RecordProgetto::Settore1, Voce::Settore1, true},
    {"txtSettoreCrono1", &RecordProgetto::Settore2, Voce::Settore2, true},
    {"txtSettoreCrono2", &RecordProgetto::Settore3, Voce::Settore3, true},
    {"txtSettoreCrono3", &RecordProgetto::Settore4, Voce::Settore4, true},
    {"txtSettoreCrono4", &RecordProgetto::Settore5, Voce::Settore5, true},
}};

/// A number box of the sensors, its label; whether a box of blanks is stored as 0.
struct NumeroSensori {
    std::string_view Casella;
    std::string_view Etichetta;
    Voce Didascalia;
    std::int16_t RecordProgetto::*Campo;
    bool VuotoZero = false;
};
inline constexpr std::size_t kNumAccRPM = 0, kImpulsiRuota = 1, kDiametroRuota = 2;
inline constexpr std::array<NumeroSensori, 3> kNumeriSensori = {{
    {"txtNumAccRPM", "lblNumAcc", Voce::AccensioniPerGiro, &RecordProgetto::NumAccRPM},
    {"txtImpulsiRuota", "lblNumImpulsi", Voce::ImpulsiRuota, &RecordProgetto::ImpulsiRuota, true},
    {"txtDiametroRuota", "lblDiametroRuota", Voce::DiametroRuota, &RecordProgetto::DiametroRuota,
     true},
}};

/// The sampling rate of a channel that has no sensor of the library.
struct FrequenzaSensori {
    std::string_view Lista;
    std::string_view Etichetta;
    std::string RecordProgetto::*Campo;
};
inline constexpr std::size_t kFrequenzaRPM = 0, kFrequenzaVV = 1;
inline constexpr std::array<FrequenzaSensori, 2> kFrequenzeSensori = {{
    {"cboTCampRPM", "lblTCRPM", &RecordProgetto::TCampRPM},
    {"cboTCampVV", "lblTCVV", &RecordProgetto::TCampVV},
}};

/// A line that raises an alarm by its level; its name is the title of its frame.
struct LivelloSensori {
    std::string_view Cornice;
    Voce Didascalia;
    std::string_view Lista;
    std::string_view Etichetta;
    std::int16_t RecordProgetto::*Campo;
    const std::vector<std::string>* Voci;
};
inline constexpr std::array<LivelloSensori, 2> kLivelliSensori = {{
    {"fraPompaOlio", Voce::CornicePompaOlio, "cboLAPO", "lblLAPO", &RecordProgetto::LAPO,
     &ListaCanaliA},
    {"fraAlternatore", Voce::CorniceAlternatore, "cboLAAL", "lblLAAL", &RecordProgetto::LAAL,
     &ListaCanaliB},
}};

/// A speed of the shift light in RPM.
struct LuceShift {
    std::string_view Casella;
    std::int16_t RecordProgetto::*Campo;
    Voce Didascalia;
};
/// First light first.
inline constexpr std::array<LuceShift, 5> kShiftLight = {{
    {"txtLed0", &RecordProgetto::Led0, Voce::Led1},
    {"txtLed1", &RecordProgetto::Led1, Voce::Led2},
    {"txtLed2", &RecordProgetto::Led2, Voce::Led3},
    {"txtLed3", &RecordProgetto::Led3, Voce::Led4},
    {"txtLed4", &RecordProgetto::Led4, Voce::Led5},
}};

/// A lamp or a line of the alarms behind its check box: what it is for, as a position of the list
/// from 1 (0 for none) or, without entries, as a free text.
struct FunzioneAllarme {
    std::string_view Spunta;
    std::string_view Lista;
    Voce Didascalia;
    bool RecordProgetto::*Attiva;
    CampoProgetto Tipo;
    const std::vector<std::string>* Voci = nullptr;
};
inline constexpr std::size_t kLedGiallo = 0, kLedVerde = 1, kLedBlu = 2, kIngresso = 3, kUscita = 4;
inline constexpr std::array<FunzioneAllarme, 5> kFunzioniAllarme = {{
    {"chkLedGiallo", "cboLedGiallo", Voce::LedGiallo, &RecordProgetto::LedGiallo,
     &RecordProgetto::TipoLedGiallo, &ListaAllarmeExtra},
    {"chkLedVerde", "cboLedVerde", Voce::LedVerde, &RecordProgetto::LedVerde,
     &RecordProgetto::TipoLedVerde},
    {"chkLedBlu", "cboLedBlu", Voce::LedBlu, &RecordProgetto::LedBlu, &RecordProgetto::TipoLedBlu},
    {"chkIngresso", "cboIngresso", Voce::IngressoDigitale, &RecordProgetto::chkIngresso,
     &RecordProgetto::TipoIngresso, &ListaAllarmeBase},
    {"chkUscita", "cboUscita", Voce::UscitaDigitale, &RecordProgetto::chkUscita,
     &RecordProgetto::TipoUscita, &ListaAllarmi},
}};

}  // namespace lapvane
