// The list of runs: an index of any lines, closed as whole, is read as what is written the same
// again or refused; notes go into any session file and leave the rest of what it says; choices,
// dates and lap times of any text stay within what can be shown.

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzPlatform.h"
#include "reports/FileSessione.h"
#include "runs/ElencoUscite.h"
#include "runs/IndiceArchivio.h"
#include "runs/NoteUscita.h"
#include "runs/ScelteArchivio.h"

namespace {

using namespace lapvane;

void Index(std::string_view input, std::size_t runs) {
    LeggiIndice(input);
    const auto read = LeggiIndice(ChiudiIndice("Lapvane runs 1\n" + std::string(input), runs));
    if (!read) return;
    Must(read->size() == runs);
    std::vector<const Uscita*> all;
    for (const Uscita& run : *read) all.push_back(&run);
    const std::string written = ScriviIndice(all);
    const auto again = LeggiIndice(written);
    Must(again && again->size() == runs);
    ElencoUscite list;
    list.Raggruppa(GruppoPer::Circuito);
    list.Prendi(*read);
    list.Cerca("a 1");
    for (const Uscita& run : *read) {
        for (int column = 0; column < kColonneUscite; ++column) {
            TestoColonna(run, static_cast<ColonnaUscite>(column), '.');
        }
        FraseProblema(run);
        Must(run.QualeMigliore() <= run.Giri());
    }
}

void Notes(std::string_view input) {
    const std::string with = ConNote(input, "wing\r\none");
    RecordSessione before, after;
    std::string vehicle, vehicleAfter;
    CanaliSessione channels, channelsAfter;
    LeggiSessione(input, before, vehicle, channels);
    LeggiSessione(with, after, vehicleAfter, channelsAfter);
    Must(after.NoteSessione == "wing one" && vehicle == vehicleAfter);
    before.NoteSessione = after.NoteSessione;
    Must(ScriviSessione(before, channels) == ScriviSessione(after, channelsAfter));
    Must(ConNote(with, "wing\r\none") == with);
}

}  // namespace

void Fuzz(std::string_view input) {
    static FuzzPlatform machine;
    if (input.empty()) return;
    const std::string_view text = input.substr(1);
    Index(text, static_cast<unsigned char>(input[0]) % 4);
    Notes(text);
    const ScelteArchivio choices = LeggiScelteArchivio(text);
    const std::string written = ScriviScelteArchivio(choices);
    Must(ScriviScelteArchivio(LeggiScelteArchivio(written)) == written);
    const std::int32_t day = LeggiGiorno(text);
    Must(day == 0 || (day >= 19000101 && day <= 99991231));
    Must(LeggiMinuto(text) >= -1 && LeggiMinuto(text) < 1440);
    Uscita run;
    PrendiTempi(run, text);
    Must(run.Giri() <= 998 && (run.Migliore == 0) == (run.QualeMigliore() < 0));
}
