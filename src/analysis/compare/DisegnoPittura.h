#pragma once

#include <QImage>
#include <QPainter>
#include <QString>
#include <vector>

#include "analysis/compare/DatiConfronto.h"
#include "widgets/AsseGrafico.h"
#include "widgets/Scrittore.h"
#include "widgets/Tracciatore.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

/// The sizes of writing that the panes have. `rapporto` as a `Scrittore` takes it.
struct ScrittoriQuadri {
    ScrittoriQuadri(const QFont& base, double rapporto);
    Scrittore Piccolo;  ///< figures of the axes
    Scrittore Corpo;
    Scrittore Forte;  ///< titles
    Scrittore Marca;  ///< small and bold: flags, parts where most is lost
};

/// A tick of an axis.
struct EtichettaAsse {
    double Valore = 0.0;
    QString Testo;
};

/// Width of the longest figure at the left of the panes in any view, so that they don't jump from
/// one view to the next.
double LarghezzaTacche(const DatiQuadri& dati, ScrittoriQuadri& scrittori);

/// The panes of the comparison laid out for one size, view and font, and their drawing on to a
/// screen or paper. Lengths are pixels, x counts as the data do. Holds on to what it was made with.
class PitturaQuadri {
 public:
    struct Quadro {
        QRectF Posto;  ///< with the title
        QRectF Area;   ///< of the curves
        ScalaPixel Y;
        std::vector<EtichettaAsse> Tacche;
    };

    PitturaQuadri(const DatiQuadri& dati, double da, double a, const QSizeF& misura,
                  const Colori& colori, ScrittoriQuadri& scrittori, double larghezzaTacche);

    const QSizeF& Misura() const { return misura_; }
    double Rapporto() const { return scrittori_.Piccolo.Rapporto(); }
    const std::vector<Quadro>& Quadri() const { return quadri_; }
    const ScalaPixel& X() const { return x_; }
    /// The numbers of the parts; empty where there is only one.
    const QRectF& Righello() const { return righello_; }
    /// The figures of x, below the panes.
    const QRectF& Asse() const { return asse_; }
    double Sinistra() const { return x_.PixelDa; }
    double Destra() const { return x_.PixelA; }
    /// Where a part begins and, one further, ends.
    double Confine(int parte) const;
    int Parti() const { return static_cast<int>(dati_.Confini.size()) + 1; }

    /// All but the curves.
    void Fondo(QPainter& penna) const;
    /// The curves into the picture that `Fondo` went into.
    void Curve(QImage& foto, Tracciatore& tracciatore) const;
    /// The curves as lines.
    void Curve(QPainter& penna) const;

 private:
    void DisponiQuadri(double larghezzaTacche);
    void DisponiY(const QuadroConfronto& dati, Quadro& quadro) const;
    void DisponiX();
    double Intero(double v) const;
    bool SuCarta() const { return Rapporto() <= 0.0; }
    Tratto Punti(const CurvaGiro& curva, const ScalaPixel& x, const ScalaPixel& y) const;
    std::vector<const CurvaGiro*> InOrdine(const QuadroConfronto& dati) const;
    double Larghezza(char lettera) const;
    std::size_t ConLettere() const;

    void DisegnaTratti(QPainter& penna) const;
    void DisegnaConfini(QPainter& penna) const;
    void DisegnaQuadro(QPainter& penna, std::size_t i) const;
    void DisegnaSuperficie(QPainter& penna, std::size_t i) const;
    void DisegnaTitolo(QPainter& penna, std::size_t i) const;
    void DisegnaLettere(QPainter& penna) const;
    void DisegnaAsseX(QPainter& penna) const;
    void RigaVerticale(QPainter& penna, double x, double da, double a, const QColor& tinta) const;
    void RigaOrizzontale(QPainter& penna, double y, double da, double a, const QColor& tinta) const;

    const DatiQuadri& dati_;
    double da_;
    double a_;
    QSizeF misura_;
    const Colori& colori_;
    ScrittoriQuadri& scrittori_;
    ScalaPixel x_;
    QRectF righello_;
    QRectF asse_;
    std::vector<Quadro> quadri_;
    std::vector<EtichettaAsse> tacche_;
};

/// Heights of panes by their share of `altezza`, none under `minima` as long as there is room.
std::vector<double> AltezzeQuadri(const std::vector<double>& pesi, double altezza, double minima);

/// Middles of marks `lato` high that lie as near to `centri` (ascending) as they can without
/// covering each other, between `da` and `a`; closer where there is no room.
std::vector<double> Scosta(std::vector<double> centri, double lato, double da, double a);

/// The value of a curve, between its points, and at its ends beyond; 0 for one without points.
double ValoreCurva(const CurvaGiro& curva, double x);

/// "1318 m" or "27.57 s".
QString TestoPosto(const DatiQuadri& dati, double x);

constexpr double kQuadroMinimo = 40.0;

}  // namespace lapvane
