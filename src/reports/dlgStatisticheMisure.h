#pragma once

#include <QDialog>

#include "reports/AnalisiPubblica.h"

namespace lapvane {

/// Minimum, maximum and mean of each channel over the selected lap.
class dlgStatisticheMisure : public QDialog {
    Q_OBJECT
 public:
    explicit dlgStatisticheMisure(const AnalisiPubblica& analisi, QWidget* parent = nullptr);
};

}  // namespace lapvane
