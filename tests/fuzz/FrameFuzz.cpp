// The frame codec: whatever is encoded comes back, and a frame's checksum holds.
#include <cstdlib>

#include "device/Codec.h"
#include "platform/ErroreRuntime.h"
#include "shell/NumeroTesto.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace lapvane;
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const std::string coded = CodificaLong(text);
        if (coded.size() != 4 || LongIn(coded, 1) != LeggiInt32(text).value_or(0)) std::abort();
        if (CodificaWord(text) != coded.substr(2) || CodificaByte(text) != coded.substr(3)) {
            std::abort();
        }
    } catch (const ErroreRuntime&) {
        if (text.empty() || LeggiInt32(text).has_value()) std::abort();
    }
    if (size == 0 || size > 100) return 0;
    const std::string frame = Frame(data[0], std::string_view(text).substr(1));
    if (frame.size() != size + 3) std::abort();
    if (CalcolaChecksum(frame.substr(0, frame.size() - 2)) != frame.substr(frame.size() - 2)) {
        std::abort();
    }
    if (size >= 4) {
        if (CodificaLong(DecodificaLong(std::string_view(text).substr(0, 4))) !=
            text.substr(0, 4)) {
            std::abort();
        }
    }
    return 0;
}
