#include "instrument/Circuito.h"

#include <algorithm>
#include <cmath>
#include <system_error>

#include "platform/FileTesto.h"
#include "shell/NumeroTesto.h"

namespace lapvane::strumento {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPuntiMassimi = 201;
constexpr std::size_t kPuntiMinimi = 8;
constexpr double kLunghezzaMinima = 400.0;
// The outlines hold whole numbers, and a step between points is only one or two of them: without
// smoothing every corner would be a staircase. Width of the bell in points of a 200-point outline.
constexpr double kMorbidezza = 1.8;

/// The outline with each point replaced by the bell-weighted mean of its neighbours, going round.
std::vector<Punto> Liscia(const std::vector<Punto>& punti) {
    const auto n = static_cast<std::ptrdiff_t>(punti.size());
    const double larghezza = kMorbidezza * static_cast<double>(n) / 200.0;
    const auto raggio = std::min(static_cast<std::ptrdiff_t>(std::ceil(3.0 * larghezza)), n / 2);
    std::vector<Punto> lisci(punti.size());
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        double somma = 0.0;
        Punto medio;
        for (std::ptrdiff_t d = -raggio; d <= raggio; ++d) {
            const double distanza = static_cast<double>(d) / larghezza;
            const double peso = std::exp(-0.5 * distanza * distanza);
            const Punto& vicino = punti[static_cast<std::size_t>((i + d + n) % n)];
            medio.X += peso * vicino.X;
            medio.Y += peso * vicino.Y;
            somma += peso;
        }
        lisci[static_cast<std::size_t>(i)] = {medio.X / somma, medio.Y / somma};
    }
    return lisci;
}

double Perimetro(const std::vector<Punto>& punti) {
    double somma = 0.0;
    for (std::size_t i = 0; i < punti.size(); ++i) {
        const Punto& a = punti[i];
        const Punto& b = punti[(i + 1) % punti.size()];
        somma += std::hypot(b.X - a.X, b.Y - a.Y);
    }
    return somma;
}

std::vector<Punto> LeggiContorno(const fs::path& trk) {
    const std::string testo = LeggiFile(trk, Lavoro::LeggereTracciato);
    std::vector<Punto> punti;
    LettoreRighe righe(testo);
    while (!righe.Fine() && punti.size() < kPuntiMassimi) {
        std::string riga(righe.Prossima());
        std::erase(riga, '"');
        const std::size_t virgola = riga.find(',');
        if (virgola == std::string::npos) continue;
        punti.push_back({PrefissoNumerico(std::string_view(riga).substr(0, virgola)),
                         PrefissoNumerico(std::string_view(riga).substr(virgola + 1))});
    }
    return punti;
}

}  // namespace

Circuito::Circuito(const std::vector<Punto>& contorno, double lunghezza) : lunghezza_(lunghezza) {
    if (!(lunghezza >= kLunghezzaMinima) || lunghezza > 60000.0) {
        throw ErroreCircuito("the circuit's length is not between 400 and 60000 m");
    }
    std::vector<Punto> punti = contorno;
    // An outline that repeats its first point at the end would stand still there.
    if (punti.size() > 1 && punti.front().X == punti.back().X &&
        punti.front().Y == punti.back().Y) {
        punti.pop_back();
    }
    if (punti.size() < kPuntiMinimi) throw ErroreCircuito("the outline has too few points");
    punti = Liscia(punti);
    const double perimetro = Perimetro(punti);
    const std::size_t n = punti.size();
    const double medio = perimetro / static_cast<double>(n);
    if (!(medio > 1e-3) || !std::isfinite(medio)) {
        throw ErroreCircuito("the outline has no extent");
    }
    const double metri = lunghezza / perimetro;  // metres of one unit of the outline
    curvatura_.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const Punto& a = punti[(i + n - 1) % n];
        const Punto& b = punti[i];
        const Punto& c = punti[(i + 1) % n];
        const double x1 = (c.X - a.X) / 2.0;
        const double y1 = (c.Y - a.Y) / 2.0;
        const double x2 = c.X - 2.0 * b.X + a.X;
        const double y2 = c.Y - 2.0 * b.Y + a.Y;
        // Points that fall together would make an endless curvature.
        const double passo = std::max(std::hypot(x1, y1), 0.25 * medio);
        curvatura_.push_back(std::abs(x1 * y2 - y1 * x2) / (passo * passo * passo) / metri);
    }
}

Circuito Circuito::Leggi(const fs::path& trk) {
    fs::path sec = trk;
    sec.replace_extension(".sec");
    for (const fs::path& file : {trk, sec}) {
        if (!FileEsiste(file)) throw ErroreCircuito("no circuit file " + file.string());
    }
    const std::string lunghezza = LeggiFile(sec, Lavoro::LeggereSettori);
    const double metri = PrefissoNumerico(LettoreRighe(lunghezza).Prossima());
    try {
        return Circuito(LeggiContorno(trk), metri);
    } catch (const ErroreCircuito& errore) {
        throw ErroreCircuito(trk.string() + ": " + errore.what());
    }
}

double Circuito::Curvatura(double distanza) const {
    const auto n = static_cast<double>(curvatura_.size());
    double giro = distanza / lunghezza_;
    giro -= std::floor(giro);
    const double posto = giro * n;
    const auto i = std::min(static_cast<std::size_t>(posto), curvatura_.size() - 1);
    const double resto = posto - static_cast<double>(i);
    return curvatura_[i] * (1.0 - resto) + curvatura_[(i + 1) % curvatura_.size()] * resto;
}

double Circuito::CurvaStretta() const {
    const auto punto = std::max_element(curvatura_.begin(), curvatura_.end());
    return lunghezza_ * static_cast<double>(punto - curvatura_.begin()) /
           static_cast<double>(curvatura_.size());
}

std::vector<fs::path> ElencaCircuiti(const fs::path& cartella) {
    std::vector<fs::path> circuiti;
    std::error_code errore;
    for (fs::directory_iterator i(cartella, errore), fine; !errore && i != fine;
         i.increment(errore)) {
        fs::path sec = i->path();
        sec.replace_extension(".sec");
        if (i->path().extension() == ".trk" && FileEsiste(i->path()) && FileEsiste(sec)) {
            circuiti.push_back(i->path());
        }
    }
    std::sort(circuiti.begin(), circuiti.end());
    return circuiti;
}

}  // namespace lapvane::strumento
