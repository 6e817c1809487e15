#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "platform/qt/QtPrinter.h"
#include "reports/AnalisiPubblica.h"
#include "reports/StampaReport.h"
#include "widgets/Dialogo.h"

namespace lapvane {

class Tabella;

/// All laps of the log, to be sorted and printed.
class dlgReportGiri : public Dialogo {
    Q_OBJECT
 public:
    /// `filePdf` is the name that is suggested where a PDF file takes the paper's place.
    explicit dlgReportGiri(const AnalisiPubblica& analisi,
                           const std::filesystem::path& filePdf = {}, QWidget* parent = nullptr);

    /// Opens the printer; null when the user cancels. At first the system's default printer or a
    /// PDF file.
    std::function<std::unique_ptr<QtPrinter>()> ApriStampante;

 private:
    void Stampa();

    std::filesystem::path log_;  ///< its name, without the ending
    Tabella* MSFlexGrid1_ = nullptr;
    std::vector<RigaReport> giri_;  ///< lap 1 first, whatever the grid's order
};

}  // namespace lapvane
