#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "platform/Boxes.h"
#include "platform/Colore.h"
#include "platform/FileRequest.h"
#include "platform/Pointer.h"

namespace lapvane {

/// The one seam to everything outside the program but the serial port, the graph and the printer.
/// All text is Windows-1252.
class Platform {
 public:
    virtual ~Platform() = default;

    /// Milliseconds of a clock that never goes back.
    virtual std::int64_t GetTickCount() = 0;
    /// Blocks for `ms` milliseconds; no event runs.
    virtual void Sleep(int ms) = 0;
    /// Runs `meanwhile` and blocks for what it leaves of `ms` milliseconds. This one blocks for all
    /// of them: for machines whose clock stands still while the program works.
    virtual void Pause(int ms, const std::function<void()>& meanwhile) {
        meanwhile();
        Sleep(ms);
    }
    /// Lets pending events run. With nothing pending it waits inside the machine's poll for at most
    /// `waitMs`, so that a wait loop costs no processor time.
    virtual void DoEvents(int waitMs = 0) = 0;

    virtual Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                          const std::string& title) = 0;
    /// Both leave the current folder at the chosen folder. Empty: cancelled.
    virtual std::optional<std::filesystem::path> AskOpen(const FileRequest& request) = 0;
    virtual std::optional<std::filesystem::path> AskSave(const FileRequest& request) = 0;
    /// A folder that is there; the dialog begins in `initial` (empty: the current folder) and
    /// leaves the current folder alone. Empty: cancelled.
    virtual std::optional<std::filesystem::path> AskFolder(
        const std::string& title, const std::filesystem::path& initial) = 0;
    virtual std::optional<Colore> AskColor(Colore initial) = 0;

    virtual std::filesystem::path
    AppPath() = 0;  ///< the program's folder, as `CartellaDelProgramma` decides
    /// Where the program itself lies, with what it only shows; nothing is written there.
    virtual std::filesystem::path InstallPath() { return AppPath(); }
    virtual std::filesystem::path CurDir() = 0;
    /// Makes a folder the current one; one that is not there changes nothing.
    virtual void ChDir(const std::filesystem::path& folder) = 0;
    virtual std::string ExeName() = 0;  ///< name of the executable, title of most boxes
    virtual std::string Now() = 0;      ///< date and time in the system's general format
    /// Date and time as part of a file name, "2026-11-25 16-45-30", whatever the system's format.
    virtual std::string Stamp();
    /// The person's folder of documents; empty: there is none.
    virtual std::filesystem::path Documents() { return {}; }
    /// Shows a file or a folder in whatever the desktop opens it with; `place` is a heading inside
    /// a page. False: nothing opens it.
    virtual bool OpenOutside(const std::filesystem::path& /*what*/, const std::string& /*place*/) {
        return false;
    }
    virtual char DecimalSeparator() = 0;
    virtual void MousePointer(Pointer pointer) = 0;
    /// Text of the message boxes' buttons and dialogs follows the program's language (0 Italian,
    /// 1 English).
    virtual void Language(int index) = 0;

    /// The one door through which the process ends. Does not return; raises `FineProgramma` where
    /// the process has to live on.
    virtual void End(int code) = 0;
};

/// The machine in use. `SetPlatform` comes first of all, in main and in every test.
Platform& platform();
void SetPlatform(Platform* platform);

/// `Platform::End` of the machine in use, for callers that count on not coming back.
[[noreturn]] void EndProgram(int code);

}  // namespace lapvane
