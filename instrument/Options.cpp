#include "instrument/Options.h"

#include <stdexcept>

#include "shell/NumeroTesto.h"

namespace lapvane::strumento {

namespace {

class Arguments {
 public:
    explicit Arguments(const std::vector<std::string>& all) : all_(all) {}
    bool End() const { return next_ == all_.size(); }
    const std::string& Next() { return all_[next_++]; }
    const std::string& ValueOf(const std::string& option) {
        if (End()) throw std::invalid_argument(option + " needs a value");
        return Next();
    }

 private:
    const std::vector<std::string>& all_;
    std::size_t next_ = 0;
};

int ParseLaps(const std::string& text) {
    const auto laps = LeggiIntero(text);
    if (!laps || *laps < 1 || *laps > kGiriMassimi) {
        throw std::invalid_argument("--laps has to be a number from 1 to " +
                                    TestoNumero(kGiriMassimi) + ", not \"" + text + "\"");
    }
    return *laps;
}

std::string ParseIdentity(const std::string& text) {
    if (text.empty() || text.size() > kCaratteriIdentita) {
        throw std::invalid_argument("--identity has to have 1 to 10 characters");
    }
    return text;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    bool laps = false;
    bool empty = false;
    bool full = false;
    Arguments rest(arguments);
    while (!rest.End()) {
        const std::string& option = rest.Next();
        if (option == "--link") {
            options.Link = rest.ValueOf(option);
            if (options.Link.filename().empty()) {
                throw std::invalid_argument("--link has to name a file, not a folder");
            }
        } else if (option == "--laps") {
            options.Session.Giri = ParseLaps(rest.ValueOf(option));
            laps = true;
        } else if (option == "--track") {
            options.Track = rest.ValueOf(option);
        } else if (option == "--tracks") {
            options.Tracks = rest.ValueOf(option);
        } else if (option == "--sensors") {
            options.Sensors = rest.ValueOf(option);
        } else if (option == "--identity") {
            options.Identity = ParseIdentity(rest.ValueOf(option));
        } else if (option == "--fault") {
            options.Faults.push_back(LeggiGuasto(rest.ValueOf(option)));
        } else if (option == "--tank") {
            options.Tank = LeggiSerbatoio(rest.ValueOf(option));
        } else if (option == "--empty") {
            empty = true;
        } else if (option == "--full") {
            full = true;
        } else if (option == "--pace") {
            options.Pace = true;
        } else if (option == "--quiet") {
            options.Quiet = true;
        } else if (option == "--help" || option == "-h") {
            options.Help = true;
        } else {
            throw std::invalid_argument("unknown argument \"" + option + "\"");
        }
    }
    if (int{laps} + int{empty} + int{full} > 1) {
        throw std::invalid_argument("--laps, --empty and --full exclude each other");
    }
    if (empty) options.Session.Modo = ModoSessione::Vuota;
    if (full) options.Session.Modo = ModoSessione::Piena;
    return options;
}

std::string HelpText() {
    return "lapvane-instrument: a simulated dashboard instrument on a pseudo-terminal\n"
           "\n"
           "  --link PATH      make a symbolic link to the terminal (bin/ports/COM1); its folder\n"
           "                   is made, an old link is replaced, and it goes at the end\n"
           "  --pace           send no faster than a line of 19200 baud does\n"
           "  --laps N         complete laps of the recorded session, 1 to " +
           TestoNumero(kGiriMassimi) + " (" + TestoNumero(kGiriNormali) +
           " if left out)\n"
           "  --empty          nothing is recorded\n"
           "  --full           the log memory is full\n"
           "  --track NAME     circuit of the session; the first of the folder if left out\n"
           "  --tracks DIR     folder of the circuits; \"tracks\" beside this program if left out\n"
           "  --sensors DIR    folder of the car's sensors; \"sensors\" beside this program if "
           "left out\n"
           "  --identity TEXT  identity, at most 10 characters (" +
           kIdentitaNormale +
           ")\n"
           "  --tank LITRES    a tank with so many litres (0 to 60) in place of the session's; "
           "with\n"
           "                   \":falling\" behind them the raw value falls as it fills. Each "
           "line\n"
           "                   of the standard input gives the litres anew\n"
           "  --fault FAULT    misbehave; may be given several times\n"
           "  --quiet          say nothing\n"
           "  --help           this text\n"
           "\n" +
           AiutoGuasti();
}

}  // namespace lapvane::strumento
