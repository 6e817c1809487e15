#pragma once

#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <vector>

namespace lapvane {

/// Program and window while one of the sensor windows exchanges with the instrument: the hourglass,
/// the operation code that keeps the poll off the port, and controls that nobody can use. The end
/// puts everything back, however it comes. A window that closes meanwhile sets
/// `TrasferimentoAbbandonato`.
class ScambioInCorso {
 public:
    /// `spenti` are off meanwhile; `stato` is the number of the status bar's text, 0 for none.
    ScambioInCorso(QWidget& finestra, std::vector<QWidget*> spenti, std::int16_t fase, int stato,
                   bool& inCorso);
    ~ScambioInCorso();
    ScambioInCorso(const ScambioInCorso&) = delete;
    ScambioInCorso& operator=(const ScambioInCorso&) = delete;

    /// Opens the link and runs the exchange if it is there. False: the window has closed meanwhile.
    bool Esegui(void (*scambio)(std::int16_t), std::int16_t valore) const;

 private:
    QWidget& finestra_;
    std::vector<QWidget*> spenti_;
    QPointer<QWidget> fuoco_;
    bool& inCorso_;
};

}  // namespace lapvane
