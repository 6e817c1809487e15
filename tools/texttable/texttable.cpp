#include "tools/texttable/texttable.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <system_error>
#include <utility>

#include "platform/Testo1252.h"

namespace lapvane::texttable {

namespace {

constexpr std::string_view kHeading = "number\tname\titalian\tenglish\tmessage\twhere used";

std::string Decimal(std::size_t number, std::size_t width = 1) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

/// Everything up to `mark`, which goes too; the whole text without it.
std::string_view TakeUpTo(std::string_view& text, char mark) {
    const std::size_t end = std::min(text.find(mark), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

/// What makes a column unfit to be read at all; empty if nothing does.
std::string UnfitColumn(std::string_view text) {
    if (text.find_first_not_of(' ') == std::string_view::npos) return "is empty";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x20 || code == 0x7F) return "has the control character " + Decimal(code);
    }
    return {};
}

/// Checks a text and encodes it; nothing with `what` said if the program could not read it back.
std::optional<std::string> EncodeText(std::string_view utf8, std::string& what) {
    what = UnfitColumn(utf8);
    // The program takes one double quote off each end of a value.
    if (what.empty() && (utf8.front() == '"' || utf8.back() == '"')) {
        what = "begins or ends with a double quote";
    }
    if (!what.empty()) return std::nullopt;
    return Encode1252(utf8, what);
}

bool IsName(std::string_view text) {
    const auto inside = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    };
    return !text.empty() && text[0] >= 'A' && text[0] <= 'Z' &&
           std::all_of(text.begin(), text.end(), inside);
}

/// What is wrong with the name of a text; `names` are those before it.
std::string UnfitName(std::string_view name, std::set<std::string_view>& names) {
    if (!IsName(name)) return "\"" + std::string(name) + "\" is not a name";
    if (!names.insert(name).second) return "the name " + std::string(name) + " stands twice";
    return {};
}

/// A C++ literal. Octal, since a hexadecimal escape takes the letters behind it as digits.
std::string Literal(std::string_view text) {
    std::string literal = "\"";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            literal += '\\';
            literal += c;
        } else if (code >= 0x80) {
            for (const int shift : {6, 3, 0}) {
                if (shift == 6) literal += '\\';
                literal += static_cast<char>('0' + ((code >> shift) & 7));
            }
        } else {
            literal += c;
        }
    }
    return literal + '"';
}

std::optional<Place> PlaceOf(std::string_view word) {
    if (word == "-") return Place::None;
    if (word == "part") return Place::Part;
    if (word == "heading") return Place::Heading;
    return std::nullopt;
}

std::string ReadWhole(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Reads and checks the table `in`; nothing with its faults told.
std::optional<Table> Checked(const std::filesystem::path& in, std::ostream& errors) {
    std::ifstream source(in, std::ios::binary);
    const std::string tsv{std::istreambuf_iterator<char>(source), std::istreambuf_iterator<char>()};
    if (!source.is_open() || source.bad()) {
        errors << in.string() << ": cannot be read\n";
        return std::nullopt;
    }
    Table table = ReadTable(tsv);
    for (const Fault& fault : table.Faults) {
        errors << in.string() << ':' << fault.Line << ": " << fault.What << '\n';
    }
    if (!table.Faults.empty()) return std::nullopt;
    return table;
}

/// Replaces `out` as a whole; 0, or 1 with the reason told.
int Replace(const std::filesystem::path& out, const std::string& text, std::ostream& errors) {
    std::filesystem::path temporary = out;
    temporary += ".tmp";
    std::error_code error;
    {
        std::ofstream target(temporary, std::ios::binary | std::ios::trunc);
        target << text;
        target.close();
        if (!target) error = std::make_error_code(std::errc::io_error);
    }
    if (!error) std::filesystem::rename(temporary, out, error);
    if (!error) return 0;
    errors << out.string() << ": cannot be written (" << error.message() << ")\n";
    std::error_code ignored;
    std::filesystem::remove(temporary, ignored);
    return 1;
}

std::string Line(std::string_view key, std::size_t number, std::string_view value) {
    std::string line(key);
    line += Decimal(number, 3);
    line += "=\"";
    line += value;
    line += "\"\r\n";
    return line;
}

}  // namespace

std::optional<std::string> Encode1252(std::string_view utf8, std::string& what) {
    constexpr std::string_view kUndefined = "\x81\x8D\x8F\x90\x9D";
    std::string encoded = Utf8In1252(utf8);
    // What the code page lacks, and what is not UTF-8, does not come back.
    if (Utf8Da1252(encoded) != utf8 || encoded.find_first_of(kUndefined) != std::string::npos) {
        what = "is not UTF-8 or has a character that Windows-1252 lacks";
        return std::nullopt;
    }
    return encoded;
}

Table ReadTable(std::string_view tsv) {
    Table table;
    long number = 1;
    const auto fault = [&](std::string what) { table.Faults.push_back({number, std::move(what)}); };
    if (TakeUpTo(tsv, '\n') != kHeading) {
        fault("the heading is not number, name, italian, english, message, where used, by tabs");
    }
    std::uint32_t expected = 1;
    std::set<std::string_view> names;
    while (!tsv.empty()) {
        ++number;
        std::string_view line = TakeUpTo(tsv, '\n');
        const auto columns = 1 + std::count(line.begin(), line.end(), '\t');
        if (columns != 6) {
            fault("6 columns expected, " + std::to_string(columns) + " found");
            ++expected;
            continue;
        }
        const std::string_view label = TakeUpTo(line, '\t');
        std::uint32_t read = 0;
        const auto end = std::from_chars(label.data(), label.data() + label.size(), read);
        if (label != Decimal(expected)) {
            fault("number " + Decimal(expected) + " expected, \"" + std::string(label) +
                  "\" found");
            // One missing or doubled row is one fault, not one for each row after it.
            if (end.ec == std::errc()) expected = read;
        }
        ++expected;
        const auto text = [&](std::string_view name, std::string_view value) {
            std::string what;
            auto encoded = EncodeText(value, what);
            if (!encoded) fault(std::string(name) + " " + what);
            return encoded.value_or("");
        };
        Entry entry;
        const std::string_view name = TakeUpTo(line, '\t');
        if (name != "-" || expected - 1 > kTexts) {
            if (const std::string what = UnfitName(name, names); !what.empty()) fault(what);
            entry.Name = name;
        }
        entry.Italian = text("the Italian text", TakeUpTo(line, '\t'));
        entry.English = text("the English text", TakeUpTo(line, '\t'));
        const std::string_view message = TakeUpTo(line, '\t');
        const auto place = PlaceOf(message);
        if (!place) fault("\"" + std::string(message) + "\" is not heading, part or -");
        entry.InMessages = place.value_or(Place::None);
        if (const std::string what = UnfitColumn(line); !what.empty()) {
            fault("the column of where it is used " + what);
        }
        table.Entries.push_back(std::move(entry));
    }
    const auto rows = static_cast<std::size_t>(number - 1);
    if (rows < kTexts) {
        ++number;
        fault(std::to_string(kTexts) + " rows expected, " + std::to_string(rows) + " found");
    }
    return table;
}

std::string LanguageFile(const std::vector<Entry>& entries) {
    const std::size_t count = std::min(entries.size(), kTexts);
    std::string file = "1\r\nNumTesti=\"" + std::to_string(2 * count) + "\"\r\n";
    for (std::size_t i = 0; i < count; ++i) file += Line("IT", i + 1, entries[i].Italian);
    for (std::size_t i = 0; i < count; ++i) file += Line("EN", i + 1, entries[i].English);
    return file;
}

std::string NamesHeader(const std::vector<Entry>& entries) {
    std::string file =
        "#pragma once\n\n// Made of data/testi.tsv by the build.\n\nnamespace lapvane {\n\n"
        "/// A text by its name. Those above " +
        std::to_string(kTexts) +
        " are built into the program, the others stand in LANGUAGES.DAT.\nenum class Voce : int "
        "{\n    Nessuna = 0,\n";
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].Name.empty()) continue;
        file += "    " + entries[i].Name + " = " + std::to_string(i + 1) + ",\n";
    }
    return file + "};\n\n}  // namespace lapvane\n";
}

std::string BuiltInSource(const std::vector<Entry>& entries) {
    std::string file =
        "// Made of data/testi.tsv by the build: the texts of the program's own, in "
        "Windows-1252.\n\n"
        "#include \"shell/TestiInterni.h\"\n\nnamespace lapvane {\n\nnamespace {\n\n"
        "const TestoInterno kTesti[] = {\n";
    for (std::size_t i = kTexts; i < entries.size(); ++i) {
        file += "    {" + Literal(entries[i].Italian) + ",\n     " + Literal(entries[i].English) +
                "},\n";
    }
    return file +
           "};\n\n}  // namespace\n\nstd::span<const TestoInterno> TestiInterni() {\n"
           "    return kTesti;\n}\n\n}  // namespace lapvane\n";
}

int MakeLanguageFile(const std::filesystem::path& in, const std::filesystem::path& out,
                     std::ostream& errors) {
    const auto table = Checked(in, errors);
    return table ? Replace(out, LanguageFile(table->Entries), errors) : 1;
}

int MakeSources(const std::filesystem::path& in, const std::filesystem::path& out,
                std::ostream& errors) {
    const auto table = Checked(in, errors);
    if (!table) return 1;
    const std::pair<const char*, std::string> files[] = {
        {"Voci.h", NamesHeader(table->Entries)}, {"Voci.cpp", BuiltInSource(table->Entries)}};
    for (const auto& [name, text] : files) {
        if (ReadWhole(out / name) != text && Replace(out / name, text, errors) != 0) return 1;
    }
    return 0;
}

}  // namespace lapvane::texttable
