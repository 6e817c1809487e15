// The simulated instrument misbehaves by chance in exchanges of every kind, over a pseudo-terminal.
#include <algorithm>
#include <cstdio>

#include "Exchange.h"
#include "device/Codec.h"
#include "device/SerialComm.h"
#include "instrument/Memoria.h"
#include "logs/BufferLog.h"
#include "logs/Scarico.h"
#include "platform/ErroreRuntime.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"

namespace lapvane::soak {

using namespace strumento;

namespace {

constexpr int kBlocks = 40;
constexpr int kMarginMs = 20;       // two rounds of a wait, and what a round may take
constexpr int kRealMarginMs = 500;  // of a machine that has other things to do
constexpr long kGrowthKb = 2048;

struct Tally {
    int Exchanges = 0;
    int Clean = 0;
    int Right = 0;  ///< misbehaved, and the right values were taken
    int Refused = 0;
    int Undetected = 0;
    int Retried = -1;  ///< -1: there are no retries
    std::int64_t Longest = 0;
};

/// A session of a few blocks by chance; none looks like a page that was never written.
void Record(Strumento& instrument, Strumento& twin, Chance& chance) {
    for (int b = 0; b < kBlocks; ++b) {
        std::string block = chance.Bytes(128);
        block[0] = static_cast<char>(chance.Below(255));
        instrument.Dati.AggiungiBlocco(block);
        twin.Dati.AggiungiBlocco(block);
    }
    for (int lap = 0; lap < 100; ++lap) {
        const int time = chance.From(6000, 9000);
        instrument.Dati.AggiungiGiro(time, lap % 40 == 0);
        twin.Dati.AggiungiGiro(time, lap % 40 == 0);
    }
}

class LinkSoak {
 public:
    LinkSoak(const Options& options, Faults& faults)
        : options_(options), faults_(faults), folder_(options.Bin), chance_(options.First) {
        Record(instrument_, twin_, chance_);
        CaricaTesti();
        CalcolaBaseTesti();
        CaricaTabelleNomi();
        ValoriInizialiProgetto();
        kinds_.resize(Kinds().size());
    }

    void Run() {
        std::printf(
            "Exchanges over a pseudo-terminal, numbers from %u. The clock stands still while "
            "anything is\n"
            "under way on it and leaps over the waits; the waits are the program's own.\n",
            options_.First);
        const std::int64_t start = Real();
        constexpr int kWarmUp = 100;
        long before = 0;
        int files = 0;
        for (int round = 0; Unfinished(); ++round) {
            for (std::size_t k = 0; k < Kinds().size(); ++k) {
                if (kinds_[k].Exchanges < options_.Count) One(k, kMarginMs, kMarginMs);
            }
            if (downloads_.Exchanges < options_.Count) Download();
            if (round == std::min(kWarmUp, options_.Count / 10)) {
                before = ResidentKb();
                files = OpenFiles();
            }
        }
        const long after = ResidentKb();
        for (std::size_t k = 0; k < Kinds().size(); ++k)
            Print(Kinds()[k].Name, kinds_[k], Kinds()[k].Bound);
        Print("log block in a download", downloads_, kDownloadBound);
        std::printf(
            "  %d downloads: %d whole, %d with pages left out for their sum, %d given up and "
            "told\n",
            runs_, whole_, leftOut_, givenUp_);
        const std::int64_t real = std::max<std::int64_t>(1, Real() - start);
        std::printf("  %.0f s of the program's time in %.1f s (%.0f times)\n",
                    Seconds(machine_.Leapt), Seconds(real),
                    Seconds(machine_.Leapt) / Seconds(real));
        std::printf(
            "  in memory: %ld kB after the warm-up, %ld kB at the end (bound %+ld kB); open "
            "files %d, %d\n",
            before, after, kGrowthKb, files, OpenFiles());
        if (after - before > kGrowthKb) faults_.Say("the memory in use grew");
        if (OpenFiles() > files) faults_.Say("open files were left behind");
        if (options_.RealSeconds > 0) RealTime();
        std::printf(
            "Undetected: wrong values in a reply of the right length. Such a reply carries no sum "
            "and the\nprogram looks at neither its first letter nor its order byte, so nothing "
            "tells; kept. "
            "The log's\npages have a sum (see the downloads).\n");
    }

 private:
    static constexpr int kDownloadBound = 3000 + 5000 + 10;  // drain, reply, pause

    static double Seconds(std::int64_t ms) { return static_cast<double>(ms) / 1000.0; }
    static std::int64_t Real() {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }

    bool Unfinished() const {
        const auto all = [this](const Tally& tally) { return tally.Exchanges >= options_.Count; };
        return !all(downloads_) || !std::all_of(kinds_.begin(), kinds_.end(), all);
    }

    void Fail(const std::string& kind, const std::string& how, const std::string& what) {
        faults_.Say("numbers from " + std::to_string(options_.First) + ", exchange " +
                    std::to_string(number_) + " (" + kind + ", " + how + "): " + what);
    }

    Result Exchange(std::size_t k, const std::string& how, int margin) {
        const Kind& kind = Kinds()[k];
        Tally& tally = kinds_[k];
        ++number_;
        ++tally.Exchanges;
        Result result;
        try {
            result = Carry(kind, machine_, chance_);
        } catch (const Wrong& wrong) {
            Fail(kind.Name, how, wrong.What);
        } catch (const ErroreRuntime& error) {
            Fail(kind.Name, how, std::string("a run-time error: ") + error.what());
        }
        tally.Longest = std::max(tally.Longest, result.Lasted);
        if (result.Lasted > kind.Bound + margin) {
            Fail(kind.Name, how, "lasted " + std::to_string(result.Lasted) + " ms");
        }
        return result;
    }

    void Clean(std::size_t k, int margin, const std::string& behind) {
        ++kinds_[k].Clean;
        if (Exchange(k, "clean behind \"" + behind + "\"", margin).Became != Outcome::Right) {
            Fail(Kinds()[k].Name, "clean behind \"" + behind + "\"", "did not work");
        }
    }

    void Count(Tally& tally, Outcome outcome) {
        switch (outcome) {
            case Outcome::Right:
                ++tally.Right;
                break;
            case Outcome::Refused:
                ++tally.Refused;
                break;
            case Outcome::Undetected:
                ++tally.Undetected;
                break;
        }
    }

    /// A misbehaviour, perhaps a second exchange while its reply is still on its way, and a clean
    /// exchange behind it.
    void One(std::size_t k, int slack, int margin) {
        const Kind& kind = Kinds()[k];
        const Misbehaviour chosen = Choose(kind, chance_, slack);
        const int hits = machine_.TheLine.Hits();
        machine_.TheLine.Misbehave(chosen.Fault);
        if (chosen.PullAfter > 0) {
            machine_.TheLine.PullAt(machine_.GetTickCount() + chosen.PullAfter);
        } else if (chosen.PullBefore) {
            machine_.TheLine.Pull();
        }
        const Result result = Exchange(k, chosen.Name, margin);
        Count(kinds_[k], result.Became);
        if (chosen.Then == Must::BeRight
                ? result.Became != Outcome::Right
                : chosen.Then == Must::BeRefused && result.Became != Outcome::Refused) {
            Fail(kind.Name, chosen.Name, "came to the wrong end");
        }
        if (chosen.Fault && machine_.TheLine.Hits() == hits) {
            Fail(kind.Name, chosen.Name, "the fault did not take hold");
        }
        if (chosen.Lingers && chance_.Below(2) == 0) {
            machine_.TheLine.Misbehave(std::nullopt);
            Count(kinds_[k], Exchange(k, "the reply before it comes in it", margin).Became);
        }
        machine_.Calm();
        Clean(k, margin, chosen.Name);
    }

    /// A download window that counts what it is told.
    class View : public VistaScarico {
     public:
        bool Visibile() const override { return Open; }
        void Stato(const std::string& text) override { Told = text; }
        void Percento(int percent) override { Out |= percent < 0 || percent > 100; }
        void AbilitaOK(bool on) override { Done = on; }
        void Scarica() override { Open = false; }
        bool Open = true, Done = false, Out = false;
        std::string Told;
    };

    static bool SumHolds(const std::string& page) {
        int sum = 0;
        for (std::size_t i = 0; i + 1 < page.size(); ++i)
            sum += static_cast<unsigned char>(page[i]);
        return (sum & 0xFF) == static_cast<unsigned char>(page.back());
    }

    /// Up to five faults, one behind the other over the requests of log blocks.
    std::vector<Guasto> BlockFaults(std::string& how) {
        const Kind& kind = Kinds()[15];
        std::vector<Guasto> all;
        const int misbehaving = chance_.Below(6);
        for (int i = 0; i < misbehaving; ++i) {
            Misbehaviour chosen = Choose(kind, chance_, kMarginMs);
            if (!chosen.Fault) continue;
            chosen.Fault->Dal = chance_.From(1, kBlocks);
            chosen.Fault->Quanti = 1;
            all.push_back(*chosen.Fault);
            how += ", " + chosen.Name + " at " + std::to_string(chosen.Fault->Dal);
        }
        return all;
    }

    /// A whole session with up to five blocks that misbehave.
    void Download() {
        machine_.Calm();
        machine_.Boxes.clear();
        machine_.Port.Longest.clear();
        LinkPronto();
        std::string how = "download";
        const int requests = machine_.TheLine.Requests(14);
        const std::vector<Guasto> all = BlockFaults(how);
        machine_.TheLine.Misbehave(std::nullopt);
        const int hits = machine_.TheLine.Hits();
        for (const Guasto& fault : all) instrument_.Difetti.Aggiungi(fault);
        ++number_;
        ++runs_;
        AzzeraBufferLog();
        View view;
        try {
            Scarico(view).Esegui();
        } catch (const ErroreRuntime& error) {
            Fail("download", how, std::string("a run-time error: ") + error.what());
        }
        const int asked = machine_.TheLine.Requests(14) - requests;
        const int hit = machine_.TheLine.Hits() - hits;
        // What was lost is summed up once, at the end.
        const bool lost = !machine_.Boxes.empty() &&
                          machine_.Boxes.back().rfind(Testo(Voce::ScaricoManca), 0) == 0;
        if (lost) machine_.Boxes.pop_back();
        CheckCourse(how, view);
        const int undetected = Pages(how);
        const int boxes = static_cast<int>(machine_.Boxes.size());
        downloads_.Exchanges += asked;
        downloads_.Clean += asked - hit;
        downloads_.Refused += boxes;
        downloads_.Retried = std::max(0, downloads_.Retried) + (view.Open ? boxes : boxes - 1);
        downloads_.Undetected += undetected;
        downloads_.Right += std::max(0, hit - boxes - undetected);
        CountEnd(how, view.Open, boxes);
        if (all.empty() && (NumBlocchi != kBlocks || undetected != 0)) {
            Fail("download", how, "a clean download is not whole");
        }
        if (all.empty() ? lost : !view.Open && !lost) {
            Fail("download", how,
                 lost ? "a clean download tells of a loss" : "a loss was not told");
        }
        CheckLaps(how);
        machine_.Calm();
    }

    /// How long a block took, what was said meanwhile, how the window was left.
    void CheckCourse(const std::string& how, const View& view) {
        const std::int64_t longest = machine_.Port.Longest[14];
        downloads_.Longest = std::max(downloads_.Longest, longest);
        if (longest > kDownloadBound + kMarginMs) {
            Fail("download", how, "a block lasted " + std::to_string(longest) + " ms");
        }
        for (const std::string& box : machine_.Boxes) {
            if (box != Testo(Voce::StrumentoNonRisponde))
                Fail("download", how, "an unexpected message: " + box);
        }
        if (view.Out || !view.Done || FaseComunicazione != 0)
            Fail("download", how, "did not end properly");
    }

    /// Whole, with blocks left out, or given up, which takes more than three failures.
    void CountEnd(const std::string& how, bool toTheEnd, int boxes) {
        if (!toTheEnd) {
            ++givenUp_;
            if (boxes <= 3)
                Fail("download", how, "was given up after " + std::to_string(boxes) + " failures");
        } else if (NumBlocchi == kBlocks) {
            ++whole_;
        } else {
            ++leftOut_;
        }
    }

    /// The first hundred laps are the instrument's.
    void CheckLaps(const std::string& how) {
        for (int lap = 1; lap <= 100; ++lap) {
            const RecordGiro real = DecodificaRecordGiro(
                twin_.Dati.LeggiGiri(static_cast<std::uint32_t>(4 * (lap - 1))).substr(0, 4));
            const std::string& text = TabellaGiri[static_cast<std::size_t>(lap)];
            char shown[32];
            std::snprintf(shown, sizeof shown, "%02d:%02d.%02d, ", real.Centesimi / 6000,
                          real.Centesimi / 100 % 60, real.Centesimi % 100);
            if (text.rfind(shown, 0) != 0)
                Fail("download", how, "lap " + std::to_string(lap) + " is " + text);
        }
    }

    /// Every page that was kept has its sum; one that is none of the instrument's is undetected.
    int Pages(const std::string& how) {
        int undetected = 0;
        std::int32_t next = 0;
        for (std::size_t b = 0; b + 1 < BlocchiLog.size(); b += 2) {
            const std::string page = BlocchiLog[b] + BlocchiLog[b + 1];
            if (page.size() != 256 || !SumHolds(page))
                Fail("download", how, "a page with a wrong sum was kept");
            std::int32_t found = next;
            while (found < kBlocks &&
                   twin_.Dati.LeggiLog(static_cast<std::uint32_t>(128 * found)) +
                           twin_.Dati.LeggiLog(static_cast<std::uint32_t>(128 * found + 128)) !=
                       page) {
                found += 2;
            }
            if (found < kBlocks) {
                next = found + 2;
            } else {
                ++undetected;
            }
        }
        return undetected;
    }

    static void PrintHead() {
        std::printf("\n  %-24s %9s %6s %6s %8s %10s %8s %11s %9s\n", "kind", "exchanges", "clean",
                    "right", "refused", "undetected", "retried", "longest ms", "bound ms");
    }

    void Print(const char* name, const Tally& tally, int bound) {
        if (&tally == &kinds_.front()) PrintHead();
        const std::string retried = tally.Retried < 0 ? "-" : std::to_string(tally.Retried);
        std::printf("  %-24s %9d %6d %6d %8d %10d %8s %11lld %9d\n", name, tally.Exchanges,
                    tally.Clean, tally.Right, tally.Refused, tally.Undetected, retried.c_str(),
                    static_cast<long long>(tally.Longest), bound);
    }

    void RealTime() {
        std::printf("\nThe same on real time, %d s, the instrument in a thread of its own:\n",
                    options_.RealSeconds);
        for (Tally& tally : kinds_) tally = {};
        machine_.RealTime();
        const std::int64_t end = Real() + std::int64_t{1000} * options_.RealSeconds;
        const auto any = [this] {
            return static_cast<std::size_t>(chance_.Below(static_cast<int>(Kinds().size())));
        };
        while (Real() < end) {
            One(any(), kRealMarginMs, kRealMarginMs);
            // Most misbehaviours wait for a time-out; what goes well is quick.
            for (int i = 0; i < 6 && Real() < end; ++i) Clean(any(), kRealMarginMs, "another one");
        }
        Tally sum;
        for (std::size_t k = 0; k < kinds_.size(); ++k) {
            sum.Exchanges += kinds_[k].Exchanges;
            sum.Clean += kinds_[k].Clean;
            sum.Right += kinds_[k].Right;
            sum.Refused += kinds_[k].Refused;
            sum.Undetected += kinds_[k].Undetected;
            sum.Longest = std::max(sum.Longest, kinds_[k].Longest);
        }
        PrintHead();
        Print("all kinds", sum, 10500);
    }

    const Options& options_;
    Faults& faults_;
    Folder folder_;
    Chance chance_;
    Strumento instrument_;
    Strumento twin_;
    Machine machine_{folder_.Path, instrument_, twin_};
    BareMainWindow window_{&machine_.Port};
    std::vector<Tally> kinds_;
    Tally downloads_;
    int number_ = 0;
    int runs_ = 0, whole_ = 0, leftOut_ = 0, givenUp_ = 0;
};

}  // namespace

void SoakLink(const Options& options, Faults& faults) {
    LinkSoak(options, faults).Run();
}

}  // namespace lapvane::soak
