#pragma once

#include <QDialog>

#include "reports/FigureSessione.h"

namespace lapvane {

/// The figures of a session.
class dlgStatistiche : public QDialog {
    Q_OBJECT
 public:
    explicit dlgStatistiche(const FigureSessione& figure, QWidget* parent = nullptr);
};

}  // namespace lapvane
