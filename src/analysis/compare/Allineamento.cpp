#include "analysis/compare/Allineamento.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace lapvane {

namespace {

constexpr double kRiga = 0.1;                  // s from row to row
constexpr std::int32_t kRigheRecord = 10;      // a record is a second
constexpr double kTolleranza = 1.05;           // s between the rows of a lap and its official time
constexpr double kJerk = 50.0;                 // (m/s3)2 s, spectral density of the jerk
constexpr double kVarianzaMetri = 1.0 / 12.0;  // of a metre that was cut
constexpr double kVarianzaLettura = 1.0 / 12.0;  // of a whole reading of the speed
constexpr double kVarianzaTraguardo = 4e-4;      // m2
constexpr double kMetriResidui =
    30.0;                          // more than that the conversion cuts to 0 in a marked record
constexpr double kFinestra = 4.0;  // s on each side of a crossing that tell its moment
constexpr double kIgnoto = 1e6;

using Vettore = std::array<double, 3>;
using Matrice = std::array<Vettore, 3>;

Matrice Per(const Matrice& a, const Matrice& b) {
    Matrice c{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            for (std::size_t k = 0; k < 3; ++k) c[i][j] += a[i][k] * b[k][j];
        }
    }
    return c;
}

Matrice Trasposta(const Matrice& a) {
    Matrice t{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) t[i][j] = a[j][i];
    }
    return t;
}

/// By cofactors; the matrix is positive definite.
Matrice Inversa(const Matrice& m) {
    Matrice c{};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t i1 = (i + 1) % 3, i2 = (i + 2) % 3;
        for (std::size_t j = 0; j < 3; ++j) {
            const std::size_t j1 = (j + 1) % 3, j2 = (j + 2) % 3;
            c[j][i] = m[i1][j1] * m[i2][j2] - m[i1][j2] * m[i2][j1];
        }
    }
    const double d = m[0][0] * c[0][0] + m[0][1] * c[1][0] + m[0][2] * c[2][0];
    for (Vettore& riga : c) {
        for (double& x : riga) x /= d;
    }
    return c;
}

Matrice Passo(double dt) {
    return {{{1.0, dt, 0.5 * dt * dt}, {0.0, 1.0, dt}, {0.0, 0.0, 1.0}}};
}

Matrice Rumore(double dt) {
    const double t2 = dt * dt, t3 = t2 * dt;
    const double a = t3 * t2 / 20, b = t2 * t2 / 8, c = t3 / 6, d = t3 / 3, e = t2 / 2;
    Matrice q = {{{a, b, c}, {b, d, e}, {c, e, dt}}};
    for (Vettore& riga : q) {
        for (double& x : riga) x *= kJerk;
    }
    return q;
}

Vettore Avanti(double dt, const Vettore& x) {
    return {x[0] + dt * x[1] + 0.5 * dt * dt * x[2], x[1] + dt * x[2], x[2]};
}

double Mediana(std::vector<double> valori) {
    if (valori.empty()) return 0.0;
    const auto meta = valori.begin() + std::ssize(valori) / 2;
    std::nth_element(valori.begin(), meta, valori.end());
    return *meta;
}

}  // namespace

/// What is known of one moment: a place (`Quale` 0, m) or a speed (1, m/s).
struct Allineamento::Evento {
    double Tempo = 0.0;
    std::size_t Quale = 0;
    double Valore = 0.0;
    double Varianza = 0.0;
};

struct Allineamento::Nodo {
    double Tempo = 0.0;
    Vettore Stato{};  // m, m/s, m/s2
};

// --- one lap -------------------------------------------------------------------------------------

double GiroAllineato::TempoA(double metri) const {
    if (tempo_.empty() || metri <= 0.0) return 0.0;
    if (metri >= Lunghezza) return Durata;
    const auto oltre = std::upper_bound(metri_.begin(), metri_.end(), metri);
    const auto i = static_cast<std::size_t>(oltre - metri_.begin());
    const double tratto = metri_[i] - metri_[i - 1];
    const double dt = tempo_[i] - tempo_[i - 1];
    const double u = (metri - metri_[i - 1]) / tratto;
    // The speeds at both ends bend the line between them, where the car is not about to stand.
    const double medio = tratto / dt;
    const double v0 = velocita_[i - 1], v1 = velocita_[i];
    double tempo = u * dt;
    if (v0 > 0.5 * medio && v1 > 0.5 * medio && v0 < 2.0 * medio && v1 < 2.0 * medio) {
        const double p0 = tratto / v0, p1 = tratto / v1;
        tempo =
            ((u - 2.0) * u + 1.0) * u * p0 + (3.0 - 2.0 * u) * u * u * dt + (u - 1.0) * u * u * p1;
    }
    return tempo_[i - 1] + std::clamp(tempo, 0.0, dt);
}

double GiroAllineato::MetriA(double secondi) const {
    if (tempo_.empty() || secondi <= 0.0) return 0.0;
    if (secondi >= Durata) return Lunghezza;
    const auto oltre = std::upper_bound(tempo_.begin(), tempo_.end(), secondi);
    const auto i = static_cast<std::size_t>(oltre - tempo_.begin());
    const double dt = tempo_[i] - tempo_[i - 1];
    const double u = (secondi - tempo_[i - 1]) / dt;
    const double tratto = metri_[i] - metri_[i - 1];
    const double p0 = velocita_[i - 1] * dt, p1 = velocita_[i] * dt;
    const double metri =
        ((u - 2.0) * u + 1.0) * u * p0 + (3.0 - 2.0 * u) * u * u * tratto + (u - 1.0) * u * u * p1;
    return metri_[i - 1] + std::clamp(metri, 0.0, tratto);
}

// --- the log -------------------------------------------------------------------------------------

Allineamento::Allineamento(CorsaLog corsa)
    : corsa_(std::move(corsa)),
      esiti_(corsa_.Giri.size(), PercheNo::Allineato),
      passaggi_(corsa_.Giri.size(), 0.0) {
    Controlla();
    CalibraVelocita();
    TrovaTraguardi();
}

void Allineamento::Controlla() {
    const auto righe = static_cast<std::int32_t>(corsa_.Distanza.size());
    for (int i = 0; i < NumGiri(); ++i) {
        const GiroDelLog& giro = Giro(i);
        PercheNo& esito = esiti_[static_cast<std::size_t>(i)];
        passaggi_[static_cast<std::size_t>(i)] = giro.PrimaRiga * kRiga;
        const double secondi = (giro.UltimaRiga - giro.PrimaRiga + 1) * kRiga;
        if (giro.Centesimi <= 0) {
            esito = PercheNo::SenzaTempo;
        } else if (giro.PrimaRiga < 0 || giro.UltimaRiga < giro.PrimaRiga ||
                   giro.UltimaRiga >= righe) {
            esito = PercheNo::SenzaRighe;
        } else if (std::fabs(secondi - giro.Centesimi / 100.0) > kTolleranza) {
            esito = PercheNo::Interrotto;
        } else {
            const auto metri = corsa_.Distanza.subspan(
                static_cast<std::size_t>(giro.PrimaRiga),
                static_cast<std::size_t>(giro.UltimaRiga - giro.PrimaRiga + 1));
            if (*std::max_element(metri.begin(), metri.end()) < 2.0 * kMetriResidui) {
                esito = PercheNo::SenzaDistanza;
            }
        }
    }
}

/// Compares each reading of the speed with the way driven in the second around every possible
/// instant: the unit is the factor between them, the instant the one that leaves the least.
void Allineamento::CalibraVelocita() {
    constexpr std::int32_t kMezza = 5;       // rows on each side
    constexpr std::size_t kAbbastanza = 60;  // readings
    struct Somme {
        double VV = 0.0, VW = 0.0, WW = 0.0;
    };
    constexpr int kIstanti = 21;  // -0.5 to 1.5 s, from which the least is found between them
    std::array<Somme, kIstanti> somme{};
    std::size_t letture = 0;
    const auto righe = static_cast<std::int32_t>(corsa_.Velocita.size());
    for (int i = 0; i < NumGiri(); ++i) {
        if (Esito(i) != PercheNo::Allineato) continue;
        const GiroDelLog& giro = Giro(i);
        for (std::int32_t r = giro.PrimaRiga + 2 * kRigheRecord;
             r + 3 * kRigheRecord <= giro.UltimaRiga; r += kRigheRecord) {
            // The reading of a record is where the next one's line begins.
            if (r + kRigheRecord >= righe) continue;
            const double lettura = corsa_.Velocita[static_cast<std::size_t>(r + kRigheRecord)];
            if (lettura < 20.0) continue;
            ++letture;
            for (int k = 0; k < kIstanti; ++k) {
                const std::int32_t posto = r + k - kMezza;
                const double via = corsa_.Distanza[static_cast<std::size_t>(posto + kMezza)] -
                                   corsa_.Distanza[static_cast<std::size_t>(posto - kMezza)];
                Somme& s = somme[static_cast<std::size_t>(k)];
                s.VV += lettura * lettura;
                s.VW += lettura * via;
                s.WW += via * via;
            }
        }
    }
    if (letture < kAbbastanza) return;
    const auto resto = [&](int k) {
        const Somme& s = somme[static_cast<std::size_t>(k)];
        return (s.WW - s.VW * s.VW / s.VV) / static_cast<double>(letture);
    };
    int migliore = 1;
    for (int k = 1; k + 1 < kIstanti; ++k) {
        if (resto(k) < resto(migliore)) migliore = k;
    }
    const Somme& s = somme[static_cast<std::size_t>(migliore)];
    const double scala = s.VW / s.VV;
    // The two do not tell of one motion: a wheel that is not there, a channel that says something
    // else.
    constexpr double kRestoMassimo = 4.0;  // (m/s)2
    if (resto(migliore) > kRestoMassimo || scala <= 0.0) return;
    const double a = resto(migliore - 1), b = resto(migliore), c = resto(migliore + 1);
    const double curva = a - 2.0 * b + c;
    const double fra = curva > 0.0 ? std::clamp(0.5 * (a - c) / curva, -0.5, 0.5) : 0.0;
    istante_ = std::clamp((migliore - kMezza + fra) * kRiga, 0.0, 1.0);
    scala_ = scala;
}

/// Whether lap `i` follows the one before it without a gap.
bool Allineamento::Continuo(int i) const {
    return i > 0 && Esito(i - 1) == PercheNo::Allineato &&
           Giro(i - 1).UltimaRiga + 1 == Giro(i).PrimaRiga;
}

/// What the log tells between two moments of its clock of the place since the line of lap `i`. With
/// `vicini` the end of the lap before and the start of the lap behind tell as well.
std::vector<Allineamento::Evento> Allineamento::Eventi(int i, double da, double a,
                                                       bool vicini) const {
    std::vector<Evento> eventi;
    const auto righe = static_cast<std::int32_t>(corsa_.Distanza.size());
    const bool conVicini = vicini && lunghezza_ > 0.0;
    const std::int32_t prima = conVicini && Continuo(i) ? 0 : Giro(i).PrimaRiga;
    const std::int32_t ultima = conVicini ? righe - 1 : Giro(i).UltimaRiga;
    AggiungiPosti(i, std::max(prima, static_cast<std::int32_t>(std::ceil(da / kRiga - 1e-9))),
                  std::min(ultima, static_cast<std::int32_t>(std::floor(a / kRiga + 1e-9))),
                  eventi);
    if (scala_ <= 0.0) return eventi;
    for (auto b = static_cast<std::int32_t>(std::floor(std::max(da, 0.0))); b <= a; ++b) {
        const double tempo = b + istante_;
        const std::int32_t r = (b + 1) * kRigheRecord;  // of the record's reading
        if (tempo < da || tempo > a || r >= righe) continue;
        if (r < prima || r > ultima + kRigheRecord) continue;
        const double lettura = corsa_.Velocita[static_cast<std::size_t>(r)];
        eventi.push_back({tempo, 1, lettura * scala_, kVarianzaLettura * scala_ * scala_});
    }
    return eventi;
}

/// Metres to add to the distance of a row, so that it counts from the line of lap `i`; nothing for
/// a row of a crossing's record that may lie before it.
std::optional<double> Allineamento::DallaLinea(int i, std::int32_t riga) const {
    const GiroDelLog& giro = Giro(i);
    const double d = corsa_.Distanza[static_cast<std::size_t>(riga)];
    const bool incerta = d <= 0.0 || d > kMetriResidui;
    if (riga < giro.PrimaRiga) return -lunghezza_;
    if (riga < giro.PrimaRiga + kRigheRecord) {
        const double inizio = passaggi_[static_cast<std::size_t>(i)];
        if (incerta || riga * kRiga < inizio - 0.5 * kRiga) return std::nullopt;
        return 0.0;
    }
    if (riga <= giro.UltimaRiga) return 0.0;
    if (riga <= giro.UltimaRiga + kRigheRecord && incerta) return std::nullopt;
    return lunghezza_;
}

void Allineamento::AggiungiPosti(int i, std::int32_t prima, std::int32_t ultima,
                                 std::vector<Evento>& eventi) const {
    const auto metri = [this](std::int32_t r) {
        return corsa_.Distanza[static_cast<std::size_t>(r)];
    };
    std::int32_t uguali = 0;  // rows of the metre before that lie behind
    for (std::int32_t r = prima; r <= ultima;) {
        const auto somma = DallaLinea(i, r);
        if (!somma) {
            ++r;
            uguali = 0;
            continue;
        }
        const double d = metri(r);
        std::int32_t oltre = r + 1;
        while (oltre <= ultima && metri(oltre) == d) ++oltre;
        const std::int32_t quante = oltre - r;
        // A slow car shows the same metre for several rows, which is one thing told and not
        // several; the row in which the metre changes tells more.
        const std::int32_t n = std::min(uguali, quante);
        if (n > 1 && metri(r - 1) == d - 1.0) {
            eventi.push_back({(r - 0.5) * kRiga, 0, d + *somma, kVarianzaMetri / (n * n)});
        }
        for (; r < oltre; ++r) {
            eventi.push_back({r * kRiga, 0, d + 0.5 + *somma, kVarianzaMetri * quante});
        }
        uguali = quante;
    }
}

std::vector<Allineamento::Nodo> Allineamento::Leviga(std::vector<Evento> eventi) {
    std::stable_sort(eventi.begin(), eventi.end(),
                     [](const Evento& x, const Evento& y) { return x.Tempo < y.Tempo; });
    const std::size_t n = eventi.size();
    std::vector<Nodo> nodi(n);
    std::vector<Matrice> filtrate(n), previste(n);
    std::vector<Vettore> attesi(n);
    Vettore x{};
    Matrice p = {{{kIgnoto, 0.0, 0.0}, {0.0, 1e4, 0.0}, {0.0, 0.0, 400.0}}};
    for (std::size_t k = 0; k < n; ++k) {
        const Evento& evento = eventi[k];
        if (k > 0) {
            const double dt = evento.Tempo - eventi[k - 1].Tempo;
            x = Avanti(dt, x);
            const Matrice f = Passo(dt), q = Rumore(dt);
            p = Per(Per(f, p), Trasposta(f));
            for (std::size_t i = 0; i < 3; ++i) {
                for (std::size_t j = 0; j < 3; ++j) p[i][j] += q[i][j];
            }
        } else if (evento.Quale == 0) {
            x[0] = evento.Valore;
        }
        previste[k] = p;
        attesi[k] = x;
        const std::size_t h = evento.Quale;
        const double s = p[h][h] + evento.Varianza;
        const double residuo = evento.Valore - x[h];
        const Vettore guadagno = {p[0][h] / s, p[1][h] / s, p[2][h] / s};
        const Vettore riga = p[h];
        for (std::size_t i = 0; i < 3; ++i) {
            x[i] += guadagno[i] * residuo;
            for (std::size_t j = 0; j < 3; ++j) p[i][j] -= guadagno[i] * riga[j];
        }
        filtrate[k] = p;
        nodi[k] = {evento.Tempo, x};
    }
    for (std::size_t k = n; k-- > 1;) {
        const double dt = eventi[k].Tempo - eventi[k - 1].Tempo;
        const Matrice c = Per(Per(filtrate[k - 1], Trasposta(Passo(dt))), Inversa(previste[k]));
        Vettore scarto{};
        for (std::size_t i = 0; i < 3; ++i) scarto[i] = nodi[k].Stato[i] - attesi[k][i];
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t j = 0; j < 3; ++j) nodi[k - 1].Stato[i] += c[i][j] * scarto[j];
        }
    }
    return nodi;
}

/// The moment at which the motion around the line passes it.
double Allineamento::Passaggio(int i, bool daDueLati) const {
    const double record = Giro(i).PrimaRiga * kRiga;
    const auto nodi = Leviga(
        Eventi(i, daDueLati ? record - kFinestra : record, record + 1.0 + kFinestra, daDueLati));
    if (nodi.size() < 5) return record + 0.5;
    std::size_t k = 0;
    while (k + 1 < nodi.size() && nodi[k].Stato[0] < 0.0) ++k;
    // From the nearer of the two nodes, where the speed carries the car to the line.
    if (k > 0 && std::fabs(nodi[k - 1].Stato[0]) < std::fabs(nodi[k].Stato[0])) --k;
    const Vettore& s = nodi[k].Stato;
    if (s[1] < 1.0) return record + 0.5;
    double t = -s[0] / s[1];
    for (int giro = 0; giro < 4; ++giro) {
        const double v = s[1] + s[2] * t;
        if (v < 1.0) break;
        t -= (s[0] + s[1] * t + 0.5 * s[2] * t * t) / v;
    }
    return std::clamp(nodi[k].Tempo + t, record, record + 1.0);
}

/// Lets the crossings of each unbroken run of laps agree with the official times between them.
void Allineamento::MettiInsieme(const std::vector<double>& trovati) {
    constexpr int kVicini = 12;  // laps on each side that have a say
    for (int da = 0; da < NumGiri();) {
        int a = da + 1;
        while (a < NumGiri() && Continuo(a)) ++a;
        // Where the run's first crossing would lie by each lap's own evidence.
        std::vector<double> zero(static_cast<std::size_t>(a - da));
        double somma = 0.0;
        double minimo = -std::numeric_limits<double>::infinity();
        double massimo = std::numeric_limits<double>::infinity();
        std::vector<double> somme(zero.size());
        for (int i = da; i < a; ++i) {
            const auto k = static_cast<std::size_t>(i - da);
            somme[k] = somma;
            zero[k] = trovati[static_cast<std::size_t>(i)] - somma;
            const double record = Giro(i).PrimaRiga * kRiga - somma;
            // Each official time is cut to a hundredth.
            minimo = std::max(minimo, record - 0.01);
            massimo = std::min(massimo, record + 1.01);
            somma += Giro(i).Centesimi / 100.0;
        }
        for (int i = da; i < a; ++i) {
            const auto k = static_cast<std::size_t>(i - da);
            const auto primo = zero.begin() + std::max(0, i - da - kVicini);
            const auto oltre = zero.begin() + std::min(a - da, i - da + kVicini + 1);
            double detto = Mediana({primo, oltre});
            if (minimo < massimo) detto = std::clamp(detto, minimo, massimo);
            passaggi_[static_cast<std::size_t>(i)] = detto + somme[k];
        }
        da = a;
    }
}

void Allineamento::TrovaTraguardi() {
    std::vector<double> trovati(passaggi_.size());
    const auto cerca = [&](bool daDueLati) {
        for (int i = 0; i < NumGiri(); ++i) {
            trovati[static_cast<std::size_t>(i)] = Esito(i) == PercheNo::Allineato
                                                       ? Passaggio(i, daDueLati)
                                                       : Giro(i).PrimaRiga * kRiga + 0.5;
        }
        MettiInsieme(trovati);
    };
    cerca(false);
    // The length, from laps spread over the log.
    constexpr int kSaggi = 25;
    std::vector<double> lunghezze;
    const int ogni = std::max(1, NumGiri() / kSaggi);
    for (int i = 0; i < NumGiri(); i += ogni) {
        if (Esito(i) != PercheNo::Allineato) continue;
        const double inizio = passaggi_[static_cast<std::size_t>(i)];
        const double fine = inizio + Giro(i).Centesimi / 100.0;
        auto eventi = Eventi(i, std::max(inizio, fine - 2.0 * kFinestra), fine, false);
        eventi.push_back({fine, 0, 0.0, kIgnoto});
        const auto nodi = Leviga(std::move(eventi));
        lunghezze.push_back(nodi.back().Stato[0]);
    }
    if (lunghezze.empty()) return;
    lunghezza_ = Mediana(lunghezze);
    for (double& scarto : lunghezze) scarto = std::fabs(scarto - lunghezza_);
    const double sigma = 1.4826 * Mediana(lunghezze);
    dispersione_ = std::max(sigma * sigma, 0.01);
    cerca(true);
}

std::optional<GiroAllineato> Allineamento::Allinea(int i) const {
    if (Esito(i) != PercheNo::Allineato) return std::nullopt;
    const double inizio = passaggi_[static_cast<std::size_t>(i)];
    const double fine = inizio + Giro(i).Centesimi / 100.0;
    auto eventi = Eventi(i, inizio - kFinestra, fine + kFinestra, true);
    eventi.push_back({inizio, 0, 0.0, kVarianzaTraguardo});
    eventi.push_back({fine, 0, lunghezza_, dispersione_});
    const auto nodi = Leviga(std::move(eventi));
    GiroAllineato giro;
    giro.Inizio = inizio;
    giro.Durata = Giro(i).Centesimi / 100.0;
    const auto daInizio = [inizio](const Nodo& nodo) { return nodo.Tempo - inizio; };
    double metri = 0.0;
    for (const Nodo& nodo : nodi) {
        const double tempo = daInizio(nodo);
        if (tempo < -1e-9 || tempo > giro.Durata + 1e-9) continue;
        if (!giro.tempo_.empty() && tempo <= giro.tempo_.back() + 1e-6) {
            if (tempo < giro.Durata - 1e-6) continue;
            giro.tempo_.pop_back();
            giro.metri_.pop_back();
            giro.velocita_.pop_back();
        }
        metri = giro.tempo_.empty() ? 0.0 : std::max(metri, nodo.Stato[0]);
        giro.tempo_.push_back(tempo);
        giro.metri_.push_back(metri);
        giro.velocita_.push_back(std::max(0.0, nodo.Stato[1]));
    }
    // Numbers that no car makes: no way from line to line comes of them.
    if (giro.tempo_.size() < 2 || !(giro.metri_.back() > kMetriResidui) ||
        !std::isfinite(giro.metri_.back())) {
        return std::nullopt;
    }
    giro.tempo_.front() = 0.0;
    giro.tempo_.back() = giro.Durata;
    giro.Lunghezza = giro.metri_.back();
    return giro;
}

}  // namespace lapvane
