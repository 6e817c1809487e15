#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace lapvane::bench {

inline constexpr int kRows = 163780;  // of a log memory that is full
inline constexpr int kRowsPerLap = 820;

inline void Tenths(std::string& text, int tenths) {
    text += std::to_string(tenths / 10);
    text += '.';
    text += static_cast<char>('0' + tenths % 10);
    text += ';';
}

/// The three files of a full log, in a folder that goes when the program ends.
struct FullLog {
    FullLog() {
        std::string name =
            (std::filesystem::temp_directory_path() / ("lapvane-bench-" + std::string(6, 'X')))
                .native();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        Folder = name;
        std::string csv = "Time [sec];Distance [m];Engine [RPM]";
        for (int c = 4; c <= 16; ++c) csv += ";Channel " + std::to_string(c) + " [V]";
        std::string side = "Time [sec];Distance [m]";
        for (int c = 3; c <= 11; ++c) side += ";Alarm " + std::to_string(c);
        csv += "\r\n";
        side += "\r\n";
        for (int r = 0; r < kRows; ++r) {
            const int inLap = r % kRowsPerLap;
            Tenths(csv, inLap);
            Tenths(csv, inLap * 57);
            csv += std::to_string(4000 + (r * 37) % 5000) + ';';
            for (int c = 4; c <= 15; ++c)
                Tenths(csv, (r * c + 311 * c) % (c % 3 == 0 ? 100 : 1600));
            csv += "0.98\r\n";
            Tenths(side, inLap);
            Tenths(side, inLap * 57);
            side += "1;3;5;7;9;11;13;15;" + std::to_string(r / kRowsPerLap + 1) + "\r\n";
        }
        std::ofstream(Csv(), std::ios::binary) << csv;
        std::ofstream(Side(), std::ios::binary) << side;
        std::string times = "1.4\r\n";
        for (int lap = 0; lap < kRows / kRowsPerLap; ++lap) {
            times += "01:22.0" + std::to_string(lap % 7) + ", 1\r\n";
        }
        std::ofstream(Times(), std::ios::binary) << times;
    }
    ~FullLog() {
        std::error_code ignored;
        std::filesystem::remove_all(Folder, ignored);
    }
    std::filesystem::path Csv() const { return Folder / "full.csv"; }
    std::filesystem::path Side() const { return Folder / "full.txt"; }
    std::filesystem::path Times() const { return Folder / "full.tim"; }
    std::filesystem::path Folder;
};

/// Made at the first call.
inline const FullLog& Log() {
    static const FullLog log;
    return log;
}

}  // namespace lapvane::bench
