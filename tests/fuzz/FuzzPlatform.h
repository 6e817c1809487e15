#pragma once

#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"

namespace lapvane {

/// A machine for the fuzz targets: no files, no windows, a clock that stands.
class FuzzPlatform : public Platform {
 public:
    FuzzPlatform() { SetPlatform(this); }
    std::int64_t GetTickCount() override { return 0; }
    void Sleep(int) override {}
    void DoEvents(int) override {}
    Answer MsgBox(const std::string&, Buttons buttons, Icon, const std::string&) override {
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
    std::optional<std::filesystem::path> AskOpen(const FileRequest&) override { return {}; }
    std::optional<std::filesystem::path> AskSave(const FileRequest&) override { return {}; }
    std::optional<Colore> AskColor(Colore) override { return {}; }
    std::filesystem::path AppPath() override { return "/nonexistent"; }
    std::filesystem::path CurDir() override { return "/nonexistent"; }
    std::string ExeName() override { return "fuzz"; }
    std::string Now() override { return {}; }
    char DecimalSeparator() override { return '.'; }
    void MousePointer(Pointer) override {}
    void Language(int) override {}
    void End(int code) override { throw FineProgramma{code}; }
};

}  // namespace lapvane
