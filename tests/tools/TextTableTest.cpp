#include "support/Cartelle.h"
#include "tools/texttable/texttable.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"
#include "support/PlatformProva.h"

namespace lapvane::texttable {
namespace {

namespace fs = std::filesystem;

std::string ReadWhole(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteWhole(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// A table of the least size in which every text is named after its number.
std::vector<std::string> PlainLines() {
    std::vector<std::string> lines = {"number\tname\titalian\tenglish\tmessage\twhere used"};
    for (std::size_t i = 1; i <= kTexts; ++i) {
        std::ostringstream line;
        line << i << "\t-\tuno " << i << "\tone " << i << "\t-\tmenu";
        lines.push_back(line.str());
    }
    return lines;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

std::string Faults(const std::string& tsv) {
    std::string all;
    for (const Fault& fault : ReadTable(tsv).Faults) {
        all += std::to_string(fault.Line) + ": " + fault.What + "\n";
    }
    return all;
}

/// A folder of its own for a test.
class TextTableFile : public testing::Test {
 protected:
    std::size_t Files() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
    prova::PlatformProva machine;
    const fs::path folder = machine.Cartella;
};

TEST(TextTable, LanguageFileHasTheExactBytesOfBothHalves) {
    std::string what;
    const auto in1252 = [&what](const char* utf8) { return Encode1252(utf8, what).value(); };
    const std::vector<Entry> entries = {
        {"", in1252("Velocit\u00E0"), in1252("Speed")},
        {"", in1252("Il progetto "), in1252("The project ")},
        {"", in1252("20 \u00B0C = 68 \u00B0F"), in1252("Costs 5 \u20AC, \u201Cnow\u201D")},
    };
    EXPECT_EQ(LanguageFile(entries),
              "1\r\n"
              "NumTesti=\"6\"\r\n"
              "IT001=\"Velocit\xE0\"\r\n"
              "IT002=\"Il progetto \"\r\n"
              "IT003=\"20 \xB0"
              "C = 68 \xB0"
              "F\"\r\n"
              "EN001=\"Speed\"\r\n"
              "EN002=\"The project \"\r\n"
              "EN003=\"Costs 5 \x80, \x93now\x94\"\r\n");
}

TEST(TextTable, EncodingAgreesWithTheProgramOnEveryCodeAndRefusesTheRest) {
    std::string what;
    const std::set<int> undefined = {0x81, 0x8D, 0x8F, 0x90, 0x9D};
    for (int code = 0x20; code <= 0xFF; ++code) {
        const std::string character(1, static_cast<char>(code));
        const auto encoded = Encode1252(Utf8Da1252(character), what);
        if (undefined.contains(code)) {
            EXPECT_FALSE(encoded.has_value()) << code;
        } else {
            EXPECT_EQ(encoded, character) << code;
        }
    }
    const std::string_view refused[] = {
        "\u0416",
        "a\u2192",
        "\U0001F3C1",
        "\u0085",
        "perch\xE9",         // Windows-1252 kept by mistake
        "\xE9t\xE9",         // a lead byte without its continuation
        "\x80",              // a continuation alone
        {"\xC3\xA0", 1},     // cut short
        "\xC0\xAF",          // overlong in two bytes
        "\xE0\x82\xA0",      // overlong in three
        "\xED\xA0\x80",      // half a surrogate pair
        "\xF4\x90\x80\x80",  // past the last character
    };
    for (const std::string_view text : refused) {
        what.clear();
        EXPECT_FALSE(Encode1252(text, what).has_value()) << text;
        EXPECT_EQ(what, "is not UTF-8 or has a character that Windows-1252 lacks");
    }
}

TEST(TextTable, EachFaultIsToldOnceWithItsLine) {
    ASSERT_EQ(Faults(Joined(PlainLines())), "");

    struct Case {
        const char* Expected;
        std::function<void(std::vector<std::string>&)> Damage;
    };
    using Lines = std::vector<std::string>;
    const Case cases[] = {
        {"1: the heading is not number, name, italian, english, message, where used, by tabs\n",
         [](Lines& l) { l[0] = "number\titalian\tenglish\tmessage\twhere used"; }},
        {"6: 6 columns expected, 5 found\n", [](Lines& l) { l[5] = "5\tcinque\tfive\t-\tx"; }},
        {"6: number 5 expected, \"6\" found\n335: 334 rows expected, 333 found\n",
         [](Lines& l) { l.erase(l.begin() + 5); }},
        {"7: number 6 expected, \"5\" found\n", [](Lines& l) { l.insert(l.begin() + 6, l[5]); }},
        {"6: number 5 expected, \"05\" found\n", [](Lines& l) { l[5] = "05\t-\ta\tb\t-\tc"; }},
        {"335: 334 rows expected, 333 found\n", [](Lines& l) { l.pop_back(); }},
        {"3: the Italian text is empty\n", [](Lines& l) { l[2] = "2\t-\t\tb\t-\tc"; }},
        {"3: the English text is empty\n", [](Lines& l) { l[2] = "2\t-\ta\t  \t-\tc"; }},
        {"3: the column of where it is used is empty\n",
         [](Lines& l) { l[2] = "2\t-\ta\tb\t-\t"; }},
        {"3: the Italian text begins or ends with a double quote\n",
         [](Lines& l) { l[2] = "2\t-\t\"a\" b\tb\t-\tc"; }},
        {"3: the English text begins or ends with a double quote\n",
         [](Lines& l) { l[2] = "2\t-\ta\ta \"b\"\t-\tc"; }},
        {"3: the English text has the control character 13\n",
         [](Lines& l) { l[2] = "2\t-\ta\tb\r\t-\tc"; }},
        {"3: the column of where it is used has the control character 13\n",
         [](Lines& l) { l[2] += "\r"; }},
        {"3: the Italian text has the control character 127\n",
         [](Lines& l) { l[2] = "2\t-\ta\x7F\tb\t-\tc"; }},
        {"3: the English text has the control character 31\n",
         [](Lines& l) { l[2] = "2\t-\ta\t\x1F\t-\tc"; }},
        {"3: the Italian text is not UTF-8 or has a character that Windows-1252 lacks\n"
         "3: the English text is not UTF-8 or has a character that Windows-1252 lacks\n",
         [](Lines& l) { l[2] = "2\t-\tcitt\xE0\t\u03A9\t-\tc"; }},
        {"3: \"yes\" is not heading, part or -\n", [](Lines& l) { l[2] = "2\tDue\ta\tb\tyes\tc"; }},
        // A text of the program's own has a name, and one that no other has.
        {"336: \"-\" is not a name\n", [](Lines& l) { l.push_back("335\t-\ta\tb\t-\tc"); }},
        {"336: \"due parole\" is not a name\n",
         [](Lines& l) { l.push_back("335\tdue parole\ta\tb\t-\tc"); }},
        {"337: the name Uno stands twice\n",
         [](Lines& l) {
             l.push_back("335\tUno\ta\tb\t-\tc");
             l.push_back("336\tUno\ta\tb\t-\tc");
         }},
    };
    for (const Case& c : cases) {
        Lines lines = PlainLines();
        c.Damage(lines);
        EXPECT_EQ(Faults(Joined(lines)), c.Expected);
    }
    EXPECT_EQ(Faults(""),
              "1: the heading is not number, name, italian, english, message, where used, by tabs\n"
              "2: 334 rows expected, 0 found\n");
}

TEST_F(TextTableFile, AFaultyTableLeavesTheOldFileAndAGoodOneReplacesItWhole) {
    const fs::path in = folder / "texts.tsv";
    const fs::path out = folder / "LANGUAGES.DAT";
    WriteWhole(out, "old");
    std::vector<std::string> lines = PlainLines();
    lines[10] = "10\t-\tdieci\t\t-\tmenu";
    WriteWhole(in, Joined(lines));
    std::ostringstream errors;
    EXPECT_EQ(MakeLanguageFile(in, out, errors), 1);
    EXPECT_EQ(errors.str(), in.string() + ":11: the English text is empty\n");
    EXPECT_EQ(ReadWhole(out), "old");

    WriteWhole(in, Joined(PlainLines()));
    errors.str("");
    EXPECT_EQ(MakeLanguageFile(in, out, errors), 0);
    EXPECT_EQ(errors.str(), "");
    EXPECT_EQ(ReadWhole(out), LanguageFile(ReadTable(Joined(PlainLines())).Entries));
    EXPECT_EQ(Files(), 2u) << "a temporary file was left behind";
}

TEST(TextTable, OwnTextsAreBuiltInAndStayOutOfTheLanguageFile) {
    std::vector<std::string> lines = PlainLines();
    const std::string file = LanguageFile(ReadTable(Joined(lines)).Entries);
    lines[9] = "9\tNove\tuno 9\tone 9\t-\tmenu";
    lines.push_back("335\tVelocita\tVelocit\u00E0 1 \"a\" \\\tSpeed\t-\tc");
    const auto entries = ReadTable(Joined(lines)).Entries;
    EXPECT_EQ(LanguageFile(entries), file);
    EXPECT_NE(NamesHeader(entries).find("enum class Voce : int {\n    Nessuna = 0,\n    Nove = 9,\n"
                                        "    Velocita = 335,\n};\n"),
              std::string::npos);
    EXPECT_NE(BuiltInSource(entries).find("kTesti[] = {\n    {\"Velocit\\340 1 \\\"a\\\" \\\\\",\n"
                                          "     \"Speed\"},\n};\n"),
              std::string::npos);
}

TEST_F(TextTableFile, FilesThatCannotBeReadOrWrittenAreReported) {
    std::ostringstream errors;
    EXPECT_EQ(MakeLanguageFile(folder / "none.tsv", folder / "OUT.DAT", errors), 1);
    EXPECT_EQ(errors.str(), (folder / "none.tsv").string() + ": cannot be read\n");
    EXPECT_EQ(Files(), 0u);

    const fs::path in = folder / "texts.tsv";
    WriteWhole(in, Joined(PlainLines()));
    for (const fs::path& out : {folder / "missing" / "OUT.DAT", folder / "taken"}) {
        fs::create_directories(folder / "taken" / "inside");  // a folder stands in the way
        errors.str("");
        EXPECT_EQ(MakeLanguageFile(in, out, errors), 1);
        EXPECT_EQ(errors.str().find(out.string() + ": cannot be written ("), 0u) << errors.str();
        EXPECT_EQ(Files(), 2u) << "a temporary file was left behind";
    }
}

/// The table that is delivered.
class DeliveredTexts : public testing::Test {
 protected:
    DeliveredTexts() : table(ReadTable(ReadWhole(prova::CartellaDati() / "testi.tsv"))) {}
    void SetUp() override {
        ASSERT_TRUE(table.Faults.empty())
            << "line " << table.Faults[0].Line << ": " << table.Faults[0].What;
        ASSERT_GE(table.Entries.size(), kTexts);
    }
    /// Text n of both languages.
    std::vector<std::string> Both(int n) const {
        const Entry& entry = table.Entries.at(static_cast<std::size_t>(n - 1));
        return {entry.Italian, entry.English};
    }
    void ForEachText(const std::function<void(int, const std::string&)>& check) const {
        for (int n = 1; n <= static_cast<int>(kTexts); ++n) {
            for (const std::string& text : Both(n)) check(n, text);
        }
    }
    Table table;
};

TEST_F(DeliveredTexts, ComeThroughTheReaderOfTheProgramUnchanged) {
    prova::PlatformProva machine;
    WriteWhole(machine.Cartella / "LANGUAGES.DAT", LanguageFile(table.Entries));
    CaricaTesti();
    EXPECT_EQ(IndiceLingua, 1);
    for (int language = 0; language < 2; ++language) {
        IndiceLingua = language;
        CalcolaBaseTesti();
        for (int n = 1; n <= static_cast<int>(kTexts); ++n) {
            EXPECT_EQ(Testo(static_cast<Voce>(n)), Both(n)[static_cast<std::size_t>(language)])
                << n;
        }
    }
}

TEST_F(DeliveredTexts, AreTranslatedExceptForWordsOfBothLanguages) {
    const std::set<int> alike = {237};  // OK
    for (int n = 1; n <= static_cast<int>(kTexts); ++n) {
        EXPECT_EQ(Both(n)[0] == Both(n)[1], alike.contains(n)) << n << ": " << Both(n)[0];
    }
}

TEST_F(DeliveredTexts, EndWithABlankExactlyWhereAValueFollowsAtOnce) {
    const std::set<int> beforeAValue = {127, 130, 144, 175, 177, 193, 195,
                                        196, 197, 198, 199, 200, 201, 244};
    ForEachText([&](int n, const std::string& text) {
        EXPECT_EQ(text.back() == ' ', beforeAValue.contains(n)) << n << ": " << text;
        EXPECT_NE(text.front(), ' ') << n << ": " << text;
        EXPECT_EQ(text.find("  "), std::string::npos) << n << ": " << text;
        EXPECT_EQ(text.find('&'), std::string::npos) << n << ": the windows add the mnemonics";
        // A colon belongs to labels that are printed before their values; elsewhere the windows
        // add their own.
        const bool label = n == 177 || (n >= 195 && n <= 201);
        EXPECT_EQ(text.size() > 1 && text.substr(text.size() - 2) == ": ", label) << n;
        EXPECT_NE(text.back(), ':') << n;
    });
}

}  // namespace
}  // namespace lapvane::texttable
