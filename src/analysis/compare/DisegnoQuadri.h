#pragma once

#include <QImage>
#include <QWidget>
#include <memory>
#include <optional>
#include <utility>

#include "analysis/compare/DatiConfronto.h"
#include "widgets/AsseGrafico.h"
#include "widgets/Tracciatore.h"

namespace lapvane {

class PitturaQuadri;
struct ScrittoriQuadri;
struct Colori;

/// The panes of the comparison under each other over one axis. It draws into a cached picture at
/// the screen's own resolution and draws that anew only when something of it has changed; the
/// cursors move over the cache. x is in the units of the data: metres, or seconds.
///
/// Mouse: the cursor follows it; the wheel zooms where it stands and, sideways, moves; dragging
/// moves; dragging with the right button or Ctrl zooms to the stretch that is drawn; a double click
/// shows all; Shift sets the second cursor or, on it, takes it away; a click into the ruler zooms
/// to that part. Keys: left and right (with Ctrl ten samples), Home, End move the cursor, with
/// Shift the second one; + and - zoom, 0 shows all, PageUp and PageDown move the view, Esc takes
/// the second cursor away.
class DisegnoQuadri : public QWidget {
    Q_OBJECT
 public:
    explicit DisegnoQuadri(QWidget* parent = nullptr);
    ~DisegnoQuadri() override;

    /// What is drawn. The view stays as it is, or the whole if it was the whole; another kind of
    /// axis shows the whole, with the cursor at its begin and without the second one.
    void Imposta(DatiQuadri dati);
    const DatiQuadri& Dati() const { return dati_; }
    /// The sentence that is shown where there is nothing to draw.
    void Invito(const QString& frase);

    /// What of x is in sight.
    double Da() const { return da_; }
    double A() const { return a_; }
    bool Intera() const { return da_ <= 0.0 && a_ >= dati_.Fine; }
    double Cursore() const { return cursore_; }
    std::optional<double> Secondo() const { return secondo_; }

    // Each tells by its signal when something has changed. Values outside of the data become their
    // nearest end; a view that is too narrow is widened.
    void MettiVista(double da, double a);
    void VediTutto() { MettiVista(0.0, dati_.Fine); }
    /// From 0; what is no part is passed over.
    void VediParte(int parte);
    /// Zooms by `fattore` (above 1: closer) so that `x` stays where it is.
    void Ingrandisci(double fattore, double x);
    void MettiCursore(double x);
    void MettiSecondo(std::optional<double> x);

    /// Where the curves of a pane (from 0, from the top) are drawn, in the widget's pixels.
    QRectF Area(int quadro) const;
    /// The values at the lower and the upper end of that area.
    std::pair<double, double> EstremiY(int quadro) const;
    QRectF Righello() const;
    double PixelX(double x) const;
    double ValoreX(double pixel) const;

    /// The picture without the cursors, as the screen shows it at that many device pixels a pixel.
    QImage Fotografa(double rapporto) const;
    /// Draws the panes without the cursors into the rectangle as lines and letters, in the light
    /// theme; letters and widths follow the rectangle's size.
    void DisegnaSu(QPainter& penna, const QRectF& posto) const;
    /// How often the picture was drawn anew.
    int Ridisegni() const { return ridisegni_; }

    QSize sizeHint() const override;
    /// Room for 40 pixels a pane.
    QSize minimumSizeHint() const override;

 Q_SIGNALS:
    void CursoreMosso(double x);
    void SecondoMosso(std::optional<double> x);
    void VistaCambiata(double da, double a);

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;
    void mouseMoveEvent(QMouseEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void wheelEvent(QWheelEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;

 private:
    enum class Gesto { Nessuno, Premuto, Sposta, Ritaglio, Secondo };

    bool Vuoto() const;
    void Sporca();
    void Descrivi();
    /// The panes as the screen shows them, laid out anew only when something has changed.
    const PitturaQuadri& Pittura() const { return Pittura(devicePixelRatioF()); }
    const PitturaQuadri& Pittura(double rapporto) const;

    void Premi(const QMouseEvent& evento);
    void Muovi(const QPointF& punto);
    void Rilascia(const QPointF& punto);
    void LasciaGesto();
    void AdattaPuntatore(const QPointF& punto);
    bool SulSecondo(const QPointF& punto) const;
    int ParteA(const QPointF& punto) const;
    bool Tasto(int tasto, Qt::KeyboardModifiers con);
    bool TastoCursore(int tasto, Qt::KeyboardModifiers con);
    double Campione(double x, int passi) const;
    void PortaInVista(double x);

    void Dipingi(QImage& foto, double rapporto) const;
    void DisegnaInvito(QPainter& penna, const QRectF& posto, const Colori& colori) const;
    void DisegnaCursore(QPainter& penna, double x, bool secondo) const;
    void DisegnaRitaglio(QPainter& penna) const;
    QRectF Bandiera(double x) const;
    void AggiornaCursore(std::optional<double> x);

    DatiQuadri dati_;
    QString invito_;
    double da_ = 0.0;
    double a_ = 0.0;
    double cursore_ = 0.0;
    std::optional<double> secondo_;

    Gesto gesto_ = Gesto::Nessuno;
    QPointF premuto_;         ///< where the button went down
    double afferrato_ = 0.0;  ///< x under the mouse while it moves the view
    double altroCapo_ = 0.0;  ///< x where the stretch that is being drawn begins
    double capo_ = 0.0;       ///< and where it ends
    bool nuovo_ = false;      ///< the press has made the second cursor

    QImage foto_;
    bool sporco_ = true;
    int ridisegni_ = 0;
    QString descrizione_;  ///< accessible name that the panes gave themselves
    mutable std::unique_ptr<ScrittoriQuadri> scrittori_;
    mutable std::optional<double> larghezzaTacche_;
    mutable std::unique_ptr<PitturaQuadri> pittura_;
    mutable Tracciatore tracciatore_;
};

}  // namespace lapvane
