#include "sensors/frmEditor.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "device/RecordStrumento.h"
#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/StatoShell.h"
#include "widgets/CasellaNumerica.h"

namespace lapvane {

namespace {

constexpr int kPausa = 50;  // ms between two records
constexpr Voce kTestoErrore = Voce::ErroreDiComunicazione;
constexpr Voce kTestoContinuare = Voce::Continuare;
constexpr Voce kTestoSovrascrive = Voce::StrumentoSovrascritto;
constexpr Voce kTestoSostituisce = Voce::DatiSostituiti;

}  // namespace

frmEditor::frmEditor(const char* nome, QWidget* parent) : frmScambio(nome, parent) {
    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(Corpo(), 1);
}

QGroupBox* frmEditor::CreaStrumento() {
    fraStrumento_ = Cornice(Corpo(), "fraStrumento");
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
    auto* riga = CreaPulsanti(CreaProgresso(), [this] {
        Comandato(OKButton_, [this] {
            if (CasellaNumerica::Lascia(*this)) OKButton_Click();
        });
    });
    CasellaNumerica::SenzaControllo(CancelButton_);
    static_cast<QVBoxLayout*>(layout())->addLayout(riga);
    for (QComboBox* lista : findChildren<QComboBox*>()) SenzaRotella(lista);
    AbilitaStrumento(StrumentoPresente);
    Testi();
    Avvisi().Controlla();
}

void frmEditor::AbilitaStrumento(bool presente) {
    if (fraStrumento_ == nullptr) return;
    cmdInviaDati_->setEnabled(presente);
    cmdLeggiDati_->setEnabled(presente);
}

void frmEditor::AggiornaTesti(Mnemonica& lettere) {
    TestiPropri(lettere);
    if (fraStrumento_ != nullptr) {
        fraStrumento_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::Strumento))));
        cmdInviaDati_->setText(lettere.Con(InQt(Testo(Voce::ProgrammaDaFinestra))));
        cmdLeggiDati_->setText(lettere.Con(InQt(Testo(Voce::LeggiDaFinestra))));
    }
    CancelButton_->setText(lettere.Con(InQt(Testo(Voce::Annulla))));
}

/// The instrument's buttons go into the last row, where there is room, and their frame away.
void frmEditor::Stringi() {
    if (fraStrumento_ != nullptr) {
        auto* riga = static_cast<QHBoxLayout*>(layout()->itemAt(layout()->count() - 1)->layout());
        riga->insertWidget(0, cmdInviaDati_);
        riga->insertWidget(1, cmdLeggiDati_);
        fraStrumento_->hide();
        setTabOrder(OKButton_->previousInFocusChain(), cmdInviaDati_);
        setTabOrder(cmdInviaDati_, cmdLeggiDati_);
        setTabOrder(cmdLeggiDati_, OKButton_);
    }
    frmScambio::Stringi();
}

bool frmEditor::Conferma(Voce titolo, Voce corpo) {
    return platform().MsgBox(Testo(corpo) + "\r\n" + Testo(kTestoContinuare), Buttons::OkCancel,
                             Icon::Question, Testo(titolo)) == Answer::Ok;
}

/// Runs the routines; true when all of them succeeded. The first of two records counts as a failure
/// even when the second gets through.
bool frmEditor::Esegui(const ScambioEditor& scambio) {
    bool riuscito = true;
    bool primo = true;
    for (const auto routine : scambio.Routine) {
        if (!primo) platform().Sleep(kPausa);
        primo = false;
        const Esito esito = Passo(routine);
        if (esito == Esito::Chiusa || esito == Esito::SenzaLink) return false;
        riuscito = riuscito && esito == Esito::Fatto;
    }
    ErroreComunicazione = !riuscito;
    return riuscito;
}

void frmEditor::Scambia(const ScambioEditor& scambio, const std::function<void()>& corso,
                        const std::function<void()>& fine) {
    InCorso stato(*this, {Corpo(), cmdInviaDati_, cmdLeggiDati_, OKButton_}, scambio.Fase,
                  scambio.TestoStato, true);
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

void frmEditor::Sorveglia(QLineEdit* casella, std::optional<double> massimo) {
    const CampoRecord* campo = CampoDi(DaQt(casella->objectName()));
    if (campo == nullptr) return;
    const LimitiCampo limiti = Limiti(*campo);
    LimitiNumero numero{limiti.Minimo, limiti.Massimo, Ammessi(*campo)};
    if (massimo && *massimo < limiti.Massimo) {
        numero.Massimo = *massimo;
        numero.Testo = TestoNumero(limiti.Minimo) + " ... " + TestoNumero(*massimo);
    }
    Avvisi().Sorveglia(casella, numero);
}

void frmEditor::Programma(const ScambioEditor& scambio) {
    if (!PuoInviare(scambio)) return;
    if (!Conferma(scambio.TitoloDomanda, kTestoSovrascrive)) return;
    bool riuscito = false;
    Scambia(
        scambio, [&] { riuscito = Esegui(scambio); },
        [&] {
            if (!isVisible()) return;
            platform().MsgBox(Testo(riuscito ? scambio.TestoFine : kTestoErrore), Buttons::Ok,
                              Icon::Information, platform().ExeName());
        });
}

void frmEditor::Leggi(const ScambioEditor& scambio) {
    if (!Conferma(scambio.TitoloDomanda, kTestoSostituisce)) return;
    Scambia(
        scambio, [&] { Esegui(scambio); }, [] {});
}

}  // namespace lapvane
