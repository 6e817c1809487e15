#pragma once

#include <vector>

#include "analysis/compare/DatiConfronto.h"
#include "analysis/compare/DisegnoTabella.h"

namespace lapvane {

/// The laps at the cursor: what each has lost and its channels, with the difference against the
/// reference below each value. With a second cursor a second block below: time, distance and lost
/// time between both, and the least, greatest and mean value of each channel.
class DisegnoValori : public DisegnoTabella {
    Q_OBJECT
 public:
    explicit DisegnoValori(QWidget* parent = nullptr);

    /// `fuoco` is the letter of the lap in focus, 0 for none.
    void Imposta(TabellaCursore tabella, char fuoco);
    /// "At 1318 m" and "27.57 s of the reference"; both empty without laps.
    QString Titolo() const;
    QString Nota() const;
    QString Testo() const override;

    QSize sizeHint() const override;

 protected:
    Misura Disponi(double larghezza) override;
    void DisegnaTestata(QPainter& penna, bool fisse) override;
    void DisegnaRighe(QPainter& penna, bool fisse) override;

 private:
    /// What stands in the cells of one column: a width that only grows, so that nothing jumps while
    /// the cursor moves.
    struct Colonna {
        double Minima = 0.0;
        double Larga = 0.0;
        double Sinistra = 0.0;
    };

    int Canali() const { return static_cast<int>(tabella_.Titoli.size()); }
    int Decimali(int canale) const;
    double AltaRiga() const;
    double AltaTratto() const;
    void Allarga();
    QRectF Cella(int colonna, double alto, double alta) const;
    void DisegnaGiro(QPainter& penna, const RigaCursore& riga, double alto, bool fisse);
    void DisegnaCanale(QPainter& penna, const RigaCursore& riga, int canale, const QRectF& cella);
    void DisegnaTitoliTratto(QPainter& penna, double alto, bool fisse);
    void DisegnaTratto(QPainter& penna, const RigaCursore& riga, double alto, bool fisse);
    void DisegnaTre(QPainter& penna, const QRectF& cella, const QString (&testi)[3]);
    void DisegnaLettera(QPainter& penna, const RigaCursore& riga, const QRectF& posto);
    void DisegnaFondo(QPainter& penna, const RigaCursore& riga, double alto, double alta);

    TabellaCursore tabella_;
    char fuoco_ = 0;
    double larghezzaGiro_ = 0.0;
    std::vector<Colonna> colonne_;  ///< that of the lost time, then those of the channels
};

}  // namespace lapvane
