#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"

namespace lapvane {

/// A machine for the fuzz targets: no windows, a clock that moves only while somebody waits.
class FuzzPlatform : public Platform {
 public:
    FuzzPlatform() { SetPlatform(this); }
    std::int64_t GetTickCount() override { return Clock; }
    void Sleep(int ms) override { Clock += ms; }
    void DoEvents(int ms) override { Clock += ms; }
    Answer MsgBox(const std::string&, Buttons buttons, Icon, const std::string&) override {
        ++Boxes;
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
    std::optional<std::filesystem::path> AskOpen(const FileRequest&) override { return {}; }
    std::optional<std::filesystem::path> AskSave(const FileRequest&) override { return {}; }
    std::optional<Colore> AskColor(Colore) override { return {}; }
    std::filesystem::path AppPath() override { return Folder; }
    std::filesystem::path CurDir() override { return Folder; }
    std::string ExeName() override { return "fuzz"; }
    std::string Now() override { return {}; }
    char DecimalSeparator() override { return '.'; }
    void MousePointer(Pointer) override {}
    void Language(int) override {}
    void End(int code) override { throw FineProgramma{code}; }

    std::int64_t Clock = 0;
    int Boxes = 0;
    std::filesystem::path Folder = "/nonexistent";
};

/// A folder in memory that goes with the process.
class FuzzFolder {
 public:
    FuzzFolder() {
        std::string name =
            (std::filesystem::exists("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                 : std::filesystem::temp_directory_path()) /
            "lapvane-fuzz-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        Path = name;
    }
    ~FuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path, ignored);
    }
    void Write(const char* name, std::string_view text) const {
        std::FILE* file = std::fopen((Path / name).c_str(), "wb");
        if (file == nullptr) std::abort();
        if (std::fwrite(text.data(), 1, text.size(), file) != text.size()) std::abort();
        std::fclose(file);
    }

    std::filesystem::path Path;
};

}  // namespace lapvane
