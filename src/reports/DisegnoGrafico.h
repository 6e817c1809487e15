#pragma once

#include <QPainter>
#include <QRectF>
#include <functional>

#include "platform/qt/QtPrinter.h"
#include "reports/StampaGrafico.h"

namespace lapvane {

/// Prints one page with a graph: the lines on top in a frame, below them the title and the graph,
/// which `disegna` paints into the rectangle that it is given (pixels of 1/96 inch, as on a
/// screen), the legend at the bottom. Ends the document.
void StampaControllo(QtPrinter& stampante, const TestiStampaGrafico& testi,
                     const std::function<void(QPainter&, const QRectF&)>& disegna);

}  // namespace lapvane
