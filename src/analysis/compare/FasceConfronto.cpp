#include "analysis/compare/FasceConfronto.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace lapvane {

namespace {

struct Estremi {
    double Minimo;
    double Massimo;
};

/// Calls with the index of each row in sight. The ends of a curve lie on the line, between rows.
template <class F>
void RigheInVista(const CurvaGiro& curva, double da, double a, F&& azione) {
    for (std::size_t i = 1; i + 1 < curva.X.size(); ++i) {
        if (curva.X[i] >= da && curva.X[i] <= a) azione(i);
    }
}

std::optional<Estremi> EstremiInVista(const QuadroConfronto& canale, double da, double a) {
    std::optional<Estremi> estremi;
    for (const CurvaGiro& curva : canale.Curve) {
        RigheInVista(curva, da, a, [&](std::size_t i) {
            const double y = curva.Y[i];
            if (!estremi) estremi = Estremi{y, y};
            estremi->Minimo = std::min(estremi->Minimo, y);
            estremi->Massimo = std::max(estremi->Massimo, y);
        });
    }
    return estremi;
}

/// 1, 2 or 5 times a power of ten, the first one that is not below `almeno`.
double PassoTondo(double almeno) {
    const double potenza = std::pow(10.0, std::floor(std::log10(almeno)));
    for (const double cifra : {1.0, 2.0, 5.0}) {
        if (cifra * potenza >= almeno * (1.0 - 1e-9)) return cifra * potenza;
    }
    return 10.0 * potenza;
}

/// The band of a value. A value on a border that decimal places can't hold exactly belongs above.
double Fascia(double valore, double passo) {
    return std::floor(valore / passo + 1e-9);
}

}  // namespace

std::vector<PuntiXY> Accoppia(const QuadroConfronto& x, const QuadroConfronto& y, double da,
                              double a) {
    std::vector<PuntiXY> serie;
    for (const CurvaGiro& curva : x.Curve) {
        const auto altra = std::find_if(y.Curve.begin(), y.Curve.end(), [&](const CurvaGiro& una) {
            return una.Lettera == curva.Lettera;
        });
        if (altra == y.Curve.end() || altra->X.size() != curva.X.size()) continue;
        PuntiXY punti{curva.Lettera, {}, {}};
        RigheInVista(curva, da, a, [&](std::size_t i) {
            punti.X.push_back(curva.Y[i]);
            punti.Y.push_back(altra->Y[i]);
        });
        serie.push_back(std::move(punti));
    }
    return serie;
}

std::array<double, 3> PassiFasce(const QuadroConfronto& canale, double da, double a) {
    const auto estremi = EstremiInVista(canale, da, a);
    const double campo = estremi ? estremi->Massimo - estremi->Minimo : 0.0;
    if (!(campo > 0.0)) return {1.0, 1.0, 1.0};
    return {PassoTondo(campo / 6.0), PassoTondo(campo / 12.0), PassoTondo(campo / 24.0)};
}

FasceCanale Ripartisci(const QuadroConfronto& canale, double da, double a, double passo) {
    FasceCanale fasce;
    fasce.Passo = passo;
    const auto estremi = EstremiInVista(canale, da, a);
    if (!estremi) return fasce;
    const double prima = Fascia(estremi->Minimo, passo);
    const double numero = Fascia(estremi->Massimo, passo) - prima + 1.0;
    if (!(numero <= kFasceMassime)) return fasce;
    fasce.Da = prima * passo;
    fasce.Numero = static_cast<int>(numero);
    for (const CurvaGiro& curva : canale.Curve) {
        QuoteGiro quote{curva.Lettera, std::vector<double>(static_cast<std::size_t>(numero))};
        double righe = 0.0;
        RigheInVista(curva, da, a, [&](std::size_t i) {
            quote.Quote[static_cast<std::size_t>(Fascia(curva.Y[i], passo) - prima)] += 1.0;
            righe += 1.0;
        });
        for (double& quota : quote.Quote) quota /= std::max(righe, 1.0);
        fasce.Giri.push_back(std::move(quote));
    }
    return fasce;
}

}  // namespace lapvane
