#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Machine.h"
#include "Soak.h"

namespace lapvane::soak {

/// What is carried over the line.
enum class Carries {
    Handshake,
    Identity,
    Write,
    WriteCurve,
    Read,
    ReadCurve,
    Live,
    Analogue,
    Block
};

/// One kind of exchange and the longest that it may last, in ms.
struct Kind {
    const char* Name;
    int Command;
    Carries What;
    int Reply;    ///< characters that the program waits for
    int TimeOut;  ///< for the reply
    int Bound;    ///< for everything: what was prescribed to drain, the reply, the flash
};

const std::vector<Kind>& Kinds();

/// What became of an exchange.
enum class Outcome { Right, Refused, Undetected };

/// What a misbehaviour must lead to, by the rules of the protocol.
enum class Must { BeRight, BeRefused, NotBeKnown };

struct Misbehaviour {
    std::string Name = "none";
    std::optional<strumento::Guasto> Fault;
    int PullAfter = 0;  ///< ms; 0: the plug stays in
    bool PullBefore = false;
    bool Lingers = false;  ///< its reply comes when nobody waits any more
    Must Then = Must::BeRight;
};

Misbehaviour Choose(const Kind& kind, Chance& chance, int slack);

/// Carries out one exchange with new contents. Raises `Wrong` where the program took for right what
/// it could tell to be wrong, or did not tell a failure.
struct Wrong {
    std::string What;
};

struct Result {
    Outcome Became = Outcome::Right;
    std::int64_t Lasted = 0;
};

Result Carry(const Kind& kind, Machine& machine, Chance& chance);

}  // namespace lapvane::soak
