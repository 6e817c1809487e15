#pragma once

#include "platform/SerialControl.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {

/// A serial port on the virtual clock: what is written is noted, and replies arrive at the times
/// that the test says.
class SerialeProva : public SerialControl {
 public:
    explicit SerialeProva(PlatformProva& macchina) : macchina_(macchina) {}

    int CommPort() const override { return numero_; }
    void CommPort(int numero) override {
        numero_ = numero;
        Diario.push_back("CommPort=" + std::to_string(numero));
    }
    void Settings(const std::string& s) override { Diario.push_back("Settings=" + s); }
    void Handshaking(int m) override { Diario.push_back("Handshaking=" + std::to_string(m)); }
    void InBufferSize(int b) override { Diario.push_back("InBufferSize=" + std::to_string(b)); }
    void OutBufferSize(int b) override { Diario.push_back("OutBufferSize=" + std::to_string(b)); }
    void DTREnable(bool on) override { Diario.push_back(on ? "DTR=1" : "DTR=0"); }
    void RTSEnable(bool on) override { Diario.push_back(on ? "RTS=1" : "RTS=0"); }
    bool PortOpen() const override { return aperta_; }
    void PortOpen(bool apri) override {
        if (apri && !Porte.contains(numero_)) throw ErroreControllo("no such port");
        aperta_ = apri;
        ingresso_.clear();
    }
    std::size_t InBufferCount() override {
        Arriva();
        return ingresso_.size();
    }
    void ClearInBuffer() override {
        Arriva();
        ingresso_.clear();
        Diario.push_back("InBufferCount=0");
    }
    std::size_t OutBufferCount() override { return UscitaFerma ? 1 : 0; }
    void ClearOutBuffer() override { Diario.push_back("OutBufferCount=0"); }
    void InputLen(std::size_t n) override {
        massimo_ = n;
        if (n == 0) Diario.push_back("InputLen=0");
    }
    std::string Input() override {
        if (GuastoLettura) throw ErroreControllo("read");
        Arriva();
        const std::size_t n =
            massimo_ == 0 ? ingresso_.size() : std::min(massimo_, ingresso_.size());
        const std::string letto = ingresso_.substr(0, n);
        ingresso_.erase(0, n);
        return letto;
    }
    void Output(const std::string& byte) override {
        if (GuastoScrittura) throw ErroreControllo("write");
        Scritti.push_back(byte);
        if (Risponde) Risponde(byte);
    }
    void WaitForInput(int ms) override {
        ++AtteseMute;
        macchina_.Orologio += ms;
    }

    /// Bytes that arrive `ms` from now.
    void Fra(std::int64_t ms, const std::string& byte) {
        inViaggio_.emplace(macchina_.Orologio + ms, byte);
    }

    std::map<int, bool> Porte{{1, true}};  ///< the ports that can be opened
    std::vector<std::string> Scritti;
    std::vector<std::string> Diario;
    std::function<void(const std::string&)> Risponde;
    bool UscitaFerma = false;
    bool GuastoLettura = false;
    bool GuastoScrittura = false;
    int AtteseMute = 0;

 private:
    void Arriva() {
        while (!inViaggio_.empty() && inViaggio_.begin()->first <= macchina_.Orologio) {
            if (aperta_) ingresso_ += inViaggio_.begin()->second;
            inViaggio_.erase(inViaggio_.begin());
        }
    }

    PlatformProva& macchina_;
    int numero_ = 1;
    bool aperta_ = false;
    std::size_t massimo_ = 0;
    std::string ingresso_;
    std::multimap<std::int64_t, std::string> inViaggio_;
};

}  // namespace lapvane::prova
