#pragma once

#include <QWidget>

#include "analysis/compare/DatiConfronto.h"

namespace lapvane {

/// The panes of the comparison under each other over one axis.
class DisegnoQuadri : public QWidget {
    Q_OBJECT
 public:
    explicit DisegnoQuadri(QWidget* parent = nullptr) : QWidget(parent) {}
};

}  // namespace lapvane
