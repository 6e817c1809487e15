#pragma once

#include <filesystem>

#include "reports/AnalisiPubblica.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// Minimum, maximum and mean of each channel over the selected lap.
class dlgStatisticheMisure : public Dialogo {
    Q_OBJECT
 public:
    /// `log` is the file beside which the table is proposed to be saved.
    explicit dlgStatisticheMisure(const AnalisiPubblica& analisi, QWidget* parent = nullptr,
                                  const std::filesystem::path& log = {});
};

}  // namespace lapvane
