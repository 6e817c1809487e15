#include "platform/PagineGrandi.h"

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>
#endif

namespace lapvane {

#ifdef __linux__
void PagineGrandi(void* inizio, std::size_t byte) {
    constexpr std::uintptr_t kPagina = std::uintptr_t{2} << 20;
    const auto da = (reinterpret_cast<std::uintptr_t>(inizio) + kPagina - 1) & ~(kPagina - 1);
    const auto fine = (reinterpret_cast<std::uintptr_t>(inizio) + byte) & ~(kPagina - 1);
    if (da >= fine) return;
    ::madvise(reinterpret_cast<void*>(da), fine - da, MADV_HUGEPAGE);
}
#else
void PagineGrandi(void*, std::size_t) {}
#endif

}  // namespace lapvane
