#include "instrument/Memoria.h"

#include <algorithm>
#include <cassert>

#include "device/Codec.h"

namespace lapvane::strumento {

namespace {

std::string Parole(std::initializer_list<int> valori) {
    std::string testo;
    for (const int valore : valori) testo += CodificaWord(valore);
    return testo;
}

std::string Byte(std::initializer_list<int> valori) {
    std::string testo;
    for (const int valore : valori) testo += CodificaByte(valore);
    return testo;
}

/// A straight curve over the ten-bit range of an input, as the factory programs it.
std::string CurvaDiFabbrica(int massimo) {
    constexpr int kPunti = 20;
    std::string asseX;
    std::string asseY;
    for (int i = 0; i < kPunti; ++i) {
        asseX += CodificaWord(1023 * i / (kPunti - 1));
        asseY += CodificaWord(massimo * i / (kPunti - 1));
    }
    return TestaCurva() + asseX + Parole({0}) + asseY;
}

}  // namespace

std::string TestaCurva() {
    return Parole({20, 1, 0, 0, 0, 40, 2});
}

void Metti(std::string& dove, std::size_t posto, std::string_view campo) {
    assert(posto >= 1 && posto - 1 + campo.size() <= dove.size());
    dove.replace(posto - 1, campo.size(), campo);
}

Memoria::Memoria() {
    // Km/h, degrees C, bar; all pages; recording from 20 km/h, stopped after 30 s.
    Programma(Record::Setup1, Byte({0, 0, 0, 0}) + Parole({0xFF}) + Byte({0, 30}) + Parole({20}) +
                                  std::string(16, '\0'));
    Programma(Record::Setup2,
              Byte({5, 10}) + Parole({1000, 1000, 1000, 0, 0}) + std::string(10, '\0'));
    // Ignitions a turn, wheel pulses a turn, wheel diameter in mm, lines, channels on, inputs.
    Programma(Record::Sensori, Byte({1, 4}) + Parole({590}) +
                                   Byte({0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 1, 1}) +
                                   std::string(15, '\0'));
    // Oil 125.0 C, 1.200 and 2.500 bar, water 102.0 C, 5.0 l, 12.0 V; the shift lights.
    Programma(Record::Allarmi,
              Parole({1250, 1200, 2500, 1020, 50, 120, 9500, 10000, 10500, 11000, 11500}) +
                  Byte({1, 0, 0, 1, 0, 0}) + std::string(20, '\0'));
    // Full scale in the unit of each curve channel: 150.0 C, 10 bar, 10 bar, 150.0 C, 60.0 l,
    // sixth gear, 20.00 A/F, 4 bar, 3 G.
    constexpr std::array<int, kCanaliCurva> kFondoScala = {1500, 10000, 10000, 1500, 600,
                                                           6,    2000,  4000,  3000};
    for (int canale = 0; canale < kCanaliCurva; ++canale) {
        ProgrammaCurva(canale, CurvaDiFabbrica(kFondoScala[static_cast<std::size_t>(canale)]));
    }
}

void Memoria::Cancella() {
    log_.clear();
    giri_.clear();
}

bool Memoria::AggiungiBlocco(std::string_view blocco) {
    assert(blocco.size() == kByteBloccoMemoria);
    if (ByteLog() >= kCapacitaLog) return false;
    log_ += blocco;
    if (ByteLog() % kBytePagina == 0) {
        unsigned somma = 0;
        for (std::size_t i = log_.size() - kBytePagina; i < log_.size() - 1; ++i) {
            somma += static_cast<unsigned char>(log_[i]);
        }
        log_.back() = static_cast<char>(somma & 0xFFu);
    }
    return true;
}

bool Memoria::AggiungiGiro(std::int32_t centesimi, bool nuovaSessione) {
    if (Giri() >= kGiriMemoria) return false;
    // The top bit marks the first lap of a session; its time has the lower three bytes alone.
    std::string record = CodificaLong(centesimi);
    if (nuovaSessione) record.front() = static_cast<char>(0x80);
    giri_ += record;
    return true;
}

std::string_view Memoria::Blocco(std::int32_t b) const {
    assert(b >= 0 && b < Blocchi());
    return std::string_view(log_).substr(static_cast<std::size_t>(b) * kByteBloccoMemoria,
                                         kByteBloccoMemoria);
}

std::string Memoria::Leggi(const std::string& memoria, std::uint32_t indirizzo) {
    std::string letto(kByteBloccoMemoria, '\xFF');
    if (indirizzo < memoria.size()) {
        const std::size_t quanti = std::min(letto.size(), memoria.size() - indirizzo);
        letto.replace(0, quanti, memoria, indirizzo, quanti);
    }
    return letto;
}

}  // namespace lapvane::strumento
