// The far end of a serial port for tests that run as programs of another system: lapvane_far_end
// LINK.
#include "support/FarEnd.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::atomic<bool> never{false};
    lapvane::prova::FarEnd(argv[1]).Serve(never);
}
