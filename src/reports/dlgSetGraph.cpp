#include "reports/dlgSetGraph.h"

#include <QHBoxLayout>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"

namespace lapvane {

namespace {

constexpr int kSpessoreMassimo = 6;
constexpr Voce kTestoNumeroErrato = Voce::NumeroNonValido;

/// The leading number of a text, with a point or a comma as separator.
double NumeroIniziale(const QString& testo) {
    const std::string t = DaQt(testo.trimmed());
    return CampoNumerico(t.data(), t.data() + t.size());
}

void Spazia(QGridLayout* griglia) {
    griglia->setColumnStretch(1, 1);
    griglia->setHorizontalSpacing(16);
    griglia->setVerticalSpacing(10);
}

/// A row of a frame: the box and its label, which comes back.
QLabel* Riga(QGridLayout* griglia, const char* nomeEtichetta, QWidget* campo, const char* nome) {
    QLabel* etichetta = Etichetta(campo->parentWidget(), nomeEtichetta, campo);
    campo->setObjectName(QString::fromLatin1(nome));
    const int r = griglia->rowCount();
    griglia->addWidget(etichetta, r, 0);
    griglia->addWidget(campo, r, 1);
    return etichetta;
}

}  // namespace

void PulsanteColore::ImpostaColore(Colore colore) {
    colore_ = colore;
    update();
}

void PulsanteColore::paintEvent(QPaintEvent*) {
    QStylePainter penna(this);
    QStyleOptionButton opzione;
    initStyleOption(&opzione);
    penna.drawControl(QStyle::CE_PushButton, opzione);
    const QRectF campo = QRectF(rect()).adjusted(4.5, 4.5, -4.5, -4.5);
    penna.setPen(palette().color(QPalette::WindowText));
    penna.setBrush(InQColor(colore_));
    penna.drawRect(campo);
}

dlgSetGraph::dlgSetGraph(ImpostazioniCanale& valori, QWidget* parent)
    : Dialogo("dlgSetGraph", parent), valori_(valori) {
    Disponi();
    Testi();
    Carica();
}

void dlgSetGraph::Disponi() {
    auto* campi = new QGridLayout;
    DisponiCampi(campi);
    fraScalaDisegno_ = Cornice(this, "fraScalaDisegno");
    DisponiScala(new QGridLayout(fraScalaDisegno_));

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(14);
    colonna->addLayout(campi);
    colonna->addWidget(fraScalaDisegno_);
    colonna->addStretch(1);
    colonna->addLayout(CreaPulsanti(nullptr, [this] { Conferma(); }));
    setMinimumWidth(420);

    connect(cmdColor_, &QPushButton::clicked, this,
            [this] { Protetto([this] { ScegliColore(); }); });
}

void dlgSetGraph::DisponiCampi(QGridLayout* griglia) {
    txtNomeCampo_ = new QLineEdit(this);
    txtUM_ = new QLineEdit(this);
    txtFiltro_ = new QLineEdit(this);
    cmdColor_ = new PulsanteColore(this);
    cboWidth_ = new QComboBox(this);
    for (int i = 1; i <= kSpessoreMassimo; ++i) cboWidth_->addItem(InQt(TestoNumero(i)));
    Spazia(griglia);
    lblNomeCampo_ = Riga(griglia, "lblNomeCampo", txtNomeCampo_, "txtNomeCampo");
    lblUM_ = Riga(griglia, "lblUM", txtUM_, "txtUM");
    lblFiltro_ = Riga(griglia, "lblFiltro", txtFiltro_, "txtFiltro");
    lblColoreGrafico_ = Riga(griglia, "lblColoreGrafico", cmdColor_, "cmdColor");
    lblSpessoreLinea_ = Riga(griglia, "lblSpessoreLinea", cboWidth_, "cboWidth");
}

void dlgSetGraph::DisponiScala(QGridLayout* griglia) {
    txtMinVal_ = new QLineEdit(this);
    txtMaxVal_ = new QLineEdit(this);
    Spazia(griglia);
    lblMinValDisegno_ = Riga(griglia, "lblMinValDisegno", txtMinVal_, "txtMinVal");
    lblMaxValDisegno_ = Riga(griglia, "lblMaxValDisegno", txtMaxVal_, "txtMaxVal");
}

void dlgSetGraph::Carica() {
    setWindowTitle(InQt(valori_.NomeCampo + " " + valori_.UnitaCampo));
    fraScalaDisegno_->setVisible(valori_.Separati);
    txtNomeCampo_->setText(InQt(valori_.NomeCampo));
    txtUM_->setText(InQt(valori_.UnitaCampo));
    txtFiltro_->setText(InQt(TestoNumero(valori_.FiltroDialogo)));
    cmdColor_->ImpostaColore(valori_.ColoreCanale);
    const QString spessore = InQt(TestoNumero(valori_.SpessoreDialogo));
    // A width from a file that the list lacks stays what it is until another is chosen.
    if (cboWidth_->findText(spessore) < 0) cboWidth_->addItem(spessore);
    cboWidth_->setCurrentText(spessore);
    testoMin_ = InQt(TestoNumero(valori_.MinDialogo, platform().DecimalSeparator()));
    testoMax_ = InQt(TestoNumero(valori_.MaxDialogo, platform().DecimalSeparator()));
    txtMinVal_->setText(testoMin_);
    txtMaxVal_->setText(testoMax_);
    txtNomeCampo_->setFocus();
    txtNomeCampo_->selectAll();
    adjustSize();
}

void dlgSetGraph::AggiornaTesti(Mnemonica& lettere) {
    const auto testo = [&](Voce n) { return lettere.Con(InQt(Testo(n))); };
    lblNomeCampo_->setText(testo(Voce::NomeCanale));
    lblUM_->setText(testo(Voce::UnitaCanale));
    lblFiltro_->setText(testo(Voce::FiltroUnPuntoOgni));
    lblColoreGrafico_->setText(testo(Voce::ColoreGrafico));
    lblSpessoreLinea_->setText(testo(Voce::SpessoreLinea));
    fraScalaDisegno_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::ScalaDisegno))));
    lblMinValDisegno_->setText(testo(Voce::MinimoDisegno));
    lblMaxValDisegno_->setText(testo(Voce::MassimoDisegno));
    CancelButton_->setText(testo(Voce::Annulla));
    cmdColor_->setAccessibleName(InQt(Testo(Voce::ColoreGrafico)));
    // One column of labels in both frames.
    int larghezza = 0;
    for (const QLabel* etichetta : {lblNomeCampo_, lblUM_, lblFiltro_, lblColoreGrafico_,
                                    lblSpessoreLinea_, lblMinValDisegno_, lblMaxValDisegno_}) {
        larghezza = std::max(larghezza, etichetta->sizeHint().width());
    }
    lblNomeCampo_->setMinimumWidth(larghezza);
    lblMinValDisegno_->setMinimumWidth(larghezza -
                                       fraScalaDisegno_->layout()->contentsMargins().left() - 1);
}

void dlgSetGraph::ScegliColore() {
    const auto scelto = platform().AskColor(cmdColor_->ColoreScelto());
    if (scelto) cmdColor_->ImpostaColore(*scelto);
}

void dlgSetGraph::NumeroErrato(QWidget* casella) {
    const auto& [didascalia, ammessi] = casella == txtFiltro_
                                            ? std::pair{Voce::FiltroUnPuntoOgni, " (1 ... 32767)"}
                                            : std::pair{Voce::SpessoreLinea, " (1 ... 6)"};
    platform().MsgBox(Testo(kTestoNumeroErrato) + "\r\n" + Testo(didascalia) + ammessi, Buttons::Ok,
                      Icon::Information, platform().ExeName());
    casella->setFocus();
    if (auto* testo = qobject_cast<QLineEdit*>(casella)) testo->selectAll();
}

void dlgSetGraph::Conferma() {
    // Both are read before anything is written, so that a wrong number changes nothing.
    const auto filtro = LeggiInt16(DaQt(txtFiltro_->text()));
    if (!filtro || *filtro < 1) return NumeroErrato(txtFiltro_);
    const auto spessore = LeggiInt16(DaQt(cboWidth_->currentText()));
    if (!spessore) return NumeroErrato(cboWidth_);

    valori_.NomeCampo = DaQt(txtNomeCampo_->text());
    valori_.UnitaCampo = DaQt(txtUM_->text());
    valori_.FiltroDialogo = *filtro;
    valori_.ColoreCanale = cmdColor_->ColoreScelto();
    valori_.SpessoreDialogo = *spessore;
    // A text shows 15 digits at most: what nobody touched keeps all of its own.
    if (txtMinVal_->text() != testoMin_) valori_.MinDialogo = NumeroIniziale(txtMinVal_->text());
    if (txtMaxVal_->text() != testoMax_) valori_.MaxDialogo = NumeroIniziale(txtMaxVal_->text());
    accept();
}

}  // namespace lapvane
