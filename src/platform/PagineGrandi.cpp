#include "platform/PagineGrandi.h"

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>
#endif

namespace lapvane {

#ifdef __linux__
void PagineGrandi(void* inizio, std::size_t byte) {
    constexpr std::size_t kPagina = std::size_t{2} << 20;
    // The whole pages inside.
    const std::size_t oltre = reinterpret_cast<std::uintptr_t>(inizio) % kPagina;
    const std::size_t davanti = oltre == 0 ? 0 : kPagina - oltre;
    if (byte < davanti + kPagina) return;
    ::madvise(static_cast<char*>(inizio) + davanti, (byte - davanti) / kPagina * kPagina,
              MADV_HUGEPAGE);
}
#else
void PagineGrandi(void*, std::size_t) {}
#endif

}  // namespace lapvane
