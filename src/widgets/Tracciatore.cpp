#include "widgets/Tracciatore.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define LAPVANE_SSE2
#endif

namespace lapvane {

namespace {

constexpr int kTessera = 8;              // pixels of one mark
constexpr int kBordo = 16;               // pixels around the field; a whole number of marks
constexpr float kScalinoMassimo = 0.3F;  // pixels; a corner this slight needs no round join
constexpr double kPiuPiccolo = 1e-6;     // pixels; shorter is a point
constexpr int kScostamento = 1 << 14;    // makes every coordinate positive
constexpr int kFasi = 32;                // places of a line inside a pixel that are told apart
constexpr int kLivelli = 39;             // slopes that are told apart, cosines 90/128 to 128/128
constexpr int kPrimoLivello = 90;
constexpr std::size_t kProfiliMassimi = 8;

/// The integer below; std::floor is a function call on older processors.
int Sotto(double x) {
    return static_cast<int>(x + kScostamento) - kScostamento;
}

/// First pixel whose middle is not before `x`.
int PrimoPixel(double x) {
    return Sotto(x + 0.5);
}

std::uint8_t Copertura(float parte) {
    return static_cast<std::uint8_t>(std::clamp(parte, 0.0F, 1.0F) * 255.0F + 0.5F);
}

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
    const __m128i pieno = _mm_set1_epi16(255);
    const __m128i tinta =
        _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<std::int32_t>(colore)), zero);
    const auto mescola = [&](__m128i sotto, __m128i peso) {
        const __m128i t =
            _mm_add_epi16(_mm_add_epi16(_mm_mullo_epi16(sotto, _mm_sub_epi16(pieno, peso)),
                                        _mm_mullo_epi16(tinta, peso)),
                          cento);
        return _mm_srli_epi16(_mm_add_epi16(t, _mm_srli_epi16(t, 8)), 8);
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

/// Raises a row of the mask to a coverage that is higher.
template <int Pixel>
void AlzaFila(std::uint8_t* m, const std::uint8_t* coperti) {
#ifdef LAPVANE_SSE2
    static_assert(Pixel == 8 || Pixel == 16);
    auto* const qui = reinterpret_cast<__m128i*>(m);
    const auto* const loro = reinterpret_cast<const __m128i*>(coperti);
    if constexpr (Pixel == 8) {
        _mm_storel_epi64(qui, _mm_max_epu8(_mm_loadl_epi64(qui), _mm_loadl_epi64(loro)));
    } else {
        _mm_storeu_si128(qui, _mm_max_epu8(_mm_loadu_si128(qui), _mm_loadu_si128(loro)));
    }
#else
    for (int n = 0; n < Pixel; ++n) m[n] = std::max(m[n], coperti[n]);
#endif
}

}  // namespace

/// A segment along its longer axis: "lungo" runs along that axis, "traverso" across it. The places
/// are those of the mask.
struct Tracciatore::Segmento {
    bool Alto = false;     ///< the longer axis is y
    bool Avanti = true;    ///< drawn in the direction in which the coordinate grows
    bool TestaDa = false;  ///< round end; without it the segment goes on in its neighbour
    bool TestaA = false;
    double Da = 0.0;  ///< along, Da <= A
    double A = 0.0;
    double TraversoDa = 0.0;
    double TraversoA = 0.0;
    double Pendenza = 0.0;  ///< across per along
    float Lunghezza = 0.0F;
    float Coseno = 1.0F;
    float Seno = 0.0F;
    float Mezza = 0.0F;  ///< across, from the middle to where the coverage ends
};

/// The coverage across a line of one width, for all slopes and places inside a pixel.
struct Tracciatore::Profilo {
    double Larghezza = 0.0;
    std::array<float, kLivelli> Mezza{};  ///< across, as in a segment
    std::array<std::array<std::array<std::uint8_t, kBordo>, kFasi>, kLivelli> Copertura{};
};

Tracciatore::Tracciatore() = default;
Tracciatore::~Tracciatore() = default;

const Tracciatore::Profilo& Tracciatore::ProfiloDi(double larghezza) {
    for (const auto& p : profili_) {
        if (p->Larghezza == larghezza) return *p;
    }
    if (profili_.size() == kProfiliMassimi) profili_.clear();
    auto p = std::make_unique<Profilo>();
    p->Larghezza = larghezza;
    for (std::size_t livello = 0; livello < kLivelli; ++livello) {
        const float coseno = static_cast<float>(kPrimoLivello + static_cast<int>(livello)) / 128.0F;
        const float mezza = raggio_ / coseno;
        p->Mezza[livello] = mezza;
        for (std::size_t fase = 0; fase < kFasi; ++fase) {
            float d = 1.0F - static_cast<float>(fase) / kFasi - mezza;
            for (std::uint8_t& c : p->Copertura[livello][fase]) {
                c = lapvane::Copertura(raggio_ - std::fabs(d) * coseno);
                d += 1.0F;
            }
        }
    }
    profili_.push_back(std::move(p));
    return *profili_.back();
}

void Tracciatore::Inizia(const Tela& tela, const Campo& campo) {
    tela_ = tela;
    campo_ = campo;
    larghezza_ = std::max(0, campo.Destra - campo.Sinistra) + 2 * kBordo;
    altezza_ = std::max(0, campo.Basso - campo.Alto) + 2 * kBordo;
    const auto tessere = static_cast<std::size_t>(larghezza_ / kTessera + 1);
    passo_ = tessere * kTessera;
    passoTessere_ = (tessere + 63) / 64;
    maschera_.resize(std::max(maschera_.size(), passo_ * static_cast<std::size_t>(altezza_)));
    tessere_.resize(std::max(tessere_.size(), passoTessere_ * static_cast<std::size_t>(altezza_)));
}

Tracciatore::Segmento Tracciatore::Prepara(const PuntoGrafico& a, const PuntoGrafico& b) const {
    Segmento s;
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    const double x = a.X - campo_.Sinistra + kBordo;
    const double y = a.Y - campo_.Alto + kBordo;
    s.Alto = std::fabs(dy) > std::fabs(dx);
    const double lungo = s.Alto ? dy : dx;
    const double traverso = s.Alto ? dx : dy;
    s.Da = s.Alto ? y : x;
    s.TraversoDa = s.Alto ? x : y;
    s.A = s.Da + lungo;
    s.TraversoA = s.TraversoDa + traverso;
    s.Avanti = lungo >= 0.0;
    if (!s.Avanti) {
        std::swap(s.Da, s.A);
        std::swap(s.TraversoDa, s.TraversoA);
    }
    const double lunghezza = std::sqrt(dx * dx + dy * dy);
    s.Lunghezza = static_cast<float>(lunghezza);
    if (lunghezza >= kPiuPiccolo) {
        s.Pendenza = traverso / lungo;
        s.Coseno = static_cast<float>(std::fabs(lungo) / lunghezza);
        s.Seno = static_cast<float>(s.Pendenza) * s.Coseno;
    }
    s.Mezza = raggio_ / s.Coseno;
    return s;
}

/// Marks the pixels of one row or column.
template <bool Alto>
void Tracciatore::Segna(int lungo, int daTraverso, int aTraverso) {
    std::uint64_t* const tessere = tessere_.data();
    const std::size_t passo = passoTessere_;
    const auto segna = [&](int x, int y) {
        const auto tessera = static_cast<std::size_t>(x / kTessera);
        tessere[static_cast<std::size_t>(y) * passo + tessera / 64] |= std::uint64_t{1}
                                                                       << (tessera % 64);
    };
    if constexpr (Alto) {
        for (int x = daTraverso; x < aTraverso; x += kTessera) segna(x, lungo);
        segna(aTraverso, lungo);
    } else {
        for (int y = daTraverso; y <= aTraverso; ++y) segna(lungo, y);
    }
}

/// Rows or columns `da` to `a` where the ends of the segment do not show, for lines that are not
/// broader than `Pixel` across.
template <bool Alto, int Pixel>
void Tracciatore::CopriColProfilo(const Segmento& s, int da, int a) {
    constexpr double kUno = 65536.0;
    constexpr int kBitFase = 16 - std::countr_zero(static_cast<unsigned>(kFasi));
    const auto livello = static_cast<std::size_t>(
        std::clamp(static_cast<int>(s.Coseno * 128.0F + 0.5F) - kPrimoLivello, 0, kLivelli - 1));
    const auto& profilo = profilo_->Copertura[livello];
    const double mezza = static_cast<double>(profilo_->Mezza[livello]);
    const int numero = std::min(Pixel, static_cast<int>(2.0 * mezza) + 1);
    const int limite = (Alto ? larghezza_ : altezza_) - Pixel;
    const auto passo = static_cast<std::int32_t>(s.Pendenza * kUno);
    // Half a phase more, so that cutting off the rest rounds.
    auto posto = static_cast<std::int32_t>(
        (s.TraversoDa + s.Pendenza * (da + 0.5 - s.Da) - mezza + 0.5 + 0.5 / kFasi) * kUno);
    std::uint8_t* const maschera = maschera_.data();
    const std::size_t riga = passo_;
    for (int lungo = da; lungo <= a; ++lungo, posto += passo) {
        const int primo = posto >> 16;
        if (primo < 0 || primo > limite) continue;  // not even near the field
        Segna<Alto>(lungo, primo, primo + numero - 1);
        const std::uint8_t* const c = profilo[(posto & 0xFFFF) >> kBitFase].data();
        if constexpr (Alto) {
            std::uint8_t* const m = maschera + static_cast<std::size_t>(lungo) * riga + primo;
            AlzaFila<Pixel>(m, c);
        } else {
            std::uint8_t* m = maschera + static_cast<std::size_t>(primo) * riga + lungo;
            for (int n = 0; n < numero; ++n, m += riga) *m = std::max(*m, c[n]);
        }
    }
}

/// The same for a line of any width.
template <bool Alto>
void Tracciatore::CopriCorpo(const Segmento& s, int da, int a) {
    const int fine = (Alto ? larghezza_ : altezza_) - 1;
    const std::size_t oltre = Alto ? 1 : passo_;
    for (int lungo = da; lungo <= a; ++lungo) {
        const double mezzo = s.TraversoDa + s.Pendenza * (lungo + 0.5 - s.Da);
        const int primo = std::max(0, PrimoPixel(mezzo - static_cast<double>(s.Mezza)));
        const int ultimo = std::min(fine, PrimoPixel(mezzo + static_cast<double>(s.Mezza)) - 1);
        if (primo > ultimo) continue;
        Segna<Alto>(lungo, primo, ultimo);
        std::uint8_t* m = maschera_.data() +
                          static_cast<std::size_t>(Alto ? lungo : primo) * passo_ +
                          static_cast<std::size_t>(Alto ? primo : lungo);
        float distanza = static_cast<float>(primo + 0.5 - mezzo) * s.Coseno;
        for (int n = primo; n <= ultimo; ++n, m += oltre, distanza += s.Coseno) {
            *m = std::max(*m, Copertura(raggio_ - std::fabs(distanza)));
        }
    }
}

/// Rows or columns `da` to `a` around an end.
template <bool Alto>
void Tracciatore::CopriTesta(const Segmento& s, int da, int a) {
    const int fine = (Alto ? larghezza_ : altezza_) - 1;
    const std::size_t oltre = Alto ? 1 : passo_;
    const double raggio = static_cast<double>(raggio_);
    const double minimo = std::min(s.TraversoDa, s.TraversoA) - raggio;
    const double massimo = std::max(s.TraversoDa, s.TraversoA) + raggio;
    for (int lungo = da; lungo <= a; ++lungo) {
        const double avanti = lungo + 0.5 - s.Da;
        const double mezzo = s.TraversoDa + s.Pendenza * avanti;
        const double mezza = static_cast<double>(s.Mezza);
        const int primo = std::max(0, PrimoPixel(std::max(mezzo - mezza, minimo)));
        const int ultimo = std::min(fine, PrimoPixel(std::min(mezzo + mezza, massimo)) - 1);
        if (primo > ultimo) continue;
        Segna<Alto>(lungo, primo, ultimo);
        std::uint8_t* m = maschera_.data() +
                          static_cast<std::size_t>(Alto ? lungo : primo) * passo_ +
                          static_cast<std::size_t>(Alto ? primo : lungo);
        float distanza = static_cast<float>(primo + 0.5 - mezzo) * s.Coseno;
        float cammino = static_cast<float>(avanti) * s.Coseno +
                        static_cast<float>(primo + 0.5 - s.TraversoDa) * s.Seno;
        for (int n = primo; n <= ultimo; ++n, m += oltre) {
            float d = std::fabs(distanza);
            if (s.TestaDa && cammino < 0.0F) {
                d = std::sqrt(d * d + cammino * cammino);
            } else if (s.TestaA && cammino > s.Lunghezza) {
                const float resto = cammino - s.Lunghezza;
                d = std::sqrt(d * d + resto * resto);
            }
            *m = std::max(*m, Copertura(raggio_ - d));
            distanza += s.Coseno;
            cammino += s.Seno;
        }
    }
}

template <bool Alto>
void Tracciatore::CopriLungo(const Segmento& s) {
    const double raggio = static_cast<double>(raggio_);
    const double testa = raggio * std::fabs(static_cast<double>(s.Seno));
    const int fine = (Alto ? altezza_ : larghezza_) - 1;
    const int da = std::max(0, PrimoPixel(s.TestaDa ? s.Da - raggio : s.Da));
    const int a = std::min(fine, PrimoPixel(s.TestaA ? s.A + raggio : s.A) - 1);
    if (da > a) return;
    const double cima = std::min(s.TraversoDa, s.TraversoA) - static_cast<double>(s.Mezza);
    const double fondo = std::max(s.TraversoDa, s.TraversoA) + static_cast<double>(s.Mezza);
    primaRiga_ = std::min(primaRiga_, Alto ? da : std::max(0, Sotto(cima) - 1));
    ultimaRiga_ = std::max(ultimaRiga_, Alto ? a : std::min(altezza_ - 1, Sotto(fondo) + 1));
    const int corpoDa = std::clamp(PrimoPixel(s.TestaDa ? s.Da + testa : s.Da), da, a + 1);
    const int corpoA = std::clamp(PrimoPixel(s.TestaA ? s.A - testa : s.A) - 1, corpoDa - 1, a);
    CopriTesta<Alto>(s, da, corpoDa - 1);
    // One pixel of play: the profile's slope is not quite the segment's own.
    if (s.Mezza < kTessera / 2 - 1) {
        CopriColProfilo<Alto, kTessera>(s, corpoDa, corpoA);
    } else if (s.Mezza < kBordo / 2 - 1) {
        CopriColProfilo<Alto, kBordo>(s, corpoDa, corpoA);
    } else {
        CopriCorpo<Alto>(s, corpoDa, corpoA);
    }
    CopriTesta<Alto>(s, corpoA + 1, a);
}

void Tracciatore::Copri(const Segmento& s) {
    if (s.Alto) {
        CopriLungo<true>(s);
    } else {
        CopriLungo<false>(s);
    }
}

void Tracciatore::Linea(std::span<const PuntoGrafico> punti, double larghezza,
                        std::uint32_t colore) {
    if (punti.empty()) return;
    raggio_ = static_cast<float>(std::max(1.0, larghezza) / 2.0 + 0.5);
    profilo_ = &ProfiloDi(larghezza);
    primaRiga_ = altezza_;
    ultimaRiga_ = -1;
    Segmento prima = Prepara(punti[0], punti[0]);
    bool aperta = false;
    for (std::size_t i = 1; i < punti.size(); ++i) {
        Segmento s = Prepara(punti[i - 1], punti[i]);
        if (static_cast<double>(s.Lunghezza) < kPiuPiccolo) continue;
        // A corner that both segments cut along the same column closes by itself, unless the line
        // turns so much that one of them is cut visibly higher.
        const bool tonda = !aperta || s.Alto != prima.Alto || s.Avanti != prima.Avanti ||
                           std::fabs(s.Mezza - prima.Mezza) > kScalinoMassimo;
        if (aperta) {
            (prima.Avanti ? prima.TestaA : prima.TestaDa) = tonda;
            Copri(prima);
        }
        (s.Avanti ? s.TestaDa : s.TestaA) = tonda;
        prima = s;
        aperta = true;
    }
    if (!aperta) prima.TestaDa = true;
    (prima.Avanti ? prima.TestaA : prima.TestaDa) = true;
    Copri(prima);
    Stendi(colore);
}

/// Lays the line over the picture and leaves the mask empty.
void Tracciatore::Stendi(std::uint32_t colore) {
    colore |= 0xFF000000U;
    for (int y = primaRiga_; y <= ultimaRiga_; ++y) {
        const bool dentro = y >= kBordo && y < altezza_ - kBordo;
        std::uint32_t* const pixel =
            dentro ? tela_.Pixel + (campo_.Alto + y - kBordo) * tela_.Passo + campo_.Sinistra
                   : nullptr;
        std::uint8_t* const maschera = maschera_.data() + static_cast<std::size_t>(y) * passo_;
        std::uint64_t* const segnate =
            tessere_.data() + static_cast<std::size_t>(y) * passoTessere_;
        for (std::size_t parola = 0; parola < passoTessere_; ++parola) {
            std::uint64_t tessere = segnate[parola];
            if (tessere == 0) continue;
            segnate[parola] = 0;
            for (; tessere != 0; tessere &= tessere - 1) {
                const int x =
                    (static_cast<int>(parola) * 64 + std::countr_zero(tessere)) * kTessera;
                std::uint8_t* const m = maschera + x;
                const int resto = larghezza_ - kBordo - x;
                if (!dentro || x < kBordo || resto <= 0) {
                    // the border
                } else if (resto >= kTessera) {
                    StendiTessera(pixel + (x - kBordo), m, colore);
                } else {
                    StendiPixel(pixel + (x - kBordo), m, colore, resto);
                }
                std::memset(m, 0, kTessera);
            }
        }
    }
}

}  // namespace lapvane
