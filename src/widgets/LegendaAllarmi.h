#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QWidget>
#include <array>
#include <vector>

#include "platform/Colore.h"
#include "widgets/RigaCanale.h"

namespace lapvane {

/// A round lamp: red while the alarm is on.
class LampadaAllarme : public QWidget {
    Q_OBJECT
 public:
    explicit LampadaAllarme(QWidget* parent = nullptr);
    void Accendi(bool accesa);
    bool Accesa() const { return accesa_; }
    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    bool accesa_ = false;
};

/// The legend of the alarm overview: lamp, colour of the band and name of each alarm.
class LegendaAllarmi : public QGroupBox {
    Q_OBJECT
 public:
    LegendaAllarmi(const std::vector<Colore>& colori, QWidget* parent = nullptr);

    void Nome(int k, const QString& nome);
    void Lampada(int k, bool accesa);

 private:
    std::vector<QLabel*> nomi_;
    std::vector<LampadaAllarme*> lampade_;
};

}  // namespace lapvane
