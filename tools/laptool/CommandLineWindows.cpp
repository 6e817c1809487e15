#include <windows.h>
// After it, since they build on its types.
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstdio>
#include <memory>

#include "tools/laptool/CommandLine.h"

namespace lapvane::laptool {

std::vector<std::string> Words(int, char**) {
    // What `main` is given has lost the letters that the system's code page lacks.
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> words(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    std::vector<std::string> utf8;
    for (int i = 1; i < count; ++i) {
        const std::u8string word = std::filesystem::path(words.get()[i]).u8string();
        utf8.emplace_back(reinterpret_cast<const char*>(word.data()), word.size());
    }
    return utf8;
}

std::filesystem::path Folder(const char*) {
    constexpr DWORD kLongest = 32768;
    std::wstring self(kLongest, L'\0');
    self.resize(::GetModuleFileNameW(nullptr, self.data(), kLongest));
    return std::filesystem::path(self).parent_path();
}

std::filesystem::path Own() {
    wchar_t* data = nullptr;
    std::filesystem::path own;
    if (::SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &data) == S_OK) {
        own = std::filesystem::path(data) / "Lapvane";
    }
    ::CoTaskMemFree(data);
    return own;
}

void PlainOutput() {
    static_cast<void>(::_setmode(::_fileno(stdout), _O_BINARY));
    ::SetConsoleOutputCP(CP_UTF8);
}

}  // namespace lapvane::laptool
