#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <array>

namespace lapvane {

/// The buttons that move through a lap: zoom on the left, shift and automatic scroll on the right
/// or, where there is no room, below.
class BarraNavigazione : public QWidget {
    Q_OBJECT
 public:
    explicit BarraNavigazione(QWidget* parent = nullptr);

    void AbilitaZoomIn(bool acceso);
    /// A click on cmdZoomOut10 or cmdZoomIn10: nothing while that button is off.
    void ScattoZoom(bool fuori);
    /// States of cmdScorriSX and cmdScorriDX: enabled, and green while it scrolls.
    void Scorri(bool sinistra, bool sinistraVerde, bool destra, bool destraVerde);
    /// What the shift and the scroll buttons are called.
    void Nomi(const QString& sposta, const QString& scorri);

    QSize minimumSizeHint() const override;

 Q_SIGNALS:
    /// The window becomes so many times as wide or, if `fuori`, its width is divided by the factor.
    void Zoom(double fattore, bool fuori);
    /// The window moves by so many steps.
    void Sposta(int passi);
    /// -1: to the left, 1: to the right.
    void ScorriPremuto(int verso);

 protected:
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    QPushButton* Pulsante(const char* nome, const QString& testo);

    QBoxLayout* gruppi_ = nullptr;
    std::array<QPushButton*, 2> zoomIn_{};
    std::array<QPushButton*, 2> zoomOut_{};
    std::array<QPushButton*, 4> sposta_{};
    std::array<QPushButton*, 2> scorri_{};
};

}  // namespace lapvane
