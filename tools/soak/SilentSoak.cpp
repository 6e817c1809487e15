// The program itself on real time beside ports that are there and never answer: what is commanded
// comes at once, and once. Then beside an instrument: how often the poll asks for its identity.
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Soak.h"
#include "device/Codec.h"
#include "instrument/PseudoTerminal.h"
#include "platform/ErroreRuntime.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "project/DatiProgetto.h"
#include "shell/StatoShell.h"
#include "shell/frmMain.h"
#include "tools/support/FreshState.h"

namespace lapvane::soak {

namespace fs = std::filesystem;

namespace {

constexpr int kAtOnce = 500;   // ms that a person does not notice, on a machine under load
constexpr int kNever = 20000;  // ms

/// The machine with a folder of its own; its end is told and the process lives on.
class HomeMachine : public QtPlatform {
 public:
    explicit HomeMachine(fs::path folder) : folder_(std::move(folder)) { SetPlatform(this); }
    ~HomeMachine() override { SetPlatform(nullptr); }
    fs::path AppPath() override { return folder_; }
    void End(int code) override {
        Ended = true;
        throw FineProgramma{code};
    }
    bool Ended = false;

 private:
    fs::path folder_;
};

class SilentSoak {
 public:
    SilentSoak(const Options& options, Faults& faults)
        : options_(options), faults_(faults), folder_(options.Bin), chance_(options.First) {
        std::ofstream(folder_.Path / "RecentFiles.ini", std::ios::binary) << "1\r\n";
    }

    void Run() {
        std::printf("\nPorts that never answer: longest wait for what was commanded\n");
        for (int round = 0; round < options_.Silent; ++round) {
            Scenario("Save As", [this] { SaveAs(); });
            Scenario("commands behind Open", [this] { BehindOpen(); });
            Scenario("close box behind Open", [this] { CloseBehindOpen(); });
            Scenario("Yes at the end", [this] { YesAtTheEnd(); });
        }
        for (const auto& [name, longest] : longest_) {
            std::printf("  %-24s %6lld ms\n", name.c_str(), static_cast<long long>(longest));
        }
        Period();
    }

 private:
    void Scenario(const char* name, const std::function<void()>& run) {
        HomeMachine machine(folder_.Path);
        machine_ = &machine;
        std::vector<std::unique_ptr<strumento::PseudoTerminal>> ports;
        for (int port = 1, last = chance_.From(1, 8); port <= last; ++port) {
            ports.push_back(std::make_unique<strumento::PseudoTerminal>());
            ports.back()->MakeLink(folder_.Path / "ports" / ("COM" + std::to_string(port)));
        }
        AzzeraStatoShell();
        name_ = name;
        window_ = std::make_unique<frmMain>(std::make_unique<QtSerialControl>());
        window_->Carica();
        window_->show();
        window_->AvviaSorveglianza();
        // A dialog that nobody expects must not stop everything.
        QTimer guard;
        QObject::connect(&guard, &QTimer::timeout, [this] {
            if (QApplication::activeModalWidget() == nullptr) return;
            faults_.Say(name_ + ": a dialog stays open");
            QApplication::activeModalWidget()->close();
        });
        guard.start(kNever);
        Button("New")->click();
        run();
        window_.reset();
    }

    QToolButton* Button(const char* key) {
        return window_->findChild<QToolButton*>(QStringLiteral("Toolbar1_") +
                                                QString::fromLatin1(key));
    }
    static void Pass(int ms) {
        QEventLoop loop;
        QTimer::singleShot(ms, &loop, &QEventLoop::quit);
        loop.exec();
    }
    /// A dialog that must come: when the poll has scanned inside it for `patience` ms it is worked
    /// on.
    struct Expected {
        const char* What;
        int Patience;
        std::function<void(QDialog&)> Work;
    };
    /// Does something and works on the dialogs that it opens, one behind the other. Each must come
    /// at once behind the work on the one before; the first may wait for its command's turn.
    void Play(const std::function<void()>& start, std::vector<Expected> dialogs) {
        std::size_t next = 0;
        QElapsedTimer seen;
        const QDialog* last = nullptr;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || next == dialogs.size()) return;
            if (!seen.isValid()) {
                if (dialog == last && dialog->isHidden()) return;
                seen.start();
                Took(dialogs[next].What);
            }
            if (seen.elapsed() < dialogs[next].Patience) return;
            seen.invalidate();
            last = dialog;
            dialogs[next++].Work(*dialog);
            since_.start();
        });
        look.start(2);
        since_.start();
        // Somewhere inside a scan, which no loop of this tool would end.
        QTimer::singleShot(Scanning(), window_.get(), [&] {
            since_.start();
            start();
        });
        while (next < dialogs.size() && since_.elapsed() < kNever) machine_->DoEvents(2);
        if (next < dialogs.size()) faults_.Say(name_ + ": " + dialogs[next].What + " never came");
    }
    void Took(const char* what) {
        const qint64 took = since_.elapsed();
        longest_[name_] = std::max(longest_[name_], took);
        if (took > kAtOnce) {
            faults_.Say(name_ + ": " + what + " came after " + std::to_string(took) + " ms");
        }
    }
    void Await(const char* what, const std::function<bool()>& so) {
        while (!so() && since_.elapsed() < kNever) machine_->DoEvents(1);
        Took(what);
    }
    int Scanning() { return chance_.From(300, 1500); }

    void SaveAs() {
        const fs::path file = folder_.Path / ("saved" + std::to_string(++files_) + ".pro");
        Play([this] { Button("SaveAs")->click(); },
             {{"Save As", Scanning(), [&](QDialog& dialog) {
                   dialog.findChild<QLineEdit*>()->setText(PercorsoInQt(file));
                   dialog.accept();
               }}});
        Await("the file", [&] { return fs::exists(file); });
    }

    void BehindOpen() {
        std::vector<std::string> came;
        const auto leave = [&](QDialog& dialog) {
            came.push_back(dialog.objectName().toStdString());
            dialog.reject();
        };
        Play([this] { Button("Open")->click(); }, {{"Open", Scanning(),
                                                    [&](QDialog& dialog) {
                                                        dialog.reject();
                                                        // The hand is faster than the routine
                                                        // behind the dialog.
                                                        for (int i = 0; i < 2; ++i)
                                                            Button("Language")->click();
                                                        Button("SaveAs")->click();
                                                    }},
                                                   {"Language", Scanning(), leave},
                                                   {"Save As", 0, leave}});
        if (came != std::vector<std::string>{"dlgLanguages", "CommonDialog1"}) {
            faults_.Say(name_ + ": other dialogs than those commanded");
        }
    }

    void CloseBehindOpen() {
        ProgettoModificato = true;
        Play([this] { Button("Open")->click(); },
             {{"Open", Scanning(),
               [&](QDialog& dialog) {
                   dialog.reject();
                   window_->close();
               }},
              {"the question", 0, [](QDialog& box) { box.reject(); }}});
        Pass(20);
        if (!window_->isVisible()) faults_.Say(name_ + ": Cancel did not go on");
    }

    void YesAtTheEnd() {
        const fs::path file = folder_.Path / ("ended" + std::to_string(++files_) + ".pro");
        PercorsoProgetto = file;
        DatiProgetto.NomeProgetto = "x";
        ProgettoModificato = true;
        Play([this] { window_->close(); },
             {{"the question", Scanning(), [](QDialog& box) {
                   static_cast<QMessageBox&>(box).button(QMessageBox::Yes)->click();
               }}});
        Await("the end", [&] { return machine_->Ended; });
        if (!fs::exists(file)) faults_.Say(name_ + ": nothing saved");
    }

    void Period() {
        HomeMachine machine(folder_.Path);
        strumento::PseudoTerminal port;
        port.MakeLink(folder_.Path / "ports" / "COM1");
        AzzeraStatoShell();
        std::mutex mutex;
        std::vector<std::chrono::steady_clock::time_point> asked;
        std::jthread instrument([&](const std::stop_token& stop) {
            std::string frame;
            while (!stop.stop_requested()) {
                frame += port.Read();
                while (frame.size() >= 4) {
                    const int command = ByteIn(frame, 2);
                    frame.erase(0, 4);
                    if (command == 2) {
                        const std::scoped_lock lock(mutex);
                        asked.push_back(std::chrono::steady_clock::now());
                    }
                    port.Write(command == 2 ? "R\x02LVX-4 1.08\x7F" : Conferma(command));
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
        window_ = std::make_unique<frmMain>(std::make_unique<QtSerialControl>());
        window_->Carica();
        window_->show();
        window_->AvviaSorveglianza();
        Pass(4000);
        window_.reset();
        const std::scoped_lock lock(mutex);
        if (asked.size() < 10) return faults_.Say("the poll does not ask for the identity");
        const double ms =
            std::chrono::duration<double, std::milli>(asked.back() - asked[1]).count() /
            static_cast<double>(asked.size() - 2);
        std::printf("  identity query every %.1f ms\n", ms);
        if (ms < 195 || ms > 215) faults_.Say("the poll does not run every 200 ms");
    }

    const Options& options_;
    Faults& faults_;
    Folder folder_;
    Chance chance_;
    HomeMachine* machine_ = nullptr;
    std::unique_ptr<frmMain> window_;
    std::string name_;
    std::map<std::string, qint64> longest_;
    QElapsedTimer since_;
    int files_ = 0;
};

}  // namespace

void SoakSilent(const Options& options, Faults& faults) {
    SilentSoak(options, faults).Run();
}

}  // namespace lapvane::soak
