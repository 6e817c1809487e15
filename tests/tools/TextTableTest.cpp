#include "tools/texttable/texttable.h"

#include <chrono>
#include <set>
#include <sstream>

#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

namespace lapvane::texttable {
namespace {

namespace fs = std::filesystem;

/// A table in which every text is named after its number, but for some lines (from 1).
std::string Tsv(std::map<std::size_t, std::string> changed = {}) {
    changed.insert({1, "number\tname\titalian\tenglish\tmessage\twhere used"});
    std::string text;
    for (std::size_t line = 1; line <= std::max(kTexts + 1, changed.rbegin()->first); ++line) {
        const std::string n = std::to_string(line - 1);
        const auto other = changed.find(line);
        text += other != changed.end() ? other->second
                                       : n + "\t-\tuno " + n + "\tone " + n + "\t-\tmenu";
        text += "\n";
    }
    return text;
}

TEST(TextTable, EachFaultIsToldOnceWithItsLine) {
    const auto faults = [](const std::string& tsv) {
        std::string all;
        for (const Fault& fault : ReadTable(tsv).Faults) {
            all += std::to_string(fault.Line) + ": " + fault.What + "|";
        }
        return all;
    };
    EXPECT_EQ(faults(Tsv()), "");
    struct Case {
        std::size_t Line;
        const char *Text, *What;
    };
    for (const Case& c : {
             Case{
                 1, "number\titalian",
                 "the heading is not number, name, italian, english, message, where used, by tabs"},
             {6, "5\tcinque\tfive\t-\tx", "6 columns expected, 5 found"},
             {6, "05\t-\ta\tb\t-\tc", "number 5 expected, \"05\" found"},
             {3, "2\t-\t\tb\t-\tc", "the Italian text is empty"},
             {3, "2\t-\t\"a\" b\tb\t-\tc", "the Italian text begins or ends with a double quote"},
             {3, "2\t-\ta\ta \"b\"\t-\tc", "the English text begins or ends with a double quote"},
             {3, "2\t-\ta\t\x7F\t-\tc", "the English text has the control character 127"},
             {3, "2\t-\tcitt\xE0\tb\t-\tc",
              "the Italian text is not UTF-8 or has a character that Windows-1252 lacks"},
             {3, "2\tDue\ta\tb\tyes\tc", "\"yes\" is not heading, part or -"},
             // A text of the program's own has a name.
             {336, "335\t-\ta\tb\t-\tc", "\"-\" is not a name"},
         }) {
        EXPECT_EQ(faults(Tsv({{c.Line, c.Text}})), std::to_string(c.Line) + ": " + c.What + "|");
    }
    EXPECT_EQ(faults(Tsv({{336, "335\tUno\ta\tb\t-\tc"}, {337, "336\tUno\ta\tb\t-\tc"}})),
              "337: the name Uno stands twice|");
    std::string missing = Tsv();
    missing.erase(missing.find("5\t-"), missing.find("6\t-") - missing.find("5\t-"));
    EXPECT_EQ(faults(missing),
              "6: number 5 expected, \"6\" found|335: 334 rows expected, 333 found|");
}

TEST(TextTable, OwnTextsAreBuiltInAndStayOutOfTheLanguageFile) {
    const auto entries =
        ReadTable(Tsv({{10, "9\tNove\tuno 9\tone 9\t-\tmenu"},
                       {336, "335\tVelocita\tVelocit\u00E0 1 \"a\" \\\tSpeed\t-\tc"}}))
            .Entries;
    EXPECT_EQ(LanguageFile(entries), LanguageFile(ReadTable(Tsv()).Entries));
    EXPECT_NE(NamesHeader(entries).find("enum class Voce : int {\n    Nessuna = 0,\n    Nove = 9,\n"
                                        "    Velocita = 335,\n};\n"),
              std::string::npos);
    EXPECT_NE(BuiltInSource(entries).find("kTesti[] = {\n    {\"Velocit\\340 1 \\\"a\\\" \\\\\",\n"
                                          "     \"Speed\"},\n};\n"),
              std::string::npos);
}

TEST(TextTable, FilesAreReplacedWholeOrNotAtAll) {
    const prova::PlatformProva machine;
    const fs::path& folder = machine.Cartella;
    const fs::path in = folder / "texts.tsv", out = folder / "LANGUAGES.DAT";
    std::ostringstream errors;
    const auto fails = [&](const fs::path& where, const std::string& said) {
        errors.str("");
        EXPECT_EQ(MakeLanguageFile(in, where, errors), 1);
        EXPECT_EQ(errors.str().find(said), 0u) << errors.str();
    };
    prova::Scrivi(in, Tsv({{11, "10\t-\tdieci\t\t-\tmenu"}}));
    fails(out, in.string() + ":11: the English text is empty\n");
    EXPECT_FALSE(fs::exists(out));
    prova::Scrivi(in, Tsv());
    EXPECT_EQ(MakeLanguageFile(in, out, errors), 0);
    const std::string whole = prova::Leggi(out);
    fs::create_directories(folder / "taken" / "inside");  // a folder stands in the way
    fails(folder / "taken", (folder / "taken").string() + ": cannot be written (");
#ifndef _WIN32
    {
        const prova::SpazioFinito little(1000);
        fails(out, out.string() + ": cannot be written (");
    }
#endif
    EXPECT_EQ(prova::Leggi(out), whole);
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

TEST(DeliveredTexts, ComeThroughTheReaderOfTheProgramUnchanged) {
    const prova::PlatformProva machine;
    const Table table = ReadTable(prova::Leggi(prova::CartellaDati() / "testi.tsv"));
    ASSERT_TRUE(table.Faults.empty()) << table.Faults[0].Line << ": " << table.Faults[0].What;
    prova::Scrivi(machine.Cartella / "LANGUAGES.DAT", LanguageFile(table.Entries));
    CaricaTesti();
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
