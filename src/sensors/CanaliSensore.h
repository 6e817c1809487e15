#pragma once

#include <array>
#include <string>
#include <string_view>

#include "project/DatiProgetto.h"
#include "shell/Voci.h"

namespace lapvane {

/// A curve channel of the instrument: the sensor type that fits it, its fields of the project, and
/// what the program says while it writes and while it reads the curve. Two channels share a type.
struct CanaleSensore {
    std::string_view Tipo;
    std::string RecordProgetto::*Nome;
    bool RecordProgetto::*Abil;
    Voce TestoInvio;
    Voce TestoLettura;
};

/// The nine channels; the position is the number that the transfer routines take.
inline constexpr std::array<CanaleSensore, 9> kCanaliSensore = {{
    {"TemperaturaOlio", &RecordProgetto::TemperaturaOlio, &RecordProgetto::AbilTO,
     Voce::InvioCurvaTemperaturaOlio, Voce::LetturaCurvaTemperaturaOlio},
    {"Pressione", &RecordProgetto::PressioneOlio, &RecordProgetto::AbilPO,
     Voce::InvioCurvaPressioneOlio, Voce::LetturaCurvaPressioneOlio},
    {"Pressione", &RecordProgetto::PressioneBenzina, &RecordProgetto::AbilPB,
     Voce::InvioCurvaPressioneBenzina, Voce::LetturaCurvaPressioneBenzina},
    {"TemperaturaAcqua", &RecordProgetto::TemperaturaAcqua, &RecordProgetto::AbilTA,
     Voce::InvioCurvaTemperaturaAcqua, Voce::LetturaCurvaTemperaturaAcqua},
    {"LivelloBenzina", &RecordProgetto::LivelloBenzina, &RecordProgetto::AbilLB,
     Voce::InvioCurvaLivelloBenzina, Voce::LetturaCurvaLivelloBenzina},
    {"Altro", &RecordProgetto::Cambio, &RecordProgetto::AbilCambio, Voce::InvioCurvaMarcia,
     Voce::LetturaCurvaMarcia},
    {"SensoreLambda", &RecordProgetto::SensoreLambda, &RecordProgetto::AbilSensoreLambda,
     Voce::InvioCurvaLambda, Voce::LetturaCurvaLambda},
    {"PressioneTurbo", &RecordProgetto::PressioneTurbo, &RecordProgetto::AbilPT,
     Voce::InvioCurvaPressioneTurbo, Voce::LetturaCurvaPressioneTurbo},
    {"SensoreG", &RecordProgetto::SensoreG, &RecordProgetto::AbilSG, Voce::InvioCurvaSensoreG,
     Voce::LetturaCurvaSensoreG},
}};

}  // namespace lapvane
