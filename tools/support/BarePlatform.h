#pragma once

#include <filesystem>
#include <utility>

#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"

namespace lapvane {

/// A machine for programs without windows: no event, no dialog, boxes that answer themselves, and a
/// clock that jumps over every wait. In use from the moment it is made until it goes.
class BarePlatform : public Platform {
 public:
    explicit BarePlatform(std::filesystem::path folder) : Folder(std::move(folder)) {
        SetPlatform(this);
    }
    ~BarePlatform() override { SetPlatform(nullptr); }
    BarePlatform(const BarePlatform&) = delete;
    BarePlatform& operator=(const BarePlatform&) = delete;

    std::int64_t GetTickCount() override { return Clock; }
    void Sleep(int ms) override { Clock += ms; }
    void DoEvents(int ms) override { Clock += ms; }
    Answer MsgBox(const std::string&, Buttons buttons, Icon, const std::string&) override {
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
    std::optional<std::filesystem::path> AskOpen(const FileRequest&) override { return {}; }
    std::optional<std::filesystem::path> AskSave(const FileRequest&) override { return {}; }
    std::optional<std::filesystem::path> AskFolder(const std::string&,
                                                   const std::filesystem::path&) override {
        return {};
    }
    std::optional<Colore> AskColor(Colore) override { return {}; }
    std::filesystem::path AppPath() override { return Folder; }
    std::filesystem::path CurDir() override { return Folder; }
    void ChDir(const std::filesystem::path&) override {}
    std::string ExeName() override { return "lapvane"; }
    std::string Now() override { return {}; }
    char DecimalSeparator() override { return '.'; }
    void MousePointer(Pointer) override {}
    void Language(int) override {}
    void End(int code) override { throw FineProgramma{code}; }

    std::int64_t Clock = 0;  ///< ms
    std::filesystem::path Folder;
};

}  // namespace lapvane
