#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "platform/PagineGrandi.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace lapvane::bench {

/// The least that a reader of a full log has to do: it knows how many rows there are, that every
/// cell is a positive number of at most eight characters with at most two decimals, and that
/// nothing ever fails. From the file, piece by piece, into columns of its own.
class BareRead {
 public:
    BareRead(std::size_t columns, std::size_t rows)
        : rows_(rows), cells_(static_cast<double*>(std::calloc(columns * rows, sizeof(double)))) {
        PagineGrandi(cells_.get(), columns * rows * sizeof(double));
    }
    const double* Column(std::size_t c) const { return cells_.get() + c * rows_; }

    void Read(const std::filesystem::path& path) {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0) throw std::runtime_error("no log");
        constexpr std::size_t kPiece = std::size_t{256} << 10;
        constexpr std::size_t kRoom = 256;  // for the beginning of a line
        alignas(64) static char memory[kRoom + kPiece + 64];
        char* const piece = memory + kRoom;
        std::size_t kept = 0;
        bool heading = true;
        for (ssize_t n = 0; (n = ::read(file, piece, kPiece)) > 0;) {
            const char* from = piece - kept;
            const char* const end = piece + n;
            if (heading) from = static_cast<const char*>(std::memchr(from, '\n', end - from)) + 1;
            heading = false;
            from = Lines(from, end);
            kept = static_cast<std::size_t>(end - from);
            std::memmove(piece - kept, from, kept);
        }
        ::close(file);
    }

 private:
    struct Free {
        void operator()(double* p) const { std::free(p); }
    };

    /// Bit n: byte n of 64 ends a field.
    static std::uint64_t Ends(const char* p) {
        std::uint64_t bits = 0;
#ifdef __SSE2__
        for (int i = 0; i < 4; ++i) {
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i));
            const __m128i hit = _mm_or_si128(_mm_cmpeq_epi8(b, _mm_set1_epi8(';')),
                                             _mm_cmpeq_epi8(b, _mm_set1_epi8('\n')));
            bits |= static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(hit)))
                    << 16 * i;
        }
#else
        for (int i = 0; i < 64; ++i) bits |= std::uint64_t{p[i] == ';' || p[i] == '\n'} << i;
#endif
        return bits;
    }

    static double Number(const char* begin, const char* end) {
        std::uint64_t x = 0;
        std::memcpy(&x, end - 8, 8);
        x = (x ^ 0x3030303030303030u) & (~std::uint64_t{0} << (64 - 8 * (end - begin)));
        const std::uint64_t point = x & 0x1010101010101010u;
        if (point == 0) return Whole(x);
        x = ((x & ((point >> 4) - 1)) << 8) | (x & (~(point << 4) + 1));
        return Whole(x) / kTens[std::countr_zero(point) / 8];
    }

    static double Whole(std::uint64_t x) {
        x = x * 10 + (x >> 8);
        x = ((x & 0x000000FF000000FF) * 0x000F424000000064u +
             ((x >> 16) & 0x000000FF000000FF) * 0x0000271000000001u) >>
            32;
        return static_cast<double>(static_cast<std::int64_t>(x));
    }

    static constexpr double kTens[] = {1e7, 1e6, 1e5, 1e4, 1e3, 1e2, 1e1, 1e0};

    /// The whole lines of a piece; where the rest begins.
    const char* Lines(const char* from, const char* end) {
        const char* line = from;
        const char* field = from;
        double* cell = cells_.get() + row_;
        for (const char* p = from; p < end; p += 64) {
            std::uint64_t ends = Ends(p);
            if (end - p < 64) ends &= (std::uint64_t{1} << (end - p)) - 1;
            for (; ends != 0; ends &= ends - 1) {
                const char* const stop = p + std::countr_zero(ends);
                const bool last = *stop == '\n';
                *cell = Number(field, stop - (last ? 1 : 0));
                field = stop + 1;
                cell += rows_;
                if (!last) continue;
                line = field;
                cell = cells_.get() + ++row_;
            }
        }
        return line;
    }

    std::size_t rows_;
    std::size_t row_ = 0;
    std::unique_ptr<double, Free> cells_;
};

/// The two files of a full log.
struct BareLoad {
    [[gnu::noinline]] BareLoad(const std::filesystem::path& csv, const std::filesystem::path& side,
                               std::size_t rows)
        : Data(16, rows), Side(11, rows) {
        Data.Read(csv);
        Side.Read(side);
    }
    BareRead Data, Side;
};

}  // namespace lapvane::bench
