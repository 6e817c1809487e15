#include "device/Diagnostica.h"

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "shell/NumeroTesto.h"
#include "shell/StatoShell.h"

namespace lapvane {

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

/// Where a value stands in the live reply and how it is shown.
struct Posto {
    int Campo;
    std::size_t Byte;  ///< from 1
    std::size_t Larghezza;
    std::string (*Decodifica)(std::string_view);
    double Divisore;
    const char* Figura;  ///< none: plain decimal text
};

constexpr std::array<Posto, 15> kPosti = {{{0, 5, 2, DecodificaInt16, 1, ""},
                                           {2, 9, 2, DecodificaInt16, 1, ""},
                                           {3, 11, 2, DecodificaInt16, 10, "##0.0"},
                                           {4, 13, 2, DecodificaInt16, 10, "##0.0"},
                                           {5, 15, 2, DecodificaInt16, 1000, "##0.000"},
                                           {6, 17, 2, DecodificaInt16, 1000, "##0.000"},
                                           {7, 19, 2, DecodificaInt16, 10, "##0.0"},
                                           {8, 23, 2, DecodificaInt16, 1, ""},
                                           {9, 25, 1, DecodificaByte, 10, "##0.0"},
                                           {10, 26, 1, DecodificaByte, 1, ""},
                                           {11, 27, 1, DecodificaSByte, 10, "##0.0"},
                                           {12, 28, 1, DecodificaByte, 1, ""},
                                           {13, 29, 1, DecodificaSByte, 10, "##0.0"},
                                           {14, 30, 2, DecodificaInt16, 100, "##0.00"},
                                           {16, 30, 2, DecodificaInt16, 1470, "##0.000"}}};

std::string Mostra(const Posto& posto, std::string_view risposta, char separatore) {
    std::string letto = posto.Decodifica(risposta.substr(posto.Byte - 1, posto.Larghezza));
    if (*posto.Figura == '\0') return letto;
    return Formatta(Intero(letto) / posto.Divisore, posto.Figura, separatore);
}

/// Reads one of the two groups. What fails is shown in the window before it is told: the message
/// stands until somebody comes.
std::string LeggiGruppo(VistaDiagnostica* vista, GruppoLive gruppo, int comando,
                        std::size_t caratteri) {
    std::string risposta = Domanda(Frame(comando), caratteri);
    if (vista != nullptr) vista->Letto(gruppo, !risposta.empty());
    if (risposta.empty()) {
        SegnalaErroreComunicazione();
    } else {
        ErroreComunicazione = false;
    }
    return risposta;
}

/// One group of the cycle, behind the check of the link.
void Leggi(VistaDiagnostica& vista, GruppoLive gruppo) {
    if (!LinkPronto()) {
        vista.Letto(gruppo, false);
    } else if (gruppo == GruppoLive::Valori) {
        LeggiValoriLive(vista);
    } else {
        LeggiValoriAnalogici(&vista);
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

void LeggiValoriLive(VistaDiagnostica& vista) {
    const std::string risposta =
        LeggiGruppo(&vista, GruppoLive::Valori, kComandoLive, kCaratteriLive);
    if (risposta.empty()) return;
    const std::int32_t avvisi = Intero(DecodificaInt16(risposta.substr(2, 2)));
    for (int n = 0; n < kAllarmiLive; ++n) {
        vista.Allarme(n, BitAttivo(avvisi, n + kPrimoBitAllarme));
    }
    const char separatore = platform().DecimalSeparator();
    for (const Posto& posto : kPosti) {
        vista.ValoreCampo(posto.Campo, Mostra(posto, risposta, separatore));
    }
    // Kept: the free memory is shown with all its decimals.
    const double libera =
        (kMemoria - Intero(DecodificaLong(risposta.substr(31, 4)))) / kMemoria * 100.0;
    vista.ValoreCampo(15, TestoNumero(libera, separatore));
}

void LeggiValoriAnalogici(VistaDiagnostica* vista) {
    const std::string risposta =
        LeggiGruppo(vista, GruppoLive::Analogici, kComandoAnalogici, kCaratteriAnalogici);
    if (risposta.empty()) return;
    for (int i = 0; i < kIngressiAnalogici; ++i) {
        const auto posto = static_cast<std::size_t>(i);
        const std::string valore = DecodificaInt16(risposta.substr(2 + 2 * posto, 2));
        if (vista != nullptr) {
            vista->ValoreAnalogico(i, valore);
        } else {
            ValoriAnalogici[posto] = static_cast<std::int16_t>(Intero(valore));
        }
    }
}

void EseguiDiagnostica(VistaDiagnostica& vista) {
    // Kept: nothing sets it back when the window closes, so that the poll stays off the port until
    // the next transfer ends.
    FaseComunicazione = kComandoLive;
    while (vista.Visibile()) {
        Leggi(vista, GruppoLive::Valori);
        Pausa(vista);
        if (!vista.Visibile()) break;
        Leggi(vista, GruppoLive::Analogici);
        Pausa(vista);
    }
}

}  // namespace lapvane
