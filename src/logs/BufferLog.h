#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lapvane {

// What a download leaves in memory for the conversion.

constexpr int kGiriTabella = 1000;              ///< entries of `TabellaGiri`, entry 0 unused
constexpr std::size_t kBlocchiMassimi = 16385;  ///< entries of `BlocchiLog`
constexpr std::size_t kByteBlocco = 128;

/// Lap times, "mm:ss.cc, session", from entry 1.
extern std::array<std::string, kGiriTabella> TabellaGiri;
/// Log records of 128 bytes.
extern std::vector<std::string> BlocchiLog;
/// Records stored in `BlocchiLog`.
extern std::int32_t NumBlocchi;
/// Laps that the instrument counts.
extern std::int16_t NumeroGiri;
/// The page under work.
extern std::string BloccoDati1;
extern std::string BloccoDati2;

/// What is known of the log in memory.
struct StatoLog {
    bool Parziale = false;       ///< the download ended before the end of the memory
    bool DaSalvare = false;      ///< there are records that no conversion has saved yet
    std::filesystem::path File;  ///< of the download on the disk; empty: there is none
    bool TuttoSuDisco = false;   ///< that file holds every record
};
StatoLog& logInMemoria();

/// What Download Data does before its window opens.
void AzzeraBufferLog();

}  // namespace lapvane
