#pragma once

#include <string>

namespace lapvane {

/// Message of a side file that is missing or cannot be read: text 328, the name, text 329.
void FileMancante(const std::string& nome);

}  // namespace lapvane
