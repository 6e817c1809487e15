#pragma once

#include <vector>

#include "analysis/compare/DatiConfronto.h"
#include "analysis/compare/DisegnoTabella.h"

namespace lapvane {

/// The laps by their parts: below each time a bar for what is lost or gained against the reference,
/// the best of each part in colour, the ideal lap last. A click on a row chooses that lap, one on a
/// part's head or time zooms there; up and down choose the lap beside the one in focus, left and
/// right a part, Enter zooms to it.
class DisegnoParti : public DisegnoTabella {
    Q_OBJECT
 public:
    explicit DisegnoParti(QWidget* parent = nullptr);

    void Imposta(TabellaParti tabella);
    QString Testo() const override;

    /// Where a cell is drawn in the viewport: row from 0, -1 for the head; part from 0.
    QRectF Cella(int riga, int parte) const;
    /// Height at which all rows show.
    QSize sizeHint() const override;

 Q_SIGNALS:
    void Scelto(char lettera);
    /// From 0.
    void ParteScelta(int parte);

 protected:
    Misura Disponi(double larghezza) override;
    void DisegnaTestata(QPainter& penna, bool fisse) override;
    void DisegnaRighe(QPainter& penna, bool fisse) override;
    void DisegnaFuoco(QPainter& penna) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent*) override {}  // the press was taken here
    void keyPressEvent(QKeyEvent* evento) override;

 private:
    int Parti() const;
    int Numero() const { return static_cast<int>(tabella_.Righe.size()); }
    const RigaParti& Riga(int riga) const { return tabella_.Righe[static_cast<std::size_t>(riga)]; }
    bool Peggiore(int parte) const;
    QRectF Posto(int riga, int parte) const;
    void Calcola();
    void DisegnaFissa(QPainter& penna, int riga) const;
    void DisegnaTempi(QPainter& penna, int riga) const;
    void DisegnaBarra(QPainter& penna, const QRectF& cella, std::int32_t perso) const;
    int RigaFuoco() const;
    void ScegliRiga(int passo);
    void ScegliParte(int parte);

    TabellaParti tabella_;
    std::vector<std::int32_t>
        migliori_;              ///< of each part; 0: there is no other lap to be better than
    std::int32_t massimo_ = 0;  ///< the greatest difference of all
    int parte_ = 0;             ///< the one that Enter zooms to
    double larghezzaParte_ = 0.0;
    double larghezzaTempo_ = 0.0;
    double larghezzaDistacco_ = 0.0;
};

}  // namespace lapvane
