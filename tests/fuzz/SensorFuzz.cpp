// The reader of sensor files: any bytes are refused or give a sensor of at most 21 points whose
// curve can be put into a frame and found again by its points.
#include <cmath>
#include <cstdlib>
#include <vector>

#include "device/Codec.h"
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

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static FuzzPlatform machine;
    const std::vector<char> bytes(data, data + size);
    std::optional<CSensore> sensor;
    try {
        sensor = LeggiSensore({bytes.data(), bytes.size()});
    } catch (const ErroreRuntime&) {
        return 0;  // a number beyond all range: the library leaves such a file out
    }
    if (!sensor) return 0;
    if (sensor->NumPunti() < 0 || sensor->NumPunti() > static_cast<int>(CSensore::kElementi)) {
        std::abort();
    }
    for (int i = 0; i < static_cast<int>(CSensore::kElementi); ++i) {
        if (!std::isfinite(sensor->X(i)) || !std::isfinite(sensor->Y(i))) std::abort();
    }

    LibreriaSensori = {*sensor};
    CaricaCurvaSensore(sensor->Nome());
    for (std::size_t i = 0; i < CSensore::kPunti; ++i) {
        CurvaX[i] = sensor->X(static_cast<int>(i));
        CurvaY[i] = sensor->Y(static_cast<int>(i));
    }
    if (CercaNomeSensore(sensor->Tipo()) != sensor->Nome()) std::abort();

    // Written by the program and read again: the same names and the same texts of numbers.
    const std::string text =
        TestoSensore(sensor->Tipo(), sensor->Nome(), Axis(*sensor, true), Axis(*sensor, false));
    std::optional<CSensore> again;
    try {
        again = LeggiSensore(text);
    } catch (const ErroreRuntime&) {
        std::abort();
    }
    if (!again || again->Tipo() != sensor->Tipo() || again->Nome() != sensor->Nome()) std::abort();
    if (Axis(*again, true) != Axis(*sensor, true)) std::abort();
    if (Axis(*again, false) != Axis(*sensor, false)) std::abort();
    return 0;
}
