#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lapvane::strumento {

/// The instrument's end of a pseudo-terminal that passes bytes as they are. Other programs open
/// `Name()` as their serial port.
class PseudoTerminal {
 public:
    /// Raises `std::system_error`.
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& Name() const { return name_; }
    int Descriptor() const { return master_; }

    /// Makes a symbolic link to the terminal and its folder; an old link is replaced, anything else
    /// of that name is not touched. Raises `std::runtime_error`. The link goes with the object.
    void MakeLink(const std::filesystem::path& link);

    /// What waits; empty if nothing does.
    std::string Read();
    /// What nobody reads is lost when the terminal's buffer is full, as on a cable.
    void Write(std::string_view bytes);
    /// Characters that were written and that no program has taken yet, as far as the terminal has
    /// them in its buffer.
    std::size_t Waiting() const;

 private:
    int master_ = -1;
    int slave_ = -1;  // kept open: without it the master fails while no program has the port open
    std::string name_;
    std::filesystem::path link_;
};

}  // namespace lapvane::strumento
