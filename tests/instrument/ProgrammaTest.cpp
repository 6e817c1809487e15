#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "device/Codec.h"
#include "instrument/Options.h"
#include "instrument/PseudoTerminal.h"
#include "support/PlatformProva.h"

extern char** environ;

namespace lapvane::strumento {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// Waits for something that another process does, however slow the machine.
bool Comes(const std::function<bool()>& what) {
    for (int i = 0; i < 24000; ++i) {
        if (what()) return true;
        std::this_thread::sleep_for(5ms);
    }
    return false;
}

/// The program as a child of the test, gone with it.
class Child {
 public:
    Child(const fs::path& folder, std::vector<std::string> arguments) : said_(folder / "said") {
        const std::string program = (prova::CartellaBin() / "lapvane-instrument").string();
        arguments.insert(arguments.begin(), program);
        std::vector<char*> pointers;
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        int pipe[2];
        EXPECT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_adddup2(&files, pipe[0], STDIN_FILENO);
        posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, said_.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
        EXPECT_EQ(
            ::posix_spawn(&process_, program.c_str(), &files, nullptr, pointers.data(), environ),
            0);
        posix_spawn_file_actions_destroy(&files);
        ::close(pipe[0]);
        console_ = pipe[1];
    }
    ~Child() {
        if (process_ > 0) Exits(SIGKILL);
        ::close(console_);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Sends a signal (0: none) and waits; the exit code, -1 for another end, -2 for none.
    int Exits(int signal = 0) {
        if (signal != 0) ::kill(process_, signal);
        int status = 0;
        if (!Comes([&] { return ::waitpid(process_, &status, WNOHANG) != 0; })) return -2;
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void Type(const std::string& line) const {
        EXPECT_EQ(::write(console_, line.data(), line.size()), static_cast<ssize_t>(line.size()));
    }
    std::string Said() const { return prova::Leggi(said_); }

 private:
    fs::path said_;
    pid_t process_ = -1;
    int console_ = -1;
};

/// The other program's side of a port.
class Port {
 public:
    explicit Port(const fs::path& port) : descriptor_(::open(port.c_str(), O_RDWR | O_NOCTTY)) {
        EXPECT_GE(descriptor_, 0) << port;
    }
    ~Port() { ::close(descriptor_); }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    std::string Ask(const std::string& bytes, std::size_t count) const {
        EXPECT_EQ(::write(descriptor_, bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
        std::string reply;
        pollfd waiting{descriptor_, POLLIN, 0};
        while (reply.size() < count && ::poll(&waiting, 1, 120000) > 0) {
            char buffer[512];
            const ssize_t got = ::read(descriptor_, buffer, sizeof buffer);
            if (got <= 0) break;
            reply.append(buffer, static_cast<std::size_t>(got));
        }
        return reply;
    }

 private:
    int descriptor_;
};

TEST(Options, WrongArgumentsAreRefused) {
    using Arguments = std::vector<std::string>;
    for (const Arguments& wrong : {Arguments{"--lap", "3"},
                                   {"--track"},
                                   {"--laps", "0"},
                                   {"--laps", "1101"},
                                   {"--full", "--empty"},
                                   {"--full", "--laps", "3"},
                                   {"--identity", "ELEVEN CHAR"},
                                   {"--link", "ports/"},
                                   {"--fault", "cut"}}) {
        EXPECT_THROW(ParseOptions(wrong), std::invalid_argument) << wrong[0];
    }
    EXPECT_EQ(ParseOptions({"--full"}).Session.Modo, ModoSessione::Piena);
    EXPECT_EQ(ParseOptions({"--laps", "7"}).Session.Giri, 7);
}

class Program : public ::testing::Test {
 protected:
    prova::PlatformProva machine;
    fs::path link = machine.Cartella / "new" / "ports" / "COM1";
};

TEST_F(Program, ServesUntilItIsToldToEnd) {
    Child child(machine.Cartella, {"--link", link.string(), "--empty", "--identity", "PROVA",
                                   "--fault", "drop:38", "--tank", "10:falling", "--pace"});
    ASSERT_TRUE(Comes([&] { return fs::exists(link); })) << child.Said();
    {
        const Port port(link);
        // One that begins and never ends is given up.
        EXPECT_EQ(port.Ask(Frame(18, std::string(26, '\0')).substr(0, 9) + Frame(1), 5),
                  Conferma(1));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(port.Ask(Frame(14, CodificaLong(0)), 130).size(), 130u);
        EXPECT_GE(std::chrono::steady_clock::now() - start, 60ms) << "a line of 19200 baud";
        EXPECT_EQ(port.Ask(Frame(38, CodificaWord(0)) + Frame(2), 13).substr(2, 10), "PROVA     ");
        child.Type("20\n");
        EXPECT_TRUE(Comes([&] { return child.Said().find("tank: 20") != std::string::npos; }));
        EXPECT_EQ(Int16In(port.Ask(Frame(9), 19), 11), 1023 - 40 - 320) << "it still falls";
    }
    EXPECT_EQ(child.Exits(SIGTERM), 0) << child.Said();
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
    for (const char* said : {"session: empty, 0 laps, 0 bytes", "lap block (38) x1", "faults x1"}) {
        EXPECT_NE(child.Said().find(said), std::string::npos) << child.Said();
    }
}

TEST_F(Program, WhatCannotStartEndsWithAMessage) {
    const std::string none = (machine.Cartella / "none").string();
    prova::Scrivi(machine.Cartella / "COM2", "precious");  // no link: nobody's to take away
    for (const auto& [arguments, code, said] :
         {std::tuple{std::vector<std::string>{"--fault", "explode"}, 2, "no such kind"},
          {{"--tracks", none}, 1, "no circuit in the folder"},
          {{"--link", (machine.Cartella / "COM2").string()}, 1, "COM2"},
          {{"--help"}, 0, "--fault"}}) {
        Child child(machine.Cartella, arguments);
        EXPECT_EQ(child.Exits(), code);
        EXPECT_NE(child.Said().find(said), std::string::npos) << child.Said();
    }
    EXPECT_EQ(prova::Leggi(machine.Cartella / "COM2"), "precious");
    PseudoTerminal second;
    {
        PseudoTerminal first;
        for (PseudoTerminal* one : {&first, &second}) one->MakeLink(machine.Cartella / "COM3");
    }
    EXPECT_EQ(fs::read_symlink(machine.Cartella / "COM3"), second.Name());
}

}  // namespace
}  // namespace lapvane::strumento
