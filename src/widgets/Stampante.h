#pragma once

#include <QPrinterInfo>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/qt/QtPrinter.h"

namespace lapvane {

/// Where a document is printed: the system's default printer or, where there is none, a PDF file
/// that the user names and that replaces another only with leave. Null when the user cancels.
/// `titolo` names the document and the file dialog, `nome` is the suggested file.
std::unique_ptr<QtPrinter> ScegliStampante(
    const std::string& titolo, const std::filesystem::path& nome,
    QPageLayout::Orientation verso = QPageLayout::Portrait,
    const QPrinterInfo& predefinita = QPrinterInfo::defaultPrinter());

}  // namespace lapvane
