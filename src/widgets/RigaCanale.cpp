#include "widgets/RigaCanale.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>

#include "platform/qt/ConversioniQt.h"
#include "widgets/Contrasto.h"

namespace lapvane {

namespace {

constexpr double kContrastoLinea = 2.2;  // as the graph keeps it
constexpr double kAltezzaRiga = 1.8;     // of the letters
const QColor kGiallo(255, 255, 0);

/// A small button, as high as its row.
QSize LatoPulsante(const QWidget* widget) {
    const int lato = static_cast<int>(widget->fontMetrics().height() * kAltezzaRiga) - 2;
    return {lato + 4, lato};
}

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

CasellaValore::CasellaValore(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFocusPolicy(Qt::ClickFocus);  // its text can be copied; Tab goes through what can be set
    setAlignment(Qt::AlignRight);
    Segna(false);
}

void CasellaValore::Segna(bool disegnato) {
    QPalette colori = palette();
    colori.setColor(QPalette::Base, disegnato ? kGiallo : QColor(Qt::white));
    colori.setColor(QPalette::Text, Qt::black);
    setPalette(colori);
    QFont carattere = font();
    carattere.setBold(disegnato);
    setFont(carattere);
}

QSize CasellaValore::sizeHint() const {
    QFont grassetto = font();
    grassetto.setBold(true);
    return {QFontMetrics(grassetto).horizontalAdvance(QStringLiteral("-00000.00")) + 12,
            QLineEdit::sizeHint().height()};
}

RigaCanale::RigaCanale(int c, QWidget* parent, QGridLayout* griglia, int riga, const char* asse)
    : QObject(parent) {
    const bool canale = *asse == '\0';
    const auto crea = [&](QWidget* widget, const char* nome, int colonna) {
        widget->setObjectName(QString::fromLatin1(nome) + QString::number(c));
        griglia->addWidget(widget, riga, colonna);
    };
    crea(chkGrafico = new QCheckBox(parent), "chkGrafico", 0);
    if (!canale) chkGrafico->setObjectName(QString::fromLatin1(asse));
    crea(lblNomeCampo = new QLabel(parent), "lblNomeCampo", 2);
    crea(lblUM = new QLabel(parent), "lblUM", 3);
    crea(txtValore = new CasellaValore(parent), "txtValore", 4);
    std::vector<QWidget*> bersagli = {lblNomeCampo, lblUM};
    if (canale) {
        crea(shpColor = new CampioneColore(parent), "shpColor", 1);
        crea(optScala = new QRadioButton(parent), "optScala", 5);
        crea(cmdSetGraph = new QPushButton(QStringLiteral("..."), parent), "cmdSetGraph", 6);
        cmdSetGraph->setAutoDefault(false);
        cmdSetGraph->setFixedSize(LatoPulsante(cmdSetGraph));
        bersagli.push_back(shpColor);
        Segna(false);
    }
    // The whole row is the target of a click on the channel.
    for (QWidget* const widget : bersagli) widget->installEventFilter(this);
    const int altezza = static_cast<int>(parent->fontMetrics().height() * kAltezzaRiga);
    for (QLabel* const etichetta : {lblNomeCampo, lblUM}) {
        etichetta->setTextFormat(Qt::PlainText);
        etichetta->setMinimumHeight(altezza);
    }
}

std::vector<QWidget*> RigaCanale::Tutti() const {
    std::vector<QWidget*> tutti = {chkGrafico, lblNomeCampo, lblUM, txtValore};
    for (QWidget* const widget : {static_cast<QWidget*>(shpColor), static_cast<QWidget*>(optScala),
                                  static_cast<QWidget*>(cmdSetGraph)}) {
        if (widget != nullptr) tutti.push_back(widget);
    }
    return tutti;
}

bool RigaCanale::eventFilter(QObject* oggetto, QEvent* evento) {
    if (evento->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(evento)->button() == Qt::LeftButton) {
        chkGrafico->click();
    }
    return QObject::eventFilter(oggetto, evento);
}

void RigaCanale::Mostra(bool visibile) {
    for (QWidget* const widget : Tutti()) widget->setVisible(visibile);
}

void RigaCanale::Nome(const QString& nome) {
    lblNomeCampo->setText(nome);
    NomiAccessibili();
}

void RigaCanale::Unita(const QString& unita) {
    lblUM->setText(unita);
}

void RigaCanale::ImpostaColore(Colore colore) {
    if (shpColor != nullptr) shpColor->ImpostaColore(colore);
}

void RigaCanale::Segna(bool disegnato) {
    optScala->setEnabled(disegnato);
    cmdSetGraph->setEnabled(disegnato);
    txtValore->Segna(disegnato);
    QPalette colori;
    if (disegnato) {
        colori.setColor(QPalette::Button, kGiallo);
        colori.setColor(QPalette::ButtonText, Qt::black);
    }
    cmdSetGraph->setPalette(colori);
}

void RigaCanale::NomiPulsanti(const QString& scala, const QString& impostazioni) {
    scala_ = scala;
    impostazioni_ = impostazioni;
    if (optScala != nullptr) optScala->setToolTip(scala);
    if (cmdSetGraph != nullptr) cmdSetGraph->setToolTip(impostazioni);
    NomiAccessibili();
}

void RigaCanale::NomiAccessibili() {
    const QString nome = lblNomeCampo->text();
    chkGrafico->setAccessibleName(nome);
    txtValore->setAccessibleName(nome);
    const QString coda = QLatin1Char(' ') + nome;
    if (optScala != nullptr) optScala->setAccessibleName(scala_ + coda);
    if (cmdSetGraph != nullptr) cmdSetGraph->setAccessibleName(impostazioni_ + coda);
}

}  // namespace lapvane
