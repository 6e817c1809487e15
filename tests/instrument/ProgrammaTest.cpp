#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "device/Codec.h"
#include "instrument/Options.h"
#include "instrument/PseudoTerminal.h"
#include "support/Cartelle.h"

extern char** environ;

namespace lapvane::strumento {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST(Options, WrongArgumentsAreRefusedWithAReason) {
    for (const auto& [arguments, reason] :
         std::vector<std::pair<std::vector<std::string>, const char*>>{
             {{"--lap", "3"}, "unknown argument"},
             {{"COM1"}, "unknown argument"},
             {{"--laps"}, "needs a value"},
             {{"--laps", "0"}, "--laps"},
             {{"--laps", "1101"}, "--laps"},
             {{"--laps", "many"}, "--laps"},
             {{"--full", "--empty"}, "exclude"},
             {{"--full", "--laps", "3"}, "exclude"},
             {{"--identity", "ELEVEN CHAR"}, "--identity"},
             {{"--link", "ports/"}, "--link"},
             {{"--fault", "cut"}, "fault"}}) {
        try {
            ParseOptions(arguments);
            ADD_FAILURE() << arguments.front();
        } catch (const std::invalid_argument& error) {
            EXPECT_NE(std::string(error.what()).find(reason), std::string::npos) << error.what();
        }
    }
}

class Temporary : public ::testing::Test {
 protected:
    Temporary() {
        std::string name = (fs::temp_directory_path() / "lapvane-strumento-XXXXXX").native();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        folder = name;
    }
    ~Temporary() override { fs::remove_all(folder); }

    /// The other program's side of the port: opens it, writes, collects `count` bytes.
    static std::string Exchange(const fs::path& port, const std::string& bytes, std::size_t count) {
        const int descriptor = ::open(port.c_str(), O_RDWR | O_NOCTTY);
        EXPECT_GE(descriptor, 0) << port;
        EXPECT_EQ(::write(descriptor, bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
        std::string reply;
        pollfd waiting{descriptor, POLLIN, 0};
        while (reply.size() < count && ::poll(&waiting, 1, 5000) > 0) {
            char buffer[512];
            const ssize_t got = ::read(descriptor, buffer, sizeof buffer);
            if (got <= 0) break;
            reply.append(buffer, static_cast<std::size_t>(got));
        }
        ::close(descriptor);
        return reply;
    }

    fs::path folder;
};

class Terminal : public Temporary {};
class Program : public Temporary {
 protected:
    pid_t Start(std::vector<std::string> arguments) {
        const std::string program = (prova::CartellaBin() / "lapvane-instrument").string();
        arguments.insert(arguments.begin(), program);
        std::vector<char*> pointers;
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        for (const int number : {STDOUT_FILENO, STDERR_FILENO}) {
            posix_spawn_file_actions_addopen(&files, number, (folder / "said").c_str(),
                                             O_WRONLY | O_CREAT | O_APPEND, 0600);
        }
        pid_t process = -1;
        EXPECT_EQ(
            ::posix_spawn(&process, program.c_str(), &files, nullptr, pointers.data(), environ), 0);
        posix_spawn_file_actions_destroy(&files);
        return process;
    }
    static bool Appears(const fs::path& link) {
        for (int i = 0; i < 500 && !fs::exists(link); ++i) std::this_thread::sleep_for(10ms);
        return fs::exists(link);
    }
    static int ExitCode(pid_t process) {
        int status = 0;
        EXPECT_EQ(::waitpid(process, &status, 0), process);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Said() const {
        std::ifstream file(folder / "said", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(Terminal, BytesPassAsTheyAreAndTheLinkComesAndGoes) {
    const fs::path link = folder / "new" / "ports" / "COM1";
    fs::create_directories(link.parent_path());
    fs::create_symlink("/nowhere", link);
    // Characters that a terminal in its usual mode would act on: interrupt, flow, line ends, erase.
    const std::string bytes("\x03\x11\x13\r\n\x7F\x04\x00\xFF\x1A", 10);
    {
        PseudoTerminal terminal;
        terminal.MakeLink(link);
        EXPECT_EQ(fs::read_symlink(link), terminal.Name());
        for (int time = 0; time < 2; ++time) {  // closing the port does not end the terminal
            terminal.Write(bytes);
            EXPECT_EQ(Exchange(link, bytes, bytes.size()), bytes);
            EXPECT_EQ(terminal.Read(), bytes);
            EXPECT_EQ(terminal.Read(), "");
        }
    }
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(Terminal, AProgramThatCrashedDoesNotLockThePort) {
    PseudoTerminal terminal;
    const int crashed = ::open(terminal.Name().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_EQ(::ioctl(crashed, TIOCEXCL), 0);
    ASSERT_EQ(::write(crashed, "?", 1), 1);
    ::close(crashed);
    EXPECT_EQ(terminal.Read(), "?");
    const int next = ::open(terminal.Name().c_str(), O_RDWR | O_NOCTTY);
    int locked = -1;
    EXPECT_EQ(::ioctl(next, TIOCGEXCL, &locked), 0);
    EXPECT_EQ(locked, 0);
    ::close(next);
}

TEST_F(Terminal, ALinkIsNotTakenFromOthers) {
    const fs::path file = folder / "COM1";
    std::ofstream(file) << "precious";
    {
        PseudoTerminal terminal;
        EXPECT_THROW(terminal.MakeLink(file), std::runtime_error);
    }
    EXPECT_TRUE(fs::is_regular_file(file));
    const fs::path link = folder / "COM2";
    PseudoTerminal second;
    {
        PseudoTerminal first;
        first.MakeLink(link);
        second.MakeLink(link);
    }
    EXPECT_EQ(fs::read_symlink(link), second.Name());
}

TEST_F(Program, ServesUntilItIsToldToEnd) {
    const fs::path link = folder / "ports" / "COM7";
    const pid_t process =
        Start({"--link", link.string(), "--empty", "--identity", "PROVA", "--fault", "drop:38"});
    ASSERT_TRUE(Appears(link)) << Said();
    EXPECT_EQ(Exchange(link, Frame(1), 5), Conferma(1));
    EXPECT_EQ(Exchange(link, Frame(38, CodificaWord(0)) + Frame(2), 13).substr(2, 10),
              "PROVA     ");
    ASSERT_EQ(::kill(process, SIGTERM), 0);
    EXPECT_EQ(ExitCode(process), 0) << Said();
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
    EXPECT_NE(Said().find("session: empty, 0 laps, 0 bytes"), std::string::npos) << Said();
    EXPECT_NE(Said().find("lap block (38) x1"), std::string::npos) << Said();
}

TEST_F(Program, AnIncompleteFrameIsGivenUpWithoutAnythingMoreComing) {
    const fs::path link = folder / "COM1";
    const pid_t process = Start({"--link", link.string(), "--empty", "--quiet"});
    ASSERT_TRUE(Appears(link)) << Said();
    const std::string begun = Frame(18, std::string(26, '\0')).substr(0, 9);
    EXPECT_EQ(Exchange(link, begun + Frame(1), 5), Conferma(1));
    ASSERT_EQ(::kill(process, SIGINT), 0);
    EXPECT_EQ(ExitCode(process), 0);
    EXPECT_EQ(Said(), "");
}

TEST_F(Program, WrongArgumentsAndMissingCircuitsEndWithAMessage) {
    EXPECT_EQ(ExitCode(Start({"--fault", "explode"})), 2);
    EXPECT_NE(Said().find("no such kind"), std::string::npos) << Said();
    EXPECT_EQ(ExitCode(Start({"--tracks", folder.string(), "--track", "Nowhere"})), 1);
    EXPECT_NE(Said().find("Nowhere.trk"), std::string::npos) << Said();
    EXPECT_EQ(ExitCode(Start({"--tracks", (folder / "none").string()})), 1);
    EXPECT_NE(Said().find("no circuit in the folder"), std::string::npos) << Said();
    EXPECT_EQ(ExitCode(Start({"--help"})), 0);
    EXPECT_NE(Said().find("--fault"), std::string::npos);
}

}  // namespace
}  // namespace lapvane::strumento
