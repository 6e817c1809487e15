#pragma once

#include <QLabel>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

class QLineEdit;

namespace lapvane {

/// The numbers that a box takes, and how they are told ("0 ... 255").
struct LimitiNumero {
    double Minimo = 0.0;
    double Massimo = 0.0;
    std::string Testo;
};

/// The line of an editor beside its buttons. A number box that it watches gets a red edge while
/// its text is out of range, and the line names box and limits; nothing is refused here. Without
/// such a box it says what was done, for some seconds, or what the window has noted.
class RigaAvvisi : public QLabel {
    Q_OBJECT
 public:
    explicit RigaAvvisi(QWidget* parent);

    /// Watches a box. One that is empty or disabled is never out of range: somebody is about to
    /// type.
    void Sorveglia(QLineEdit* casella, std::function<LimitiNumero()> limiti);
    void Sorveglia(QLineEdit* casella, const LimitiNumero& limiti);
    /// Looks at all boxes anew: their limits may have changed.
    void Controlla();
    /// Says something as long as it holds; empty: nothing.
    void Nota(const QString& nota);
    /// Says for four seconds that something is saved, and when.
    void Salvato();

 private:
    enum class Tono { Errore, Fatto, Nota };
    struct Casella {
        QLineEdit* Campo;
        std::function<LimitiNumero()> Limiti;
    };
    void Mostra(const QString& testo, Tono tono);

    std::vector<Casella> caselle_;
    QString nota_;
    QString fatto_;
    QTimer quattroSecondi_;
};

/// "Saved at 10:20", with the time of now.
QString TestoSalvato();

}  // namespace lapvane
