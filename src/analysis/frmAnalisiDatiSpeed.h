#pragma once

#include "analysis/frmAnalisi.h"

namespace lapvane {

/// The analysis window over an array of its own, the one that opens by default.
class frmAnalisiDatiSpeed : public frmAnalisi {
    Q_OBJECT
 public:
    explicit frmAnalisiDatiSpeed(QWidget* parent = nullptr);
};

}  // namespace lapvane
