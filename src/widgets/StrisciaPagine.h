#pragma once

#include <QImage>
#include <QWidget>
#include <functional>
#include <vector>

namespace lapvane {

/// The pages of the display as a strip of small pictures: those that are on have a tick, those that
/// are off are faint, the one on show has a frame. A click, or the keys left, right, Home and End,
/// choose a page.
class StrisciaPagine : public QWidget {
    Q_OBJECT
 public:
    explicit StrisciaPagine(QWidget* parent = nullptr);

    /// A page is asked for; counted from 1.
    std::function<void(int)> EventoPagina;

    /// As many pages as that.
    void Pagine(int numero);
    int Pagine() const { return static_cast<int>(pagine_.size()); }
    /// Picture and state of a page; a null picture leaves its place empty.
    void Mostra(int pagina, const QImage& immagine, bool accesa);
    void Corrente(int pagina);
    /// Where a page stands.
    QRect Posto(int pagina) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void focusInEvent(QFocusEvent* evento) override;
    void focusOutEvent(QFocusEvent* evento) override;

 private:
    struct Pagina {
        QImage Immagine;
        QImage Piccola;  ///< at the size of the screen's pixels
        bool Accesa = false;
    };
    void Disegna(QPainter& penna, int pagina);
    void Chiedi(int pagina);

    std::vector<Pagina> pagine_;
    int corrente_ = 1;
};

}  // namespace lapvane
