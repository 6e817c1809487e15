// The file of a download: whatever became of it, its pages are whole ones, and what is written of
// it reads back the same.
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzPlatform.h"
#include "logs/BufferLog.h"
#include "logs/FileScarico.h"
#include "logs/Scarico.h"

void Fuzz(std::string_view input) {
    using namespace lapvane;
    static FuzzPlatform machine;
    const auto read = LeggiScarico(input);
    if (!read) return;
    Must(read->Byte >= 0 && read->Giri >= 0 && read->Fine <= input.size());
    std::string text = TestaScarico(*read);
    for (const auto& [address, block] : read->BlocchiGiri) text += RecordGiri(address, block);
    for (const auto& [address, page] : read->Pagine) {
        const std::string_view both = page;
        Must(VerificaPagina(both.substr(0, kByteBlocco), both.substr(kByteBlocco)));
        text += RecordPagina(address, both.substr(0, kByteBlocco), both.substr(kByteBlocco));
    }
    if (read->Finito) text += RecordFine(static_cast<std::int32_t>(read->Pagine.size()));
    const auto again = LeggiScarico(text);
    Must(again && again->Fine == text.size() && again->Finito == read->Finito);
    Must(again->Byte == read->Byte && again->Giri == read->Giri && again->Quando == read->Quando);
    Must(again->BlocchiGiri == read->BlocchiGiri && again->Pagine == read->Pagine);
    // A file that was cut, and grew again from its last good record on.
    const auto grown = LeggiScarico(
        std::string(input.substr(0, read->Fine)) +
        RecordPagina(0, std::string(kByteBlocco, '\0'), std::string(kByteBlocco, '\0')));
    Must(grown && grown->Pagine.contains(0));
    MettiInMemoria(*read);
    Must(BlocchiLog.size() == 2 * read->Pagine.size() && BlocchiLog.size() <= kBlocchiMassimi);
}
