#include "sensors/dlgCalibrazione.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "device/Diagnostica.h"
#include "device/SerialComm.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"

namespace lapvane {

namespace {

constexpr std::int16_t kFase = 9;

std::string Coda() {
    return "\n\n" + Testo(Voce::PremereOK) + "\n\n" + Testo(Voce::PremereAnnulla);
}

/// The same step again, told that nothing was entered.
std::string FaseFallita(const std::string& fase) {
    return Testo(Voce::LetturaFallita) + "\n\n" + fase;
}

std::string FaseIniziale() {
    return Testo(Voce::SvuotareIlSerbatoio) + Testo(Voce::AttendereIlLivello) + Coda();
}

std::string FaseSeguente() {
    return Testo(Voce::ImmettereCarburante) + "\n" + Testo(Voce::ScrivereILitri) + Coda();
}

}  // namespace

dlgCalibrazione::dlgCalibrazione(TabellaPunti& tabella, std::function<void()> mostra,
                                 QWidget* parent)
    : frmScambio("dlgCalibrazione", parent), calibrazione_(tabella), mostra_(std::move(mostra)) {
    setWindowTitle(InQt(Testo(Voce::TitoloCalibrazione)));
    Disponi();
    Descrivi(FaseIniziale());
    for (QWidget* parte : {static_cast<QWidget*>(Label1_), static_cast<QWidget*>(txtLitri_),
                           static_cast<QWidget*>(lblLitri_)}) {
        TieniPosto(parte);
        parte->hide();
    }
    OKButton_->setFocus();
}

void dlgCalibrazione::Disponi() {
    Mnemonica lettere;
    auto* parti = new QVBoxLayout(Corpo());
    parti->setContentsMargins(0, 0, 0, 0);
    parti->setSpacing(12);
    CreaIstruzioni();
    parti->addWidget(lblTitolo);
    parti->addWidget(lblDescrizioneFase_, 1);
    QLayout* litri = CreaLitri();
    parti->addLayout(litri);
    QLayout* pulsanti = CreaComandi(lettere);
    // Kept: the caption of the design, in one language.
    Label1_->setText(lettere.Con(QStringLiteral("Carburante immesso")));
    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(16);
    colonna->addWidget(Corpo(), 1);
    colonna->addLayout(pulsanti);
    setTabOrder(txtLitri_, OKButton_);
    setTabOrder(OKButton_, cmdFineProcedura_);
    setTabOrder(cmdFineProcedura_, CancelButton_);
}

void dlgCalibrazione::CreaIstruzioni() {
    lblTitolo = Etichetta(Corpo(), "lblTitolo");
    QFont grande = lblTitolo->font();
    grande.setBold(true);
    grande.setPointSizeF(grande.pointSizeF() * 1.2);
    lblTitolo->setFont(grande);
    lblDescrizioneFase_ = Etichetta(Corpo(), "lblDescrizioneFase");
    lblDescrizioneFase_->setTextFormat(Qt::PlainText);
    lblDescrizioneFase_->setWordWrap(true);
    lblDescrizioneFase_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    // The window keeps its size from the first step to the last.
    int alto = 0;
    const int largo = fontMetrics().averageCharWidth() * 66;
    for (const std::string& fase : {FaseFallita(FaseIniziale()), FaseFallita(FaseSeguente())}) {
        lblDescrizioneFase_->setText(InQt(fase));
        alto = std::max(alto, lblDescrizioneFase_->heightForWidth(largo));
    }
    lblDescrizioneFase_->setMinimumSize(largo, alto);
}

/// The litres poured in, and what the last reading was.
QLayout* dlgCalibrazione::CreaLitri() {
    txtLitri_ = new QLineEdit(Corpo());
    txtLitri_->setObjectName(QStringLiteral("txtLitri"));
    txtLitri_->setAlignment(Qt::AlignRight);
    txtLitri_->setFixedWidth(fontMetrics().averageCharWidth() * 14);
    Label1_ = Etichetta(Corpo(), "Label1", txtLitri_);
    lblLitri_ = Etichetta(Corpo(), "lblLitri");
    lblLitri_->setText(QStringLiteral("l"));
    lblValore_ = Etichetta(Corpo(), "lblValore");
    QFont evidente = lblValore_->font();
    evidente.setBold(true);
    lblValore_->setFont(evidente);
    auto* litri = new QHBoxLayout;
    litri->addWidget(Label1_);
    litri->addWidget(txtLitri_);
    litri->addWidget(lblLitri_);
    litri->addStretch(1);
    litri->addWidget(lblValore_);
    return litri;
}

QLayout* dlgCalibrazione::CreaComandi(Mnemonica& lettere) {
    CreaOK([this] { Comandato(OKButton_, [this] { OKButton_Click(); }); });
    cmdFineProcedura_ = CreaPulsante("cmdFineProcedura", [this] { cmdFineProcedura_Click(); });
    cmdFineProcedura_->setText(lettere.Con(InQt(Testo(Voce::FineProcedura))));
    cmdFineProcedura_->setMinimumWidth(cmdFineProcedura_->sizeHint().width() + 16);
    CreaCancel()->setText(lettere.Con(InQt(Testo(Voce::Annulla))));
    return RigaPulsanti(nullptr, {OKButton_, cmdFineProcedura_, CancelButton_});
}

void dlgCalibrazione::Descrivi(const std::string& fase) {
    lblDescrizioneFase_->setText(InQt(fase));
}

void dlgCalibrazione::MostraLitri(bool mostra) {
    txtLitri_->setVisible(mostra);
    Label1_->setVisible(mostra);
    lblLitri_->setVisible(mostra);
}

void dlgCalibrazione::AbilitaStrumento(bool presente) {
    OKButton_->setEnabled(presente && !calibrazione_.Piena());
}

void dlgCalibrazione::OKButton_Click() {
    const bool primo = calibrazione_.NumeroPunto() == 0;
    Descrivi(FaseSeguente());
    MostraLitri(true);
    calibrazione_.StatoCalibrazione = 1;
    {
        const InCorso scambio(*this, {Corpo(), OKButton_, cmdFineProcedura_}, kFase, Voce::Nessuna);
        if (Passo([] { LeggiValoriAnalogici(); }) == Esito::Chiusa) return;
    }
    if (ErroreComunicazione) {
        // The value of the step before would be a point that nobody measured.
        Descrivi(FaseFallita(primo ? FaseIniziale() : FaseSeguente()));
        MostraLitri(!primo);
        if (primo) {
            OKButton_->setFocus();
        } else {
            txtLitri_->setFocus();
            txtLitri_->selectAll();
        }
        return;
    }
    calibrazione_.ValoreBenzina = ValoriAnalogici[Calibrazione::kIngressoBenzina];
    const std::string litri = Calibrazione::SistemaLitri(DaQt(txtLitri_->text()));
    txtLitri_->setText(InQt(litri));
    calibrazione_.Misura(litri);
    // Beside the box where the next litres are typed: what this reading was.
    lblValore_->setText(InQt(Testo(Voce::UltimaMisura) + " " +
                             TestoNumero(int{calibrazione_.ValoreBenzina}) + " bit = " + litri +
                             " l"));
    mostra_();
    if (calibrazione_.Piena()) {
        OKButton_->setEnabled(false);
        cmdFineProcedura_->setDefault(true);
        cmdFineProcedura_->setFocus();
    } else {
        txtLitri_->setFocus();
        txtLitri_->selectAll();
    }
}

void dlgCalibrazione::cmdFineProcedura_Click() {
    calibrazione_.FineProcedura();
    mostra_();
    accept();
}

void dlgCalibrazione::reject() {
    calibrazione_.StatoCalibrazione = 3;
    QDialog::reject();
}

void dlgCalibrazione::closeEvent(QCloseEvent* evento) {
    evento->accept();
    done(Rejected);
}

}  // namespace lapvane
