#pragma once

#include <QPainter>
#include <QPrinterInfo>
#include <QRectF>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "platform/qt/QtPrinter.h"
#include "reports/StampaGrafico.h"

namespace lapvane {

/// Where a document is printed: the system's default printer or, where there is none, a PDF file
/// that the user names and that replaces another only with leave. Null when the user cancels.
/// `titolo` names the document and the file dialog, `nome` is the suggested file.
std::unique_ptr<QtPrinter> ScegliStampante(
    const std::string& titolo, const std::filesystem::path& nome,
    QPageLayout::Orientation verso = QPageLayout::Portrait,
    const QPrinterInfo& predefinita = QPrinterInfo::defaultPrinter());

/// Prints one page with a graph: the lines on top in a frame, below them the title and the graph,
/// which `disegna` paints into the rectangle that it is given (pixels of 1/96 inch, as on a
/// screen), the legend at the bottom. Ends the document.
void StampaControllo(QtPrinter& stampante, const TestiStampaGrafico& testi,
                     const std::function<void(QPainter&, const QRectF&)>& disegna);

}  // namespace lapvane
