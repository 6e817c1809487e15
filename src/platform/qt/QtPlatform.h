#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QLocale>
#include <QTranslator>
#include <QWidget>

#include "platform/Platform.h"

namespace lapvane {

/// The machine on Qt.
class QtPlatform : public Platform {
 public:
    QtPlatform();

    std::int64_t GetTickCount() override;
    void Sleep(int ms) override;
    void Pause(int ms, const std::function<void()>& meanwhile) override;
    void DoEvents(int waitMs = 0) override;
    Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                  const std::string& title) override;
    std::optional<std::filesystem::path> AskOpen(const FileRequest& request) override;
    std::optional<std::filesystem::path> AskSave(const FileRequest& request) override;
    std::optional<std::filesystem::path> AskFolder(const std::string& title,
                                                   const std::filesystem::path& initial) override;
    std::optional<Colore> AskColor(Colore initial) override;
    std::filesystem::path AppPath() override;
    std::filesystem::path InstallPath() override;
    std::filesystem::path Documents() override;
    std::filesystem::path CurDir() override;
    void ChDir(const std::filesystem::path& folder) override;
    std::string ExeName() override;
    std::string Now() override;
    bool OpenOutside(const std::filesystem::path& what, const std::string& place) override;
    char DecimalSeparator() override;
    void MousePointer(Pointer pointer) override;
    void Language(int index) override;
    void End(int code) override;

 private:
    std::optional<std::filesystem::path> AskFile(const FileRequest& request, bool save);

    QElapsedTimer clock_;
    QTranslator italian_;
    std::filesystem::path appPath_;
    bool busy_ = false;
    bool italianOn_ = false;
};

/// Date and time in the general format of a locale, the year with four digits.
QString FormatoGenerale(const QDateTime& quando, const QLocale& paese);

}  // namespace lapvane
