#include "logs/frmDownload.h"

#include <QHBoxLayout>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "logs/DiarioScarico.h"
#include "logs/Impostazioni.h"
#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"

namespace lapvane {

namespace {

constexpr int kLarghezza = 440;

/// As wide as `lungo` for good. What changes with each page, and has its size, leaves the layout of
/// the window as it is.
void Misura(QLabel* etichetta, const QString& lungo) {
    const QFontMetrics lettere = etichetta->fontMetrics();
    etichetta->setFixedSize(lettere.horizontalAdvance(lungo) + 8, lettere.height());
}

/// A box over the download. It takes as long as it takes: the wait of the exchange underneath does
/// not count it.
void MentreAspetta(const std::function<void()>& box) {
    const std::int64_t inizio = platform().GetTickCount();
    box();
    collegamento().Sospeso += platform().GetTickCount() - inizio;
}

}  // namespace

frmDownload::frmDownload(QWidget* parent) : Dialogo("frmDownload", parent) {
    setWindowTitle(InQt(Testo(Voce::ScaricaDati)));
    lblStatoDownload_ = Etichetta(this, "lblStatoDownload");
    lblStatoDownload_->setWordWrap(true);
    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setRange(0, 100);
    ProgressBar1_->setTextVisible(false);
    ProgressBar1_->setMinimumHeight(20);
    lblPerc_ = Etichetta(this, "lblPerc");
    lblPerc_->setText(QStringLiteral("0 %"));
    lblPerc_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Misura(lblPerc_, QStringLiteral("100 %"));
    // Longer than any that a sound instrument brings about.
    AndamentoScarico lungo;
    lungo.Letti = lungo.Totale = 888888 * 1024;
    lungo.Resta = 88888 * 60;
    lblQuanto_ = Etichetta(this, "lblQuanto");
    Misura(lblQuanto_, InQt(FraseQuanto(lungo)));
    lblResta_ = Etichetta(this, "lblResta");
    Misura(lblResta_, InQt(FraseResta(lungo)));
    lblResta_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblDisturbi_ = Etichetta(this, "lblDisturbi");
    lblAvviso_ = Etichetta(this, "lblAvviso");
    lblAvviso_->setWordWrap(true);
    lblAvviso_->hide();
    MostraAndamento();
    CreaSceltaCopia();
    CreaOK([this] { accept(); })->setEnabled(false);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(14);
    colonna->addWidget(lblStatoDownload_);
    auto* avanzamento = new QHBoxLayout;
    avanzamento->addWidget(ProgressBar1_, 1);
    avanzamento->addWidget(lblPerc_);
    colonna->addLayout(avanzamento);
    auto* quantita = new QHBoxLayout;
    quantita->addWidget(lblQuanto_);
    quantita->addStretch(1);
    quantita->addWidget(lblResta_);
    colonna->addLayout(quantita);
    colonna->addWidget(lblDisturbi_);
    colonna->addWidget(lblAvviso_);
    colonna->addLayout(RigaPulsanti(chkImpostazioni_, {OKButton_}));
    setMinimumWidth(std::max(kLarghezza, minimumSizeHint().width()));
}

/// The choice is kept at once: the conversion behind this window reads it.
void frmDownload::CreaSceltaCopia() {
    chkImpostazioni_ = new QCheckBox(this);
    chkImpostazioni_->setObjectName(QStringLiteral("chkImpostazioni"));
    chkImpostazioni_->setText(Mnemonica().Con(InQt(Testo(Voce::CopiaImpostazioni))));
    chkImpostazioni_->setChecked(CopiaScelta());
    connect(chkImpostazioni_, &QCheckBox::clicked, this, [this](bool copia) {
        Protetto([&] {
            try {
                ScegliCopia(copia);
            } catch (const ErroreRuntime& errore) {
                chkImpostazioni_->setChecked(!copia);
                MentreAspetta([&] { SegnalaScrittura(errore, Voce::SceltaNonSalvata); });
            }
        });
    });
}

void frmDownload::showEvent(QShowEvent* evento) {
    QDialog::showEvent(evento);
    if (avviato_) return;
    avviato_ = true;
    // As long as OK is off the tick would have the focus, and a Space too many would take it away.
    setFocus();
    QTimer::singleShot(0, this, [this] {
        inCorso_ = true;
        Protetto([this] {
            DiarioScarico diario(CartellaScarichi());
            Scarico(*this, &diario).Esegui();
        });
        inCorso_ = false;
        collegamento().Abbandonato = false;
        FaseComunicazione = 0;
        platform().MousePointer(Pointer::Normal);
    });
}

/// A person who closes the window in the middle is asked.
bool frmDownload::SiFerma() {
    std::string domanda = Testo(Voce::ScaricoFermare);
    if (logInMemoria().TuttoSuDisco) domanda += " " + Testo(Voce::ScaricoPoi);
    Answer risposta = Answer::Cancel;
    MentreAspetta([&] {
        risposta =
            platform().MsgBox(domanda, Buttons::OkCancel, Icon::Question, platform().ExeName());
    });
    return risposta == Answer::Ok;
}

void frmDownload::done(int esito) {
    if (inCorso_ && !finito_ && isVisible()) {
        bool ferma = false;
        Protetto([&] { ferma = SiFerma(); });
        if (!ferma) return;
    }
    Chiudi(esito);
}

void frmDownload::Chiudi(int esito) {
    // While the download still unwinds, the poll stays off the port: the routine frees it itself.
    if (inCorso_) {
        collegamento().Abbandonato = true;
    } else {
        FaseComunicazione = 0;
    }
    QDialog::done(esito);
}

void frmDownload::Stato(const std::string& testo) {
    lblStatoDownload_->setText(InQt(testo));
}

void frmDownload::Percento(int percento) {
    if (percento == ProgressBar1_->value()) return;
    // The bar would paint itself at once, and the number beside it once more.
    ProgressBar1_->setUpdatesEnabled(false);
    ProgressBar1_->setValue(percento);
    ProgressBar1_->setUpdatesEnabled(true);
    lblPerc_->setText(QStringLiteral("%1 %").arg(percento));
}

void frmDownload::AbilitaOK(bool acceso) {
    finito_ = acceso;
    MostraAndamento();
    OKButton_->setEnabled(acceso);
    if (acceso) OKButton_->setFocus();
}

void frmDownload::Andamento(const AndamentoScarico& andamento) {
    // As often as an eye can follow: the line waits while the screen is drawn. What went wrong
    // shows at once, for a wait may follow it.
    constexpr int kRitmo = 250;  // ms
    const bool guasto =
        andamento.Scartate != andamento_.Scartate || andamento.Ripetuti != andamento_.Ripetuti;
    andamento_ = andamento;
    if (guasto || platform().GetTickCount() - mostrato_ >= kRitmo) MostraAndamento();
}

void frmDownload::MostraAndamento() {
    mostrato_ = platform().GetTickCount();
    lblQuanto_->setText(InQt(FraseQuanto(andamento_)));
    lblResta_->setText(InQt(FraseResta(andamento_)));
    lblDisturbi_->setText(InQt(FraseDisturbi(andamento_)));
}

void frmDownload::Avviso(const std::string& testo) {
    lblAvviso_->setText(InQt(testo));
    lblAvviso_->show();
    // The window was as high as it had to be without it.
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

}  // namespace lapvane
