#include "support/FarEnd.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <map>
#include <sstream>
#include <thread>
#include <utility>

namespace lapvane::prova {

namespace {

std::string Speed(const std::string& terminal) {
    const std::map<speed_t, std::string> names = {{B19200, "19200\n"}, {B38400, "38400\n"}};
    termios mode{};
    const int end = ::open(terminal.c_str(), O_RDWR | O_NOCTTY);
    ::tcgetattr(end, &mode);
    ::close(end);
    const auto found = names.find(::cfgetospeed(&mode));
    return found == names.end() ? "?\n" : found->second;
}

}  // namespace

FarEnd::FarEnd(std::filesystem::path link) : link_(std::move(link)) {
    Attach();
}

void FarEnd::Attach() {
    terminal_ = std::make_unique<strumento::PseudoTerminal>();
    terminal_->MakeLink(link_);
}

void FarEnd::Serve(const std::atomic<bool>& stop) {
    while (!stop) {
        pollfd end{terminal_->Descriptor(), POLLIN, 0};
        ::poll(&end, 1, 50);
        waiting_ += terminal_->Read();
        while (Obey()) {
        }
    }
}

/// False when no whole order is there.
bool FarEnd::Obey() {
    const std::size_t end = waiting_.find('\n');
    if (end == std::string::npos) return false;
    std::istringstream line(waiting_.substr(0, end));
    std::string word;
    std::size_t number = 0;
    line >> word >> number;
    const std::size_t bytes = word == "echo" ? number : 0;
    if (waiting_.size() < end + 1 + bytes) return false;
    const std::string data = waiting_.substr(end + 1, bytes);
    waiting_.erase(0, end + 1 + bytes);
    const auto sleep = [&] { std::this_thread::sleep_for(std::chrono::milliseconds(number)); };
    if (word == "echo") terminal_->Write(data);
    if (word == "say") terminal_->Write(std::string(number, 'x'));
    if (word == "speed") terminal_->Write(Speed(terminal_->Name()));
    if (word == "after") {
        sleep();
        terminal_->Write("R");
    }
    if (word == "deaf") sleep();
    if (word == "gone") {
        terminal_.reset();
        sleep();
        waiting_.clear();
        Attach();
    }
    return true;
}

}  // namespace lapvane::prova
