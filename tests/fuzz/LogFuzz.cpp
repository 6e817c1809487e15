// The page and lap decoders and the conversion: any blocks give ten rows each with the right number
// of fields.
#include <algorithm>
#include <cstdlib>

#include "fuzz/FuzzPlatform.h"
#include "logs/Conversione.h"
#include "logs/Scarico.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace lapvane;
    static FuzzPlatform machine;
    const std::string all(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> blocks;
    for (std::size_t i = 0; i + 128 <= all.size() && blocks.size() < 64; i += 128) {
        blocks.push_back(all.substr(i, 128));
    }
    for (std::size_t i = 0; i + 4 <= all.size(); i += 4) {
        const RecordGiro lap = DecodificaRecordGiro(std::string_view(all).substr(i, 4));
        if (lap.Centesimi < 0 || (lap.NuovaSessione && lap.Centesimi > 0xFFFFFF)) std::abort();
    }
    const std::string_view whole(all);
    VerificaPagina(whole.substr(0, std::min<std::size_t>(128, size)),
                   whole.substr(std::min<std::size_t>(128, size)));
    std::string csv, txt;
    ConvertiBlocchi(blocks, blocks.size(), size % 2 == 0 ? '.' : ',', csv, txt);
    const auto count = [](const std::string& text, char c) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
    };
    // A block has ten rows; those of laps that were never closed off are all written at the end.
    if (count(csv, '\n') != 10 * blocks.size() || count(txt, '\n') != 10 * blocks.size()) {
        std::abort();
    }
    if (count(csv, ';') != 15 * count(csv, '\n') || count(txt, ';') != 10 * count(txt, '\n')) {
        std::abort();
    }
    return 0;
}
