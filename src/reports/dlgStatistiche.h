#pragma once

#include <QDialog>

#include "analysis/AnalisiDati.h"

namespace lapvane {

/// The figures of the session, as the analysis has computed them.
class dlgStatistiche : public QDialog {
    Q_OBJECT
 public:
    explicit dlgStatistiche(const AnalisiDati& analisi, QWidget* parent = nullptr);
};

}  // namespace lapvane
