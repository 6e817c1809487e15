// A program of Linux for tests that run as Windows programs under wine, which neither waits for
// such a program nor hands its output on. Named pdftotext.exe it calls pdftotext, and so on.
// Arguments that are files here go over with their names there.
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

/// The name that a file has on Linux, between quotation marks for its shell.
std::string Unix(const fs::path& file) {
    using Namer = char*(CDECL*)(const wchar_t*);
    const auto name = reinterpret_cast<Namer>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    return name == nullptr ? std::string()
                           : '\'' + std::string(name(fs::absolute(file).c_str())) + '\'';
}

}  // namespace

int main(int argc, char* argv[]) {
    std::string line = fs::path(argv[0]).stem().string();
    for (int i = 1; i < argc; ++i) {
        const bool file = fs::exists(argv[i]);
        line += ' ' + (file ? Unix(argv[i]) : std::string(argv[i]));
    }
    const fs::path out =
        fs::temp_directory_path() / ("out-" + std::to_string(::GetCurrentProcessId()));
    const fs::path code = fs::path(out) += ".code";
    line = "Z:\\bin\\sh -c \"" + line + " > " + Unix(out) + "; echo $? > " + Unix(out) +
           ".new; mv " + Unix(out) + ".new " + Unix(code) + "\"";
    STARTUPINFOA how{};
    how.cb = sizeof how;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how,
                          &process)) {
        return 1;
    }
    for (int wait = 0; wait < 3000 && !fs::exists(code); ++wait) ::Sleep(10);
    int result = 1;
    std::ifstream(code) >> result;
    std::ifstream bytes(out, std::ios::binary);
    const std::string all{std::istreambuf_iterator<char>(bytes), {}};
    bytes.close();
    std::fwrite(all.data(), 1, all.size(), ::_fdopen(1, "wb"));
    std::fflush(nullptr);
    std::error_code ignored;
    fs::remove(out, ignored);
    fs::remove(code, ignored);
    return result;
}
