#pragma once

#include <QPainter>
#include <QRectF>
#include <functional>

#include "platform/qt/QtPrinter.h"
#include "reports/StampaGrafico.h"

namespace lapvane {

/// Prints one page with a graph, upright or across as the paper lies: title and file, the lines of
/// the session, the graph, which `disegna` paints into the rectangle that it is given (pixels of
/// 1/96 inch, as on a screen), the values at the cursor, the legend. Ends the document.
void StampaControllo(QtPrinter& stampante, const TestiStampaGrafico& testi,
                     const std::function<void(QPainter&, const QRectF&)>& disegna);

}  // namespace lapvane
