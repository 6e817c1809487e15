#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "instrument/Strumento.h"
#include "platform/SerialControl.h"

namespace lapvane::strumento {

/// A serial control with the simulated instrument on one of its ports, all in process.
class SerialeStrumento : public SerialControl {
 public:
    using Orologio = std::function<std::int64_t()>;  ///< ms
    using Attesa = std::function<void(int)>;         ///< lets so many ms pass

    /// On the machine's own clock.
    explicit SerialeStrumento(Strumento& strumento);
    /// On another clock; `attesa` moves it on while the control waits for input.
    SerialeStrumento(Strumento& strumento, Orologio orologio, Attesa attesa);

    int CommPort() const override { return numero_; }
    void CommPort(int numero) override { numero_ = numero; }
    void Settings(const std::string&) override {}
    void Handshaking(int) override {}
    void InBufferSize(int) override {}
    void OutBufferSize(int) override {}
    void DTREnable(bool) override {}
    void RTSEnable(bool) override {}
    bool PortOpen() const override { return aperta_; }
    void PortOpen(bool apri) override;
    std::size_t InBufferCount() override;
    void ClearInBuffer() override;
    std::size_t OutBufferCount() override { return 0; }  // the cable takes everything at once
    void ClearOutBuffer() override {}
    void InputLen(std::size_t caratteri) override { massimo_ = caratteri; }
    std::string Input() override;
    void Output(const std::string& byte) override;
    void WaitForInput(int ms) override;

    int Porta = 1;             ///< where the instrument is; no other port opens
    std::int64_t Ritardo = 0;  ///< ms between a request and its reply
    /// The port vanishes when that frame (from 1, counted over the whole life) is written, and the
    /// frame is lost; 0: never.
    std::size_t SparisciAlFrame = 0;
    /// The cable is pulled, or plugged in again: the port closes by itself and does not open.
    void Sparisci();
    void Riappari() { sparita_ = false; }

    /// What was written, one entry a frame.
    const std::vector<std::string>& Richieste() const { return richieste_; }
    /// How many frames with this command were written.
    std::size_t RichiesteDi(int comando) const;
    std::size_t ByteRicevuti() const { return byteRicevuti_; }  ///< characters that arrived

 private:
    struct InViaggio {
        std::int64_t Quando = 0;
        std::string Byte;
    };

    void Accoda(std::vector<Risposta> risposte);
    /// Moves what has arrived by now into the buffer.
    void Arriva();

    Strumento& strumento_;
    Orologio orologio_;
    Attesa attesa_;
    int numero_ = 1;
    bool aperta_ = false;
    bool sparita_ = false;
    std::size_t massimo_ = 0;
    std::string ingresso_;
    std::deque<InViaggio> inViaggio_;
    std::vector<std::string> richieste_;
    std::size_t byteRicevuti_ = 0;
};

}  // namespace lapvane::strumento
