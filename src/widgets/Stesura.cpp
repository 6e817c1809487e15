#include "widgets/Stesura.h"

#include <bit>
#include <cstring>
#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define LAPVANE_SSE2
#endif
// Not on Windows, where this compiler puts registers of 32 bytes on a stack that is aligned to 16.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(_WIN32)
#include <immintrin.h>
#define LAPVANE_AVX2
#endif
#ifdef __GNUC__
#define LAPVANE_DENTRO [[gnu::always_inline]] inline  // into the routine that may use more
#else
#define LAPVANE_DENTRO inline
#endif

namespace lapvane {

namespace {

/// What a byte becomes where `b` covers it with a weight of 0 to 255, rounded.
std::uint8_t Mescola(std::uint8_t a, std::uint8_t b, std::uint8_t peso) {
    const unsigned t = a * (255U - peso) + b * static_cast<unsigned>(peso) + 128U;
    return static_cast<std::uint8_t>((t + (t >> 8)) >> 8);
}

/// Lays the colour over pixels, as far as the mask says.
void StendiPixel(std::uint32_t* pixel, const std::uint8_t* maschera, std::uint32_t colore,
                 int numero) {
    for (int n = 0; n < numero; ++n) {
        std::uint32_t misto = 0;
        for (int s = 0; s < 32; s += 8) {
            misto |= std::uint32_t{Mescola(static_cast<std::uint8_t>(pixel[n] >> s),
                                           static_cast<std::uint8_t>(colore >> s), maschera[n])}
                     << s;
        }
        pixel[n] = misto;
    }
}

/// The same for the pixels of one mark.
void StendiTessera(std::uint32_t* pixel, const std::uint8_t* maschera, std::uint32_t colore) {
#ifdef LAPVANE_SSE2
    const __m128i zero = _mm_setzero_si128();
    const __m128i cento = _mm_set1_epi16(128);
    const __m128i tinta =
        _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<std::int32_t>(colore)), zero);
    // a * 255 + (b - a) * weight, which is the sum of `Mescola`: what overflows on the way comes
    // back. The upper half of 257 times the sum is what its two shifts give.
    const auto mescola = [&](__m128i sotto, __m128i peso) {
        const __m128i t =
            _mm_add_epi16(_mm_add_epi16(_mm_sub_epi16(_mm_slli_epi16(sotto, 8), sotto), cento),
                          _mm_mullo_epi16(_mm_sub_epi16(tinta, sotto), peso));
        return _mm_mulhi_epu16(t, _mm_set1_epi16(257));
    };
    const __m128i m = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(maschera));
    const __m128i doppia = _mm_unpacklo_epi8(m, m);
    const __m128i pesi[] = {_mm_unpacklo_epi16(doppia, doppia), _mm_unpackhi_epi16(doppia, doppia)};
    auto* posto = reinterpret_cast<__m128i*>(pixel);
    for (const __m128i& peso : pesi) {
        const __m128i p = _mm_loadu_si128(posto);
        const __m128i basso = mescola(_mm_unpacklo_epi8(p, zero), _mm_unpacklo_epi8(peso, zero));
        const __m128i alto = mescola(_mm_unpackhi_epi8(p, zero), _mm_unpackhi_epi8(peso, zero));
        _mm_storeu_si128(posto++, _mm_packus_epi16(basso, alto));
    }
#else
    StendiPixel(pixel, maschera, colore, kTessera);
#endif
}

#ifdef LAPVANE_AVX2
#define LAPVANE_CON_AVX2 __attribute__((target("avx2,bmi")))

LAPVANE_CON_AVX2 inline __m256i Mescola4(__m256i sotto, __m256i peso, __m256i tinta) {
    const __m256i t =
        _mm256_add_epi16(_mm256_add_epi16(_mm256_sub_epi16(_mm256_slli_epi16(sotto, 8), sotto),
                                          _mm256_set1_epi16(128)),
                         _mm256_mullo_epi16(_mm256_sub_epi16(tinta, sotto), peso));
    return _mm256_mulhi_epu16(t, _mm256_set1_epi16(257));
}

/// `StendiTessera` in wider registers: the same sums.
LAPVANE_CON_AVX2 inline void StendiTesseraAvx2(std::uint32_t* pixel, const std::uint8_t* maschera,
                                               std::uint32_t colore) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i tinta =
        _mm256_unpacklo_epi8(_mm256_set1_epi32(static_cast<std::int32_t>(colore)), zero);
    // The weights of the pixels 0 1 4 5 and 2 3 6 7, where unpacking puts these.
    const __m256i prima = _mm256_setr_epi8(0, -1, 0, -1, 0, -1, 0, -1, 1, -1, 1, -1, 1, -1, 1, -1,
                                           4, -1, 4, -1, 4, -1, 4, -1, 5, -1, 5, -1, 5, -1, 5, -1);
    const __m256i dopo = _mm256_add_epi8(prima, _mm256_set1_epi16(2));
    const __m256i pesi =
        _mm256_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(maschera)));
    auto* const posto = reinterpret_cast<__m256i*>(pixel);
    const __m256i p = _mm256_loadu_si256(posto);
    const __m256i basso =
        Mescola4(_mm256_unpacklo_epi8(p, zero), _mm256_shuffle_epi8(pesi, prima), tinta);
    const __m256i alto =
        Mescola4(_mm256_unpackhi_epi8(p, zero), _mm256_shuffle_epi8(pesi, dopo), tinta);
    _mm256_storeu_si256(posto, _mm256_packus_epi16(basso, alto));
}
#endif

/// Lays the colour over the marked pixels of a row and leaves mask and marks empty. `pixel` stands
/// where the mask begins, a border before the field; `larghezza` is that of the mask.
template <void (*Tessera)(std::uint32_t*, const std::uint8_t*, std::uint32_t)>
LAPVANE_DENTRO void StendiMarcate(std::uint32_t* pixel, std::uint8_t* maschera,
                                  std::span<std::uint64_t> marcate, int larghezza,
                                  std::uint32_t colore) {
    for (std::size_t parola = 0; parola < marcate.size(); ++parola) {
        std::uint64_t tessere = marcate[parola];
        if (tessere == 0) continue;
        marcate[parola] = 0;
        for (; tessere != 0; tessere &= tessere - 1) {
            const int x = (static_cast<int>(parola) * 64 + std::countr_zero(tessere)) * kTessera;
            std::uint8_t* const m = maschera + x;
            const int resto = larghezza - kBordo - x;
            if (x < kBordo || resto <= 0) {
                // the border
            } else if (resto >= kTessera) {
                Tessera(pixel + x, m, colore);
            } else {
                StendiPixel(pixel + x, m, colore, resto);
            }
            std::memset(m, 0, kTessera);
        }
    }
}

#ifdef LAPVANE_AVX2
LAPVANE_CON_AVX2 void StendiAvx2(std::uint32_t* pixel, std::uint8_t* maschera,
                                 std::span<std::uint64_t> marcate, int larghezza,
                                 std::uint32_t colore) {
    StendiMarcate<StendiTesseraAvx2>(pixel, maschera, marcate, larghezza, colore);
}
#endif

}  // namespace

void StendiSemplice(std::uint32_t* pixel, std::uint8_t* maschera, std::span<std::uint64_t> marcate,
                    int larghezza, std::uint32_t colore) {
    StendiMarcate<StendiTessera>(pixel, maschera, marcate, larghezza, colore);
}

StendiRiga MiglioreStendi() {
#ifdef LAPVANE_AVX2
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi")) return StendiAvx2;
#endif
    return StendiSemplice;
}

}  // namespace lapvane
