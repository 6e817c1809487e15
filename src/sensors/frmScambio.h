#pragma once

#include <QLabel>
#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <string>
#include <vector>

#include "shell/Voci.h"

namespace lapvane {

/// The line of a sensor window that says how its exchange goes: on a small screen the window covers
/// the status bar. It takes what room its row has left.
QLabel* CreaProgresso(QWidget* finestra);
/// Shows a text there and in the status bar; the empty text clears both.
void MostraProgresso(QLabel& riga, const std::string& testo);

/// Program and window while one of the sensor windows exchanges with the instrument: the hourglass,
/// the operation code that keeps the poll off the port, and controls that nobody can use. The end
/// puts everything back, however it comes. A window that closes meanwhile sets
/// `TrasferimentoAbbandonato`.
class ScambioInCorso {
 public:
    /// `spenti` are off meanwhile; `stato` is the number of the text that `progresso` shows.
    ScambioInCorso(QWidget& finestra, std::vector<QWidget*> spenti, std::int16_t fase, Voce stato,
                   QLabel* progresso, bool& inCorso);
    ~ScambioInCorso();
    ScambioInCorso(const ScambioInCorso&) = delete;
    ScambioInCorso& operator=(const ScambioInCorso&) = delete;

    /// Opens the link and runs the exchange if it is there. False: the window has closed meanwhile.
    bool Esegui(void (*scambio)(std::int16_t), std::int16_t valore) const;

 private:
    QWidget& finestra_;
    std::vector<QWidget*> spenti_;
    QPointer<QWidget> fuoco_;
    QLabel* progresso_;
    bool& inCorso_;
};

}  // namespace lapvane
