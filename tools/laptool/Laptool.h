#pragma once

#include <string>
#include <vector>

namespace lapvane::laptool {

/// What the command line of `lapvane-tool` asks for.
enum class Form { Text, Csv, Json };

struct LapsRequest {
    std::string File;
    Form As = Form::Text;
    int Parts = 0;  ///< equal parts in place of the circuit's sectors; 0: those
};

struct CompareRequest {
    std::string File;
    int Reference = 0;
    std::vector<int> Laps;
    std::vector<std::string> Channels;  ///< by name, or the beginning of one, whatever the case
    Form As = Form::Text;
};

struct ConvertRequest {
    std::string Raw;     ///< a download on the disk
    std::string File;    ///< data file to make, ".csv"
    bool Force = false;  ///< write over files that are there
};

/// A request that can't be met, in words for the person who made it.
struct Refusal {
    std::string Why;
};

/// The table of laps: number, time, session, sectors, gap to the best, in seconds with two digits;
/// in text and JSON the ideal lap too. Throws Refusal, ErroreRuntime.
std::string Laps(const LapsRequest& request);

/// Gained or lost time of laps against a reference along its distance, at most 1 m apart (10 m in
/// text), positive where the lap is slower; behind it the channels. Throws Refusal, ErroreRuntime.
std::string Compare(const CompareRequest& request);

/// Makes the data file and its two side files of a download, all of them or none, as the program
/// does; language and units are those of the moment of the download. What the download lacks, in
/// words; empty: nothing. Throws Refusal, ErroreRuntime.
std::string Convert(const ConvertRequest& request);

}  // namespace lapvane::laptool
