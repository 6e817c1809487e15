// The entry of every target.
#include <cstddef>
#include <vector>

#include "fuzz/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::vector<char> bytes(data, data + size);
    Fuzz({bytes.data(), bytes.size()});
    return 0;
}
