#include "widgets/Tracciatore.h"

#include <QThreadPool>
#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstring>
#include <thread>
#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define LAPVANE_SSE2
#endif

#include "widgets/Stesura.h"

namespace lapvane {

namespace {

constexpr float kScalinoMassimo = 0.3F;  // pixels; a corner this slight needs no round join
constexpr double kPiuPiccolo = 1e-6;     // pixels; shorter is a point
constexpr int kScostamento = 1 << 14;    // makes every coordinate positive
constexpr int kFasi = 32;                // places of a line inside a pixel that are told apart
constexpr int kLivelli = 39;             // slopes that are told apart, cosines 90/128 to 128/128
constexpr int kPrimoLivello = 90;
constexpr std::size_t kProfiliMassimi = 8;
constexpr int kRigheFascia = 32;  // their pixels and their mask stay in the second level cache
constexpr std::size_t kSegmentiThread = 500;  // fewer are drawn before another thread is awake

/// The integer below; std::floor is a function call on older processors.
int Sotto(double x) {
    return static_cast<int>(x + kScostamento) - kScostamento;
}

/// First pixel whose middle is not before `x`.
int PrimoPixel(double x) {
    return Sotto(x + 0.5);
}

std::uint8_t Copertura(float parte) {
    // Never negative, so that cutting off rounds; std::lround is a function call.
    constexpr float kMezzo = 0.5F;
    return static_cast<std::uint8_t>(std::clamp(parte, 0.0F, 1.0F) * 255.0F + kMezzo);
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
/// are those of the mask: the field's, with a border at the left.
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

/// How a line looks.
struct Tracciatore::Stile {
    float Raggio = 0.0F;  ///< from the line's middle to where its coverage ends
    std::uint32_t Colore = 0;
    std::shared_ptr<const Profilo> Sezione;
};

struct Tracciatore::LineaPronta {
    Stile Aspetto;
    std::size_t Punti = 0;  ///< the first of its points ...
    std::size_t QuantiPunti = 0;
    std::size_t Da = 0;  ///< segments up to but without `A`
    std::size_t A = 0;
};

/// What the threads of one picture share: the lines' segments first, then the bands.
struct Tracciatore::Lavoro {
    int Fasce = 0;
    std::atomic<std::size_t> ProssimaLinea = 0;
    std::atomic<std::size_t> Pronte = 0;
    std::atomic<int> ProssimaFascia = 0;
};

/// Rows that a segment may touch, both included.
struct Tracciatore::Righe {
    int Prima = 0;
    int Ultima = -1;
};

/// Draws the lines of some rows. The mask is those rows with a border left and right, so that a
/// line's breadth need not be cut at the field's edge.
class Tracciatore::Fascia {
 public:
    void Disegna(const Tracciatore& t, int fascia);

 private:
    class Testa;

    void Copri(const Segmento& s);
    template <bool Alto>
    void CopriLungo(const Segmento& s);
    template <bool Alto>
    void CopriTesta(const Segmento& s, int da, int a);
    template <bool Alto>
    void CopriCorpo(const Segmento& s, int da, int a);
    template <bool Alto, int Pixel>
    void CopriColProfilo(const Segmento& s, int da, int a);
    std::uint64_t* Marcate(int y) {
        return tessere_.data() + static_cast<std::size_t>(y - primaRiga_) * passoTessere_;
    }
    /// Marks the pixels of a row.
    void Segna(int y, int da, int a) {
        std::uint64_t* const riga = Marcate(y);
        const unsigned prima = static_cast<unsigned>(da) / kTessera;
        const unsigned ultima = static_cast<unsigned>(a) / kTessera;
        riga[prima / 64] |= std::uint64_t{1} << (prima % 64);
        for (unsigned n = prima + 1; n <= ultima; ++n) riga[n / 64] |= std::uint64_t{1} << (n % 64);
    }
    /// The part of `da` to `a` along (or across) a segment that lies in the band, when these are
    /// rows; else in the mask.
    template <bool Righe>
    int Prima(int da) const {
        return std::max(da, Righe ? primaRiga_ : 0);
    }
    template <bool Righe>
    int Ultima(int a) const {
        return std::min(a, Righe ? ultimaRiga_ : larghezza_ - 1);
    }
    std::uint8_t* Maschera(int x, int y) {
        return maschera_.data() + static_cast<std::size_t>(y - primaRiga_) * passo_ +
               static_cast<std::size_t>(x);
    }
    void Stendi(const Tracciatore& t, const Righe& righe);
    void StendiFondo(const Tracciatore& t) const;
    void Copia(const Tracciatore& t) const;

    int larghezza_ = 0;  ///< with both borders
    int primaRiga_ = 0;  ///< of the field
    int ultimaRiga_ = -1;
    std::size_t passo_ = 0;         ///< bytes from row to row
    std::size_t passoTessere_ = 0;  ///< words from row to row of the marks
    std::vector<std::uint8_t> maschera_;
    std::vector<std::uint64_t> tessere_;  ///< one bit for eight pixels that may be covered
    const Stile* stile_ = nullptr;
};

Tracciatore::Tracciatore(bool semplice) : semplice_(semplice) {}
Tracciatore::~Tracciatore() = default;

std::shared_ptr<const Tracciatore::Profilo> Tracciatore::ProfiloDi(double larghezza) {
    for (const auto& p : profili_) {
        if (p->Larghezza == larghezza) return p;
    }
    if (profili_.size() == kProfiliMassimi) profili_.clear();
    const auto raggio = static_cast<float>(larghezza / 2.0 + 0.5);
    auto p = std::make_shared<Profilo>();
    p->Larghezza = larghezza;
    for (std::size_t livello = 0; livello < kLivelli; ++livello) {
        const float coseno = static_cast<float>(kPrimoLivello + static_cast<int>(livello)) / 128.0F;
        const float mezza = raggio / coseno;
        p->Mezza[livello] = mezza;
        for (std::size_t fase = 0; fase < kFasi; ++fase) {
            float d = 1.0F - static_cast<float>(fase) / kFasi - mezza;
            for (std::uint8_t& c : p->Copertura[livello][fase]) {
                c = lapvane::Copertura(raggio - std::fabs(d) * coseno);
                d += 1.0F;
            }
        }
    }
    profili_.push_back(p);
    return p;
}

void Tracciatore::Inizia(const Tela& tela, const Campo& campo) {
    tela_ = tela;
    campo_ = campo;
    fondo_ = {};
    copia_ = {};
    punti_.clear();
    linee_.clear();
}

Tracciatore::Segmento Tracciatore::Prepara(const PuntoGrafico& a, const PuntoGrafico& b,
                                           float raggio) const {
    Segmento s;
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    const double x = a.X - campo_.Sinistra + kBordo;
    const double y = a.Y - campo_.Alto;
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
    s.Mezza = raggio / s.Coseno;
    return s;
}

void Tracciatore::Aggiungi(LineaPronta& linea, const Segmento& s) {
    const auto [cima, fondo] =
        s.Alto ? std::minmax(s.Da, s.A) : std::minmax(s.TraversoDa, s.TraversoA);
    const double oltre = static_cast<double>(s.Alto ? linea.Aspetto.Raggio : s.Mezza);
    segmenti_[linea.A] = s;
    righe_[linea.A] = {Sotto(cima - oltre) - 1, Sotto(fondo + oltre) + 1};
    ++linea.A;
}

void Tracciatore::Linea(std::span<const PuntoGrafico> punti, double larghezza,
                        std::uint32_t colore) {
    if (punti.empty()) return;
    larghezza = std::max(1.0, larghezza);
    LineaPronta linea;
    linea.Aspetto = {static_cast<float>(larghezza / 2.0 + 0.5), colore | 0xFF000000U,
                     ProfiloDi(larghezza)};
    // A line has a segment less than points, but one at least.
    linea.Punti = linea.Da = linea.A = punti_.size();
    linea.QuantiPunti = punti.size();
    punti_.insert(punti_.end(), punti.begin(), punti.end());
    linee_.push_back(std::move(linea));
}

/// The segments of a line, in their own places: lines are prepared side by side.
void Tracciatore::Prepara(LineaPronta& linea) {
    const std::span punti = std::span(punti_).subspan(linea.Punti, linea.QuantiPunti);
    const float raggio = linea.Aspetto.Raggio;
    Segmento prima = Prepara(punti[0], punti[0], raggio);
    bool aperta = false;
    for (std::size_t i = 1; i < punti.size(); ++i) {
        Segmento s = Prepara(punti[i - 1], punti[i], raggio);
        if (static_cast<double>(s.Lunghezza) < kPiuPiccolo) continue;
        // A corner that both segments cut along the same column closes by itself, unless the line
        // turns so much that one of them is cut visibly higher.
        const bool tonda = !aperta || s.Alto != prima.Alto || s.Avanti != prima.Avanti ||
                           std::fabs(s.Mezza - prima.Mezza) > kScalinoMassimo;
        if (aperta) {
            (prima.Avanti ? prima.TestaA : prima.TestaDa) = tonda;
            Aggiungi(linea, prima);
        }
        (s.Avanti ? s.TestaDa : s.TestaA) = tonda;
        prima = s;
        aperta = true;
    }
    if (!aperta) prima.TestaDa = true;
    (prima.Avanti ? prima.TestaA : prima.TestaDa) = true;
    Aggiungi(linea, prima);
}

/// One thread's part.
void Tracciatore::Esegui(Lavoro& lavoro, Fascia& fascia) {
    const std::size_t linee = linee_.size();
    for (std::size_t n = lavoro.ProssimaLinea++; n < linee; n = lavoro.ProssimaLinea++) {
        Prepara(linee_[n]);
        lavoro.Pronte.fetch_add(1, std::memory_order_release);
    }
    // Another thread is about to end its last line: some microseconds.
    while (lavoro.Pronte.load(std::memory_order_acquire) < linee) std::this_thread::yield();
    for (int n = lavoro.ProssimaFascia++; n < lavoro.Fasce; n = lavoro.ProssimaFascia++) {
        fascia.Disegna(*this, n);
    }
}

void Tracciatore::Traccia(int thread) {
    const int righe = campo_.Basso - campo_.Alto;
    const bool niente = linee_.empty() && fondo_.empty() && copia_.Pixel == nullptr;
    if (niente || righe <= 0 || campo_.Destra <= campo_.Sinistra) return;
    Lavoro lavoro;
    lavoro.Fasce = (righe + kRigheFascia - 1) / kRigheFascia;
    segmenti_.resize(std::max(segmenti_.size(), punti_.size()));
    righe_.resize(segmenti_.size());
    if (thread <= 0) {
        thread =
            punti_.size() < kSegmentiThread ? 1 : QThreadPool::globalInstance()->maxThreadCount();
    }
    thread = std::min(thread, lavoro.Fasce);
    while (fasce_.size() < static_cast<std::size_t>(thread)) {
        fasce_.push_back(std::make_unique<Fascia>());
    }
    int altri = 0;
    for (; altri + 1 < thread; ++altri) {
        Fascia* const sua = fasce_[static_cast<std::size_t>(altri) + 1].get();
        // A pool that is busy elsewhere helps nobody; this thread then does it all.
        if (!QThreadPool::globalInstance()->tryStart([this, &lavoro, sua] {
                Esegui(lavoro, *sua);
                pronti_.release();
            })) {
            break;
        }
    }
    Esegui(lavoro, *fasce_[0]);
    pronti_.acquire(altri);
}

void Tracciatore::Fascia::Disegna(const Tracciatore& t, int fascia) {
    const Campo& campo = t.campo_;
    larghezza_ = campo.Destra - campo.Sinistra + 2 * kBordo;
    primaRiga_ = fascia * kRigheFascia;
    ultimaRiga_ = std::min(primaRiga_ + kRigheFascia, campo.Basso - campo.Alto) - 1;
    const auto tessere = static_cast<std::size_t>(larghezza_) / kTessera + 1;
    passo_ = tessere * kTessera;
    passoTessere_ = (tessere + 63) / 64;
    maschera_.resize(std::max(maschera_.size(), passo_ * kRigheFascia));
    tessere_.resize(std::max(tessere_.size(), passoTessere_ * kRigheFascia));
    StendiFondo(t);
    for (const LineaPronta& linea : t.linee_) {
        stile_ = &linea.Aspetto;
        Righe righe{ultimaRiga_ + 1, primaRiga_ - 1};
        for (std::size_t n = linea.Da; n < linea.A; ++n) {
            const Righe& sue = t.righe_[n];
            if (sue.Prima > ultimaRiga_ || sue.Ultima < primaRiga_) continue;
            Copri(t.segmenti_[n]);
            righe.Prima = std::min(righe.Prima, std::max(sue.Prima, primaRiga_));
            righe.Ultima = std::max(righe.Ultima, std::min(sue.Ultima, ultimaRiga_));
        }
        Stendi(t, righe);
    }
    if (t.copia_.Pixel != nullptr) Copia(t);
}

void Tracciatore::Fascia::StendiFondo(const Tracciatore& t) const {
    const Campo& campo = t.campo_;
    for (const Macchia& m : t.fondo_) {
        const int sinistra = std::max(m.Dove.Sinistra, campo.Sinistra);
        const int destra = std::min(m.Dove.Destra, campo.Destra);
        if (sinistra >= destra) continue;
        const int fine = std::min(m.Dove.Basso, campo.Alto + ultimaRiga_ + 1);
        for (int y = std::max(m.Dove.Alto, campo.Alto + primaRiga_); y < fine; ++y) {
            std::fill_n(t.tela_.Pixel + y * t.tela_.Passo + sinistra, destra - sinistra,
                        m.Colore | 0xFF000000U);
        }
    }
}

void Tracciatore::Fascia::Copia(const Tracciatore& t) const {
    const auto byte = static_cast<std::size_t>(t.campo_.Destra - t.campo_.Sinistra) * 4;
    for (int y = t.campo_.Alto + primaRiga_; y <= t.campo_.Alto + ultimaRiga_; ++y) {
        std::memcpy(t.copia_.Pixel + y * t.copia_.Passo + t.campo_.Sinistra,
                    t.tela_.Pixel + y * t.tela_.Passo + t.campo_.Sinistra, byte);
    }
}

/// Rows or columns `da` to `a` where the ends of the segment do not show, for lines that are not
/// broader than `Pixel` across.
template <bool Alto, int Pixel>
void Tracciatore::Fascia::CopriColProfilo(const Segmento& s, int da, int a) {
    constexpr double kUno = 65536.0;
    constexpr int kBitFase = 16 - std::countr_zero(static_cast<unsigned>(kFasi));
    const Profilo& profilo = *stile_->Sezione;
    const auto livello = static_cast<std::size_t>(std::clamp(
        Sotto(static_cast<double>(s.Coseno) * 128.0 + 0.5) - kPrimoLivello, 0, kLivelli - 1));
    const auto& copertura = profilo.Copertura[livello];
    const double mezza = static_cast<double>(profilo.Mezza[livello]);
    const int numero = std::min(Pixel, static_cast<int>(2.0 * mezza) + 1);
    const auto passo = static_cast<std::int64_t>(s.Pendenza * kUno);
    // Half a phase more, so that cutting off the rest rounds. Reckoned from `da` whatever the band:
    // all bands of a segment cut off the same.
    auto posto = static_cast<std::int64_t>(
        (s.TraversoDa + s.Pendenza * (da + 0.5 - s.Da) - mezza + 0.5 + 0.5 / kFasi) * kUno);
    const int inizio = Prima<Alto>(da);
    const int fine = Ultima<Alto>(a);
    posto += passo * (inizio - da);
    for (int lungo = inizio; lungo <= fine; ++lungo, posto += passo) {
        const auto primo = static_cast<int>(posto >> 16);
        const std::uint8_t* const c = copertura[(posto & 0xFFFF) >> kBitFase].data();
        if constexpr (Alto) {
            if (primo < 0 || primo > larghezza_ - Pixel) continue;  // not even near the field
            Segna(lungo, primo, primo + numero - 1);
            AlzaFila<Pixel>(Maschera(primo, lungo), c);
        } else {
            const int da2 = std::max(primo, primaRiga_);
            const int a2 = std::min(primo + numero - 1, ultimaRiga_);
            if (da2 > a2) continue;
            std::uint8_t* m = Maschera(lungo, da2);
            for (int y = da2; y <= a2; ++y, m += passo_) {
                Segna(y, lungo, lungo);
                *m = std::max(*m, c[y - primo]);
            }
        }
    }
}

/// The same for a line of any width.
template <bool Alto>
void Tracciatore::Fascia::CopriCorpo(const Segmento& s, int da, int a) {
    const std::size_t oltre = Alto ? 1 : passo_;
    const double mezza = static_cast<double>(s.Mezza);
    for (int lungo = Prima<Alto>(da); lungo <= Ultima<Alto>(a); ++lungo) {
        const double mezzo = s.TraversoDa + s.Pendenza * (lungo + 0.5 - s.Da);
        const int primo = Prima<!Alto>(PrimoPixel(mezzo - mezza));
        const int ultimo = Ultima<!Alto>(PrimoPixel(mezzo + mezza) - 1);
        if (primo > ultimo) continue;
        if constexpr (Alto) Segna(lungo, primo, ultimo);
        std::uint8_t* m = Alto ? Maschera(primo, lungo) : Maschera(lungo, primo);
        for (int n = primo; n <= ultimo; ++n, m += oltre) {
            if constexpr (!Alto) Segna(n, lungo, lungo);
            const float distanza = static_cast<float>(n + 0.5 - mezzo) * s.Coseno;
            *m = std::max(*m, Copertura(stile_->Raggio - std::fabs(distanza)));
        }
    }
}

/// Coverage of four pixels around an end, `n` being the place of the first across the segment.
class Tracciatore::Fascia::Testa {
 public:
    Testa(const Segmento& s, float raggio, double avanti)
        : s_(s),
          raggio_(raggio),
          mezzo_(s.TraversoDa + s.Pendenza * avanti),
          lungo_(static_cast<float>(avanti) * s.Coseno) {}

    double Mezzo() const { return mezzo_; }
#ifdef LAPVANE_SSE2
    /// A byte each, beginning at the lowest.
    std::uint32_t Quattro(int n) const {
        const __m128i posti = _mm_add_epi32(_mm_set1_epi32(n), _mm_setr_epi32(0, 1, 2, 3));
        const __m128d meta = _mm_set1_pd(0.5);
        const __m128d basso = _mm_add_pd(_mm_cvtepi32_pd(posti), meta);
        const __m128d alto = _mm_add_pd(_mm_cvtepi32_pd(_mm_srli_si128(posti, 8)), meta);
        const auto meno = [&](double quanto) {
            const __m128d q = _mm_set1_pd(quanto);
            return _mm_movelh_ps(_mm_cvtpd_ps(_mm_sub_pd(basso, q)),
                                 _mm_cvtpd_ps(_mm_sub_pd(alto, q)));
        };
        const __m128 zero = _mm_setzero_ps();
        const __m128 d =
            _mm_andnot_ps(_mm_set1_ps(-0.0F), _mm_mul_ps(meno(mezzo_), _mm_set1_ps(s_.Coseno)));
        const __m128 cammino =
            _mm_add_ps(_mm_set1_ps(lungo_), _mm_mul_ps(meno(s_.TraversoDa), _mm_set1_ps(s_.Seno)));
        const __m128 resto = _mm_sub_ps(cammino, _mm_set1_ps(s_.Lunghezza));
        const __m128 prima = s_.TestaDa ? _mm_cmplt_ps(cammino, zero) : zero;
        const __m128 dopo = s_.TestaA ? _mm_andnot_ps(prima, _mm_cmpgt_ps(resto, zero)) : zero;
        const __m128 oltre = _mm_or_ps(_mm_and_ps(prima, cammino), _mm_and_ps(dopo, resto));
        const __m128 tonda = _mm_sqrt_ps(_mm_add_ps(_mm_mul_ps(d, d), _mm_mul_ps(oltre, oltre)));
        const __m128 fuori = _mm_or_ps(prima, dopo);
        const __m128 distanza = _mm_or_ps(_mm_and_ps(fuori, tonda), _mm_andnot_ps(fuori, d));
        const __m128 parte = _mm_min_ps(
            _mm_max_ps(_mm_sub_ps(_mm_set1_ps(raggio_), distanza), zero), _mm_set1_ps(1.0F));
        const __m128i interi =
            _mm_cvttps_epi32(_mm_add_ps(_mm_mul_ps(parte, _mm_set1_ps(255.0F)), _mm_set1_ps(0.5F)));
        const __m128i parole = _mm_packs_epi32(interi, interi);
        return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(parole, parole)));
    }
#else
    std::uint32_t Quattro(int n) const {
        std::uint32_t tutti = 0;
        for (int i = 0; i < 4; ++i) tutti |= std::uint32_t{Pixel(n + i)} << (8 * i);
        return tutti;
    }
#endif

 private:
#ifndef LAPVANE_SSE2
    std::uint8_t Pixel(int n) const {
        float d = std::fabs(static_cast<float>(n + 0.5 - mezzo_) * s_.Coseno);
        const float cammino = lungo_ + static_cast<float>(n + 0.5 - s_.TraversoDa) * s_.Seno;
        if (s_.TestaDa && cammino < 0.0F) {
            d = std::sqrt(d * d + cammino * cammino);
        } else if (s_.TestaA && cammino > s_.Lunghezza) {
            const float resto = cammino - s_.Lunghezza;
            d = std::sqrt(d * d + resto * resto);
        }
        return Copertura(raggio_ - d);
    }
#endif
    const Segmento& s_;
    float raggio_;
    double mezzo_;  ///< across, of the segment's middle
    float lungo_;   ///< part of a pixel's way along that does not depend on its place across
};

/// Rows or columns `da` to `a` around an end.
template <bool Alto>
void Tracciatore::Fascia::CopriTesta(const Segmento& s, int da, int a) {
    const double raggio = static_cast<double>(stile_->Raggio);
    const double mezza = static_cast<double>(s.Mezza);
    const double minimo = std::min(s.TraversoDa, s.TraversoA) - raggio;
    const double massimo = std::max(s.TraversoDa, s.TraversoA) + raggio;
    for (int lungo = Prima<Alto>(da); lungo <= Ultima<Alto>(a); ++lungo) {
        const Testa testa(s, stile_->Raggio, lungo + 0.5 - s.Da);
        const double mezzo = testa.Mezzo();
        const int primo = Prima<!Alto>(PrimoPixel(std::max(mezzo - mezza, minimo)));
        const int ultimo = Ultima<!Alto>(PrimoPixel(std::min(mezzo + mezza, massimo)) - 1);
        if (primo > ultimo) continue;
        if constexpr (Alto) Segna(lungo, primo, ultimo);
        for (int n = primo; n <= ultimo; n += 4) {
            std::uint32_t quattro = testa.Quattro(n);
            const int fine = std::min(n + 3, ultimo);
            for (int i = n; i <= fine; ++i, quattro >>= 8) {
                if constexpr (!Alto) Segna(i, lungo, lungo);
                std::uint8_t* const m = Alto ? Maschera(i, lungo) : Maschera(lungo, i);
                *m = std::max(*m, static_cast<std::uint8_t>(quattro));
            }
        }
    }
}

template <bool Alto>
void Tracciatore::Fascia::CopriLungo(const Segmento& s) {
    const double raggio = static_cast<double>(stile_->Raggio);
    const double testa = raggio * std::fabs(static_cast<double>(s.Seno));
    const int da = PrimoPixel(s.TestaDa ? s.Da - raggio : s.Da);
    const int a = PrimoPixel(s.TestaA ? s.A + raggio : s.A) - 1;
    if (da > a) return;
    const int corpoDa = std::clamp(PrimoPixel(s.TestaDa ? s.Da + testa : s.Da), da, a + 1);
    const int corpoA = std::clamp(PrimoPixel(s.TestaA ? s.A - testa : s.A) - 1, corpoDa - 1, a);
    CopriTesta<Alto>(s, da, corpoDa - 1);
    // One pixel of play: the profile's slope is not quite the segment's own.
    if (s.Mezza < kTessera / 2.0F - 1.0F) {
        CopriColProfilo<Alto, kTessera>(s, corpoDa, corpoA);
    } else if (s.Mezza < kBordo / 2.0F - 1.0F) {
        CopriColProfilo<Alto, kBordo>(s, corpoDa, corpoA);
    } else {
        CopriCorpo<Alto>(s, corpoDa, corpoA);
    }
    CopriTesta<Alto>(s, corpoA + 1, a);
}

void Tracciatore::Fascia::Copri(const Segmento& s) {
    if (s.Alto) {
        CopriLungo<true>(s);
    } else {
        CopriLungo<false>(s);
    }
}

/// Lays the line over the picture and leaves the mask empty.
void Tracciatore::Fascia::Stendi(const Tracciatore& t, const Righe& righe) {
    static const StendiRiga migliore = MiglioreStendi();
    const StendiRiga stendi = t.semplice_ ? StendiSemplice : migliore;
    for (int y = righe.Prima; y <= righe.Ultima; ++y) {
        std::uint32_t* const pixel =
            t.tela_.Pixel + (t.campo_.Alto + y) * t.tela_.Passo + (t.campo_.Sinistra - kBordo);
        stendi(pixel, Maschera(0, y), {Marcate(y), passoTessere_}, larghezza_, stile_->Colore);
    }
}

}  // namespace lapvane
