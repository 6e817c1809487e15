#pragma once

#include <QWidget>

#include "shell/Editor.h"

namespace lapvane {

/// The controls of a window by their names: boxes, lists and check boxes.
class ControlliFinestra : public ControlliEditor {
 public:
    explicit ControlliFinestra(QWidget& finestra) : finestra_(finestra) {}

    std::string Testo(std::string_view controllo) const override;
    void Testo(std::string_view controllo, const std::string& testo) override;
    int Indice(std::string_view controllo) const override;
    void Indice(std::string_view controllo, int indice) override;
    bool Spunta(std::string_view controllo) const override;
    void Spunta(std::string_view controllo, bool accesa) override;
    void Abilita(std::string_view controllo, bool acceso) override;

 private:
    template <class W>
    W& Trova(std::string_view controllo) const;

    QWidget& finestra_;
};

}  // namespace lapvane
