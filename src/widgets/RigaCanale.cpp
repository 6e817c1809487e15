#include "widgets/RigaCanale.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>

#include "platform/qt/QtPlatform.h"
#include "widgets/Contrasto.h"

namespace lapvane {

namespace {

constexpr double kContrastoLinea = 2.2;  // as the graph keeps it
constexpr double kAltezzaRiga = 2.0;     // of the letters

}  // namespace

CampioneColore::CampioneColore(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void CampioneColore::ImpostaColore(Colore colore) {
    colore_ = colore;
    update();
}

QSize CampioneColore::sizeHint() const {
    const int lato = fontMetrics().height();
    return {lato + 4, lato};
}

void CampioneColore::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setPen(Qt::NoPen);
    penna.setBrush(InQColor(
        ColoreLeggibile(colore_, DaQColor(palette().color(QPalette::Base)), kContrastoLinea)));
    penna.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3.0, 3.0);
}

RigaCanale::RigaCanale(int c, QWidget* parent, QGridLayout* griglia, int riga) : QObject(parent) {
    const auto nomina = [c](QWidget* widget, const char* nome) {
        widget->setObjectName(QString::fromLatin1(nome) + QString::number(c));
    };
    chkGrafico = new QCheckBox(parent);
    nomina(chkGrafico, "chkGrafico");
    shpColor = new CampioneColore(parent);
    nomina(shpColor, "shpColor");
    lblNomeCampo = new QLabel(parent);
    nomina(lblNomeCampo, "lblNomeCampo");
    lblUM = new QLabel(parent);
    nomina(lblUM, "lblUM");
    optScala = new QRadioButton(parent);
    nomina(optScala, "optScala");
    optScala->setEnabled(false);
    griglia->addWidget(chkGrafico, riga, 0);
    griglia->addWidget(shpColor, riga, 1);
    griglia->addWidget(lblNomeCampo, riga, 2);
    griglia->addWidget(lblUM, riga, 3);
    griglia->addWidget(optScala, riga, 4);
    // The whole row is the target of a click on the channel.
    const int altezza = static_cast<int>(parent->fontMetrics().height() * kAltezzaRiga);
    for (QWidget* const widget : {static_cast<QWidget*>(lblNomeCampo), static_cast<QWidget*>(lblUM),
                                  static_cast<QWidget*>(shpColor)}) {
        widget->installEventFilter(this);
    }
    for (QLabel* const etichetta : {lblNomeCampo, lblUM}) {
        etichetta->setTextFormat(Qt::PlainText);
        etichetta->setMinimumHeight(altezza);
    }
}

bool RigaCanale::eventFilter(QObject* oggetto, QEvent* evento) {
    if (evento->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(evento)->button() == Qt::LeftButton) {
        chkGrafico->click();
    }
    return QObject::eventFilter(oggetto, evento);
}

void RigaCanale::Mostra(bool visibile) {
    for (QWidget* const widget :
         {static_cast<QWidget*>(chkGrafico), static_cast<QWidget*>(shpColor),
          static_cast<QWidget*>(lblNomeCampo), static_cast<QWidget*>(lblUM),
          static_cast<QWidget*>(optScala)}) {
        widget->setVisible(visibile);
    }
}

void RigaCanale::Nome(const QString& nome) {
    lblNomeCampo->setText(nome);
    chkGrafico->setAccessibleName(nome);
    NomeScala(nomeScala_);
}

void RigaCanale::Unita(const QString& unita) {
    lblUM->setText(unita);
}

void RigaCanale::NomeScala(const QString& nome) {
    nomeScala_ = nome;
    optScala->setToolTip(nome);
    optScala->setAccessibleName(nome + QLatin1Char(' ') + lblNomeCampo->text());
}

}  // namespace lapvane
