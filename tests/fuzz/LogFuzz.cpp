// The page and lap decoders and the conversion: any blocks give ten rows each with the right number
// of fields.
#include <algorithm>

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzPlatform.h"
#include "logs/Conversione.h"
#include "logs/Scarico.h"

void Fuzz(std::string_view all) {
    using namespace lapvane;
    static FuzzPlatform machine;
    const std::size_t size = all.size();
    std::vector<std::string> blocks;
    for (std::size_t i = 0; i + 128 <= all.size() && blocks.size() < 64; i += 128) {
        blocks.emplace_back(all.substr(i, 128));
    }
    for (std::size_t i = 0; i + 4 <= all.size(); i += 4) {
        const RecordGiro lap = DecodificaRecordGiro(all.substr(i, 4));
        Must(lap.Centesimi >= 0 && !(lap.NuovaSessione && lap.Centesimi > 0xFFFFFF));
    }
    const std::size_t half = std::min<std::size_t>(128, size);
    VerificaPagina(all.substr(0, half), all.substr(half));
    std::string csv, txt;
    ConvertiBlocchi(blocks, blocks.size(), size % 2 == 0 ? '.' : ',', csv, txt);
    const auto count = [](const std::string& text, char c) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
    };
    // A block has ten rows; those of laps that were never closed off are all written at the end.
    Must(count(csv, '\n') == 10 * blocks.size() && count(txt, '\n') == 10 * blocks.size());
    Must(count(csv, ';') == 15 * count(csv, '\n') && count(txt, ';') == 10 * count(txt, '\n'));
}
