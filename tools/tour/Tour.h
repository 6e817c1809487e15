#pragma once

#include <QAbstractItemModel>
#include <QDir>
#include <QElapsedTimer>
#include <QTableView>
#include <QTableWidget>
#include <QToolButton>
#include <filesystem>
#include <functional>
#include <memory>

#include "Robot.h"
#include "platform/ErroreRuntime.h"
#include "platform/qt/QtPlatform.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"

namespace lapvane::tour {

/// The machine of the tour: the real one, in a program's folder of its own, where the end of the
/// program is noted and not carried out. Its clock runs `pace` times as fast as the real one.
class TourPlatform : public QtPlatform {
 public:
    TourPlatform(std::filesystem::path folder, int pace)
        : folder_(std::move(folder)), pace_(pace) {}
    std::int64_t GetTickCount() override { return pace_ * QtPlatform::GetTickCount(); }
    void Pause(int ms, const std::function<void()>& meanwhile) override {
        QtPlatform::Pause(ms / pace_, meanwhile);
    }
    std::filesystem::path AppPath() override { return folder_; }
    std::string ExeName() override { return "lapvane"; }
    void End(int code) override {
        Ended = true;
        throw FineProgramma{code};
    }
    bool Ended = false;

 private:
    std::filesystem::path folder_;
    int pace_;
};

/// Pace of a quick tour. An answer that the program waits for 3 s for has 0.4 s left, on a machine
/// where it takes some milliseconds.
constexpr int kQuick = 8;

/// Where the simulated car has driven, and under which circuit its log is studied.
constexpr const char* kCircuit = "Valdoro";

/// The roads of the tour. Each adds its stops; they are played in that order.
class Tour {
 public:
    /// `italian`: the program is in that language, and is changed to English near the end;
    /// otherwise the other way round.
    /// `console` takes what is typed at the instrument, `stop` ends it.
    Tour(QString out, bool italian, TourPlatform& machine,
         std::function<void(const QByteArray&)> console, std::function<void()> stop);

    int Play();

 private:
    template <class W>
    static W* In(QWidget* window, const char* name) {
        return window != nullptr ? window->findChild<W*>(QString::fromLatin1(name)) : nullptr;
    }
    /// A file of the folder that the tour leaves.
    QString Out(const QString& name) const {
        return out_ + QDir::separator() + QDir::toNativeSeparators(name);
    }
    QString Panel(int n);
    QToolButton* Button(const char* key);
    /// No command runs. A dialog that has just closed lives until its command has unwound, and the
    /// click for another one is lost until then.
    bool Idle() const;
    static std::function<bool()> ModalIs(const char* type) {
        return [type] { return Robot::Modal(type) != nullptr; };
    }
    /// A file dialog that listens. Before its name box has the focus, a path typed there leaves the
    /// root folder selected, and Enter goes to that.
    static std::function<bool()> FileDialogIs() {
        return [] {
            QWidget* dialog = Robot::Modal("QFileDialog");
            auto* name = In<QWidget>(dialog, "fileNameEdit");
            return name != nullptr && name->hasFocus();
        };
    }
    /// Types a path into the open file dialog and presses Enter.
    void AnswerFileDialog(const QString& path, const QString& picture);

    // RunRoad.cpp: from the splash to the files of a run, the change of language, the end.
    void Splash();
    void Connect();
    void OpenProject();
    void Download();
    void OtherLanguage();
    void RecentProjects();
    void PitLane();
    /// An end that is cancelled, since there is something to lose.
    void UnsavedChanges();
    void Leave();

    // DeviceRoad.cpp: the project into the instrument and back.
    void ProgramAndRead();
    void Command(const char* key);
    void LongCommand(const char* key, Voce question, Voce title, const QString& name);
    /// The window of what differs; `look` sees its table before the picture is taken.
    void Compared(const QString& name, const std::function<void(QTableWidget*)>& look);
    void CompareWithTheInstrument();

    // EditorRoad.cpp: the windows that change the project, the live view.
    /// Opens an editor by its command, lets `act` change something, presses OK.
    void Edit(const char* key, const char* window, const QString& picture,
              const std::function<void(QWidget*)>& act);
    /// Presses an exchange button of an editor and answers its boxes.
    void Exchange(const char* window, const char* button, const QString& name);
    void Editors();
    /// A number that no box takes, and the message about it.
    void Notes();
    void WrongNumber();
    void SensorLibrary();
    void ProjectSheet();
    void SaveAndOpenAgain();
    void CalibrateTheTank();
    /// One measure of the calibration, which becomes that point of the curve.
    void Pour(int point, const QString& litres);
    void LiveView();

    // AnalysisRoad.cpp: a log studied in the analysis windows.
    QWidget* Analysis();
    QTableView* Laps();
    bool LapsListed();
    void OpenAnalysis();
    void Tick(int channel);
    void ClickLap(int row);
    int BestRow();
    /// Acts once the analysis window is in front.
    void OnAnalysis(const QString& name, std::function<void()> act);
    void Press(const char* control);
    /// Text of a value at the cursor.
    QString Value(int column);
    void Analyse();
    void MoveThroughTheLap();
    /// One channel more than the separate view has room for.
    void TooManyPanes();
    void DescribeTheSession();
    void Reports();
    /// The speed of the chosen lap by its time and the circuit's length, and the mean of its speed
    /// channel: they are told apart only if the log is studied under another circuit.
    void CompareSpeeds();
    void OverTheDistance();

    // CompareRoad.cpp: laps laid beside one another.
    void CompareLaps();

    // RunsRoad.cpp: the logs of a folder.
    void ListRuns();

    QString out_;
    bool italian_;
    TourPlatform& machine_;
    Robot robot_;
    std::function<void(const QByteArray&)> console_;
    QElapsedTimer answered_;     ///< since a question was answered
    QElapsedTimer poured_;       ///< since the tank was filled
    std::int64_t liveFrom_ = 0;  ///< ms, when the live view had its first values
    double timeBefore_ = 0.0;    ///< value of the time when a stop began
    double lapSpeed_ = 0.0;      ///< of the best lap, km/h
    double meanSpeed_ = 0.0;     ///< mean of its speed channel
    frmSplash* splash_ = nullptr;
    std::unique_ptr<frmMain> main_;
};

}  // namespace lapvane::tour
