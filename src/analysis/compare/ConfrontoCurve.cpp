// What the window shows of the chosen laps: panes, parts, values at the cursor.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "analysis/compare/Confronto.h"
#include "analysis/compare/ConfrontoGiri.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr double kPasso = 0.1;  // seconds from row to row
constexpr int kPeggiori = 3;

/// Digits behind the point that the values of a channel have, two at most.
int DecimaliDi(std::span<const double> valori) {
    int decimali = 0;
    for (const double v : valori) {
        const auto intero = [v](double fattore) {
            return std::fabs(v * fattore - std::round(v * fattore)) < 1e-6;
        };
        if (decimali == 0 && !intero(1.0)) decimali = 1;
        if (decimali == 1 && !intero(10.0)) return 2;
    }
    return decimali;
}

std::string NomeGiro(int numero) {
    return Testo(Voce::RigaGiro) + TestoNumero(static_cast<std::int64_t>(numero));
}

}  // namespace

/// One point a row between both crossings, and one at each of them. A lap that can't be aligned is
/// shown as its rows stand. Without a key the values stay empty.
CurvaGiro Confronto::Curva(char lettera, const std::string& chiave) const {
    CurvaGiro curva{lettera, {}, {}};
    const GiroScelto giro = *Di(lettera);
    const LogAperto& log = Log(giro.Log);
    const int colonna = Colonna(giro.Log, chiave);
    if (colonna == 0 && !chiave.empty()) return curva;
    const GiroAllineato* mio = Allineato(giro);
    const double fine = mio != nullptr && PerDistanza ? Fine() : 0.0;
    const auto aggiungi = [&](double x, double secondi) {
        curva.X.push_back(x);
        if (colonna != 0) curva.Y.push_back(log.Valore(colonna, secondi));
    };
    if (mio == nullptr) {
        const GiroDelLog& righe = Giro(giro);
        for (std::int32_t r = righe.PrimaRiga; r <= righe.UltimaRiga; ++r) {
            const double x = PerDistanza ? log.Tabella().Valore(kColonnaDistanza, Piano::Dati, r)
                                         : (r - righe.PrimaRiga) * kPasso;
            // The first rows may still count the metres of the lap before.
            while (!curva.X.empty() && x < curva.X.back()) {
                curva.X.pop_back();
                if (!curva.Y.empty()) curva.Y.pop_back();
            }
            aggiungi(x, r * kPasso);
        }
        return curva;
    }
    const auto x = [&](double t) {
        return PerDistanza ? mio->MetriA(t) / mio->Lunghezza * fine : t;
    };
    aggiungi(0.0, mio->Inizio);
    for (auto r = static_cast<std::int64_t>(mio->Inizio / kPasso) + 1;; ++r) {
        const double t = static_cast<double>(r) * kPasso - mio->Inizio;
        if (t >= mio->Durata) break;
        aggiungi(x(t), static_cast<double>(r) * kPasso);
    }
    aggiungi(PerDistanza ? fine : mio->Durata, mio->Inizio + mio->Durata);
    return curva;
}

CurvaGiro Confronto::CurvaDistacco(char lettera) const {
    CurvaGiro curva{lettera, {}, {}};
    const GiroAllineato* mio = Allineato(*Di(lettera));
    const GiroAllineato* riferimento = Allineato(*scelti_[0]);
    if (mio == nullptr || riferimento == nullptr) return curva;
    const auto passi = static_cast<int>(std::ceil(riferimento->Durata / kPasso));
    for (int k = 0; k <= passi; ++k) {
        const double t = std::min(k * kPasso, riferimento->Durata);
        const double metri = k == passi ? riferimento->Lunghezza : riferimento->MetriA(t);
        curva.X.push_back(PerDistanza ? metri : t);
        curva.Y.push_back(Distacco(*mio, *riferimento, metri));
    }
    return curva;
}

QuadroConfronto Confronto::Quadro(const std::string& chiave) const {
    QuadroConfronto quadro;
    if (chiave == kChiaveDistacco) {
        quadro = {Testo(Voce::TempoGuadagnatoPerso), "s", 2, true, {}};
        for (const char lettera : Accanto()) {
            CurvaGiro curva = CurvaDistacco(lettera);
            if (!curva.X.empty()) quadro.Curve.push_back(std::move(curva));
        }
        return quadro;
    }
    for (const CanaleConfronto& canale : Canali()) {
        if (canale.Chiave() == chiave) quadro = {canale.Nome, canale.Unita, 0, false, {}};
    }
    for (const char lettera : Mostrati()) {
        CurvaGiro curva = Curva(lettera, chiave);
        if (curva.X.empty()) continue;
        const GiroDelLog& righe = Giro(*Di(lettera));
        if (righe.UltimaRiga >= righe.PrimaRiga) {
            const int log = Di(lettera)->Log;
            const auto valori = Log(log).Tabella().Colonna(Colonna(log, chiave));
            quadro.Decimali =
                std::max(quadro.Decimali,
                         DecimaliDi(valori.subspan(
                             static_cast<std::size_t>(righe.PrimaRiga),
                             static_cast<std::size_t>(righe.UltimaRiga - righe.PrimaRiga + 1))));
        }
        quadro.Curve.push_back(std::move(curva));
    }
    return quadro;
}

DatiQuadri Confronto::Quadri(const std::vector<std::string>& chiavi) const {
    DatiQuadri dati;
    dati.PerDistanza = PerDistanza;
    if (!scelti_[0]) return dati;
    dati.Fine = Fine();
    for (const std::string& chiave : chiavi) {
        QuadroConfronto quadro = Quadro(chiave);
        if (!quadro.Titolo.empty()) dati.Quadri.push_back(std::move(quadro));
    }
    for (const double metri : Confini()) dati.Confini.push_back(XDaMetri(metri));
    dati.Peggiori = Tabella().Peggiori;
    dati.Fuoco = fuoco_;
    return dati;
}

/// The parts in which a lap loses most, the worst first, three at most.
std::vector<int> Confronto::Peggiori(const std::vector<std::int32_t>& giro,
                                     const std::vector<std::int32_t>& riferimento) const {
    std::vector<int> parti(std::min(giro.size(), riferimento.size()));
    std::iota(parti.begin(), parti.end(), 0);
    const auto perso = [&](int p) {
        return giro[static_cast<std::size_t>(p)] - riferimento[static_cast<std::size_t>(p)];
    };
    std::erase_if(parti, [&](int p) { return perso(p) <= 0; });
    std::stable_sort(parti.begin(), parti.end(), [&](int a, int b) { return perso(a) > perso(b); });
    if (parti.size() > kPeggiori) parti.resize(kPeggiori);
    return parti;
}

TabellaParti Confronto::Tabella() const {
    TabellaParti tabella;
    tabella.Fuoco = fuoco_;
    if (!scelti_[0]) return tabella;
    const std::int32_t riferimento = Giro(*scelti_[0]).Centesimi;
    std::vector<std::vector<std::int32_t>> interi;
    for (const char lettera : Mostrati()) {
        const GiroScelto giro = *Di(lettera);
        RigaParti riga{lettera, NomeGiro(Numero(giro)), {}, Giro(giro).Centesimi, 0};
        if (riga.Tempo > 0 && riferimento > 0) riga.Distacco = riga.Tempo - riferimento;
        if (const GiroAllineato* mio = Allineato(giro)) {
            const double lunghezza = Log(scelti_[0]->Log).Allineati().Lunghezza();
            riga.Parti = TempiSettori(*mio, ConfiniDelGiro(lunghezza), lunghezza);
            interi.push_back(riga.Parti);
        }
        tabella.Righe.push_back(std::move(riga));
    }
    for (const RigaParti& riga : tabella.Righe) {
        if (riga.Lettera == fuoco_) {
            tabella.Peggiori = Peggiori(riga.Parti, tabella.Righe.front().Parti);
        }
    }
    if (const GiroIdeale ideale = Ideale(interi); ideale.Centesimi > 0) {
        tabella.Righe.push_back({0, Testo(Voce::GiroIdeale), ideale.Settori, ideale.Centesimi,
                                 riferimento > 0 ? ideale.Centesimi - riferimento : 0});
    }
    return tabella;
}

std::int32_t Confronto::Continuo() const {
    if (!scelti_[0]) return 0;
    std::vector<const GiroAllineato*> giri;
    for (const auto& giro : log_[static_cast<std::size_t>(scelti_[0]->Log)].Giri) {
        giri.push_back(giro ? &*giro : nullptr);
    }
    return GiroContinuo(giri);
}

std::int32_t Confronto::IdealeDiTutti() const {
    if (!scelti_[0]) return 0;
    const double lunghezza = Log(scelti_[0]->Log).Allineati().Lunghezza();
    const std::vector<double> confini = ConfiniDelGiro(lunghezza);
    std::vector<std::vector<std::int32_t>> interi;
    for (int l = 0; l < NumLog(); ++l) {
        for (int i = 0; i < std::ssize(Log(l).Giri()); ++i) {
            const auto& giro = log_[static_cast<std::size_t>(l)].Giri[static_cast<std::size_t>(i)];
            if (!giro || TracciatiDiversi(*scelti_[0], {l, i})) continue;
            interi.push_back(TempiSettori(*giro, confini, lunghezza));
        }
    }
    return Ideale(interi).Centesimi;
}

/// A channel where the lap has driven this share of its way.
double Confronto::Valore(GiroScelto giro, int colonna, double quota) const {
    const GiroAllineato* mio = Allineato(giro);
    if (mio == nullptr) return 0.0;
    return Log(giro.Log).Valore(colonna, mio->Inizio + mio->TempoA(quota * mio->Lunghezza));
}

TabellaCursore Confronto::AlCursore(const std::vector<std::string>& chiavi, double x,
                                    std::optional<double> secondo) const {
    TabellaCursore tabella;
    const GiroAllineato* riferimento = scelti_[0] ? Allineato(*scelti_[0]) : nullptr;
    if (riferimento == nullptr) return tabella;
    const double quota = QuotaDaX(x);
    tabella.Metri = quota * riferimento->Lunghezza;
    tabella.Secondi = riferimento->TempoA(tabella.Metri);
    tabella.Due = secondo.has_value();
    std::vector<std::string> canali;
    for (const CanaleConfronto& canale : Canali()) {
        const std::string chiave = canale.Chiave();
        if (std::find(chiavi.begin(), chiavi.end(), chiave) == chiavi.end()) continue;
        canali.push_back(chiave);
        tabella.Titoli.push_back(canale.Unita.empty() ? canale.Nome : canale.Unita);
        const int colonna = Colonna(scelti_[0]->Log, chiave);
        const GiroDelLog& righe = Giro(*scelti_[0]);
        tabella.Decimali.push_back(
            colonna == 0 ? 1
                         : DecimaliDi(Log(scelti_[0]->Log)
                                          .Tabella()
                                          .Colonna(colonna)
                                          .subspan(static_cast<std::size_t>(righe.PrimaRiga),
                                                   static_cast<std::size_t>(righe.UltimaRiga -
                                                                            righe.PrimaRiga + 1))));
    }
    for (const char lettera : Mostrati()) {
        const GiroScelto giro = *Di(lettera);
        const GiroAllineato* mio = Allineato(giro);
        if (mio == nullptr) continue;
        RigaCursore riga;
        riga.Lettera = lettera;
        riga.Nome = TestoNumero(static_cast<std::int64_t>(Numero(giro)));
        riga.Distacco = Distacco(*mio, *riferimento, tabella.Metri);
        for (const std::string& chiave : canali) {
            ValoreCursore valore;
            const int colonna = Colonna(giro.Log, chiave);
            const int sua = Colonna(scelti_[0]->Log, chiave);
            valore.Esiste = colonna != 0;
            if (colonna != 0) valore.Qui = Valore(giro, colonna, quota);
            if (colonna != 0 && sua != 0) {
                valore.Differenza = valore.Qui - Valore(*scelti_[0], sua, quota);
            }
            riga.Canali.push_back(valore);
        }
        if (secondo) {
            const double altra = QuotaDaX(*secondo);
            FraCursori(riga, giro, canali, std::min(quota, altra), std::max(quota, altra));
        }
        tabella.Righe.push_back(std::move(riga));
    }
    return tabella;
}

/// What lies between two shares of the way. The mean is over time: rows lie a tenth apart.
void Confronto::FraCursori(RigaCursore& riga, GiroScelto giro,
                           const std::vector<std::string>& chiavi, double da, double a) const {
    const GiroAllineato& mio = *Allineato(giro);
    const GiroAllineato& riferimento = *Allineato(*scelti_[0]);
    const double inizio = mio.TempoA(da * mio.Lunghezza);
    const double fine = mio.TempoA(a * mio.Lunghezza);
    riga.Tempo = fine - inizio;
    riga.Metri = (a - da) * mio.Lunghezza;
    riga.Perso = Distacco(mio, riferimento, a * riferimento.Lunghezza) -
                 Distacco(mio, riferimento, da * riferimento.Lunghezza);
    for (std::size_t c = 0; c < chiavi.size(); ++c) {
        ValoreCursore& valore = riga.Canali[c];
        if (!valore.Esiste) continue;
        const int colonna = Colonna(giro.Log, chiavi[c]);
        const double primo = Log(giro.Log).Valore(colonna, mio.Inizio + inizio);
        valore.Minimo = valore.Massimo = valore.Media = primo;
        double somma = 0.0;
        double prima = primo;
        double t = inizio;
        while (t < fine) {
            // To the next row, or to the end.
            const double riga10 = std::floor((mio.Inizio + t) / kPasso + 1e-6) + 1.0;
            const double poi = std::min(fine, riga10 * kPasso - mio.Inizio);
            const double ora = Log(giro.Log).Valore(colonna, mio.Inizio + poi);
            somma += (prima + ora) / 2.0 * (poi - t);
            valore.Minimo = std::min(valore.Minimo, ora);
            valore.Massimo = std::max(valore.Massimo, ora);
            prima = ora;
            t = poi;
        }
        if (fine > inizio) valore.Media = somma / (fine - inizio);
    }
}

std::vector<double> Confronto::RitmoPerCentoMetri(int passi) const {
    std::vector<double> ritmo;
    const auto giro = fuoco_ != 0 ? Di(fuoco_) : std::nullopt;
    const GiroAllineato* mio = giro ? Allineato(*giro) : nullptr;
    const GiroAllineato* riferimento = scelti_[0] ? Allineato(*scelti_[0]) : nullptr;
    if (mio == nullptr || riferimento == nullptr || riferimento->Lunghezza <= 0.0) return ritmo;
    double prima = 0.0;
    for (int k = 1; k <= passi; ++k) {
        const double metri = riferimento->Lunghezza * k / passi;
        const double ora = Distacco(*mio, *riferimento, metri);
        ritmo.push_back((ora - prima) / (riferimento->Lunghezza / passi) * 100.0);
        prima = ora;
    }
    return ritmo;
}

std::vector<double> Confronto::LungoIlGiro(const std::string& chiave, int passi) const {
    std::vector<double> valori;
    const auto giro = fuoco_ != 0 ? Di(fuoco_) : scelti_[0];
    const int colonna = giro ? Colonna(giro->Log, chiave) : 0;
    if (colonna == 0 || Allineato(*giro) == nullptr) return valori;
    for (int k = 0; k < passi; ++k) valori.push_back(Valore(*giro, colonna, (k + 0.5) / passi));
    return valori;
}

}  // namespace lapvane
