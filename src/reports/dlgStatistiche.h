#pragma once

#include "reports/FigureSessione.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// The figures of a session.
class dlgStatistiche : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgStatistiche(const FigureSessione& figure, QWidget* parent = nullptr);
};

}  // namespace lapvane
