#pragma once

#include "platform/SerialControl.h"

namespace lapvane::prova {

// What every serial control does, at whose port a `FarEnd` waits. No event runs.

void SerialBytesGoBothWays(SerialControl& port);
void SerialWaitsAreExact(SerialControl& port);
void SerialPortThatVanishesCloses(SerialControl& port);
void SerialRefusals(SerialControl& port);

/// Sends a line to the far end.
void Order(SerialControl& port, const std::string& line);
/// Whether that many bytes come to wait.
bool Arrives(SerialControl& port, std::size_t bytes);

}  // namespace lapvane::prova
