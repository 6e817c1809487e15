#include "widgets/LegendaAllarmi.h"

#include <QGridLayout>
#include <QPainter>
#include <algorithm>

#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr double kAnello = 0.14;    // of the lamp's width: the ring
constexpr double kRiflesso = 0.18;  // of the lens: where the light lies

}  // namespace

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
    const Colori& colori = ColoriDi(*this);
    const QRectF anello = QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0);
    penna.setPen(QPen(colori.Edge, 1.0));
    penna.setBrush(colori.Alt);
    penna.drawEllipse(anello);
    // The lens inside its ring; a lamp that is on has the light of the room on it.
    const double bordo = anello.width() * kAnello;
    const QRectF lente = anello.adjusted(bordo, bordo, -bordo, -bordo);
    penna.setPen(Qt::NoPen);
    const QColor acceso = isEnabled() ? QColor(255, 0, 0) : colori.Stale;
    penna.setBrush(accesa_ ? acceso : colori.Grid);
    penna.drawEllipse(lente);
    if (!accesa_) return;
    const double dentro = lente.width() * kRiflesso;
    penna.setPen(QPen(Qt::white, std::max(1.0, lente.width() / 10.0), Qt::SolidLine, Qt::RoundCap));
    penna.drawArc(lente.adjusted(dentro, dentro, -dentro, -dentro), 100 * 16, 70 * 16);
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
