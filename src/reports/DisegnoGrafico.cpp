#include "reports/DisegnoGrafico.h"

#include <array>

namespace lapvane {

void StampaControllo(QtPrinter& stampante, const TestiStampaGrafico& testi,
                     const std::function<void(QPainter&, const QRectF&)>& disegna) {
    constexpr double kMargine = 1.0;
    constexpr double kRientro = 0.5;      // of texts inside the frame
    constexpr double kAltoCornice = 3.2;  // height of the frame
    constexpr double kAltoTitolo = 0.6;
    constexpr double kAltoLegenda = 0.7;
    constexpr double kSpazio = 0.3;
    struct Posto {
        double X, Y, Fine;  // in parts of the inner width, cm, parts
    };
    constexpr std::array<Posto, 7> kPosti = {{{0.0, 0.35, 1.0},
                                              {0.0, 0.85, 0.5},
                                              {0.5, 0.85, 1.0},
                                              {0.0, 1.35, 0.5},
                                              {0.5, 1.35, 1.0},
                                              {0.0, 1.85, 1.0},
                                              {0.0, 2.35, 1.0}}};
    const double destra = stampante.Pagina().width() - kMargine;
    const double basso = stampante.Pagina().height() - kMargine;
    const double fineCornice = kMargine + kAltoCornice;
    stampante.Line(kMargine, kMargine, destra, kMargine);
    stampante.Line(destra, kMargine, destra, fineCornice);
    stampante.Line(destra, fineCornice, kMargine, fineCornice);
    stampante.Line(kMargine, fineCornice, kMargine, kMargine);

    const double sinistra = kMargine + kRientro;
    const double utile = destra - kRientro - sinistra;
    stampante.FontSize(10.0);
    for (std::size_t i = 0; i < kPosti.size(); ++i) {
        const Posto& posto = kPosti[i];
        stampante.Text(sinistra + posto.X * utile, kMargine + posto.Y,
                       sinistra + posto.Fine * utile - kSpazio, testi.Righe[i]);
    }

    stampante.FontSize(11.0);
    stampante.Text(kMargine, fineCornice + kSpazio, destra, testi.Titolo);

    const double altoGrafico = fineCornice + kSpazio + kAltoTitolo;
    const double bassoGrafico = basso - kAltoLegenda;
    QPainter& penna = stampante.Penna();
    penna.save();
    disegna(penna, stampante.Rettangolo(kMargine, altoGrafico, destra - kMargine,
                                        bassoGrafico - altoGrafico));
    penna.restore();

    stampante.FontSize(9.0);
    stampante.Text(kMargine, basso - kAltoLegenda + 0.15, destra, testi.Legenda);
    stampante.EndDoc();
}

}  // namespace lapvane
