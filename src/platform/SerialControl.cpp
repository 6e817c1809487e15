#include "platform/SerialControl.h"

#include <charconv>

#include "platform/ErroreRuntime.h"

namespace lapvane {

int BaudRate(const std::string& settings) {
    int baud = 0;
    const char* const end = settings.data() + settings.size();
    const auto [rest, error] = std::from_chars(settings.data(), end, baud);
    if (error != std::errc() || baud <= 0 || std::string_view(rest, end) != ",N,8,1") {
        throw ErroreControllo("unsupported settings");
    }
    return baud;
}

}  // namespace lapvane
