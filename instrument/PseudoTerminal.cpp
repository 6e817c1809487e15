#include "instrument/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace lapvane::strumento {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

void CloseIfOpen(int descriptor) {
    if (descriptor >= 0) ::close(descriptor);
}

}  // namespace

PseudoTerminal::PseudoTerminal() {
    try {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (master_ < 0) Fail("opening a pseudo-terminal");
        if (::grantpt(master_) != 0 || ::unlockpt(master_) != 0) Fail("unlocking it");
        const char* name = ::ptsname(master_);
        if (name == nullptr) Fail("naming the pseudo-terminal");
        name_ = name;
        slave_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (slave_ < 0) Fail(name_.c_str());
        termios mode{};
        if (::tcgetattr(slave_, &mode) != 0) Fail("reading the terminal's mode");
        ::cfmakeraw(&mode);
        mode.c_cflag =
            (mode.c_cflag & ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB)) | CS8 | CLOCAL | CREAD;
        ::cfsetspeed(&mode, B19200);
        if (::tcsetattr(slave_, TCSANOW, &mode) != 0) Fail("setting the terminal's mode");
        const int flags = ::fcntl(master_, F_GETFL);
        if (flags < 0 || ::fcntl(master_, F_SETFL, flags | O_NONBLOCK) != 0) {
            Fail("setting the terminal to non-blocking");
        }
    } catch (...) {
        CloseIfOpen(slave_);
        CloseIfOpen(master_);
        throw;
    }
}

PseudoTerminal::~PseudoTerminal() {
    std::error_code ignored;
    // Another instrument may have taken the link over.
    if (!link_.empty() && fs::read_symlink(link_, ignored) == name_) fs::remove(link_, ignored);
    CloseIfOpen(slave_);
    CloseIfOpen(master_);
}

void PseudoTerminal::MakeLink(const fs::path& link) {
    const fs::path whole = fs::absolute(link);
    fs::create_directories(whole.parent_path());
    const fs::file_status old = fs::symlink_status(whole);
    if (fs::exists(old) && !fs::is_symlink(old)) {
        throw std::runtime_error(whole.string() + " exists and is no link");
    }
    // Made beside the old one and renamed over it, so that there is a link at every moment.
    fs::path fresh = whole;
    fresh += "." + std::to_string(::getpid());
    fs::create_symlink(name_, fresh);
    fs::rename(fresh, whole);
    link_ = whole;
}

std::string PseudoTerminal::Read() {
    std::array<char, 4096> bytes;
    const ssize_t count = ::read(master_, bytes.data(), bytes.size());
    if (count > 0) {
        // A program that took the port for itself alone and then crashed would lock it for good:
        // the end kept open here holds that lock.
        ::ioctl(slave_, TIOCNXCL);
        return {bytes.data(), static_cast<std::size_t>(count)};
    }
    if (count < 0 && errno != EAGAIN && errno != EINTR) Fail("reading from the terminal");
    return {};
}

void PseudoTerminal::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(master_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return;
        if (count < 0) Fail("writing to the terminal");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::size_t PseudoTerminal::Waiting() const {
    int count = 0;
    if (::ioctl(slave_, FIONREAD, &count) != 0) Fail("asking the terminal");
    return static_cast<std::size_t>(count);
}

}  // namespace lapvane::strumento
