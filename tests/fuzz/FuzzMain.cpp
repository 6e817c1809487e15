// The entry of every target.
#include <cstddef>
#include <vector>

#include "fuzz/Fuzz.h"
#include "platform/ErroreRuntime.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::vector<char> bytes(data, data + size);
    try {
        Fuzz({bytes.data(), bytes.size()});
    } catch (const lapvane::ErroreRuntime&) {
    } catch (const lapvane::FineProgramma&) {
    }
    return 0;
}
