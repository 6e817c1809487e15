// The project reader: any bytes become values or are refused, and what was read can be written and
// read again without a change.
#include <cstdlib>

#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace lapvane;
    DatiProgetto = {};
    LeggiValoriProgetto({reinterpret_cast<const char*>(data), size});
    ApplicaValoriProgetto();
    const std::string first = TestoProgetto();
    const std::size_t magic = first.find('\n') + 1;
    if (!LeggiValoriProgetto(std::string_view(first).substr(magic))) std::abort();
    const bool input = DatiProgetto.chkIngresso;
    ApplicaValoriProgetto();
    if (DatiProgetto.chkIngresso != input) std::abort();
    // Numbers always survive; texts do unless a line end or an outer quote is in them.
    for (const auto& field : kCampiProgetto) {
        std::visit(
            [&](auto member) {
                using Type = std::remove_cvref_t<decltype(DatiProgetto.*member)>;
                if constexpr (!std::is_same_v<Type, std::string>) {
                    const RecordProgetto before = DatiProgetto;
                    ApplicaValoriProgetto();
                    if (before.*member != DatiProgetto.*member) std::abort();
                }
            },
            field.Campo);
    }
    return 0;
}
