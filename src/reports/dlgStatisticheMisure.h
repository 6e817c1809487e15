#pragma once

#include "reports/AnalisiPubblica.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// Minimum, maximum and mean of each channel over the selected lap.
class dlgStatisticheMisure : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgStatisticheMisure(const AnalisiPubblica& analisi, QWidget* parent = nullptr);
};

}  // namespace lapvane
