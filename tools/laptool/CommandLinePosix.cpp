#include <cstdlib>
#include <system_error>

#include "tools/laptool/CommandLine.h"

namespace lapvane::laptool {

std::vector<std::string> Words(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

std::filesystem::path Folder(const char* called) {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    return (error ? std::filesystem::absolute(called) : self).parent_path();
}

std::filesystem::path Own() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && *data == '/') return std::filesystem::path(data) / "Lapvane";
    const char* home = std::getenv("HOME");
    if (home == nullptr) return {};
    return std::filesystem::path(home) / ".local" / "share" / "Lapvane";
}

void PlainOutput() {}

}  // namespace lapvane::laptool
