#pragma once

#include <QPalette>
#include <QProxyStyle>

class QAbstractButton;

namespace lapvane {

/// The look of the program's windows: measures from the font (`Misure`), colours from the palette
/// and, where that has no role, from `ColoriDi`. What it does not draw itself is Fusion's.
class Stile : public QProxyStyle {
 public:
    Stile();

    /// The one object that all dressed widgets share; it goes with the application.
    static Stile& Comune();

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;

    int pixelMetric(PixelMetric misura, const QStyleOption* opzioni,
                    const QWidget* widget) const override;
    int styleHint(StyleHint quale, const QStyleOption* opzioni, const QWidget* widget,
                  QStyleHintReturn* risposta) const override;
    QSize sizeFromContents(ContentsType tipo, const QStyleOption* opzioni, const QSize& contenuto,
                           const QWidget* widget) const override;
    QRect subElementRect(SubElement parte, const QStyleOption* opzioni,
                         const QWidget* widget) const override;
    QRect subControlRect(ComplexControl controllo, const QStyleOptionComplex* opzioni,
                         SubControl parte, const QWidget* widget) const override;

    void drawPrimitive(PrimitiveElement parte, const QStyleOption* opzioni, QPainter* penna,
                       const QWidget* widget) const override;
    void drawControl(ControlElement parte, const QStyleOption* opzioni, QPainter* penna,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl controllo, const QStyleOptionComplex* opzioni,
                            QPainter* penna, const QWidget* widget) const override;
    /// The label of a box that is off is as dull as the box.
    void drawItemText(QPainter* penna, const QRect& posto, int come, const QPalette& paletta,
                      bool attivo, const QString& testo, QPalette::ColorRole ruolo) const override;
    QPixmap generatedIconPixmap(QIcon::Mode modo, const QPixmap& immagine,
                                const QStyleOption* opzioni) const override;
    /// The signs of boxes and of the file dialog are drawings of the program's own.
    QIcon standardIcon(StandardPixmap quale, const QStyleOption* opzioni,
                       const QWidget* widget) const override;
    QPixmap standardPixmap(StandardPixmap quale, const QStyleOption* opzioni,
                           const QWidget* widget) const override;

 private:
    bool DisegnaPannello(PrimitiveElement parte, const QStyleOption& opzioni, QPainter& penna,
                         const QWidget* widget) const;
    bool DisegnaSegno(PrimitiveElement parte, const QStyleOption& opzioni, QPainter& penna,
                      const QWidget* widget) const;
    bool DisegnaTesto(ControlElement parte, const QStyleOption& opzioni, QPainter& penna,
                      const QWidget* widget) const;
    bool DisegnaParte(ControlElement parte, const QStyleOption& opzioni, QPainter& penna,
                      const QWidget* widget) const;
    void DisegnaVoceMenu(const QStyleOption& opzioni, QPainter& penna, const QWidget* widget) const;
};

/// Two or more buttons that stand without a gap and of which one is pressed, drawn as one bar. The
/// buttons become checkable; each knows its place by the property "segmento".
void Segmenti(std::initializer_list<QAbstractButton*> pulsanti);

/// A box whose text cannot be right has a red edge (property "errato").
void SegnaErrato(QWidget& campo, bool errato);

/// Place of a button in such a bar: 0 it is alone, 1 first, 2 between, 3 last.
int PostoSegmento(const QWidget* pulsante);

}  // namespace lapvane
