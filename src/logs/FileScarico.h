#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "logs/BufferLog.h"
#include "logs/Conversione.h"

namespace lapvane {

// The file of a download as it came from the instrument. First line "Lapvane raw 1", CR LF, then
// records one behind the other:
//
//   "LR", kind (1 character), address (4 bytes), length of the content (2), content, CRC-32 (4)
//
// Numbers have their high byte first; the CRC covers kind to content. Kinds: T the head, lines
// "key=value"; G a block of the lap memory and P a page of the log memory at their addresses; F the
// end of the memory was reached, its content the number of pages (4 bytes). A later record of the
// same kind and address counts in place of the one before. Records only ever come behind the
// others, so a file that was cut holds all but the last of them.

constexpr std::int32_t kBytePagina = 256;
/// What pages can have addresses below: the buffers hold no more.
constexpr std::int32_t kFineMemoria =
    static_cast<std::int32_t>(kBlocchiMassimi * kByteBlocco) / kBytePagina * kBytePagina;

/// More bytes than such a file can have; the memory of an instrument has 2 MB.
constexpr std::size_t kScaricoMassimo = std::size_t{8} << 20;

/// What such a file holds.
struct ScaricoSuDisco {
    std::string Quando;      ///< date and time of its beginning
    std::string Strumento;   ///< identity text; empty: not known
    IntestazioneLog Titoli;  ///< language and units of that moment
    std::int32_t Byte = 0;   ///< recorded, as the instrument told
    std::int16_t Giri = 0;
    std::map<std::int32_t, std::string> BlocchiGiri;  ///< 128 bytes, by address in the lap memory
    std::map<std::int32_t, std::string> Pagine;       ///< 256 bytes, by address, checksum right
    bool Finito = false;                              ///< nothing of it is missing
    std::size_t Fine = 0;  ///< bytes of the file up to its last good record
};

/// Reads a file, whatever became of it: records that are cut or damaged are passed over; without
/// its head the sizes are 0. Empty: its first line is another, or nothing of it can be read.
std::optional<ScaricoSuDisco> LeggiScarico(std::string_view testo);

/// The beginning of a file, and the records behind it.
std::string TestaScarico(const ScaricoSuDisco& scarico);
std::string RecordGiri(std::int32_t indirizzo, std::string_view blocco);
std::string RecordPagina(std::int32_t indirizzo, std::string_view blocco1,
                         std::string_view blocco2);
std::string RecordFine(std::int32_t pagine);

/// When it began and how much of the memory it holds, two lines for a person.
std::string FraseArrivato(const ScaricoSuDisco& scarico);

/// Puts it into the download buffers, as the download would have left them, not saved yet.
void MettiInMemoria(const ScaricoSuDisco& scarico);

}  // namespace lapvane
