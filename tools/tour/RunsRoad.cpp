// The list of runs: found, searched, told about, opened.
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>

#include "Tour.h"
#include "logs/Impostazioni.h"
#include "platform/qt/ConversioniQt.h"
#include "project/DatiProgetto.h"
#include "runs/DisegnoUscite.h"
#include "runs/frmArchivio.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane::tour {

namespace {

namespace fs = std::filesystem;

struct Told {
    const char* Name;
    const char* Session;
    const char* Day;
    const char* Time;
    const char* Circuit;
    const char* Length;
    const char* Notes;
    int Faster;  ///< hundredths a lap
};

constexpr std::array<Told, 8> kRuns = {
    {{"0517b", "Free practice 2", "17/05/2026", "16:18", "Valdoro", "3480", "Wing one hole down.",
      9},
     {"0517a", "Free practice 1", "17/05/2026", "11:05", "Valdoro", "3480", "", 5},
     {"0516b", "Test", "16/05/2026", "15:40", "Valdoro", "3480", "Tyres 1.42 bar hot.", 2},
     {"0516a", "Test", "16/05/2026", "10:12", "Valdoro", "3480", "", 0},
     {"0412b", "Free practice 2", "12/04/2026", "14:22", "Fontebruna", "2760", "", 6},
     {"0412a", "Free practice 1", "12/04/2026", "10:47", "Fontebruna", "2760", "", 3},
     {"0329b", "Test", "29/03/2026", "14:50", "Rocca Serena", "4250", "", 4},
     {"0329a", "Test", "29/03/2026", "10:30", "Rocca Serena", "4250", "", 1}}};

frmArchivio* Runs() {
    return qobject_cast<frmArchivio*>(Robot::Modal("lapvane::frmArchivio"));
}

std::string Text(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

/// The lap times some hundredths less, as if it had been another run.
std::string Faster(const std::string& times, int hundredths) {
    std::istringstream lines(times);
    std::string result;
    for (std::string line; std::getline(lines, line);) {
        if (line.size() > 8 && line[2] == ':') {
            const int had = (line[6] - '0') * 10 + line[7] - '0';
            const int now = std::max(0, had - hundredths);
            line[6] = static_cast<char>('0' + now / 10);
            line[7] = static_cast<char>('0' + now % 10);
        }
        result += line + '\n';
    }
    return result;
}

/// A season out of one converted log; the last run has lost its lap times.
void LayRuns(const fs::path& log, const fs::path& folder) {
    fs::remove_all(folder);
    fs::create_directories(folder / "spring");
    for (const Told& told : kRuns) {
        const fs::path stem = folder / (told.Faster % 2 == 0 ? "" : "spring") / told.Name;
        const auto with = [](fs::path path, const char* end) { return path += end; };
        for (const char* end : {".csv", ".txt"}) fs::copy_file(with(log, end), with(stem, end));
        if (fs::exists(with(log, ".set"))) fs::copy_file(with(log, ".set"), with(stem, ".set"));
        if (told.Faster != 1) {
            std::ofstream(with(stem, ".tim"), std::ios::binary)
                << Faster(Text(with(log, ".tim")), told.Faster);
        }
        std::ofstream session(with(stem, ".ses"), std::ios::binary);
        session << "Sessione=" << told.Session << "\r\nDataSessione=" << told.Day
                << "\r\nOraSessione=" << told.Time << "\r\nCircuito=" << told.Circuit
                << "\r\nLunghTracciato=" << told.Length
                << "\r\nVeicoloSessione= \r\nPiloti=Rossi\r\nNoteSessione=" << told.Notes << "\r\n";
    }
    // One run was driven with other settings.
    const fs::path first = folder / "spring" / kRuns[0].Name;
    RecordProgetto settings;
    const fs::path csv = fs::path(first).concat(".csv");
    if (!LeggiImpostazioni(csv, settings)) return;
    settings.DiametroRuota = static_cast<std::int16_t>(settings.DiametroRuota + 4);
    settings.PaginaAbilitata4 = !settings.PaginaAbilitata4;
    std::ofstream(FileImpostazioni(csv), std::ios::binary) << TestoImpostazioni(settings);
}

}  // namespace

void Tour::ListRuns() {
    robot_.Stop(
        QStringLiteral("list the runs"), [this] { return Idle(); },
        [this] {
            LayRuns(PercorsoDaQt(out_) / "run", PercorsoDaQt(out_) / "runs");
            main_->findChild<QAction*>(QStringLiteral("mnuArchivio"))->trigger();
        });
    robot_.Stop(
        QStringLiteral("no folder yet"), [] { return Runs() != nullptr; },
        [this] {
            Runs()->showNormal();
            Runs()->resize(NelloSchermo(*Runs(), QSize(1366, 738)));
            robot_.Picture(Runs(), QStringLiteral("runs-empty"));
            robot_.Click(In<QPushButton>(Runs(), "cmdScegli"));
        });
    robot_.Stop(QStringLiteral("folder of the runs"), FileDialogIs(),
                [this] { AnswerFileDialog(Out(QStringLiteral("runs")), {}); });
    robot_.Stop(
        QStringLiteral("runs listed"),
        [] {
            const auto& runs = Runs() != nullptr ? Runs()->Dati().Uscite() : std::vector<Uscita>();
            return runs.size() == kRuns.size() &&
                   std::all_of(runs.begin(), runs.end(),
                               [](const Uscita& run) { return run.LogLetto; });
        },
        [this] {
            auto* search = In<QLineEdit>(Runs(), "txtCerca");
            robot_.Check(Runs()->focusWidget() == search,
                         QStringLiteral("the search has the focus"));
            QTest::keyClicks(search, QStringLiteral("free 17"));
        });
    robot_.Stop(
        QStringLiteral("runs found"),
        [] { return In<QLabel>(Runs(), "lblConto")->text().startsWith(QLatin1String("2 ")); },
        [] {
            QTest::keyClick(In<QLineEdit>(Runs(), "txtCerca"), Qt::Key_Escape);
            // Beside one another, or where that has no room behind the lap times.
            In<QTabWidget>(Runs(), "schede")->setCurrentIndex(1);
            auto* notes = In<QPlainTextEdit>(Runs(), "txtNote");
            notes->setFocus();
            QTest::keyClicks(notes, QStringLiteral("Oil 102. "));
        });
    robot_.Stop(
        QStringLiteral("the runs"), [] { return Runs() != nullptr; },
        [this] {
            robot_.Picture(Runs(), QStringLiteral("runs"));
            robot_.Click(In<QPushButton>(Runs(), "cmdSalva"));
            const std::string saved = Text(PercorsoDaQt(out_) / "runs" / "spring" / "0517b.ses");
            robot_.Check(saved.find("=Oil 102. Wing one hole down.\r\n") != std::string::npos,
                         QStringLiteral("the notes of the session"));
            Runs()->resize(1024, 700);
            Runs()->setPalette(PalettaDi(Tema::Scuro));
        });
    robot_.Stop(
        QStringLiteral("narrow and dark runs"), [] { return Runs() != nullptr; },
        [this] {
            robot_.Picture(Runs(), QStringLiteral("runs-dark"));
            Runs()->close();
        });
}

}  // namespace lapvane::tour
