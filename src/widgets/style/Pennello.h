#pragma once

#include <QPainter>
#include <QRectF>
#include <span>

#include "widgets/style/Tavolozza.h"

namespace lapvane {

// Drawing that stays sharp at every scale of the screen: edges lie on its own pixels and a line is
// a whole number of them wide. Lengths are pixels at scale 1.

/// Width of a line in the painter's lengths: at least one pixel of the screen.
double Filo(const QPainter& penna, double spessore = 1.0);
/// The rectangle with its edges moved to the nearest pixels of the screen.
QRectF SuiPixel(const QPainter& penna, const QRectF& posto);
QPointF SuiPixel(const QPainter& penna, const QPointF& punto);

/// A filled rectangle with round corners and an edge inside of it. A colour that is not valid is
/// left out.
void Riquadro(QPainter& penna, const QRectF& posto, double raggio, const QColor& fondo,
              const QColor& bordo = {}, double spessore = 1.0);
/// A line along the lower (upper, left) edge of the rectangle, inside of it.
void FiloBasso(QPainter& penna, const QRectF& posto, const QColor& colore, double spessore = 1.0);
void FiloAlto(QPainter& penna, const QRectF& posto, const QColor& colore, double spessore = 1.0);
void FiloSinistro(QPainter& penna, const QRectF& posto, const QColor& colore,
                  double spessore = 1.0);
/// A line through the points, with round joins and ends.
void Spezzata(QPainter& penna, std::span<const QPointF> punti, const QColor& colore,
              double spessore);
/// The arrow of lists and tree branches, as an open angle around `centro`.
void Freccia(QPainter& penna, const QPointF& centro, Qt::ArrowType verso, const QColor& colore,
             double lato = 8.0);
/// A lap's letter in a square of its colour.
void LetteraGiro(QPainter& penna, const QRectF& posto, const ColoreGiro& giro, const QFont& base);

/// `a` with that much of `b`, 0 to 1.
QColor Tinta(const QColor& a, const QColor& b, double parte);

}  // namespace lapvane
