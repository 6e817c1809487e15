#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QStaticText>

class QPainter;

namespace lapvane {

/// Texts in one font. On the screen each is laid out once and kept, as long as the font stays.
class Scrittore {
 public:
    /// `rapporto` is device pixels per pixel; 0: for paper, where texts stay texts.
    Scrittore(const QFont& carattere, double rapporto);

    double Rapporto() const { return rapporto_; }
    double Riga() const { return misura_.height(); }
    const QFont& Carattere() const { return carattere_; }
    double Largo(const QString& testo);
    /// In the painter's pen, whose font must be this one.
    void Scrivi(QPainter& penna, const QRectF& posto, Qt::Alignment come, const QString& testo);

    /// Width of figures as `Cifre` writes them.
    double LargoCifre(const QString& testo);
    /// Figures at the right end of `posto`, in the middle of its height, each digit in a cell of
    /// one width: those of a column stand below one another in every font, and a new number costs
    /// no layout. Sets the painter's font.
    void Cifre(QPainter& penna, const QRectF& posto, const QString& testo);

 private:
    double SuPixel(double v) const;
    static QPointF Inizio(const QRectF& posto, Qt::Alignment come, const QSizeF& misura);
    double Cella(QChar segno);
    const QStaticText& Pronto(const QString& testo);

    double rapporto_;
    QFont carattere_;
    QFontMetricsF misura_;
    double cifra_ = 0.0;  ///< width of the cell of a digit
    QHash<QString, QStaticText> pronti_;
    QHash<QChar, double> celle_;
};

}  // namespace lapvane
