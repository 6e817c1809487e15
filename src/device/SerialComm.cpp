#include "device/SerialComm.h"

#include <algorithm>
#include <optional>

#include "device/Codec.h"
#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "shell/Editor.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

bool ErroreComunicazione = false;

StatoCollegamento& collegamento() {
    static StatoCollegamento stato;
    return stato;
}

namespace {

constexpr int kUltimaPorta = 20;
constexpr int kGiro = 5;  // ms, of a round of a wait whose end no event tells
constexpr int kHandshake = 1;
constexpr int kIdentita = 2;
constexpr std::size_t kRispostaIdentita = 13;

enum class Eventi { Corrono, Fermi };

// How long somebody waits for a port from which an instrument has answered before, and for a port
// that is only tried: the next scan tries it again.
constexpr int kPazienza = 250;  // ms
constexpr int kImpazienza = 0;

/// Whether nobody waits any more for what a wait waits for.
bool Rinuncia(int pazienza = kPazienza) {
    return collegamento().Abbandonato || principale().RinunciaAttesa(pazienza);
}

/// The clock of the waits, which stands still while a person is asked.
std::int64_t Adesso() {
    return platform().GetTickCount() - collegamento().Sospeso;
}

/// Lets events run until one has, but no longer than `resto` ms. What a wait waits for comes as an
/// event, a reply and who asks for something; the patience of who has asked runs out without one.
void Cedi(std::int64_t resto) {
    if (resto <= 0) return;
    const std::int64_t giro = Rinuncia(0) ? std::min<std::int64_t>(resto, kGiro) : resto;
    platform().DoEvents(static_cast<int>(giro));
}

/// The wait behind a frame that was written. The port may be closed under it by what runs in
/// `Cedi`, so its state is asked anew in each round.
bool AttendiEsito(std::string_view attesa, int millisecondi, Eventi eventi,
                  int pazienza = kPazienza) {
    SerialControl& porta = principale().SerialComm();
    const std::int64_t scadenza = Adesso() + millisecondi;
    do {
        if (!porta.PortOpen()) return false;
        if (attesa.empty()) {
            if (porta.OutBufferCount() == 0) return true;
        } else if (porta.InBufferCount() >= attesa.size()) {
            if (porta.Input() == attesa) return true;
        }
        if (Rinuncia(pazienza)) return false;
        if (eventi == Eventi::Fermi) {
            porta.WaitForInput(kGiro);
        } else {
            // Not every machine tells that a frame has drained.
            Cedi(attesa.empty() ? kGiro : scadenza - Adesso());
        }
    } while (scadenza > Adesso());
    return false;
}

void Svuota(SerialControl& porta) {
    porta.ClearOutBuffer();
    porta.ClearInBuffer();
    porta.InputLen(0);
}

void MostraErroreControllo(Voce testo) {
    platform().MsgBox(Testo(testo), Buttons::Ok, Icon::Information, platform().ExeName());
}

bool Scrivi(const std::string& frame, std::string_view attesa, int attesaConferma, Eventi eventi) {
    constexpr int kSvuotamento = 3000;
    SerialControl& porta = principale().SerialComm();
    try {
        if (!porta.PortOpen()) return false;
        Svuota(porta);
        porta.Output(frame);
        return AttendiEsito(attesa, attesa.empty() ? kSvuotamento : attesaConferma, eventi);
    } catch (const ErroreControllo&) {
        MostraErroreControllo(Voce::ErroreScritturaDati);
        return false;
    }
}

void Lampeggia(Pannello pannello) {
    constexpr int kDurata = 500;
    principale().ImmaginePannello(pannello, 4);
    const std::int64_t fine = platform().GetTickCount() + kDurata;
    while (platform().GetTickCount() < fine) Cedi(fine - platform().GetTickCount());
    principale().ImmaginePannello(pannello, 3);
}

/// Tries one port: true leaves it open.
bool ProvaPorta(int numero) {
    SerialControl& porta = principale().SerialComm();
    try {
        porta.CommPort(numero);
        porta.PortOpen(true);
    } catch (const ErroreControllo&) {
        // A port that does not open is a port where nobody answers.
    }
    principale().TestoPannello(Pannello::Collegamento,
                               "Connecting COM" + TestoNumero(numero) + "...");
    if (porta.PortOpen()) {
        // Not `ScriviFrame`: its message box has no place in a scan, where errors are ignored.
        try {
            Svuota(porta);
            porta.Output(Frame(kHandshake));
            if (AttendiEsito(Conferma(kHandshake), FaseComunicazione != 0 ? 10000 : 2000,
                             Eventi::Corrono, kImpazienza)) {
                return true;
            }
        } catch (const ErroreControllo&) {
        }
    }
    try {
        porta.PortOpen(false);
    } catch (const ErroreControllo&) {
    }
    return false;
}

}  // namespace

void ImpostaPorta() {
    SerialControl& porta = principale().SerialComm();
    porta.Settings("19200,N,8,1");
    porta.Handshaking(0);
    porta.ClearOutBuffer();
    porta.ClearInBuffer();
    porta.InBufferSize(300);
    porta.OutBufferSize(300);
    porta.InputLen(0);
    porta.DTREnable(false);
    porta.RTSEnable(true);
}

bool LinkPronto() {
    SerialControl& porta = principale().SerialComm();
    if (!porta.PortOpen()) {
        try {
            ImpostaPorta();
            porta.ClearOutBuffer();
            porta.ClearInBuffer();
        } catch (const ErroreControllo&) {
        }
        principale().ImmaginePannello(Pannello::Collegamento, 2);
        principale().AbilitaPannello(Pannello::Identita, false);
        for (int numero = 1; numero <= kUltimaPorta; ++numero) {
            if (ProvaPorta(numero) || Rinuncia(kImpazienza)) break;
        }
        // Where the poll rests nothing else would ever say how the scan has ended.
        if (porta.PortOpen()) {
            MostraComunicazione();
        } else {
            MostraNessunaComunicazione();
        }
    }
    platform().MousePointer(Pointer::Normal);
    return porta.PortOpen();
}

void ChiudiPorta() {
    SerialControl& porta = principale().SerialComm();
    try {
        if (porta.PortOpen()) porta.PortOpen(false);
    } catch (const ErroreControllo&) {
        // A port that fails to close is gone; there is nothing left to close.
    }
}

bool ScriviFrame(const std::string& frame, std::string_view attesa) {
    return Scrivi(frame, attesa, FaseComunicazione != 0 ? 10000 : 2000, Eventi::Corrono);
}

bool ScriviFrameLento(const std::string& frame, std::string_view attesa) {
    return Scrivi(frame, attesa, 10000, Eventi::Fermi);
}

std::string RiceviRisposta(std::size_t numero) {
    constexpr int kRisposta = 5000;
    SerialControl& porta = principale().SerialComm();
    try {
        if (!porta.PortOpen()) return {};
        const std::int64_t scadenza = Adesso() + kRisposta;
        std::string risposta;
        for (;;) {
            if (risposta.size() == numero) return risposta;
            porta.InputLen(numero - risposta.size());
            risposta += porta.Input();
            if (!porta.PortOpen() || Rinuncia()) return {};
            if (scadenza < Adesso()) return {};
            if (risposta.size() < numero) Cedi(scadenza - Adesso() + 1);
        }
    } catch (const ErroreControllo&) {
        MostraErroreControllo(Voce::ErroreLetturaDati);
        return {};
    }
}

void LampeggiaTX() {
    Lampeggia(Pannello::TX);
}
void LampeggiaRX() {
    Lampeggia(Pannello::RX);
}

void MostraNessunaComunicazione() {
    principale().ImmaginePannello(Pannello::Collegamento, 2);
    principale().TestoPannello(Pannello::Collegamento, "NO COMMUNICATION");
    principale().AbilitaPannello(Pannello::Identita, false);
}

void MostraComunicazione() {
    principale().ImmaginePannello(Pannello::Collegamento, 1);
    principale().TestoPannello(Pannello::Collegamento,
                               "COM " + TestoNumero(principale().SerialComm().CommPort()));
    principale().AbilitaPannello(Pannello::Identita, true);
}

void VerificaComunicazione() {
    constexpr int kMuto = 1000;  // ms
    const std::int64_t inizio = platform().GetTickCount();
    const std::string risposta = Domanda(Frame(kIdentita), kRispostaIdentita);
    const bool interrotta = Rinuncia() && principale().SerialComm().PortOpen() &&
                            platform().GetTickCount() - inizio < kMuto;
    if (risposta.empty() && interrotta) {
        // Somebody had no time for the reply: that says nothing of the instrument.
    } else if (risposta.empty()) {
        MostraNessunaComunicazione();
        StrumentoPresente = false;
    } else {
        MostraComunicazione();
        collegamento().Identita = risposta.substr(2, 10);
        principale().TestoPannello(Pannello::Identita, collegamento().Identita);
        StrumentoPresente = true;
    }
    ErroreComunicazione = false;
}

void SegnalaErroreComunicazione() {
    ErroreComunicazione = true;
    platform().MousePointer(Pointer::Normal);
    if (collegamento().Abbandonato) return;
    platform().MsgBox(Testo(Voce::StrumentoNonRisponde), Buttons::Ok, Icon::None,
                      platform().ExeName());
}

std::string Domanda(const std::string& frame, std::size_t numero) {
    return ScriviFrame(frame) ? RiceviRisposta(numero) : std::string();
}

std::string ChiediStrumento(const std::string& frame, std::size_t numero) {
    std::string risposta = Domanda(frame, numero);
    if (risposta.empty()) {
        SegnalaErroreComunicazione();
    } else {
        ErroreComunicazione = false;
    }
    return risposta;
}

void tmrComm_Timer() {
    constexpr int kPausa = 50;
    // A transfer whose window has closed may still be about to return from its wait.
    if (AnalisiInCorso || FaseComunicazione != 0 || collegamento().Abbandonato) return;
    if (LinkPronto()) {
        collegamento().TempoMassimo = {3000, 10000, 10000};
        VerificaComunicazione();
        const std::int64_t fine = platform().GetTickCount() + kPausa;
        while (platform().GetTickCount() < fine && !Rinuncia()) {
            Cedi(fine - platform().GetTickCount());
        }
    } else {
        collegamento().TempoMassimo.fill(3000);
        MostraNessunaComunicazione();
        // Without a port there was no identity query; an instrument that is not there is absent.
        StrumentoPresente = false;
    }
    principale().Abilita(Comando::DownData, StrumentoPresente);
    if (StrumentoPresente != StrumentoPresentePrec) {
        StrumentoPresentePrec = StrumentoPresente;
        if (FormAttiva != nullptr) FormAttiva->AbilitaStrumento(StrumentoPresente);
    }
}

}  // namespace lapvane
