// A process saves two contents in turn, without an end, and is killed at a moment by chance.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "Savers.h"
#include "Soak.h"
#include "platform/FileTesto.h"

namespace lapvane::soak {

namespace fs = std::filesystem;

namespace {

/// What the killed process leaves behind in memory.
struct Left {
    volatile int Saved;   ///< saves that came to their end
    volatile int Inside;  ///< 1 inside a save
};

struct Tally {
    int Kills = 0;
    int Inside = 0;
    int Old = 0, New = 0;
    int Mixed = 0;
    int Sets = 0;    ///< sets of files of which some are old and some new, or saves cut in place
    int Mended = 0;  ///< saves that the next opening completed
    int Files = 0;   ///< temporary files that were left
};

/// A document that is there from its head to its end, with its table where its last lines say.
bool WholePdf(const std::string& bytes) {
    if (bytes.rfind("%PDF-", 0) != 0) return false;
    const std::size_t start = bytes.rfind("startxref\n");
    if (start == std::string::npos) return false;
    std::size_t digits = 0;
    const unsigned long at = std::stoul(bytes.substr(start + 10), &digits);
    std::string_view end = std::string_view(bytes).substr(start + 10 + digits);
    end.remove_prefix(std::min(end.find_first_not_of(' '), end.size()));
    return at < bytes.size() && bytes.compare(at, 4, "xref") == 0 && end == "\n%%EOF\n";
}

std::vector<fs::path> Hidden(const fs::path& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().filename().native();
        if (entry.is_regular_file() && name.rfind(kTemporaneo, 0) == 0) {
            found.push_back(entry.path());
        }
    }
    return found;
}

class KillSoak {
 public:
    KillSoak(const Options& options, Faults& faults, int argc, char** argv)
        : options_(options),
          faults_(faults),
          folder_(options.Bin),
          chance_(options.First),
          argc_(argc),
          argv_(argv) {
        void* memory = ::mmap(nullptr, sizeof(Left), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw std::runtime_error("no shared memory");
        left_ = static_cast<Left*>(memory);
    }

    void Run() {
        std::printf(
            "\nKilled (SIGKILL) while it saves two contents in turn, numbers from %u. \"whole\": "
            "each file "
            "is the old\nor the new one, or a complete document.\n\n  %-20s %6s %14s %6s %6s %10s "
            "%6s\n",
            options_.First, "save", "kills", "inside a save", "old", "new", "not whole", "left");
        for (const Saver& saver : Savers(folder_.Path)) One(saver);
        std::printf(
            "old, new: of the first file. left: temporary files, gone with a later save.\n");
    }

 private:
    /// Starts a process that saves `first` and then, if `forever`, both in turn.
    pid_t Start(const Saver& saver, int first, bool forever) {
        std::fflush(nullptr);
        left_->Saved = 0;
        left_->Inside = 0;
        const pid_t child = ::fork();
        if (child < 0) throw std::runtime_error("no process");
        if (child != 0) return child;
        int code = 0;
        try {
            std::unique_ptr<QApplication> application;
            if (saver.Windows) application = std::make_unique<QApplication>(argc_, argv_);
            const auto save = saver.Begin();
            for (int which = first;; which = 1 - which) {
                left_->Inside = 1;
                save(which);
                left_->Inside = 0;
                left_->Saved = left_->Saved + 1;
                if (!forever) break;
            }
        } catch (const std::exception& error) {
            std::fprintf(stderr, "soak: %s: %s\n", saver.Name, error.what());
            code = 1;
        }
        ::_exit(code);
    }

    void Undisturbed(const Saver& saver, int which) {
        int status = 0;
        ::waitpid(Start(saver, which, false), &status, 0);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            throw std::runtime_error(std::string(saver.Name) +
                                     ": an undisturbed save failed, status " +
                                     std::to_string(status));
        }
    }

    std::vector<std::string> Contents(const Saver& saver) const {
        std::vector<std::string> contents;
        for (const char* file : saver.Files) contents.push_back(ReadAll(folder_.Path / file));
        return contents;
    }

    void One(const Saver& saver) {
        Undisturbed(saver, 0);
        Undisturbed(saver, 1);
        const auto second = Contents(saver);
        Undisturbed(saver, 0);
        const auto first = Contents(saver);
        if (saver.How != Look::Pdf && first == second) {
            throw std::runtime_error(std::string(saver.Name) + ": both contents are the same");
        }
        const int span = Span(saver);
        Tally tally;
        for (int i = 0; i < options_.Kills; ++i) Kill(saver, span, first, second, tally);
        const auto left = Hidden(folder_.Path);
        tally.Files = static_cast<int>(left.size());
        std::printf("  %-20s %6d %14d %6d %6d %10d %6d\n", saver.Name, tally.Kills, tally.Inside,
                    tally.Old, tally.New, tally.Mixed, tally.Files);
        if (tally.Mended != 0) {
            std::printf("  %20s %d saves that were cut were completed by the next opening\n", "",
                        tally.Mended);
        }
        if (tally.Sets != 0) {
            faults_.Say(std::string(saver.Name) + ": " + std::to_string(tally.Sets) +
                        " sets of files of two ages");
        }
        if (tally.Mixed != 0) {
            faults_.Say(std::string(saver.Name) + ": " + std::to_string(tally.Mixed) +
                        " files are not whole");
        }
        // What was left goes with a later save, when nobody can be at it any more.
        for (const fs::path& file : left) {
            fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(2));
        }
        // Both contents: what finds its own in the file writes nothing.
        Undisturbed(saver, 1);
        Undisturbed(saver, 0);
        if (!Hidden(folder_.Path).empty()) {
            faults_.Say(std::string(saver.Name) + ": temporary files pile up");
        }
    }

    /// Microseconds that a few saves take: kills come anywhere in them.
    int Span(const Saver& saver) {
        constexpr int kSaves = 8;
        const pid_t child = Start(saver, 0, true);
        AwaitSave(saver, child);
        const auto start = std::chrono::steady_clock::now();
        while (left_->Saved < kSaves) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        const auto span = std::chrono::steady_clock::now() - start;
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        return static_cast<int>(
            std::chrono::duration_cast<std::chrono::microseconds>(span).count() / 2);
    }

    void AwaitSave(const Saver& saver, pid_t child) {
        // Not before it saves: a program that only starts is no news.
        while (left_->Saved == 0 && left_->Inside == 0) {
            int status = 0;
            if (::waitpid(child, &status, WNOHANG) == child) {
                throw std::runtime_error(std::string(saver.Name) + ": the process ended by itself");
            }
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    }

    void Kill(const Saver& saver, int span, const std::vector<std::string>& first,
              const std::vector<std::string>& second, Tally& tally) {
        const pid_t child = Start(saver, chance_.Below(2), true);
        AwaitSave(saver, child);
        std::this_thread::sleep_for(std::chrono::microseconds(chance_.Below(span)));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL) {
            faults_.Say(std::string(saver.Name) + ": the process ended by itself");
        }
        ++tally.Kills;
        tally.Inside += left_->Inside;
        const auto cut = Contents(saver);
        // What the next opening of the first file does.
        Ripara(folder_.Path / saver.Files.front());
        const auto found = Contents(saver);
        tally.Mended += found != cut ? 1 : 0;
        if (saver.How == Look::Whole && found != first && found != second) ++tally.Sets;
        for (std::size_t f = 0; f < found.size(); ++f) {
            const bool one = saver.How == Look::Pdf ? WholePdf(found[f]) : found[f] == first[f];
            const bool other = found[f] == second[f];
            if (!one && !other) {
                ++tally.Mixed;
            } else if (f == 0 && saver.How != Look::Pdf) {
                ++(other ? tally.New : tally.Old);
            }
        }
    }

    const Options& options_;
    Faults& faults_;
    Folder folder_;
    Chance chance_;
    int argc_;
    char** argv_;
    Left* left_ = nullptr;
};

}  // namespace

void SoakKill(const Options& options, Faults& faults, int argc, char** argv) {
    KillSoak(options, faults, argc, argv).Run();
}

}  // namespace lapvane::soak
