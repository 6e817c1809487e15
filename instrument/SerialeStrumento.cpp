#include "instrument/SerialeStrumento.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/ErroreRuntime.h"

namespace lapvane::strumento {

namespace {

std::int64_t OraDellaMacchina() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace

SerialeStrumento::SerialeStrumento(Strumento& strumento)
    : SerialeStrumento(strumento, OraDellaMacchina,
                       [](int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }) {
}

SerialeStrumento::SerialeStrumento(Strumento& strumento, Orologio orologio, Attesa attesa)
    : strumento_(strumento), orologio_(std::move(orologio)), attesa_(std::move(attesa)) {}

void SerialeStrumento::PortOpen(bool apri) {
    if (apri) {
        if (aperta_) throw ErroreControllo("port already open");
        if (sparita_ || numero_ != Porta) throw ErroreControllo("no such port");
        // What comes while a port is closed is lost.
        Arriva();
    }
    aperta_ = apri;
    ingresso_.clear();
}

void SerialeStrumento::Sparisci() {
    sparita_ = true;
    aperta_ = false;
    ingresso_.clear();
    inViaggio_.clear();
}

void SerialeStrumento::Accoda(std::vector<Risposta> risposte) {
    for (Risposta& risposta : risposte) {
        if (risposta.Byte.empty()) continue;
        inViaggio_.push_back({risposta.Quando + Ritardo, std::move(risposta.Byte)});
    }
}

void SerialeStrumento::Arriva() {
    const std::int64_t ora = orologio_();
    Accoda(strumento_.Ricevi({}, ora));
    while (!inViaggio_.empty() && inViaggio_.front().Quando <= ora) {
        if (aperta_) {
            ingresso_ += inViaggio_.front().Byte;
            byteRicevuti_ += inViaggio_.front().Byte.size();
        }
        inViaggio_.pop_front();
    }
}

std::size_t SerialeStrumento::InBufferCount() {
    Arriva();
    return ingresso_.size();
}

void SerialeStrumento::ClearInBuffer() {
    // What has arrived, not what is still on its way.
    Arriva();
    ingresso_.clear();
}

std::string SerialeStrumento::Input() {
    Arriva();
    const std::size_t quanti =
        massimo_ == 0 ? ingresso_.size() : std::min(massimo_, ingresso_.size());
    std::string letto = ingresso_.substr(0, quanti);
    ingresso_.erase(0, quanti);
    return letto;
}

void SerialeStrumento::Output(const std::string& byte) {
    if (!aperta_) throw ErroreControllo("port not open");
    richieste_.push_back(byte);
    if (SparisciAlFrame != 0 && richieste_.size() == SparisciAlFrame) {
        Sparisci();
        return;
    }
    Accoda(strumento_.Ricevi(byte, orologio_()));
}

void SerialeStrumento::WaitForInput(int ms) {
    if (!aperta_) return;
    // Something new has to arrive: characters that wait already do not end the wait.
    const std::size_t prima = byteRicevuti_;
    Arriva();
    if (byteRicevuti_ != prima) return;
    std::int64_t attesa = ms;
    if (!inViaggio_.empty()) {
        attesa = std::min(attesa, inViaggio_.front().Quando - orologio_());
    }
    if (attesa > 0) attesa_(static_cast<int>(attesa));
    Arriva();
}

std::size_t SerialeStrumento::RichiesteDi(int comando) const {
    return static_cast<std::size_t>(
        std::count_if(richieste_.begin(), richieste_.end(), [comando](const std::string& frame) {
            return frame.size() > 1 && static_cast<unsigned char>(frame[1]) == comando;
        }));
}

}  // namespace lapvane::strumento
