#pragma once

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane::texttable {

/// How many texts the language file holds. Those behind them are the program's own and are built
/// in.
inline constexpr std::size_t kTexts = 334;

/// The place that the manual's chapter of messages must give a text: a heading of its own or of a
/// message that it belongs to, a mention (a part that varies, a title), or none.
enum class Place { None, Part, Heading };

/// One text in both languages, in Windows-1252; entry 0 of a table is text 1.
struct Entry {
    std::string Name;  ///< what the code calls it; empty for a text that is found by its number
    std::string Italian;
    std::string English;
    Place InMessages = Place::None;
};

/// What is wrong, and in which line, counted from 1.
struct Fault {
    long Line;
    std::string What;
};

struct Table {
    std::vector<Entry> Entries;  ///< complete only if there is no fault
    std::vector<Fault> Faults;
};

/// Windows-1252 of a UTF-8 text. Nothing for a text that is not well-formed UTF-8, or with a
/// character that the code page lacks; `what` then says which.
std::optional<std::string> Encode1252(std::string_view utf8, std::string& what);

/// Reads and checks a table: a heading line, then the texts 1 to 334 and perhaps more in order,
/// six columns each (number, name, Italian, English, message, where used) separated by tabs. A name
/// is letters and digits, the first a capital, and stands once; "-" for none, up to 334 only. The
/// column of messages is "heading", "part" or "-".
Table ReadTable(std::string_view tsv);

/// The language file of the program as it is delivered: English chosen, first the Italian half,
/// then the English one, `kTexts` entries each.
std::string LanguageFile(const std::vector<Entry>& entries);

/// C++ of the names of texts (`enum class Voce`), and of the table that is built in for the texts
/// behind `kTexts`.
std::string NamesHeader(const std::vector<Entry>& entries);
std::string BuiltInSource(const std::vector<Entry>& entries);

/// Makes `out` of the table `in`; 0, or 1 with every fault written to `errors` as file:line: what.
/// `out` is replaced as a whole at the very end, so that a failure leaves the old one.
int MakeLanguageFile(const std::filesystem::path& in, const std::filesystem::path& out,
                     std::ostream& errors);

/// In the same way `Voci.h` and `Voci.cpp` in the folder `out`. One that would not change is left
/// alone, so that a new wording does not build the program anew.
int MakeSources(const std::filesystem::path& in, const std::filesystem::path& out,
                std::ostream& errors);

}  // namespace lapvane::texttable
