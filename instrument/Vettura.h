#pragma once

#include "instrument/Caso.h"
#include "instrument/Traiettoria.h"

namespace lapvane::strumento {

/// The alarm lines, as bits of the flag word.
enum BitAllarme : unsigned {
    kPompaOlio = 1u << 8,
    kAlternatore = 1u << 9,
    kTemperaturaOlio = 1u << 10,
    kTemperaturaAcqua = 1u << 11,
    kBatteria = 1u << 12,
    kPressioneBenzina = 1u << 13,
    kPressioneOlio = 1u << 14,
    kLivelloBenzina = 1u << 15,
};

/// What happens around the car in a tenth of a second.
struct Contesto {
    Moto Auto;
    double Curvatura = 0.0;
    bool Traffico = false;     // close behind other cars: the radiator gets hot air
    bool Sbattimento = false;  // the oil leaves the pump's mouth in this corner
};

/// The physical values that the instrument measures; at first those of a cold, idling car.
struct Misure {
    double GiriMotore = 0.0;     // RPM
    int Marcia = 0;              // 0 while standing
    double Turbo = -0.6;         // bar
    double Farfalla = 0.0;       // percent
    double Accelerazione = 0.0;  // g, along the track
    double TempOlio = 62.0;      // degrees C
    double TempAcqua = 68.0;
    double PressOlio = 2.4;  // bar
    double PressBenzina = 3.8;
    double Livello = 0.0;    // litres, as the float in the tank shows them
    double Batteria = 12.4;  // V
    double AriaBenzina = 14.7;
    double Velocita = 0.0;  // km/h
    unsigned Allarmi = 0;   // bits 8 to 15
};

constexpr double kSerbatoio = 24.0;  // litres

/// Engine, gearbox, fluids and electrics of the car, stepped every tenth of a second.
class Vettura {
 public:
    /// `metri`: how far the session goes; the tank is filled for it.
    explicit Vettura(double metri);

    const Misure& Passo(const Contesto& contesto);

 private:
    void Motore(const Contesto& contesto);
    void Fluidi(const Contesto& contesto);
    void Benzina(const Contesto& contesto);
    void Allarmi();

    Misure misure_;
    double litri_;
    Caso caso_;
};

}  // namespace lapvane::strumento
