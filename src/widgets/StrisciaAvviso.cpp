#include "widgets/StrisciaAvviso.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "widgets/style/Tavolozza.h"

namespace lapvane {

StrisciaAvviso::StrisciaAvviso(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("avviso"));
    setAutoFillBackground(true);
    riga_ = new QHBoxLayout(this);
    riga_->setContentsMargins(12, 6, 12, 6);
    lblAvviso_ = new QLabel;
    lblAvviso_->setObjectName(QStringLiteral("lblAvviso"));
    lblAvviso_->setWordWrap(true);
    lblAvviso_->setTextFormat(Qt::PlainText);
    riga_->addWidget(lblAvviso_, 1);
    hide();
}

void StrisciaAvviso::Mostra(const QStringList& frasi) {
    const Colori& colori = ColoriDi(*this);
    QPalette paletta = palette();
    paletta.setColor(QPalette::Window, colori.WarnSoft);
    paletta.setColor(QPalette::WindowText, colori.Warn);
    setPalette(paletta);
    lblAvviso_->setText(frasi.join(QLatin1Char('\n')));
    setVisible(!frasi.isEmpty());
}

void StrisciaAvviso::Aggiungi(QPushButton* pulsante) {
    riga_->addWidget(pulsante);
}

}  // namespace lapvane
