#include "device/Diagnostica.h"

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "shell/NumeroTesto.h"
#include "shell/StatoShell.h"

namespace lapvane {

VistaDiagnostica* DiagnosticaAperta = nullptr;
std::array<std::int16_t, kIngressiAnalogici> ValoriAnalogici{};

const std::array<CampoLive, 16> CampiLive = {{{0, Voce::VivoGiriMotore, ' '},
                                              {2, Voce::Velocita, 'V'},
                                              {3, Voce::TemperaturaOlio, 'T'},
                                              {4, Voce::TemperaturaAcqua, 'T'},
                                              {5, Voce::PressioneOlio, 'P'},
                                              {6, Voce::VivoPressioneBenzina, 'P'},
                                              {7, Voce::VivoTensioneBatteria, ' '},
                                              {8, Voce::VivoGiriCompletati, ' '},
                                              // The text of the fuel level; the table's other
                                              // number for this field says battery voltage.
                                              {9, Voce::LivelloBenzina, ' '},
                                              {10, Voce::Marcia, ' '},
                                              {11, Voce::PressioneTurbo, 'P'},
                                              {12, Voce::VivoFarfalla, ' '},
                                              {13, Voce::SensoreG, ' '},
                                              {14, Voce::SondaLambda, ' '},
                                              {15, Voce::VivoMemoriaLibera, ' '},
                                              {16, Voce::Nessuna, ' '}}};

namespace {

constexpr int kComandoLive = 37;
constexpr int kComandoAnalogici = 9;
constexpr std::size_t kCaratteriLive = 36;
constexpr std::size_t kCaratteriAnalogici = 19;
constexpr int kPausa = 50;            // ms
constexpr int kPrimoBitAllarme = 8;   // of the flag word
constexpr double kMemoria = 2096384;  // bytes of the log memory

enum class Tipo { Int16, Byte, SByte };

/// Where a value stands in the live reply and how it is shown.
struct Posto {
    int Campo;
    std::size_t Byte;  ///< from 1
    Tipo Come;
    double Divisore;
    const char* Figura;  ///< none: plain decimal text
};

constexpr std::array<Posto, 15> kPosti = {{{0, 5, Tipo::Int16, 1, ""},
                                           {2, 9, Tipo::Int16, 1, ""},
                                           {3, 11, Tipo::Int16, 10, "##0.0"},
                                           {4, 13, Tipo::Int16, 10, "##0.0"},
                                           {5, 15, Tipo::Int16, 1000, "##0.000"},
                                           {6, 17, Tipo::Int16, 1000, "##0.000"},
                                           {7, 19, Tipo::Int16, 10, "##0.0"},
                                           {8, 23, Tipo::Int16, 1, ""},
                                           {9, 25, Tipo::Byte, 10, "##0.0"},
                                           {10, 26, Tipo::Byte, 1, ""},
                                           {11, 27, Tipo::SByte, 10, "##0.0"},
                                           {12, 28, Tipo::Byte, 1, ""},
                                           {13, 29, Tipo::SByte, 10, "##0.0"},
                                           {14, 30, Tipo::Int16, 100, "##0.00"},
                                           {16, 30, Tipo::Int16, 1470, "##0.000"}}};

int Leggi(const std::string& risposta, const Posto& posto) {
    switch (posto.Come) {
        case Tipo::Byte:
            return ByteIn(risposta, posto.Byte);
        case Tipo::SByte:
            return SByteIn(risposta, posto.Byte);
        case Tipo::Int16:
            break;
    }
    return Int16In(risposta, posto.Byte);
}

/// Reads one of the two groups. What fails is shown in the window before it is told: the message
/// stands until somebody comes.
std::string LeggiGruppo(GruppoLive gruppo, int comando, std::size_t caratteri) {
    const std::string risposta = Domanda(Frame(comando), caratteri);
    if (DiagnosticaAperta != nullptr) DiagnosticaAperta->Letto(gruppo, !risposta.empty());
    if (risposta.empty()) {
        SegnalaErroreComunicazione();
    } else {
        ErroreComunicazione = false;
    }
    return risposta;
}

/// The same behind the check of the link.
void Leggi(VistaDiagnostica& vista, GruppoLive gruppo, void (*lettura)()) {
    if (LinkPronto()) {
        lettura();
    } else {
        vista.Letto(gruppo, false);
    }
}

/// A pause of the cycle, during which events run.
void Pausa(const VistaDiagnostica& vista) {
    const std::int64_t fine = platform().GetTickCount() + kPausa;
    while (vista.Visibile()) {
        const std::int64_t resto = fine - platform().GetTickCount();
        if (resto <= 0) return;
        platform().DoEvents(static_cast<int>(resto));
    }
}

}  // namespace

void LeggiValoriLive() {
    const std::string risposta = LeggiGruppo(GruppoLive::Valori, kComandoLive, kCaratteriLive);
    // Events ran meanwhile, and the window may be gone.
    if (risposta.empty() || DiagnosticaAperta == nullptr) return;
    VistaDiagnostica& vista = *DiagnosticaAperta;
    const int avvisi = Int16In(risposta, 3);
    for (int n = 0; n < kAllarmiLive; ++n) {
        vista.Allarme(n, BitAttivo(avvisi, n + kPrimoBitAllarme));
    }
    const char separatore = platform().DecimalSeparator();
    for (const Posto& posto : kPosti) {
        const double valore = Leggi(risposta, posto) / posto.Divisore;
        vista.ValoreCampo(posto.Campo, *posto.Figura == '\0'
                                           ? TestoNumero(valore, separatore)
                                           : Formatta(valore, posto.Figura, separatore));
    }
    // Kept: the free memory is shown with all its decimals.
    const double libera = (kMemoria - LongIn(risposta, 32)) / kMemoria * 100.0;
    vista.ValoreCampo(15, TestoNumero(libera, separatore));
}

void LeggiValoriAnalogici() {
    const std::string risposta =
        LeggiGruppo(GruppoLive::Analogici, kComandoAnalogici, kCaratteriAnalogici);
    if (risposta.empty()) return;
    for (int i = 0; i < kIngressiAnalogici; ++i) {
        const int valore = Int16In(risposta, 3 + 2 * static_cast<std::size_t>(i));
        if (DiagnosticaAperta != nullptr) {
            DiagnosticaAperta->ValoreAnalogico(i, TestoNumero(valore));
        } else {
            ValoriAnalogici[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(valore);
        }
    }
}

void EseguiDiagnostica(VistaDiagnostica& vista) {
    // Kept: nothing sets it back when the window closes, so that the poll stays off the port until
    // the next transfer ends.
    FaseComunicazione = kComandoLive;
    while (vista.Visibile()) {
        Leggi(vista, GruppoLive::Valori, LeggiValoriLive);
        Pausa(vista);
        if (!vista.Visibile()) break;
        Leggi(vista, GruppoLive::Analogici, LeggiValoriAnalogici);
        Pausa(vista);
    }
}

}  // namespace lapvane
