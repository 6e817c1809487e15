#pragma once

#include <array>
#include <string>
#include <string_view>

#include "project/DatiProgetto.h"

namespace lapvane {

/// A curve channel of the instrument: the sensor type that fits it, its fields of the project, and
/// what the program says while it writes and while it reads the curve. Two channels share a type.
struct CanaleSensore {
    std::string_view Tipo;
    std::string RecordProgetto::*Nome;
    bool RecordProgetto::*Abil;
    int TestoInvio;
    int TestoLettura;
};

/// The nine channels; the position is the number that the transfer routines take.
inline constexpr std::array<CanaleSensore, 9> kCanaliSensore = {{
    {"TemperaturaOlio", &RecordProgetto::TemperaturaOlio, &RecordProgetto::AbilTO, 151, 159},
    {"Pressione", &RecordProgetto::PressioneOlio, &RecordProgetto::AbilPO, 152, 160},
    {"Pressione", &RecordProgetto::PressioneBenzina, &RecordProgetto::AbilPB, 153, 161},
    {"TemperaturaAcqua", &RecordProgetto::TemperaturaAcqua, &RecordProgetto::AbilTA, 154, 162},
    {"LivelloBenzina", &RecordProgetto::LivelloBenzina, &RecordProgetto::AbilLB, 155, 163},
    {"Altro", &RecordProgetto::Cambio, &RecordProgetto::AbilCambio, 156, 164},
    {"SensoreLambda", &RecordProgetto::SensoreLambda, &RecordProgetto::AbilSensoreLambda, 322, 323},
    {"PressioneTurbo", &RecordProgetto::PressioneTurbo, &RecordProgetto::AbilPT, 331, 333},
    {"SensoreG", &RecordProgetto::SensoreG, &RecordProgetto::AbilSG, 332, 334},
}};

}  // namespace lapvane
