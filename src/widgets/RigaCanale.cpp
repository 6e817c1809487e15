#include "widgets/RigaCanale.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/ConversioniQt.h"
#include "widgets/Contrasto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr double kContrastoLinea = 1.9;  // as the graph keeps it
constexpr int kStacco = 2;               // above and below a box in its row
const QColor kGiallo(255, 255, 0);
const QColor kBordoGiallo(0x6B, 0x6B, 0x00);  // yellow on white would end nowhere in the sun

/// Height of a box that leaves its row some air.
int AltezzaCasella(const QWidget* widget) {
    return Misure(*widget).Riga - 2 * kStacco;
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
    const int lato = fontMetrics().height() - kGriglia;
    return {lato, lato};
}

void CampioneColore::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    // The colour as on the graph's white paper; the edge parts a dark one from a dark window.
    const QColor tinta = InQColor(ColoreLeggibile(colore_, Rgb(255, 255, 255), kContrastoLinea));
    Riquadro(penna, rect(), kRaggioControllo, tinta,
             &ColoriDi(*this) == &ColoriDi(Tema::Scuro) ? ColoriDi(*this).Edge : QColor());
}

CasellaValore::CasellaValore(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFocusPolicy(Qt::ClickFocus);  // its text can be copied; Tab goes through what can be set
    setAlignment(Qt::AlignRight);
    setFixedHeight(AltezzaCasella(this));
    Segna(false);
}

void CasellaValore::Segna(bool disegnato) {
    QPalette colori = palette();
    colori.setColor(QPalette::Base, disegnato ? kGiallo : QColor(Qt::white));
    colori.setColor(QPalette::Text, Qt::black);
    setPalette(colori);
    QFont carattere = font();
    carattere.setWeight(disegnato ? QFont::DemiBold : QFont::Normal);
    setFont(carattere);
    disegnato_ = disegnato;
}

void CasellaValore::paintEvent(QPaintEvent* evento) {
    QLineEdit::paintEvent(evento);
    if (!disegnato_ || hasFocus()) return;
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    Riquadro(penna, rect(), kRaggioControllo, {}, kBordoGiallo);
}

void CasellaValore::changeEvent(QEvent* evento) {
    QLineEdit::changeEvent(evento);
    if (evento->type() == QEvent::FontChange) setFixedHeight(AltezzaCasella(this));
}

QSize CasellaValore::sizeHint() const {
    const QFontMetrics misura(Carattere(*this, Scrittura::Forte));
    return {misura.horizontalAdvance(QStringLiteral("-00000.0")) + 2 * kSpazio,
            AltezzaCasella(this)};
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
        bersagli.push_back(shpColor);
        Segna(false);
    }
    // The whole row is the target of a click on the channel.
    for (QWidget* const widget : bersagli) widget->installEventFilter(this);
    for (QLabel* const etichetta : {lblNomeCampo, lblUM}) etichetta->setTextFormat(Qt::PlainText);
    Adatta();
}

/// The heights that come from the font.
void RigaCanale::Adatta() {
    lblNomeCampo->setMinimumHeight(Misure(*lblNomeCampo).Riga);
    if (cmdSetGraph == nullptr) return;
    const int lato = AltezzaCasella(cmdSetGraph);
    cmdSetGraph->setFixedSize(std::max(lato + kGriglia, cmdSetGraph->minimumSizeHint().width()),
                              lato);
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
    if (evento->type() == QEvent::FontChange && oggetto == lblNomeCampo) Adatta();
    if (evento->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(evento)->button() == Qt::LeftButton) {
        chkGrafico->click();
    }
    return QObject::eventFilter(oggetto, evento);
}

void RigaCanale::Mostra(bool visibile) {
    visibile_ = visibile;
    for (QWidget* const widget : Tutti()) widget->setVisible(visibile);
    lblUM->setVisible(visibile && unitaInVista_);
}

void RigaCanale::Nome(const QString& nome) {
    lblNomeCampo->setText(nome);
    NomiAccessibili();
}

void RigaCanale::Unita(const QString& unita) {
    lblUM->setText(unita);
    UnitaInVista(unitaInVista_);
}

void RigaCanale::UnitaInVista(bool vista) {
    unitaInVista_ = vista;
    lblUM->setVisible(visibile_ && vista);
    const QString suggerimento = vista ? QString() : lblUM->text();
    for (QWidget* const widget :
         {static_cast<QWidget*>(lblNomeCampo), static_cast<QWidget*>(txtValore)}) {
        widget->setToolTip(suggerimento);
    }
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
