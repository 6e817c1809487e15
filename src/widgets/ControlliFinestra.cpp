#include "widgets/ControlliFinestra.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <stdexcept>

#include "platform/qt/TestoQt.h"

namespace lapvane {

template <class W>
W& ControlliFinestra::Trova(std::string_view controllo) const {
    W* trovato = finestra_.findChild<W*>(InQt(controllo));
    if (trovato == nullptr) throw std::logic_error("no control " + std::string(controllo));
    return *trovato;
}

std::string ControlliFinestra::Testo(std::string_view controllo) const {
    const QWidget& widget = Trova<QWidget>(controllo);
    if (const auto* lista = qobject_cast<const QComboBox*>(&widget)) {
        return DaQt(lista->currentText());
    }
    return DaQt(Trova<QLineEdit>(controllo).text());
}

void ControlliFinestra::Testo(std::string_view controllo, const std::string& testo) {
    QWidget& widget = Trova<QWidget>(controllo);
    if (auto* lista = qobject_cast<QComboBox*>(&widget)) {
        lista->setEditText(InQt(testo));
        return;
    }
    Trova<QLineEdit>(controllo).setText(InQt(testo));
}

int ControlliFinestra::Indice(std::string_view controllo) const {
    return Trova<QComboBox>(controllo).currentIndex();
}

void ControlliFinestra::Indice(std::string_view controllo, int indice) {
    QComboBox& lista = Trova<QComboBox>(controllo);
    lista.setCurrentIndex(indice >= 0 && indice < lista.count() ? indice : -1);
}

bool ControlliFinestra::Spunta(std::string_view controllo) const {
    return Trova<QCheckBox>(controllo).isChecked();
}

void ControlliFinestra::Spunta(std::string_view controllo, bool accesa) {
    Trova<QCheckBox>(controllo).setChecked(accesa);
}

void ControlliFinestra::Abilita(std::string_view controllo, bool acceso) {
    Trova<QWidget>(controllo).setEnabled(acceso);
}

}  // namespace lapvane
