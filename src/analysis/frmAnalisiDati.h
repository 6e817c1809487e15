#pragma once

#include "analysis/frmAnalisi.h"

namespace lapvane {

/// The analysis window over a table in the manner of a spreadsheet.
class frmAnalisiDati : public frmAnalisi {
    Q_OBJECT
 public:
    explicit frmAnalisiDati(QWidget* parent = nullptr);
};

}  // namespace lapvane
