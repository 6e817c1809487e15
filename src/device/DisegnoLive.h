#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QWidget>
#include <array>
#include <string>
#include <vector>

#include "device/Diagnostica.h"
#include "device/UltimoMinuto.h"

namespace lapvane {

/// The name of a value: its text without the unit in brackets, which stands in the unit's column,
/// and with what tells two values of one name apart behind it.
class NomeLive : public QLabel {
    Q_OBJECT
 public:
    explicit NomeLive(QWidget* parent) : QLabel(parent) {}
    void Coda(const QString& coda);
    /// What the brackets of the text hold; empty: it has none.
    QString Unita() const;

    /// Of the words that it shows, in small letters if need be.
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    QString Mostrato() const;

    QString coda_;
};

/// A figure with its last digit at the right edge: digits of one width on the line that the tile
/// sets. One that is disabled is a value not read any more. A text that is too wide is drawn
/// smaller, and cut behind its first digits if that does not help.
class CifraLive : public QLabel {
    Q_OBJECT
 public:
    explicit CifraLive(QWidget* parent) : QLabel(parent) {}
    /// The largest font, and the base line in pixels from the top; negative: the middle.
    void Grande(const QFont& carattere, int base);
    /// Of the text in its smallest letters.
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    QFont Minima() const;
    QFont grande_;
    int base_ = -1;
};

/// One value as a tile: name, figure, unit, the last minute as a line.
class RiquadroLive : public QWidget {
    Q_OBJECT
 public:
    RiquadroLive(const CampoLive& campo, QWidget* parent);

    /// The text of the value, read at `ora` (ms).
    void Valore(const QString& testo, std::int64_t ora);
    /// Its unit where the table of the live view has none.
    void UnitaPropria(const QString& unita);
    /// The least range of the line.
    void Apertura(double apertura) { apertura_ = apertura; }
    void Fermo(bool fermo);
    void Allarme(bool acceso);
    /// Puts the parts into their places; all tiles have one size and one width of the units.
    void Disponi(const QFont& cifra, int larghezzaUnita);
    /// Width that the unit takes, in the font of units.
    int LarghezzaUnita() const;
    QRect PostoCifra(int larghezzaUnita) const;
    QRect PostoLinea() const;

    NomeLive* lblNomeCampo;
    CifraLive* txtValoreCampo;
    QLabel* lblUM;

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    QString UnitaMostrata() const;
    void DisegnaLinea(QPainter& penna) const;

    bool memoria_;
    UltimoMinuto minuto_;
    double apertura_ = 1.0;
    QString unita_;
    bool fermo_ = false;
    bool allarme_ = false;
};

/// The tiles in their rows, each row under its title. All have one size, so that every figure ends
/// at the same place of its tile.
class PannelloLive : public QWidget {
    Q_OBJECT
 public:
    static constexpr int kRighe = 4;
    static constexpr int kColonne = 4;

    explicit PannelloLive(QWidget* parent);

    RiquadroLive& Riquadro(int campo) const;
    std::array<QLabel*, kRighe> Titoli;
    /// Says since when the values are not read; beside the first title.
    QLabel* lblFermi;
    /// Names and units have changed.
    void Ridisponi();

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

 protected:
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    QFont CarattereCifre(const QSize& posto) const;

    std::array<RiquadroLive*, kCampiLive> riquadri_{};
};

/// A frame whose values may be old: dashed then, and told beside its title.
class CorniceLive : public QGroupBox {
    Q_OBJECT
 public:
    CorniceLive(QWidget* parent, const char* nome);
    void Fermo(bool fermo);
    QLabel* lblFermi;

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;

 private:
    bool fermo_ = false;
};

/// A raw value as a bar from 0 to 1023.
class BarraIngresso : public QWidget {
    Q_OBJECT
 public:
    explicit BarraIngresso(QWidget* parent);
    void Valore(int valore);
    QSize sizeHint() const override { return {90, 6}; }

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    int Pieno() const;

    int valore_ = 0;
};

}  // namespace lapvane
