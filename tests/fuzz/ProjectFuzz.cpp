// The project reader: any bytes become values or are refused, and what was read can be written and
// read again without a change.

#include "fuzz/Fuzz.h"
#include "logs/Impostazioni.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"

void Fuzz(std::string_view text) {
    using namespace lapvane;
    DatiProgetto = {};
    LeggiValoriProgetto(text);
    ApplicaValoriProgetto();
    const std::string first = TestoProgetto();
    const std::size_t magic = first.find('\n') + 1;
    Must(LeggiValoriProgetto(std::string_view(first).substr(magic)));
    const bool input = DatiProgetto.chkIngresso;
    ApplicaValoriProgetto();
    Must(DatiProgetto.chkIngresso == input);
    // Numbers always survive; texts do unless a line end or an outer quote is in them.
    for (const auto& field : kCampiProgetto) {
        std::visit(
            [&](auto member) {
                using Type = std::remove_cvref_t<decltype(DatiProgetto.*member)>;
                if constexpr (!std::is_same_v<Type, std::string>) {
                    const RecordProgetto before = DatiProgetto;
                    ApplicaValoriProgetto();
                    Must(before.*member == DatiProgetto.*member);
                }
            },
            field.Campo);
    }
    // Whatever its texts hold, the copy beside a log is read back, with every number in its place.
    RecordProgetto copy;
    Must(ImpostazioniDaTesto(TestoImpostazioni(DatiProgetto), copy));
    Must(copy.ChannSensoreLambda == DatiProgetto.ChannSensoreLambda);
    Must(copy.mskStopRecSecondi == DatiProgetto.mskStopRecSecondi);
    ImpostazioniDaTesto(text, copy);
}
