#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "shell/LoadStrings.h"

namespace lapvane {

constexpr int kCampiLive = 17;         ///< values of the live view, 0 to 16; 1 is not used
constexpr int kIngressiAnalogici = 8;  ///< analogue inputs of the instrument
constexpr int kAllarmiLive = 8;

/// What one of the two reads of the live view brings: fields and alarms, or analogue inputs.
enum class GruppoLive { Valori, Analogici };

/// The window of the live view, as the reads fill it.
class VistaDiagnostica {
 public:
    virtual ~VistaDiagnostica() = default;
    virtual void ValoreCampo(int campo, const std::string& testo) = 0;  ///< txtValoreCampo
    virtual void Allarme(int n, bool acceso) = 0;                       ///< shpAllarme n + 2
    virtual void ValoreAnalogico(int ingresso,
                                 const std::string& testo) = 0;  ///< txtValoreAnalogico
    /// A group was read, or could not be: what it shows is old then.
    virtual void Letto(GruppoLive gruppo, bool riuscito) = 0;
    virtual bool Visibile() const = 0;
};

/// Raw values of the analogue inputs, filled by a read without the window.
extern std::array<std::int16_t, kIngressiAnalogici> ValoriAnalogici;

/// One value of the live view.
struct CampoLive {
    int Campo;    ///< index of txtValoreCampo
    Voce Testo;   ///< its caption; `Nessuna`: none of its own
    char Misura;  ///< 'V' speed, 'T' temperature, 'P' pressure unit; ' ': none
};
extern const std::array<CampoLive, 16> CampiLive;

/// Caption of alarm lamp `n`, 0 to 7.
constexpr Voce TestoAllarmeLive(int n) {
    return Dopo(Voce::AllarmePompaOlio, n);
}

/// Sends frame 37 and fills the window.
void LeggiValoriLive(VistaDiagnostica& vista);
/// Sends frame 9. The raw values go to the window as text, without one into `ValoriAnalogici`.
void LeggiValoriAnalogici(VistaDiagnostica* vista = nullptr);

/// The cycle of the live view: both reads with their pauses, as long as the window is visible. The
/// window must live until it returns.
void EseguiDiagnostica(VistaDiagnostica& vista);

}  // namespace lapvane
