#include "widgets/LegendaAllarmi.h"

#include <QGridLayout>
#include <QPainter>

namespace lapvane {

LampadaAllarme::LampadaAllarme(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LampadaAllarme::Accendi(bool accesa) {
    if (accesa_ == accesa) return;
    accesa_ = accesa;
    update();
}

QSize LampadaAllarme::sizeHint() const {
    const int lato = fontMetrics().height();
    return {lato, lato};
}

void LampadaAllarme::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setPen(QPen(palette().color(QPalette::WindowText), 1.0));
    const QColor acceso = isEnabled() ? QColor(255, 0, 0) : palette().color(QPalette::WindowText);
    penna.setBrush(accesa_ ? acceso : palette().color(QPalette::Window));
    penna.drawEllipse(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
}

LegendaAllarmi::LegendaAllarmi(const std::vector<Colore>& colori, QWidget* parent)
    : QGroupBox(parent) {
    setObjectName(QStringLiteral("fraLegendaAllarmi"));
    auto* griglia = new QGridLayout(this);
    griglia->setHorizontalSpacing(8);
    griglia->setVerticalSpacing(8);
    for (int k = 0; k < static_cast<int>(colori.size()); ++k) {
        const QString numero = QString::number(k);
        auto* lampada = new LampadaAllarme(this);
        lampada->setObjectName(QStringLiteral("shpAlarm") + numero);
        auto* colore = new CampioneColore(this);
        colore->setObjectName(QStringLiteral("shpAlarmColor") + numero);
        colore->ImpostaColore(colori[static_cast<std::size_t>(k)]);
        auto* nome = new QLabel(this);
        nome->setObjectName(QStringLiteral("lblNomeAllarme") + numero);
        nome->setTextFormat(Qt::PlainText);
        // The highest band of the overview stands on top, so does its row.
        const int riga = static_cast<int>(colori.size()) - 1 - k;
        griglia->addWidget(lampada, riga, 0);
        griglia->addWidget(colore, riga, 1);
        griglia->addWidget(nome, riga, 2);
        nomi_.push_back(nome);
        lampade_.push_back(lampada);
    }
    griglia->setColumnStretch(2, 1);
    griglia->setRowStretch(static_cast<int>(colori.size()), 1);
}

void LegendaAllarmi::Nome(int k, const QString& nome) {
    nomi_.at(static_cast<std::size_t>(k))->setText(nome);
    lampade_.at(static_cast<std::size_t>(k))->setAccessibleName(nome);
}

void LegendaAllarmi::Lampada(int k, bool accesa) {
    lampade_.at(static_cast<std::size_t>(k))->Accendi(accesa);
}

}  // namespace lapvane
