#include "analysis/frmAnalisiDati.h"

#include "analysis/AnalisiDatiFoglio.h"

namespace lapvane {

frmAnalisiDati::frmAnalisiDati(QWidget* parent)
    : frmAnalisi("frmAnalisiDati", &Crea<AnalisiDatiFoglio>, parent) {}

}  // namespace lapvane
