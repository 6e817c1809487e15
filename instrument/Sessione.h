#pragma once

#include "instrument/Circuito.h"
#include "instrument/Memoria.h"

namespace lapvane::strumento {

constexpr int kGiriNormali = 14;
/// More than the 999 laps that a download can hold, so that its limit can be tried.
constexpr int kGiriMassimi = 1100;

enum class ModoSessione {
    Normale,  ///< `Giri` complete laps; what the log cannot hold is in the lap memory alone
    Piena,    ///< the log filled to its last byte, with the laps that fit
    Vuota,    ///< nothing recorded
};

struct ParametriSessione {
    ModoSessione Modo = ModoSessione::Normale;
    int Giri = kGiriNormali;  ///< 1 to `kGiriMassimi`
};

/// Erases log and laps and records a session on a circuit: a stretch out of the pits, complete laps
/// and a stretch behind the last crossing, so that the line is crossed once more than there are
/// laps. The same parameters give the same bytes.
void RegistraSessione(const Circuito& circuito, const ParametriSessione& parametri,
                      Memoria& memoria);

}  // namespace lapvane::strumento
