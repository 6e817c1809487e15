#pragma once

#include <QToolBar>
#include <QToolButton>
#include <functional>
#include <vector>

#include "shell/Voci.h"

namespace lapvane {

/// The tool bar of a window that stands beside those of the system.
class BarraTasti : public QToolBar {
    Q_OBJECT
 public:
    explicit BarraTasti(QWidget* parent);

    /// A button with that drawing, "barra_" and its name; its words stand in its tool tip with
    /// its key, which works in the whole window.
    QToolButton* Aggiungi(const char* nome, Voce parole, const char* tasti,
                          std::function<void()> azione);
    void Spazio();
    /// Room that pushes what comes behind it to the right.
    void SpazioLargo();
    /// The words in the language of now.
    void AggiornaTesti();

 private:
    struct Tasto {
        QToolButton* Pulsante;
        Voce Parole;
        const char* Tasti;
    };
    std::vector<Tasto> tasti_;
};

}  // namespace lapvane
