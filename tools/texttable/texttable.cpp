#include "tools/texttable/texttable.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <ostream>
#include <system_error>

#include "platform/Testo1252.h"

namespace lapvane::texttable {

namespace {

constexpr std::string_view kHeading = "number\titalian\tenglish\twhere used";

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
        fault("the heading is not number, italian, english, where used, separated by tabs");
    }
    std::uint32_t expected = 1;
    while (!tsv.empty()) {
        ++number;
        std::string_view line = TakeUpTo(tsv, '\n');
        const auto columns = 1 + std::count(line.begin(), line.end(), '\t');
        if (columns != 4) {
            fault("4 columns expected, " + std::to_string(columns) + " found");
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
        entry.Italian = text("the Italian text", TakeUpTo(line, '\t'));
        entry.English = text("the English text", TakeUpTo(line, '\t'));
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
    std::string file = "1\r\nNumTesti=\"" + std::to_string(2 * entries.size()) + "\"\r\n";
    for (std::size_t i = 0; i < entries.size(); ++i) file += Line("IT", i + 1, entries[i].Italian);
    for (std::size_t i = 0; i < entries.size(); ++i) file += Line("EN", i + 1, entries[i].English);
    return file;
}

int MakeLanguageFile(const std::filesystem::path& in, const std::filesystem::path& out,
                     std::ostream& errors) {
    std::ifstream source(in, std::ios::binary);
    const std::string tsv{std::istreambuf_iterator<char>(source), std::istreambuf_iterator<char>()};
    if (!source.is_open() || source.bad()) {
        errors << in.string() << ": cannot be read\n";
        return 1;
    }
    const Table table = ReadTable(tsv);
    for (const Fault& fault : table.Faults) {
        errors << in.string() << ':' << fault.Line << ": " << fault.What << '\n';
    }
    if (!table.Faults.empty()) return 1;

    std::filesystem::path temporary = out;
    temporary += ".tmp";
    std::error_code error;
    {
        std::ofstream target(temporary, std::ios::binary | std::ios::trunc);
        target << LanguageFile(table.Entries);
        target.close();
        if (!target) error = std::make_error_code(std::errc::io_error);
    }
    if (!error) std::filesystem::rename(temporary, out, error);
    if (error) {
        errors << out.string() << ": cannot be written (" << error.message() << ")\n";
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return 1;
    }
    return 0;
}

}  // namespace lapvane::texttable
