// Sleeping on Windows, where a plain sleep lasts to the next tick of the system's clock: 10 ms
// become up to 15.6.

#include <windows.h>

#include <thread>

#include "platform/Sonno.h"

namespace lapvane {

void DormiFino(std::chrono::steady_clock::time_point fine) {
    using std::chrono::steady_clock;
    using Decimi = std::chrono::duration<LONGLONG, std::ratio<1, 10'000'000>>;  // of a microsecond
    constexpr DWORD kPrecisa = 2;  // CREATE_WAITABLE_TIMER_HIGH_RESOLUTION, since Windows 10 1803
    const auto resto = std::chrono::duration_cast<Decimi>(fine - steady_clock::now());
    if (resto.count() <= 0) return;
    const HANDLE sveglia =
        ::CreateWaitableTimerExW(nullptr, nullptr, kPrecisa, TIMER_MODIFY_STATE | SYNCHRONIZE);
    LARGE_INTEGER traQuanto{};
    traQuanto.QuadPart = -resto.count();  // from now
    if (sveglia == nullptr ||
        ::SetWaitableTimer(sveglia, &traQuanto, 0, nullptr, nullptr, FALSE) == 0) {
        std::this_thread::sleep_until(fine);
    } else {
        ::WaitForSingleObject(sveglia, INFINITE);
    }
    if (sveglia != nullptr) ::CloseHandle(sveglia);
}

}  // namespace lapvane
