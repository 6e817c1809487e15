#include "sensors/frmEditor.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

#include "device/RecordStrumento.h"
#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "sensors/frmScambio.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "widgets/CasellaNumerica.h"
#include "widgets/Rotella.h"

namespace lapvane {

namespace {

constexpr int kPausa = 50;  // ms between two records
constexpr Voce kTestoErrore = Voce::ErroreDiComunicazione;
constexpr Voce kTestoContinuare = Voce::Continuare;
constexpr Voce kTestoSovrascrive = Voce::StrumentoSovrascritto;
constexpr Voce kTestoSostituisce = Voce::DatiSostituiti;

}  // namespace

/// The state of program and window while an exchange runs. Its end puts back what the exchange
/// changed, however it comes.
class frmEditor::InCorso {
 public:
    InCorso(frmEditor& editor, const ScambioEditor& scambio)
        : editor_(editor), fuoco_(editor.focusWidget()) {
        editor_.inCorso_ = true;
        // Neither the disabled controls nor the one button left get the keys of an impatient hand.
        editor_.corpo_->setEnabled(false);
        editor_.OKButton_->setEnabled(false);
        editor_.setFocus();
        platform().MousePointer(Pointer::Busy);
        editor_.Progresso(scambio.TestoStato);
        FaseComunicazione = scambio.Fase;
    }
    ~InCorso() {
        Chiudi();
        TrasferimentoAbbandonato = false;
        FaseComunicazione = 0;
    }
    InCorso(const InCorso&) = delete;
    InCorso& operator=(const InCorso&) = delete;

    /// The exchange is over, its closing message still to come.
    void Chiudi() {
        if (!editor_.inCorso_) return;
        editor_.inCorso_ = false;
        MostraProgresso(*editor_.lblProgresso_, "");
        platform().MousePointer(Pointer::Normal);
        editor_.corpo_->setEnabled(true);
        editor_.OKButton_->setEnabled(true);
        editor_.AbilitaStrumento(StrumentoPresente);
        if (fuoco_ != nullptr) fuoco_->setFocus();
    }

 private:
    frmEditor& editor_;
    QPointer<QWidget> fuoco_;
};

frmEditor::frmEditor(const char* nome, QWidget* parent) : QDialog(parent), nome_(nome) {
    setObjectName(QString::fromLatin1(nome));
    CalcolaBaseTesti();
    auto* colonna = new QVBoxLayout(this);
    corpo_ = new QWidget(this);
    colonna->addWidget(corpo_, 1);
    ImpostaFormAttiva(this);
}

frmEditor::~frmEditor() {
    if (FormAttiva == this) ImpostaFormAttiva(nullptr);
}

QGroupBox* frmEditor::CreaStrumento() {
    fraStrumento_ = new QGroupBox(corpo_);
    fraStrumento_->setObjectName(QStringLiteral("fraStrumento"));
    auto* riga = new QHBoxLayout(fraStrumento_);
    const auto pulsante = [&](const char* nome, void (frmEditor::*gestore)()) {
        auto* nuovo = new QPushButton(fraStrumento_);
        nuovo->setObjectName(QString::fromLatin1(nome));
        riga->addWidget(nuovo, 1);
        connect(nuovo, &QPushButton::clicked, this, [this, nuovo, gestore] {
            Comandato(nuovo, [this, gestore] {
                if (CasellaNumerica::Lascia(*this)) (this->*gestore)();
            });
        });
        return nuovo;
    };
    cmdInviaDati_ = pulsante("cmdInviaDati", &frmEditor::cmdInviaDati_Click);
    cmdLeggiDati_ = pulsante("cmdLeggiDati", &frmEditor::cmdLeggiDati_Click);
    return fraStrumento_;
}

void frmEditor::Completa(std::unique_ptr<ControlliEditor> controlli) {
    controlli_ = std::move(controlli);
    OKButton_ = new QPushButton(QStringLiteral("OK"), this);
    OKButton_->setObjectName(QStringLiteral("OKButton"));
    OKButton_->setDefault(true);
    CancelButton_ = new QPushButton(this);
    CancelButton_->setObjectName(QStringLiteral("CancelButton"));
    CasellaNumerica::SenzaControllo(CancelButton_);
    auto* riga = new QHBoxLayout;
    lblProgresso_ = CreaProgresso(this);
    riga->addWidget(lblProgresso_, 1);
    riga->addWidget(OKButton_);
    riga->addWidget(CancelButton_);
    static_cast<QVBoxLayout*>(layout())->addLayout(riga);
    connect(OKButton_, &QPushButton::clicked, this, [this] {
        Comandato(OKButton_, [this] {
            if (CasellaNumerica::Lascia(*this)) OKButton_Click();
        });
    });
    connect(CancelButton_, &QPushButton::clicked, this, &QDialog::reject);
    for (QComboBox* lista : findChildren<QComboBox*>()) {
        lista->setFocusPolicy(Qt::StrongFocus);
        lista->installEventFilter(this);
    }
    AbilitaStrumento(StrumentoPresente);
    Testi();
}

void frmEditor::AbilitaStrumento(bool presente) {
    if (fraStrumento_ == nullptr) return;
    cmdInviaDati_->setEnabled(presente);
    cmdLeggiDati_->setEnabled(presente);
}

void frmEditor::Testi() {
    CalcolaBaseTesti();
    Mnemonica lettere;
    AggiornaTesti(lettere);
    if (fraStrumento_ != nullptr) {
        fraStrumento_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::Strumento))));
        cmdInviaDati_->setText(lettere.Con(InQt(Testo(Voce::ProgrammaDaFinestra))));
        cmdLeggiDati_->setText(lettere.Con(InQt(Testo(Voce::LeggiDaFinestra))));
    }
    CancelButton_->setText(lettere.Con(InQt(Testo(Voce::Annulla))));
}

bool frmEditor::event(QEvent* evento) {
    if (evento->type() == QEvent::WindowActivate) Protetto([this] { Testi(); });
    return QDialog::event(evento);
}

bool frmEditor::eventFilter(QObject* oggetto, QEvent* evento) {
    return RotellaDiPassaggio(oggetto, evento) || QDialog::eventFilter(oggetto, evento);
}

void frmEditor::done(int esito) {
    // While an exchange still unwinds, the poll stays off the port: the exchange frees it itself.
    if (inCorso_) TrasferimentoAbbandonato = true;
    if (FormAttiva == this) ImpostaFormAttiva(nullptr);
    QDialog::done(esito);
}

void frmEditor::Comandato(const QObject* chi, std::function<void()> azione) {
    Protetto([&] {
        principale().QuandoLibero(
            chi, [questa = QPointer<frmEditor>(this), azione = std::move(azione)] {
                if (questa != nullptr && questa->isVisible() && !questa->inCorso_) azione();
            });
    });
}

bool frmEditor::Conferma(Voce titolo, Voce corpo) {
    return platform().MsgBox(Testo(corpo) + "\r\n" + Testo(kTestoContinuare), Buttons::OkCancel,
                             Icon::Question, Testo(titolo)) == Answer::Ok;
}

/// Runs the routines; true when all of them succeeded. A link that is not there counts as a
/// failure, so that nothing is reported as sent that never left, and so does the first of two
/// records whose second gets through.
bool frmEditor::Esegui(const ScambioEditor& scambio) {
    bool riuscito = true;
    bool primo = true;
    for (const auto routine : scambio.Routine) {
        if (!primo) platform().Sleep(kPausa);
        primo = false;
        const bool pronto = LinkPronto();
        if (!isVisible()) return false;
        if (!pronto) {
            ErroreComunicazione = true;
            return false;
        }
        platform().MousePointer(Pointer::Busy);
        routine();
        riuscito = riuscito && !ErroreComunicazione;
        if (!isVisible()) return false;
    }
    ErroreComunicazione = !riuscito;
    return riuscito;
}

void frmEditor::Progresso(Voce testo) {
    MostraProgresso(*lblProgresso_, Testo(testo));
}

void frmEditor::Scambia(const ScambioEditor& scambio, const std::function<void()>& corso,
                        const std::function<void()>& fine) {
    InCorso stato(*this, scambio);
    corso();
    stato.Chiudi();
    fine();
}

bool frmEditor::PuoInviare(const ScambioEditor& scambio) {
    const auto ferma = ConfermaInvio(scambio.Record);
    if (!ferma) return true;
    if (auto* casella = findChild<QLineEdit*>(InQt(*ferma))) {
        VaiAllaCasella(*casella);
    } else if (auto* controllo = findChild<QWidget*>(InQt(*ferma))) {
        Vai(controllo);
    }
    return false;
}

void frmEditor::VaiAllaCasella(QLineEdit& casella) {
    Vai(&casella);
    casella.selectAll();
}

void frmEditor::Programma(const ScambioEditor& scambio) {
    if (!PuoInviare(scambio)) return;
    if (!Conferma(scambio.TitoloDomanda, kTestoSovrascrive)) return;
    InCorso corso(*this, scambio);
    const bool riuscito = Esegui(scambio);
    corso.Chiudi();
    if (!isVisible()) return;
    platform().MsgBox(Testo(riuscito ? scambio.TestoFine : kTestoErrore), Buttons::Ok,
                      Icon::Information, platform().ExeName());
}

void frmEditor::Leggi(const ScambioEditor& scambio) {
    if (!Conferma(scambio.TitoloDomanda, kTestoSostituisce)) return;
    const InCorso corso(*this, scambio);
    Esegui(scambio);
}

}  // namespace lapvane
