#pragma once

#include <filesystem>

#include "reports/FigureSessione.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// The figures of a session.
class dlgStatistiche : public Dialogo {
    Q_OBJECT
 public:
    /// `log` is the file beside which the table is proposed to be saved.
    explicit dlgStatistiche(const FigureSessione& figure, QWidget* parent = nullptr,
                            const std::filesystem::path& log = {});
};

}  // namespace lapvane
