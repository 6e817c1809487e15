#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "instrument/Caso.h"

namespace lapvane::soak {

/// What a run was asked for.
struct Options {
    std::uint32_t First = 1;    ///< with what the numbers by chance begin
    int Count = 2000;           ///< exchanges of each kind
    int RealSeconds = 30;       ///< exchanges on real time
    int Kills = 200;            ///< of each kind of save
    int Silent = 10;            ///< rounds beside ports that never answer
    int Laps = 14;              ///< of the session whose download is pulled
    std::filesystem::path Bin;  ///< the built program's folder: language table, sensors, tracks
};

/// Numbers by chance, from 0 to below `n`.
class Chance {
 public:
    explicit Chance(std::uint32_t first) : numbers_(first) {}
    int Below(int n) { return static_cast<int>(numbers_.Prossimo() * n); }
    int From(int low, int high) { return low + Below(high - low + 1); }
    std::string Bytes(std::size_t count) {
        std::string bytes;
        for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(Below(256));
        return bytes;
    }

 private:
    strumento::Caso numbers_;
};

/// A fresh folder that goes with the object, laid out as the program's.
class Folder {
 public:
    explicit Folder(const std::filesystem::path& bin);
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::filesystem::path Path;
};

/// Counts what was not as it must be, and says so.
class Faults {
 public:
    void Say(const std::string& what);
    int Number() const { return number_; }

 private:
    int number_ = 0;
};

std::string ReadAll(const std::filesystem::path& file);
/// kB of this process that are in memory, and its open files.
long ResidentKb();
int OpenFiles();

/// The parts of the soak; each prints its table. Faults are counted.
void SoakLink(const Options& options, Faults& faults);
void SoakPull(const Options& options, Faults& faults);
void SoakSilent(const Options& options, Faults& faults);
void SoakKill(const Options& options, Faults& faults, int argc, char** argv);

}  // namespace lapvane::soak
