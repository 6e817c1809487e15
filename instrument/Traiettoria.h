#pragma once

#include <cstddef>
#include <vector>

#include "instrument/Circuito.h"

namespace lapvane::strumento {

constexpr double kGravita = 9.81;  // m/s2

/// What slows the car: drag and rolling resistance at a speed, as a deceleration in m/s2.
double Resistenza(double velocita);
/// What its engine could give at a speed, as an acceleration in m/s2 before resistance.
double Spinta(double velocita);

/// Where the car is at a moment. Metres count from the first crossing of the line; before it they
/// are negative.
struct Moto {
    double Posizione = 0.0;
    double Velocita = 0.0;       // m/s
    double Accelerazione = 0.0;  // m/s2, along the track
    bool Sosta = false;          // standing at a fuel stop
};

/// The drive of a whole session: out of the pits, `giri` complete laps, and a stretch to where the
/// car stops. Every run gives the same drive. With four laps or more one is slow (behind other
/// cars) and one is clearly the best; on long runs the car stops for fuel before the end of a lap.
class Traiettoria {
 public:
    Traiettoria(const Circuito& circuito, int giri);

    int Giri() const { return giri_; }
    double Lunghezza() const { return lunghezza_; }
    /// Moment in seconds of crossing `k` of the line, from 0 (the first) to `Giri()`.
    double Passaggio(int k) const;
    /// Seconds until the car stands at the end.
    double Durata() const { return nodi_.back().Arrivo; }
    Moto Al(double secondi) const;
    /// The lap, from 0, behind other cars and the best lap; -1 when there is none.
    int GiroLento() const { return lento_; }
    int GiroMigliore() const { return migliore_; }

 private:
    struct Nodo {
        double Arrivo = 0.0;  // s
        double Attesa = 0.0;  // s that the car stands here
        double Velocita = 0.0;
    };
    struct Strada;

    // The steps of the computation: what the corners allow, where the car stands, braking early
    // enough (backwards), no faster than the engine can (forwards, with the times).
    void LimitaInCurva(Strada& strada);
    void MettiSoste();
    void Frena(const Strada& strada);
    void Accelera(const Strada& strada);
    /// Node of the lap, and lap counted from the stretch before the first crossing, of a node.
    std::size_t NelGiro(std::size_t i) const { return (i + nodiGiro_ - nodiInizio_) % nodiGiro_; }
    std::size_t Giro(std::size_t i) const { return (i + nodiGiro_ - nodiInizio_) / nodiGiro_; }

    int giri_;
    double lunghezza_;
    double passo_ = 0.0;  // metres between two nodes; a lap is a whole number of them
    std::size_t nodiGiro_ = 0;
    std::size_t nodiInizio_ = 0;  // nodes before the first crossing
    int lento_ = -1;
    int migliore_ = -1;
    std::vector<Nodo> nodi_;
};

}  // namespace lapvane::strumento
