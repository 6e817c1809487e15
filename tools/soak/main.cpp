// Shows that the program is reliable: exchanges with an instrument that misbehaves, downloads that
// break off, saves that are killed. Ends with a failure when anything is not as it must be.
#include <dirent.h>
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "Soak.h"
#include "shell/NumeroTesto.h"
#include "widgets/style/Vesti.h"

namespace lapvane::soak {

namespace fs = std::filesystem;

Folder::Folder(const fs::path& bin) {
    std::string name = fs::temp_directory_path() / ("lapvane-soak-" + std::string(6, 'X'));
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    Path = name;
    fs::create_directory(Path / "ports");
    fs::copy_file(bin / "LANGUAGES.DAT", Path / "LANGUAGES.DAT");
    for (const char* folder : {"sensors", "tracks"}) {
        fs::copy(bin / folder, Path / folder, fs::copy_options::recursive);
    }
}

Folder::~Folder() {
    std::error_code ignored;
    fs::remove_all(Path, ignored);
}

void Faults::Say(const std::string& what) {
    constexpr int kMost = 40;
    if (++number_ <= kMost) std::printf("FAULT: %s\n", what.c_str());
    std::fflush(stdout);
}

std::string ReadAll(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return std::move(out).str();
}

long ResidentKb() {
    std::ifstream in("/proc/self/statm");
    long all = 0;
    long resident = 0;
    in >> all >> resident;
    return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

int OpenFiles() {
    int number = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd"))
        number += entry.path().empty() ? 0 : 1;
    return number;
}

namespace {

int Usage() {
    std::fprintf(stderr,
                 "usage: soak [link] [pull] [silent] [kill] [option ...]\n"
                 "  link             exchanges with an instrument that misbehaves\n"
                 "  pull             downloads that break off\n"
                 "  silent           the program beside ports that never answer\n"
                 "  kill             saves that are killed\n"
                 "                   without any of them: all of them\n"
                 "  --first N        numbers by chance begin with N (1)\n"
                 "  --count N        exchanges of each kind (2000)\n"
                 "  --real SECONDS   exchanges on real time (30)\n"
                 "  --laps N         laps of the session that is downloaded (14)\n"
                 "  --silent N       rounds beside such ports (10)\n"
                 "  --kills N        kills of each kind of save (200)\n");
    return 2;
}

int Main(int argc, char** argv) {
    Options options;
    bool link = false, pull = false, silent = false, kill = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "link" || argument == "pull" || argument == "silent" ||
            argument == "kill") {
            (argument == "link"     ? link
             : argument == "pull"   ? pull
             : argument == "silent" ? silent
                                    : kill) = true;
            continue;
        }
        const auto number = i + 1 < argc ? LeggiIntero(argv[i + 1]) : std::nullopt;
        if (!number || *number < 0) return Usage();
        ++i;
        if (argument == "--first") {
            options.First = static_cast<std::uint32_t>(*number);
        } else if (argument == "--count") {
            options.Count = *number;
        } else if (argument == "--real") {
            options.RealSeconds = *number;
        } else if (argument == "--laps") {
            options.Laps = *number;
        } else if (argument == "--silent") {
            options.Silent = *number;
        } else if (argument == "--kills") {
            options.Kills = *number;
        } else {
            return Usage();
        }
    }
    if (!link && !pull && !silent && !kill) link = pull = silent = kill = true;
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    // Without a login Qt complains in each process about folders that are of no use here.
    ::setenv("QT_LOGGING_RULES", "default.warning=false", 0);
    options.Bin = fs::read_symlink("/proc/self/exe").parent_path();
    Faults faults;
    // Before there is an application here: its copies must have one of their own.
    if (kill) SoakKill(options, faults, argc, argv);
    QApplication application(argc, argv);
    lapvane::Vesti();
    if (link) SoakLink(options, faults);
    if (pull) SoakPull(options, faults);
    if (silent) SoakSilent(options, faults);
    if (faults.Number() != 0) {
        std::printf("\n%d faults\n", faults.Number());
        return 1;
    }
    std::printf("\nNo fault.\n");
    return 0;
}

}  // namespace

}  // namespace lapvane::soak

int main(int argc, char** argv) {
    try {
        return lapvane::soak::Main(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "soak: %s\n", error.what());
        return 1;
    }
}
