#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "instrument/Memoria.h"

namespace lapvane::strumento {

/// The live values: the recorded session played again and again, with the slow channels moving
/// between their readings. Without a log the car stands with its engine off.
struct ValoriVivi {
    unsigned Segnali = 0;  ///< alarm lines, bits 8 to 15
    int GiriMotore = 0;    ///< RPM
    int Distanza = 0;      ///< metres since the line
    double Velocita = 0.0;
    double TempOlio = 21.0;
    double TempAcqua = 20.5;
    double PressOlio = 0.0;
    double PressBenzina = 0.0;
    double Batteria = 12.5;
    double Livello = 24.0;  ///< litres
    int Marcia = 0;
    int Turbo = 0;  ///< tenths of bar
    int Farfalla = 0;
    int Accelerazione = 0;  ///< tenths of G
    double AriaBenzina = 14.7;
};

/// What the instrument measures `ms` after the replay began.
ValoriVivi VivoAl(const Memoria& memoria, std::int64_t ms);

/// The live frame's data behind "R" and the command: 33 bytes.
std::string DatiVivi(const ValoriVivi& valori, const Memoria& memoria);

/// Raw reading of the fuel input for so many litres of a tank of 60. Some floats rise with the
/// level and some fall.
std::int16_t LivelloGrezzo(double litri, bool scende = false);

/// Raw readings (0 to 1023) of the eight analogue inputs: oil temperature, oil pressure, fuel
/// pressure, water temperature, fuel level, battery and the two free ones.
std::array<std::int16_t, 8> IngressiAnalogici(const ValoriVivi& valori);

}  // namespace lapvane::strumento
