#include "support/Cartelle.h"

namespace lapvane::prova {

std::filesystem::path CartellaBin() {
    return LAPVANE_BIN_DIR;
}

std::filesystem::path CartellaDati() {
    return LAPVANE_DATA_DIR;
}

}  // namespace lapvane::prova
