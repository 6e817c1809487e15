#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace lapvane::strumento {

constexpr std::int32_t kByteBloccoMemoria = 128;
constexpr std::int32_t kBytePagina = 256;
constexpr std::int32_t kCapacitaLog = 2096384;  ///< bytes, a whole number of pages
constexpr std::int32_t kBlocchiLog = kCapacitaLog / kByteBloccoMemoria;
constexpr int kGiriMemoria = 16384;  ///< lap records that a 16-bit address reaches
constexpr int kCanaliCurva = 9;

/// The records that are written and read whole.
enum class Record { Setup1, Setup2, Sensori, Allarmi, Numero };

/// What the instrument remembers: the settings that were programmed, the log, the lap times. Log
/// and laps come from a session that was driven; nothing on the link changes them.
class Memoria {
 public:
    /// Factory settings, empty log and lap memories.
    Memoria();

    /// The payload of a record's frame, between the command byte and the checksum.
    const std::string& Dati(Record record) const {
        return record_[static_cast<std::size_t>(record)];
    }
    void Programma(Record record, std::string_view dati) {
        record_[static_cast<std::size_t>(record)] = dati;
    }
    /// The payload of a curve's frame behind its channel byte; channel 0 to 8.
    const std::string& Curva(int canale) const {
        return curve_.at(static_cast<std::size_t>(canale));
    }
    void ProgrammaCurva(int canale, std::string_view dati) {
        curve_.at(static_cast<std::size_t>(canale)) = dati;
    }

    /// Erases log and laps: every byte is 0xFF.
    void Cancella();
    /// Appends a record of 128 bytes to the log; false when the log is full. The second record of a
    /// page gets the page's checksum as its last byte.
    bool AggiungiBlocco(std::string_view blocco);
    /// Appends a lap; false when the lap memory is full. The first lap of a session is marked.
    bool AggiungiGiro(std::int32_t centesimi, bool nuovaSessione);

    std::int32_t ByteLog() const { return static_cast<std::int32_t>(log_.size()); }
    std::int32_t Blocchi() const { return ByteLog() / kByteBloccoMemoria; }
    int Giri() const { return static_cast<int>(giri_.size()) / 4; }
    /// Record `b` of the log, from 0.
    std::string_view Blocco(std::int32_t b) const;

    /// 128 bytes from an address; what was never written, or lies past the end, is 0xFF.
    std::string LeggiLog(std::uint32_t indirizzo) const { return Leggi(log_, indirizzo); }
    std::string LeggiGiri(std::uint32_t indirizzo) const { return Leggi(giri_, indirizzo); }

 private:
    static std::string Leggi(const std::string& memoria, std::uint32_t indirizzo);

    std::array<std::string, static_cast<std::size_t>(Record::Numero)> record_;
    std::array<std::string, kCanaliCurva> curve_;
    std::string log_;  // only what was written
    std::string giri_;
};

/// The header of a curve in the table format: points, four words, bytes in an axis, in a value.
std::string TestaCurva();

/// Writes `campo` at byte `posto` (from 1) of a block or frame.
void Metti(std::string& dove, std::size_t posto, std::string_view campo);

}  // namespace lapvane::strumento
