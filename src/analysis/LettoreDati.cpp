#include "analysis/LettoreDati.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/CampoInParola.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

/// Bytes around the piece that may be read with it.
constexpr std::size_t kBordo = 64;

/// Bit n: byte n of the 64 at `p` is one of the two.
std::uint64_t Dove(const char* p, char a, char b) {
    std::uint64_t bit = 0;
#ifdef __SSE2__
    for (int i = 0; i < 4; ++i) {
        const __m128i byte = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i));
        const __m128i uguali = _mm_or_si128(_mm_cmpeq_epi8(byte, _mm_set1_epi8(a)),
                                            _mm_cmpeq_epi8(byte, _mm_set1_epi8(b)));
        bit |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(uguali))} << (16 * i);
    }
#else
    for (int i = 0; i < 64; ++i) bit |= std::uint64_t{p[i] == a || p[i] == b} << i;
#endif
    return bit;
}

/// What `CampoNumerico` gives for a field that is not empty.
inline double Campo(const char* inizio, const char* fine) {
    double valore = 0.0;
    if (CampoInParola(inizio, fine, valore)) return valore;
    if (*inizio == '-' && fine - inizio > 1 && inizio[1] != '.' && inizio[1] != ',' &&
        CampoInParola(inizio + 1, fine, valore)) {
        return -valore;
    }
    return CampoNumerico(inizio, fine);
}

/// How often a character stands in a text, as fast as memory hands it over.
std::uint64_t Quanti(std::string_view testo, char c) {
    constexpr std::size_t kFascio = 255;  // until a lane of one byte is full
    std::uint64_t tutti = 0;
    while (!testo.empty()) {
        constexpr std::size_t kCorsie = 32;
        unsigned char corsie[kCorsie] = {};
        const std::size_t giri = std::min(testo.size() / kCorsie, kFascio);
        for (std::size_t i = 0; i < giri; ++i) {
            for (std::size_t n = 0; n < kCorsie; ++n) {
                corsie[n] = static_cast<unsigned char>(corsie[n] + (testo[i * kCorsie + n] == c));
            }
        }
        for (const unsigned char corsia : corsie) tutti += corsia;
        testo.remove_prefix(giri * kCorsie);
        if (giri != 0) continue;
        tutti += static_cast<std::uint64_t>(std::count(testo.begin(), testo.end(), c));
        break;
    }
    return tutti;
}

}  // namespace

LettoreDati::LettoreDati(std::string_view testo, std::size_t pezzo)
    : testo_(testo), pezzo_(std::max<std::size_t>(pezzo, 1)), byte_(testo.size()) {
    Inizia(Conto::Righe);
}

LettoreDati::LettoreDati(FileAPezzi file, Conto conto)
    : file_(std::move(file)), pezzo_(kPezzo), byte_(file_->Byte()) {
    Inizia(conto);
}

void LettoreDati::Inizia(Conto conto) {
    vuoto_ = byte_ == 0;
    Riserva(static_cast<std::size_t>(std::min<std::uint64_t>(pezzo_, byte_)));
    Misure misure = Conta('\n', conto);
    if (!misure.ConTitolo) {
        aCapo_ = '\r';
        misure = Conta('\r', conto);
    }
    if (misure.ConTitolo) byte_ = misure.Fine;
    if (misure.Fine > misure.InizioRighe) {
        numero_ = static_cast<std::int32_t>(
            std::min<std::uint64_t>(misure.ACapo + 1, std::numeric_limits<std::int32_t>::max()));
    }
    if (!Riempi()) return;
    const std::string_view interi(p_, fine_);
    titolo_ = interi.substr(0, interi.find(aCapo_));
    p_ += titolo_.size() + 1;
    if (titolo_.ends_with('\r')) titolo_.pop_back();
}

std::size_t LettoreDati::Prendi(std::uint64_t da, std::span<char> dove) const {
    if (file_) return file_->Leggi(da, dove);
    return testo_.copy(dove.data(), dove.size(), static_cast<std::size_t>(da));
}

/// The first pass: where the heading ends, where the last line that is not empty, and how many line
/// ends stand between.
LettoreDati::Misure LettoreDati::Conta(char aCapo, Conto conto) {
    Misure misure;
    for (std::uint64_t da = 0; da < byte_;) {
        const std::size_t letti = Prendi(
            da, {inizio_, static_cast<std::size_t>(std::min<std::uint64_t>(pezzo_, byte_ - da))});
        if (letti == 0) break;
        const std::string_view pezzo(inizio_, letti);
        std::size_t righe = 0;
        if (!misure.ConTitolo) {
            righe = pezzo.find(aCapo);
            misure.ConTitolo = righe != std::string_view::npos;
            righe = std::min(righe, pezzo.size() - 1) + 1;
            misure.InizioRighe = misure.Fine = da + righe;
            if (misure.ConTitolo && conto == Conto::Niente) {
                misure.Fine = byte_;
                return misure;
            }
        }
        const std::size_t pieni = pezzo.find_last_not_of("\r\n") + 1;
        if (pieni > righe) {
            misure.ACapo += std::exchange(misure.Sospesi, 0) +
                            Quanti(pezzo.substr(righe, pieni - righe), aCapo);
            misure.Fine = da + pieni;
            righe = pieni;
        }
        misure.Sospesi += Quanti(pezzo.substr(righe), aCapo);
        da += letti;
    }
    return misure;
}

void LettoreDati::Riserva(std::size_t byte) {
    auto memoria = std::make_unique_for_overwrite<char[]>(byte + 2 * kBordo);
    std::memset(memoria.get(), 0, kBordo);
    if (memoria_) std::memcpy(memoria.get() + kBordo, inizio_, posti_);
    memoria_ = std::move(memoria);
    posti_ = byte;
    inizio_ = memoria_.get() + kBordo;
}

/// The next whole lines into the piece; false at the end.
bool LettoreDati::Riempi() {
    if (resto_ != 0) std::memmove(inizio_, fine_, resto_);
    p_ = fine_ = inizio_;
    for (;;) {
        if (resto_ == posti_) Riserva(posti_ + std::max(posti_, pezzo_));
        p_ = fine_ = inizio_;
        const std::size_t posto =
            static_cast<std::size_t>(std::min<std::uint64_t>(posti_ - resto_, byte_ - letti_));
        const std::size_t nuovi = Prendi(letti_, {inizio_ + resto_, std::min(posto, pezzo_)});
        if (nuovi == 0) break;
        letti_ += nuovi;
        resto_ += nuovi;
        const std::string_view pezzo(inizio_, resto_);
        const std::size_t ultimo = pezzo.substr(resto_ - nuovi).rfind(aCapo_);
        if (ultimo == std::string_view::npos) continue;
        fine_ = inizio_ + (resto_ - nuovi) + ultimo + 1;
        resto_ = static_cast<std::size_t>(inizio_ + resto_ - fine_);
        return true;
    }
    if (resto_ == 0) return false;
    inizio_[resto_] = aCapo_;  // the last line ends as the others do
    fine_ = inizio_ + std::exchange(resto_, 0) + 1;
    return true;
}

std::int32_t LettoreDati::LeggiRighe(std::span<double* const> colonne, std::int32_t da,
                                     std::int32_t a) {
    while (da < a && (p_ != fine_ || Riempi())) da = LeggiInteri(colonne, da, a);
    return da;
}

/// The lines of the piece, 64 bytes at a time: where the fields end is known before they are
/// read, and no step waits for the one before.
std::int32_t LettoreDati::LeggiInteri(std::span<double* const> colonne, std::int32_t da,
                                      std::int32_t a) {
    const char aCapo = aCapo_;
    const char* const fine = fine_;
    const char* campo = p_;
    std::ptrdiff_t riga = da;
    const auto prima = colonne.begin(), oltreUltima = colonne.end();
    auto colonna = prima;
    for (const char* p = campo;; p += 64) {
        for (std::uint64_t ultimi = Dove(p, ';', aCapo); ultimi != 0; ultimi &= ultimi - 1) {
            const char* const oltre = p + std::countr_zero(ultimi);
            if (*oltre == ';') {
                if (colonna != oltreUltima) {
                    if (oltre != campo) (*colonna)[riga] = Campo(campo, oltre);
                    ++colonna;
                }
                campo = oltre + 1;
                continue;
            }
            if (colonna != oltreUltima && oltre != campo) {
                const bool coppia = oltre[-1] == '\r' && oltre - campo > 1;
                (*colonna)[riga] = Campo(campo, oltre - (coppia ? 1 : 0));
            }
            campo = oltre + 1;
            colonna = prima;
            ++riga;
            if (riga == a || campo == fine) {
                p_ = campo;
                return static_cast<std::int32_t>(riga);
            }
        }
    }
}

LettoreDati ApriLog(const std::filesystem::path& percorso, Conto conto) {
    constexpr std::size_t kInizio = std::size_t{1} << 16;
    constexpr std::int64_t kGrande = std::int64_t{16} << 20;
    try {
        FileAPezzi file(percorso, Lavoro::LeggereLog);
        // A huge file without a line in all its beginning is no log: nobody waits for it to be
        // read.
        if (file.Byte() > kGrande) {
            std::string inizio(kInizio, '\0');
            inizio.resize(file.Leggi(0, inizio));
            if (inizio.find_first_of("\r\n") == std::string::npos ||
                inizio.find('\0') != std::string::npos) {
                platform().MsgBox(TestoDaPercorso(percorso) + "\r\n" + Testo(Voce::NonUnLog),
                                  Buttons::Ok, Icon::Critical, platform().ExeName());
                return LettoreDati(std::string_view());
            }
        }
        // Columns need more room than the text: a file that has none even for that is not begun.
        std::string().reserve(static_cast<std::size_t>(file.Byte()));
        return LettoreDati(std::move(file), conto);
    } catch (const ErroreRuntime&) {
        return LettoreDati(std::string_view());
    } catch (const std::bad_alloc&) {
        return LettoreDati(std::string_view());
    }
}

}  // namespace lapvane
