#include "sensors/Curve.h"

#include <utility>

namespace lapvane {

std::array<double, 21> CurvaX{};
std::array<double, 21> CurvaY{};

namespace {

constexpr std::array<std::pair<std::string_view, int>, 8> kFattori = {{
    {"TemperaturaOlio", 10},
    {"TemperaturaAcqua", 10},
    {"Pressione", 1000},
    {"PressioneTurbo", 1000},
    {"LivelloBenzina", 10},
    {"Altro", 1},
    {"SensoreG", 1000},
    {"SensoreLambda", 100},
}};

}  // namespace

int FattoreSensore(std::string_view tipo) {
    for (const auto& [nome, fattore] : kFattori) {
        if (nome == tipo) return fattore;
    }
    return 0;
}

}  // namespace lapvane
