#include "device/dlgStrumento.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "device/SerialComm.h"
#include "device/dlgDifferenze.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "sensors/CanaliSensore.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr int kPassi = 12;
constexpr int kMargine = 8;

bool PiuCorto(const std::string& a, const std::string& b) {
    return a.size() < b.size();
}

QLabel* Riga(const char* nome, QWidget* dove) {
    QLabel* riga = Etichetta(dove, nome);
    riga->setTextFormat(Qt::PlainText);
    return riga;
}

/// Room for the widest step of either direction, so that the window does not grow under the eye.
int LarghezzaPassi(const QFontMetrics& metrica) {
    int larghezza = 0;
    const auto conta = [&](const std::string& testo) {
        const QString riga = InQt(testo + " ...   " + Testo(Voce::Riuscito));
        larghezza = std::max(larghezza, metrica.horizontalAdvance(riga));
    };
    for (const Voce testo : {Voce::ProgrammazioneImpostazioni, Voce::LetturaIngressiSensori,
                             Voce::LetturaImpostazioni, Voce::PassoAllarmi})
        conta(Testo(testo));
    conta(Testo(Voce::VoceImpostazioni) + " " + Testo(Voce::VoceSensori));
    for (const CanaleSensore& canale : kCanaliSensore) {
        conta(Testo(canale.TestoInvio));
        conta(Testo(canale.TestoLettura));
    }
    return larghezza;
}

}  // namespace

dlgStrumento::dlgStrumento(QWidget* parent) : Dialogo("dlgStrumento", parent) {
    setWindowModality(Qt::ApplicationModal);
    Label2_ = Riga("Label2", this);
    QFont titolo = font();
    titolo.setPointSizeF(titolo.pointSizeF() * 1.25);
    titolo.setBold(true);
    Label2_->setFont(titolo);
    Label1_ = Riga("Label1", this);
    Label1_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Label1_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    Label1_->setBackgroundRole(QPalette::Base);
    Label1_->setForegroundRole(QPalette::Text);
    Label1_->setAutoFillBackground(true);
    Label1_->setMargin(kMargine);
    Label1_->setMinimumWidth(LarghezzaPassi(Label1_->fontMetrics()) + 4 * kMargine);
    // The line break behind the last step opens one line more.
    const int bordo = 2 * (kMargine + Label1_->frameWidth());
    const QString righe(kPassi, QLatin1Char('\n'));
    Label1_->setMinimumHeight(Label1_->fontMetrics().size(0, righe).height() + bordo);
    Label3_ = Riga("Label3", this);
    QFont grassetto = font();
    grassetto.setBold(true);
    Label3_->setFont(grassetto);
    const QString piuLunga = InQt(
        std::max(Testo(Voce::ProgrammazioneStrumento), Testo(Voce::LetturaStrumento), PiuCorto) +
        " " + Testo(Voce::Riuscito));
    Label3_->setMinimumWidth(QFontMetrics(grassetto).horizontalAdvance(piuLunga) + 8);
    CreaCancel()->setText(Mnemonica().Con(InQt(Testo(Voce::Annulla))));
    // An Enter too many behind the question must not stop the run; Esc and the letter do.
    CancelButton_->setAutoDefault(false);
    CancelButton_->setMinimumWidth(InBox(kLarghezzaPulsante));  // what it has as the default
    CancelButton_->setFocusPolicy(Qt::NoFocus);
    // It becomes the main one, and no wider by that.
    CancelButton_->setMinimumWidth(kLarghezzaPulsante);
    cmdConfronta_ = CreaPulsante("cmdConfronta", [this] {
        confronta_ = true;
        accept();
    });
    cmdConfronta_->setText(InQt(Testo(Voce::ConfrontaColProgetto)));
    cmdConfronta_->setAutoDefault(false);
    cmdConfronta_->hide();

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(12);
    colonna->addWidget(Label2_);
    colonna->addWidget(Label1_, 1);
    colonna->addLayout(RigaPulsanti(Label3_, {cmdConfronta_, CancelButton_}));
}

void dlgStrumento::Esegui(void (*corsa)(VistaStrumento&)) {
    const bool scrive = corsa == mnuProgramDevice_Click;
    // The button has its place from the beginning, so that the window does not grow at the end.
    if (scrive) TieniPosto(cmdConfronta_);
    inCorso_ = true;
    corsa(*this);
    inCorso_ = false;
    collegamento().Abbandonato = false;
    if (!isVisible()) return;
    unsetCursor();
    Mnemonica lettere;
    CancelButton_->setText(lettere.Con(InQt(Testo(Voce::Riuscito))));
    cmdConfronta_->setText(lettere.Con(InQt(Testo(Voce::ConfrontaColProgetto))));
    cmdConfronta_->setVisible(scrive && !Label3_->text().isEmpty());
    CancelButton_->setFocusPolicy(Qt::StrongFocus);
    CancelButton_->setDefault(true);
    CancelButton_->setFocus();
    exec();
    // The check of the sensors left the link to this run; closing its window gives it back.
    principale().TestoPannello(Pannello::Progresso, "");
    FaseComunicazione = 0;
    if (confronta_) dlgStrumento(parentWidget()).Confronta();
}

void dlgStrumento::Confronta() {
    inCorso_ = true;
    const auto copia = LeggiCopia(*this);
    inCorso_ = false;
    collegamento().Abbandonato = false;
    unsetCursor();
    if (copia) dlgDifferenze(Differenze(DatiProgetto, *copia), parentWidget()).exec();
}

void dlgStrumento::done(int esito) {
    if (inCorso_) collegamento().Abbandonato = true;
    QDialog::done(esito);
}

void dlgStrumento::Mostra(const std::string& titolo) {
    setWindowTitle(InQt(titolo));
    Label2_->setText(InQt(titolo));
    show();
}

void dlgStrumento::Puntatore(Pointer puntatore) {
    if (puntatore == Pointer::Busy) {
        setCursor(Qt::WaitCursor);
    } else {
        unsetCursor();
    }
}

void dlgStrumento::Aggiungi(const std::string& testo) {
    Label1_->setText(Label1_->text() + InQt(testo).remove(QLatin1Char('\r')));
}

void dlgStrumento::Chiusura(const std::string& testo) {
    Label3_->setText(InQt(testo));
}

void dlgStrumento::Scarica() {
    inCorso_ = false;
    close();
}

}  // namespace lapvane
