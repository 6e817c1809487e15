// A download that breaks off at every tenth block, by the link that vanishes and by an instrument
// that falls silent, and the download behind it.
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "Machine.h"
#include "Soak.h"
#include "device/SerialComm.h"
#include "instrument/Circuito.h"
#include "instrument/Sessione.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "logs/Scarico.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"

namespace lapvane::soak {

using namespace strumento;

namespace {

/// A download window that remembers what it showed last.
class View : public VistaScarico {
 public:
    bool Visibile() const override { return Open; }
    void Stato(const std::string& text) override { Last = text; }
    void Percento(int percent) override { Percent = percent; }
    void AbilitaOK(bool) override {}
    void Scarica() override { Open = false; }
    bool Open = true;
    int Percent = 0;
    std::string Last;
};

class PullSoak {
 public:
    PullSoak(const Options& options, Faults& faults)
        : options_(options), faults_(faults), folder_(options.Bin) {
        CaricaTesti();
        CalcolaBaseTesti();
        CaricaTabelleNomi();
        ParametriSessione session;
        session.Giri = options.Laps;
        const Circuito track = Circuito::Leggi(folder_.Path / "tracks" / "Valdoro.trk");
        RegistraSessione(track, session, instrument_.Dati);
        RegistraSessione(track, session, twin_.Dati);
    }

    void Run() {
        const auto start = std::chrono::steady_clock::now();
        const std::int32_t blocks = instrument_.Dati.Blocchi();
        Whole("undisturbed");
        const FileLog undisturbed = ComponiLog();
        if (static_cast<std::int32_t>(BlocchiLog.size()) != blocks) {
            faults_.Say(
                "the undisturbed download has another number of blocks than the instrument");
        }
        for (std::int32_t b = 0; b < blocks && b < NumBlocchi; ++b) {
            if (BlocchiLog[static_cast<std::size_t>(b)] != instrument_.Dati.Blocco(b)) {
                faults_.Say("the undisturbed download differs in block " + std::to_string(b));
            }
        }
        int pulled = 0;
        int silent = 0;
        for (std::int32_t b = 10; b <= blocks; b += 10) {
            for (const bool vanishes : {true, false}) {
                Broken(b, vanishes);
                Whole("the download behind block " + std::to_string(b));
                const FileLog again = ComponiLog();
                if (again.Csv != undisturbed.Csv || again.Txt != undisturbed.Txt ||
                    again.Tim != undisturbed.Tim) {
                    faults_.Say("the download behind block " + std::to_string(b) +
                                " gave other files");
                }
                ++(vanishes ? pulled : silent);
            }
        }
        std::printf(
            "\nDownloads that break off at every tenth of %d blocks (%d laps): %d by the link that "
            "vanishes,\n%d by an instrument that falls silent. Each was told and closed its window "
            "with "
            "the pages so far;\neach download behind it gave the bytes of the undisturbed one. "
            "%.1f s\n",
            static_cast<int>(blocks), options_.Laps, pulled, silent,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }

 private:
    void Whole(const std::string& which) {
        machine_.Boxes.clear();
        if (!LinkPronto()) faults_.Say(which + ": no link");
        AzzeraBufferLog();
        View view;
        Scarico(view).Esegui();
        if (!machine_.Boxes.empty()) faults_.Say(which + ": told " + machine_.Boxes.front());
        if (!view.Open || view.Percent != 100 || view.Last != Testo(Voce::ScaricamentoCompletato)) {
            faults_.Say(which + " does not end as a whole one");
        }
        if (NumBlocchi != instrument_.Dati.Blocchi()) faults_.Say(which + " has not every block");
    }

    void Broken(std::int32_t block, bool vanishes) {
        const std::string which =
            std::string(vanishes ? "the link vanishes" : "the instrument falls silent") +
            " at block " + std::to_string(block);
        machine_.Boxes.clear();
        if (vanishes) {
            machine_.TheLine.PullAtRequest(14, block);
        } else {
            Guasto fault;
            fault.Comando = 14;
            fault.Dal = block;
            fault.Tipo = TipoGuasto::Muto;
            machine_.TheLine.Misbehave(fault);
        }
        AzzeraBufferLog();
        View view;
        const std::int64_t start = machine_.GetTickCount();
        Scarico(view).Esegui();
        const std::int64_t lasted = machine_.GetTickCount() - start;
        // Told once a try and summed up at the end; the window has closed by itself, and nothing
        // says that it is complete.
        if (machine_.Boxes.size() < 2 ||
            machine_.Boxes.back().rfind(Testo(Voce::ScaricoManca), 0) != 0) {
            faults_.Say(which + ": its end was not told");
        } else {
            machine_.Boxes.pop_back();
        }
        for (const std::string& box : machine_.Boxes) {
            if (box != Testo(Voce::StrumentoNonRisponde))
                faults_.Say(std::string(which).append(": told ").append(box));
        }
        if (view.Open) faults_.Say(which + ": the window stays open as if all were well");
        if (FaseComunicazione != 0) faults_.Say(which + ": the poll is kept off the port");
        // The pages before the one that broke off, each whole, and none else.
        const std::int32_t kept = (block - 1) / 2 * 2;
        if (NumBlocchi != kept || static_cast<std::int32_t>(BlocchiLog.size()) != kept) {
            faults_.Say(which + ": " + std::to_string(NumBlocchi) + " blocks were kept");
        }
        for (std::int32_t b = 0; b < std::min(kept, NumBlocchi); ++b) {
            if (BlocchiLog[static_cast<std::size_t>(b)] != twin_.Dati.Blocco(b)) {
                faults_.Say(which + ": block " + std::to_string(b) + " is not the instrument's");
                break;
            }
        }
        longest_ = std::max(longest_, lasted);
        machine_.Calm();
    }

    const Options& options_;
    Faults& faults_;
    Folder folder_;
    Strumento instrument_;
    Strumento twin_;
    Machine machine_{folder_.Path, instrument_, twin_};
    BareMainWindow window_{&machine_.Port};
    std::int64_t longest_ = 0;
};

}  // namespace

void SoakPull(const Options& options, Faults& faults) {
    PullSoak(options, faults).Run();
}

}  // namespace lapvane::soak
