#include "analysis/frmAnalisiDatiSpeed.h"

#include "analysis/AnalisiDatiSpeed.h"

namespace lapvane {

frmAnalisiDatiSpeed::frmAnalisiDatiSpeed(QWidget* parent)
    : frmAnalisi("frmAnalisiDatiSpeed", &Crea<AnalisiDatiSpeed>, parent) {}

}  // namespace lapvane
