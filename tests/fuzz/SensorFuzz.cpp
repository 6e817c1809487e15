// The reader of sensor files: any bytes are refused or give a sensor of at most 21 points whose
// curve can be put into a frame and found again by its points.
#include <cmath>
#include <cstdlib>
#include <vector>

#include "device/Codec.h"
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzPlatform.h"
#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "sensors/FileSensore.h"
#include "shell/NumeroTesto.h"

namespace {

using namespace lapvane;

std::vector<std::string> Axis(const CSensore& sensor, bool x) {
    std::vector<std::string> rows;
    for (int i = 0; i < static_cast<int>(CSensore::kPunti); ++i) {
        rows.push_back(TestoNumero(x ? sensor.X(i) : sensor.Y(i)));
    }
    return rows;
}

}  // namespace

void Fuzz(std::string_view input) {
    static FuzzPlatform machine;
    // A number beyond all range is an error: the library leaves such a file out.
    std::optional<CSensore> sensor;
    if (!Accepted([&] { sensor = LeggiSensore(input); }) || !sensor) return;
    Must(sensor->NumPunti() >= 0 && sensor->NumPunti() <= static_cast<int>(CSensore::kElementi));
    for (int i = 0; i < static_cast<int>(CSensore::kElementi); ++i) {
        Must(std::isfinite(sensor->X(i)) && std::isfinite(sensor->Y(i)));
    }

    LibreriaSensori = {*sensor};
    CaricaCurvaSensore(sensor->Nome());
    for (std::size_t i = 0; i < CSensore::kPunti; ++i) {
        CurvaX[i] = sensor->X(static_cast<int>(i));
        CurvaY[i] = sensor->Y(static_cast<int>(i));
    }
    Must(CercaNomeSensore(sensor->Tipo()) == sensor->Nome());

    // Written by the program and read again: the same names and the same texts of numbers.
    const std::string text =
        TestoSensore(sensor->Tipo(), sensor->Nome(), Axis(*sensor, true), Axis(*sensor, false));
    std::optional<CSensore> again;
    try {
        again = LeggiSensore(text);
    } catch (const ErroreRuntime&) {
        std::abort();
    }
    Must(again && again->Tipo() == sensor->Tipo() && again->Nome() == sensor->Nome());
    Must(Axis(*again, true) == Axis(*sensor, true));
    Must(Axis(*again, false) == Axis(*sensor, false));
}
