#include "Savers.h"

#include <QPushButton>
#include <memory>
#include <stdexcept>

#include "Machine.h"
#include "analysis/ElencoCanali.h"
#include "analysis/Schema.h"
#include "analysis/SessioneLog.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/qt/QtPrinter.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "project/FileRecenti.h"
#include "project/frmStampaDatiProgetto.h"
#include "reports/DatiSessione.h"
#include "reports/EditorSessione.h"
#include "reports/StampaReport.h"
#include "runs/NoteUscita.h"
#include "sensors/ImpostaSensore.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "tools/support/BareViews.h"
#include "tools/support/FreshState.h"

namespace lapvane::soak {

namespace fs = std::filesystem;

namespace {

/// A machine without windows that says yes to every question.
class PlainMachine : public Platform {
 public:
    explicit PlainMachine(fs::path folder) : folder_(std::move(folder)) { SetPlatform(this); }
    std::int64_t GetTickCount() override { return 0; }
    void Sleep(int) override {}
    void DoEvents(int) override {}
    Answer MsgBox(const std::string& text, Buttons, Icon icon, const std::string&) override {
        if (icon == Icon::Critical) throw std::runtime_error("a save failed: " + text);
        return Answer::Ok;
    }
    std::optional<fs::path> AskOpen(const FileRequest&) override { return {}; }
    std::optional<fs::path> AskSave(const FileRequest&) override { return {}; }
    std::optional<std::filesystem::path> AskFolder(const std::string&,
                                                   const std::filesystem::path&) override {
        return {};
    }
    std::optional<Colore> AskColor(Colore) override { return {}; }
    fs::path AppPath() override { return folder_; }
    fs::path CurDir() override { return folder_; }
    void ChDir(const fs::path&) override {}
    std::string ExeName() override { return "soak"; }
    std::string Now() override { return "24/11/2026 10:20:30"; }
    char DecimalSeparator() override { return '.'; }
    void MousePointer(Pointer) override {}
    void Language(int) override {}
    void End(int code) override { throw FineProgramma{code}; }

 private:
    fs::path folder_;
};

/// The program around a save.
struct Program {
    explicit Program(const fs::path& folder) : Machine(folder) {
        CaricaTesti();
        CalcolaBaseTesti();
        CaricaTabelleNomi();
        ValoriInizialiProgetto();
    }
    PlainMachine Machine;
    BareMainWindow Main;
};

std::string Long(int which, std::size_t size) {
    return which == 0 ? std::string() : std::string(size, static_cast<char>('a' + which));
}

using Save = std::function<void(int)>;
using Begin = std::function<Save()>;

Begin Session(const fs::path& folder, std::size_t shorter, std::size_t longer) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        ElencoCanali channels;
        SessioneLog log;
        log.LeggiDatiSessione(folder / "run.csv", channels);
        return [=](int which) {
            static_cast<void>(program);
            DatiSessione = {};
            DatiSessione.NoteSessione =
                which == 0 ? std::string(shorter, 'a') : std::string(longer, 'b');
            log.SalvaDatiSessione(channels);
        };
    };
}

void Laps(std::vector<RigaReport>& laps, int number) {
    laps.clear();
    for (int i = 1; i <= number; ++i) {
        laps.push_back({"1", std::to_string(i), "01:20.00", "156.600"});
    }
}

void Divide(int sectors) {
    DatiSessione.Circuito = "Valdoro";
    EditorSessione editor;
    editor.ScegliCircuito(DatiSessione.Circuito);
    editor.Dividi(sectors);
    if (editor.Conferma(EditorSessione::Leggi()) != EditorSessione::Esito::Fatto)
        throw std::runtime_error("the division was refused");
}

void PrintProject(const fs::path& file) {
    frmStampaDatiProgetto form;
    form.ApriStampante = [&file] {
        return std::make_unique<QtPrinter>(file, QPageLayout::Portrait);
    };
    auto* print = form.findChild<QPushButton*>(QStringLiteral("cmdPrint"));
    if (print == nullptr) throw std::runtime_error("the form has other controls");
    print->click();
}

Begin Project(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        PercorsoProgetto = folder / "run.pro";
        return [program](int which) {
            DatiProgetto.NoteProgetto = Long(which, 60000);
            SalvaProgetto();
        };
    };
}

Begin ProjectOfTwoNames(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        PercorsoProgetto = folder / "linked.pro";
        if (!fs::exists(folder / "other.pro")) {
            SalvaProgetto();
            fs::create_hard_link(PercorsoProgetto, folder / "other.pro");
        }
        return [program](int which) {
            DatiProgetto.NoteProgetto = Long(which, 6000000);
            SalvaProgetto();
        };
    };
}

Begin RecentFiles(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        return [program](int which) {
            AzzeraFileRecenti();
            if (which != 0) {
                for (auto i : {0u, 1u, 2u})
                    recenti().Righe[i] = Long(1 + static_cast<int>(i), 4000);
                recenti().Quante = 3;
            }
            FileRecenteScelto = "/a/b.pro";
            ScriviFileRecenti();
        };
    };
}

Begin SensorFile(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        return [program](int which) {
            TabellaPunti points;
            for (int i = 0; i < (which == 0 ? 2 : 20); ++i) {
                points.Spunta(i, true);
                points.X(i, std::to_string(50 * i));
                points.Y(i, std::to_string(i) + ".125");
            }
            if (!SalvaSensore("Pressione", "Prova", points, "soak")) {
                throw std::runtime_error("the sensor was not saved");
            }
        };
    };
}

Begin Conversion(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        PercorsoCsv = folder / "run.csv";
        return [program](int which) {
            AzzeraBufferLog();
            BlocchiLog.assign(which == 0 ? 2 : 120, std::string(128, static_cast<char>(1 + which)));
            NumBlocchi = static_cast<std::int32_t>(BlocchiLog.size());
            NumeroGiri = static_cast<std::int16_t>(which == 0 ? 1 : 900);
            ConvertiLog();
        };
    };
}

Begin SchemaFile(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        return [program, folder](int which) {
            ScriviSchema(folder, "run.csv", 15 + which, "run.txt", 10);
        };
    };
}

Begin Sectors(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        return [program](int which) { Divide(which == 0 ? 3 : 15); };
    };
}

Begin LapReport(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        return [program](int which) {
            std::vector<RigaReport> laps;
            Laps(laps, which == 0 ? 3 : 300);
            QtPrinter printer(program->Machine.AppPath() / "report.pdf", QPageLayout::Portrait);
            StampaReport(printer, laps);
        };
    };
}

Begin ProjectSheet(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        return [program](int which) {
            DatiProgetto.NomeProgetto = Long(which, 30);
            PrintProject(program->Machine.AppPath() / "sheet.pdf");
        };
    };
}

Begin Language(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        return [program](int which) {
            IndiceLingua = which;
            SalvaLingua();
        };
    };
}

Begin Notes(const fs::path& folder) {
    return [=]() -> Save {
        const auto program = std::make_shared<Program>(folder);
        const fs::path run = folder / "noted.csv";
        if (!FileEsiste(run)) {
            ScriviFile(run, "Time [sec];Distance [m]\r\n", Lavoro::ConvertireLog);
        }
        return [program, run](int which) { SalvaNote(run, Long(which, 60000)); };
    };
}

}  // namespace

std::vector<Saver> Savers(const fs::path& folder) {
    constexpr bool kPlain = false;
    constexpr bool kWindows = true;
    return {
        {"project", Look::Whole, kPlain, {"run.pro"}, Project(folder)},
        {"project, two names",
         Look::Whole,
         kPlain,
         {"linked.pro", "other.pro"},
         ProjectOfTwoNames(folder)},
        {"recent files", Look::Whole, kPlain, {"RecentFiles.ini"}, RecentFiles(folder)},
        {"sensor file", Look::Whole, kPlain, {"sensors/Prova.sns"}, SensorFile(folder)},
        {"conversion", Look::Whole, kPlain, {"run.csv", "run.txt", "run.tim"}, Conversion(folder)},
        {"schema.ini", Look::Whole, kPlain, {"schema.ini"}, SchemaFile(folder)},
        {"sectors of a track", Look::Whole, kWindows, {"tracks/Valdoro.sec"}, Sectors(folder)},
        {"lap report (PDF)", Look::Pdf, kWindows, {"report.pdf"}, LapReport(folder)},
        {"project sheet (PDF)", Look::Pdf, kWindows, {"sheet.pdf"}, ProjectSheet(folder)},
        {"choice of language", Look::Whole, kPlain, {"LANGUAGES.DAT"}, Language(folder)},
        {"session, 2 kB", Look::Whole, kPlain, {"run.ses"}, Session(folder, 100, 2000)},
        {"notes of a run", Look::Whole, kPlain, {"noted.ses"}, Notes(folder)},
        {"session, 64 kB", Look::Whole, kPlain, {"run.ses"}, Session(folder, 65536, 65536)},
    };
}

}  // namespace lapvane::soak
