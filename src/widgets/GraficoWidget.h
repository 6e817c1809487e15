#pragma once

#include <QImage>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/GraphControl.h"
#include "widgets/AsseGrafico.h"
#include "widgets/Tracciatore.h"

namespace lapvane {

class Scrittore;

/// The one cursor of a graph.
struct CursoreGrafico {
    double X = 0.0;
    double Y = 0.0;
    ModoCursore Modo = ModoCursore::Libero;
    Colore Tinta = 0;
    bool Visibile = false;
};

/// A level that has a name: on the screen inside the plot, on paper in place of the numbers of the
/// y axis.
struct LivelloGrafico {
    double Y = 0.0;
    Colore Tinta = 0;
    std::string Nome;
};

/// The graph. It draws into a cached picture at the screen's own resolution and draws that anew
/// only when something of it has changed; the cursor moves over the cache. Lines and letters keep
/// their distance from the ground, whatever the palette. While the cursor is active the keys move
/// it as well: left and right by one point, with Ctrl by ten, Home and End to the first and the
/// last point in sight.
class GraficoWidget : public QWidget, public GraphControl {
    Q_OBJECT
 public:
    explicit GraficoWidget(QWidget* parent = nullptr);
    ~GraficoWidget() override;

    void Titolo(const std::string& testo) override;
    void EtichettaX(const std::string& testo) override;
    void EtichettaY(const std::string& testo) override;
    void ColoreAsse(Colore colore) override;
    void ColoreSfondo(Colore colore) override;
    void ColoreCornice(Colore colore) override;
    void MostraGriglia(bool mostra) override;
    void MostraNumeriY(bool mostra) override;
    void PulisciGrafico() override;
    std::int16_t ElementoCorrente() const override;
    void ColoreElemento(Colore colore) override { prossimo_.Tinta = colore; }
    void SpessoreElemento(std::int16_t spessore) override { prossimo_.Spessore = spessore; }
    void NomeElemento(const std::string& nome) override { prossimo_.Nome = nome; }
    void ImpostaIntervallo(double xMin, double xMax, double yMin, double yMax,
                           int riquadro) override;
    IntervalloGrafico LeggiIntervallo() const override;
    void ScalaY(double fattore) override;
    void DisegnaArray(std::span<const double> x, std::span<const double> y, std::int16_t elemento,
                      double scala, int passo, const MisureCanale& misure) override;
    void AggiungiPunto(double x, double y) override;
    int NumeroCursori() const override { return cursore_ ? 1 : 0; }
    void AggiungiCursore() override;
    void ImpostaModoCursore(ModoCursore modo) override;
    void ColoreCursore(Colore colore) override;
    void CursoreVisibile(bool visibile) override;
    void CursoreX(double x) override;
    double CursoreX() const override { return cursore_ ? cursore_->X : 0.0; }
    void CursoreY(double y) override;
    void CursoreAttivo(bool attivo) override { cursoreAttivo_ = attivo; }
    bool CursoreAttivo() const override { return cursoreAttivo_; }
    std::int32_t IndiceDaX(double x, double scala) const override;
    void ImpostaModoMouse(ModoMouse modo) override;

    /// A menu is asked for at a place of the screen. The right mouse button asks for none while it
    /// has a zoom rectangle to drop.
    std::function<void(const QPoint&)> EventoMenu;
    /// A notch of the wheel: towards the person (true) or away.
    std::function<void(bool)> EventoRotella;

    /// Marks each point of the curves, and leaves them a margin around the range, so that none
    /// touches the frame.
    void MostraPunti(bool mostra);
    /// The levels that the curves of the overlaid view keep to.
    void Livelli(std::vector<LivelloGrafico> livelli);
    /// What stands in the middle, for a graph without a curve; empty: nothing.
    void Invito(const std::string& testo);

    /// The plot area of a pane, counted from 0 at the top, in the widget's own pixels.
    QRectF AreaDisegno(int riquadro = 0) const;
    /// Where a point of the overlaid view stands, in the widget's own pixels, and back; empty while
    /// the axes have no range.
    std::optional<QPointF> PixelDi(double x, double y) const;
    std::optional<QPointF> ValoriIn(const QPointF& pixel) const;

    /// The graph without its cursor, as the screen shows it at that many device pixels per pixel.
    QImage Fotografa(double rapporto) const;
    /// Draws the graph into the rectangle as lines and letters, in black on white paper; letters
    /// and line widths follow the rectangle's size.
    void DisegnaSu(QPainter& painter, const QRectF& rect, bool conCursore = false) const;
    /// How often the picture was drawn anew.
    int Ridisegni() const { return ridisegni_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;
    void mouseMoveEvent(QMouseEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void wheelEvent(QWheelEvent* evento) override;

 private:
    struct Elemento {
        Colore Tinta = 0;
        std::int16_t Spessore = 1;
        std::string Nome;
        int Riquadro = 0;
        std::vector<PuntoGrafico> Punti;  ///< axis values, thinned out and scaled
    };
    struct Riquadro {
        double YMin = 0.0;
        double YMax = 1.0;
        Colore Tinta = 0;
        std::string Etichetta;
        double Scala = 1.0;
    };
    struct Disposizione;
    struct Foglio;

    void Sporca();
    void SporcaMisure();
    std::vector<Riquadro> Riquadri() const;
    Colore Sfondo() const;
    Foglio Schermo(double rapporto) const;
    /// The layout for the screen, made anew only when something of it has changed.
    const Disposizione& Disposta(double rapporto) const;
    Disposizione Disponi(Foglio& foglio) const;
    void DisponiLegenda(Foglio& foglio, Disposizione& d, double& alto) const;
    void DisponiAssiY(Foglio& foglio, const std::vector<Riquadro>& riquadri, double altezza,
                      Disposizione& d) const;
    void DisponiAsseX(Foglio& foglio, double larghezza, Disposizione& d) const;
    bool CampiVuoti(const Disposizione& d) const;
    /// Copies the picture to the screen's pixels along with it, unless these are null.
    void Dipingi(QImage& foto, double rapporto, const Tracciatore::Tela& schermo) const;
    void DipingiCurve(QImage& foto, const Foglio& foglio, const Disposizione& d,
                      const Tracciatore::Tela& schermo) const;
    void DisegnaCurve(QPainter& penna, const Foglio& foglio, const Disposizione& d) const;
    void DisegnaFondo(QPainter& penna, Foglio& foglio, const Disposizione& d) const;
    void DisegnaRiquadro(QPainter& penna, Foglio& foglio, const Disposizione& d,
                         std::size_t i) const;
    void DisegnaGriglia(QPainter& penna, Foglio& foglio, const Disposizione& d,
                        std::size_t i) const;
    void DisegnaCornice(QPainter& penna, Foglio& foglio, const QRectF& area) const;
    void DisegnaAsseY(QPainter& penna, Foglio& foglio, const Disposizione& d, std::size_t i) const;
    void DisegnaEtichettaY(QPainter& penna, const Foglio& foglio, const Disposizione& d,
                           std::size_t i) const;
    void DisegnaAsseX(QPainter& penna, Foglio& foglio, const Disposizione& d) const;
    void DisegnaLegenda(QPainter& penna, Foglio& foglio, const Disposizione& d) const;
    void DisegnaLivelli(QPainter& penna, const Foglio& foglio, const QRectF& area) const;
    void DisegnaCursore(QPainter& penna) const;
    void DisegnaCursoreSu(QPainter& penna, const Foglio& foglio, const Disposizione& d) const;
    void DisegnaZoom(QPainter& penna) const;
    /// True: the new picture is on the screen already.
    bool AggiornaFoto(const QPainter& penna);
    void DescriviGrafico();
    ScalaPixel ScalaX(const QRectF& area) const;
    ScalaPixel ScalaY(const QRectF& area, const Riquadro& dati) const;
    QRectF RettangoloZoom() const;
    std::optional<double> PixelCursore() const;
    void AggiornaCursore(const std::optional<double>& prima);
    void MuoviCursore(const QPointF& punto);
    bool MuoviConTasto(const QKeyEvent& evento);
    void MettiCursore(double x, double y, std::int32_t indice);
    void Ingrandisci();

    std::string titolo_;
    std::string etichettaX_;
    Riquadro unico_;                  ///< the pane of the overlaid view
    std::vector<Riquadro> separati_;  ///< the separate panes, if there are any
    double xMin_ = 0.0;
    double xMax_ = 1.0;
    int riquadroCorrente_ = 0;
    std::optional<Colore> sfondo_;
    std::optional<Colore> cornice_;
    std::vector<LivelloGrafico> livelli_;
    std::string invito_;
    bool griglia_ = true;
    bool numeriY_ = true;
    bool punti_ = false;
    Elemento prossimo_;
    std::vector<Elemento> elementi_;
    bool elementoAperto_ = false;  ///< the last element still takes points one by one
    std::optional<CursoreGrafico> cursore_;
    bool cursoreAttivo_ = true;
    ModoMouse modoMouse_ = ModoMouse::Cursore;
    std::optional<QRectF> zoom_;  ///< the rectangle that is being drawn
    int rotella_ = 0;             ///< of a notch that is not complete yet, in eighths of a degree
    QImage foto_;
    bool sporco_ = true;
    int ridisegni_ = 0;
    QString descrizione_;  ///< accessible name that the graph gave itself
    mutable std::unique_ptr<Scrittore> scrittore_;
    mutable std::unique_ptr<Disposizione> disposta_;
    mutable Tracciatore tracciatore_;
};

}  // namespace lapvane
