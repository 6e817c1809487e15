#include "support/Cartelle.h"
#include "tools/texttable/texttable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "shell/LoadStrings.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

namespace lapvane::texttable {
namespace {

namespace fs = std::filesystem;

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

TEST(TextTable, EncodingRefusesWhatDoesNotComeBack) {
    std::string what;
    EXPECT_EQ(Encode1252("Velocit\u00E0, 5 \u20AC", what), "Velocit\xE0, 5 \x80");
    for (const char* text : {"\u0416", "\U0001F3C1", "\u0085", "\u0081", "perch\xE9", "\xC3",
                             "\xC0\xAF", "\xE0\x82\xA0", "\xED\xA0\x80"}) {
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
        {"6: number 5 expected, \"05\" found\n", [](Lines& l) { l[5] = "05\t-\ta\tb\t-\tc"; }},
        {"3: the Italian text is empty\n", [](Lines& l) { l[2] = "2\t-\t\tb\t-\tc"; }},
        {"3: the Italian text begins or ends with a double quote\n",
         [](Lines& l) { l[2] = "2\t-\t\"a\" b\tb\t-\tc"; }},
        {"3: the English text begins or ends with a double quote\n",
         [](Lines& l) { l[2] = "2\t-\ta\ta \"b\"\t-\tc"; }},
        {"3: the column of where it is used has the control character 13\n",
         [](Lines& l) { l[2] += "\r"; }},
        {"3: the English text has the control character 127\n",
         [](Lines& l) { l[2] = "2\t-\ta\t\x7F\t-\tc"; }},
        {"3: the Italian text is not UTF-8 or has a character that Windows-1252 lacks\n",
         [](Lines& l) { l[2] = "2\t-\tcitt\xE0\tb\t-\tc"; }},
        {"3: \"yes\" is not heading, part or -\n", [](Lines& l) { l[2] = "2\tDue\ta\tb\tyes\tc"; }},
        // A text of the program's own has a name, and one that no other has.
        {"336: \"-\" is not a name\n", [](Lines& l) { l.push_back("335\t-\ta\tb\t-\tc"); }},
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
}

TEST(TextTable, FilesAreReplacedWholeOrNotAtAll) {
    prova::PlatformProva machine;
    const fs::path folder = machine.Cartella;
    const fs::path in = folder / "texts.tsv", out = folder / "LANGUAGES.DAT";
    std::ostringstream errors;
    const auto make = [&](const fs::path& where) {
        errors.str("");
        return MakeLanguageFile(in, where, errors);
    };
    EXPECT_EQ(make(out), 1);
    EXPECT_EQ(errors.str(), in.string() + ": cannot be read\n");
    std::vector<std::string> lines = PlainLines();
    lines[10] = "10\t-\tdieci\t\t-\tmenu";
    prova::Scrivi(in, Joined(lines));
    EXPECT_EQ(make(out), 1);
    EXPECT_EQ(errors.str(), in.string() + ":11: the English text is empty\n");
    EXPECT_FALSE(fs::exists(out));
    prova::Scrivi(in, Joined(PlainLines()));
    EXPECT_EQ(make(out), 0);
    EXPECT_EQ(errors.str(), "");
    const std::string whole = prova::Leggi(out);
    EXPECT_EQ(whole, LanguageFile(ReadTable(Joined(PlainLines())).Entries));
#ifndef _WIN32
    {
        const prova::SpazioFinito little(1000);
        EXPECT_EQ(make(out), 1);
    }
#endif
    EXPECT_EQ(prova::Leggi(out), whole);
    fs::create_directories(folder / "taken" / "inside");  // a folder stands in the way
    for (const fs::path& where : {folder / "missing" / "OUT.DAT", folder / "taken"}) {
        EXPECT_EQ(make(where), 1);
        EXPECT_EQ(errors.str().find(where.string() + ": cannot be written ("), 0u);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 3)
        << "a temporary file was left behind";
    // What has not changed keeps its time, so that the build makes nothing anew.
    const fs::path header = folder / "Voci.h";
    EXPECT_EQ(MakeSources(in, folder, errors), 0);
    const auto old = fs::last_write_time(header) - std::chrono::hours(1);
    fs::last_write_time(header, old);
    EXPECT_EQ(MakeSources(in, folder, errors), 0);
    EXPECT_EQ(fs::last_write_time(header), old);
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

TEST(DeliveredTexts, ComeThroughTheReaderOfTheProgramUnchanged) {
    prova::PlatformProva machine;
    const Table table = ReadTable(prova::Leggi(prova::CartellaDati() / "testi.tsv"));
    ASSERT_TRUE(table.Faults.empty()) << table.Faults[0].Line << ": " << table.Faults[0].What;
    prova::Scrivi(machine.Cartella / "LANGUAGES.DAT", LanguageFile(table.Entries));
    CaricaTesti();
    EXPECT_EQ(IndiceLingua, 1);
    const std::set<std::size_t> beforeAValue = {127, 130, 144, 175, 177, 193, 195,
                                                196, 197, 198, 199, 200, 201, 244};
    for (const int language : {0, 1}) {
        IndiceLingua = language;
        CalcolaBaseTesti();
        for (std::size_t n = 1; n <= kTexts; ++n) {
            const Entry& entry = table.Entries[n - 1];
            const std::string& text = language == 0 ? entry.Italian : entry.English;
            EXPECT_EQ(Testo(static_cast<Voce>(n)), text) << n;
            EXPECT_EQ(text.back() == ' ', beforeAValue.contains(n)) << n << ": " << text;
            EXPECT_EQ(text.find('&'), std::string::npos) << n << ": the windows add the letters";
            EXPECT_EQ(entry.Italian == entry.English, n == 237) << n << ": " << text;  // OK
        }
    }
}

}  // namespace
}  // namespace lapvane::texttable
