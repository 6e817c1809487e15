#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lapvane {

/// True after a transfer whose exchange failed, false after one that succeeded.
extern bool ErroreComunicazione;

/// What the link knows beside.
struct StatoCollegamento {
    /// Set by a transfer's window that closes while its transfer runs, cleared when that has ended:
    /// every wait gives up at once, and what fails is not told to a person who has turned away.
    bool Abbandonato = false;
    /// The three time-out settings in ms.
    /// Kept: the poll writes them and nothing reads them.
    std::array<std::int32_t, 3> TempoMassimo{};
    /// Text of the last identity query that was answered.
    std::string Identita;
    /// Milliseconds that questions over a transfer have taken: no wait counts them.
    std::int64_t Sospeso = 0;
};
StatoCollegamento& collegamento();

/// Applies the port settings of the link (19200,N,8,1 ...) to the serial control.
void ImpostaPorta();

/// True when the port is open; scans COM1 to COM20 with the handshake when it is closed. Each
/// transfer is guarded by a call. Errors of the control are ignored: such a port does not answer.
bool LinkPronto();

/// Closes the port if it is open.
void ChiudiPorta();

/// Sends a frame. With `attesa` true only when exactly that reply arrived within 2 s (10 s during a
/// transfer); without it true when the frame drained within 3 s. Events run during the wait.
bool ScriviFrame(const std::string& frame, std::string_view attesa = {});

/// The same for write frames: waits 10 s, and no event runs.
bool ScriviFrameLento(const std::string& frame, std::string_view attesa = {});

/// The `numero` characters of a reply that is complete within 5 s, else the empty text. Events run
/// during the wait.
std::string RiceviRisposta(std::size_t numero);

/// Flash the picture of a status panel for half a second, during which events run.
void LampeggiaTX();
void LampeggiaRX();

/// The identity query of the poll: shows the link's state and sets `StrumentoPresente`.
void VerificaComunicazione();

/// Sends the request and collects `numero` characters; the empty text on any failure.
std::string Domanda(const std::string& frame, std::size_t numero);

/// Reading half of the transfer pattern: sends the request and collects `numero` characters. On
/// failure sets `ErroreComunicazione`, shows text 242 and returns the empty text.
std::string ChiediStrumento(const std::string& frame, std::size_t numero);

/// What the transfer pattern does about a failed exchange.
void SegnalaErroreComunicazione();

/// Panel 4 while nothing answers, and while the port is open and an instrument answers. The
/// identity beside it is grey in the first case.
void MostraNessunaComunicazione();
void MostraComunicazione();

/// One firing of `tmrComm`. The caller re-arms its timer when this has returned, so that the poll
/// never runs inside itself.
void tmrComm_Timer();

}  // namespace lapvane
