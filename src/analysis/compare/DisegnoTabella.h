#pragma once

#include <QAbstractScrollArea>
#include <QPainter>
#include <memory>

#include "analysis/compare/DisegnoPittura.h"

namespace lapvane {

/// A table to look at whose rows scroll below its head and whose columns scroll beside the first
/// ones. Places count from its corner, as if nothing were scrolled.
class DisegnoTabella : public QAbstractScrollArea {
    Q_OBJECT
 public:
    explicit DisegnoTabella(QWidget* parent = nullptr);
    ~DisegnoTabella() override;

    /// The table as text, a row a line, with headings, columns separated by tabs.
    virtual QString Testo() const = 0;

    QSize minimumSizeHint() const override;

 protected:
    struct Misura {
        double Larga = 0.0;  ///< of all columns
        double Alta = 0.0;   ///< of all rows, without the head
        double Testata = 0.0;
        double Fisse = 0.0;  ///< of the first columns
    };
    /// Lays the columns out in that width, or as wide as they need to be.
    virtual Misura Disponi(double larghezza) = 0;
    /// Draws the first columns, or all others.
    virtual void DisegnaTestata(QPainter& penna, bool fisse) = 0;
    virtual void DisegnaRighe(QPainter& penna, bool fisse) = 0;
    /// Draws over rows and head what shows where the keys go.
    virtual void DisegnaFuoco(QPainter& penna);

    /// To be called when what is shown has changed; lays it out anew.
    void Rinnova();
    const Misura& Misurata() const { return misura_; }
    ScrittoriQuadri& Scritti() const;
    QPointF InTabella(const QPointF& punto) const;
    QRectF InVista(const QRectF& cella) const;
    /// Scrolls so that a cell of the scrolling columns shows.
    void Mostra(const QRectF& cella);

    void paintEvent(QPaintEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;
    void focusInEvent(QFocusEvent* evento) override;
    void focusOutEvent(QFocusEvent* evento) override;

 private:
    void Adatta();

    Misura misura_;
    mutable std::unique_ptr<ScrittoriQuadri> scrittori_;
};

}  // namespace lapvane
