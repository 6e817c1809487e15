#include "sensors/frmAllarmi.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "device/RecordStrumento.h"
#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "widgets/ControlliFinestra.h"

namespace lapvane {

namespace {

const ScambioEditor kProgramma = {20,
                                  Voce::PassoAllarmi,
                                  Voce::ProgrammazioneAllarmi,
                                  Voce::AllarmiTrasmessi,
                                  {InviaDatiAllarmi},
                                  {&kRecordAllarmi}};
const ScambioEditor kLeggi = {
    21, Voce::DomandaLeggiAllarmi, Voce::LetturaAllarmi, Voce::Nessuna, {LeggiDatiAllarmi}};

/// A lamp as the driver sees it.
class Lampada : public QWidget {
 public:
    Lampada(const QColor& colore, QWidget* parent) : QWidget(parent), colore_(colore) {
        setFixedSize(18, 18);
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter penna(this);
        penna.setRenderHint(QPainter::Antialiasing);
        QRadialGradient luce(QPointF(7, 6), 12);
        luce.setColorAt(0.0, colore_.lighter(150));
        luce.setColorAt(1.0, colore_);
        penna.setPen(QPen(colore_.darker(160), 1));
        penna.setBrush(luce);
        penna.drawEllipse(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5));
    }

 private:
    QColor colore_;
};

}  // namespace

frmAllarmi::frmAllarmi(QWidget* parent) : frmEditor("frmAllarmi", parent) {
    auto* griglia = new QGridLayout(Corpo());
    griglia->setContentsMargins(0, 0, 0, 0);
    griglia->setHorizontalSpacing(12);
    griglia->addWidget(CreaAllarmi(), 0, 0, 2, 1);
    griglia->addWidget(CreaLed(), 0, 1);
    griglia->addWidget(CreaLinee(), 1, 1);
    griglia->addWidget(CreaShiftLight(), 2, 0);
    griglia->addWidget(CreaStrumento(), 2, 1);
    griglia->setColumnStretch(0, 1);
    griglia->setColumnStretch(1, 1);
    griglia->setRowStretch(3, 1);
    auto controlli = std::make_unique<ControlliFinestra>(*this);
    MostraDatiAllarmi(DatiProgetto, *controlli);
    Completa(std::move(controlli));
    spunte_[0]->setFocus();
}

QCheckBox* frmAllarmi::Spunta(QWidget* dove, std::string_view nome) {
    auto* spunta = new QCheckBox(dove);
    spunta->setObjectName(InQt(nome));
    return spunta;
}

/// The check box enables its field.
void frmAllarmi::Lega(QCheckBox* spunta, QWidget* campo) {
    campo->setEnabled(false);
    connect(spunta, &QCheckBox::toggled, campo, &QWidget::setEnabled);
}

QLabel* frmAllarmi::Unita(UnitaSoglia unita) {
    const auto etichetta = [this](std::string_view nome) {
        QLabel* nuova = Etichetta(fraAllarmi_, nome);
        nuova->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("bar")) + 8);
        return nuova;
    };
    const auto prossima = [&](std::array<QLabel*, 2>& coppia, const char* nome) {
        const std::size_t i = coppia[0] == nullptr ? 0 : 1;
        coppia[i] = etichetta(nome + TestoNumero(static_cast<int>(i)));
        return coppia[i];
    };
    switch (unita) {
        case UnitaSoglia::Temperatura:
            return prossima(lblTemp_, "lblTemp");
        case UnitaSoglia::Pressione:
            return prossima(lblPress_, "lblPress");
        case UnitaSoglia::Volt: {
            QLabel* volt = etichetta("lblTB");
            volt->setText(QStringLiteral("V"));
            return volt;
        }
        case UnitaSoglia::Nessuna:
            break;
    }
    return nullptr;
}

QGroupBox* frmAllarmi::CreaAllarmi() {
    fraAllarmi_ = Cornice(Corpo(), "fraAllarmi");
    auto* griglia = new QGridLayout(fraAllarmi_);
    griglia->setColumnStretch(3, 1);
    for (std::size_t i = 0; i < kSoglie.size(); ++i) {
        const SogliaAllarme& soglia = kSoglie[i];
        const int riga = static_cast<int>(i);
        spunte_[i] = Spunta(fraAllarmi_, soglia.Spunta);
        auto* casella = new CasellaNumerica(fraAllarmi_);
        Lega(spunte_[i], casella);
        casella->setObjectName(InQt(soglia.Casella));
        casella->setAlignment(Qt::AlignRight);
        casella->setFixedWidth(casella->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 11);
        casella->PersoFuoco = [casella, &soglia] {
            Riscrivi(*casella, InQt(SistemaSoglia(soglia, DaQt(casella->text()))));
        };
        Sorveglia(casella, PrefissoNumerico(soglia.Massimo));
        soglie_[i] = casella;
        // What a tick switches is out of range only while it is on.
        connect(spunte_[i], &QCheckBox::toggled, this,
                [this] { Protetto([this] { Avvisi().Controlla(); }); });
        griglia->addWidget(spunte_[i], riga, 0);
        griglia->addWidget(casella, riga, 1);
        if (QLabel* unita = Unita(soglia.Unita)) griglia->addWidget(unita, riga, 2);
        griglia->setRowStretch(riga, 1);
    }
    return fraAllarmi_;
}

frmAllarmi::Funzione& frmAllarmi::CreaFunzione(QWidget* dove, std::size_t numero) {
    Funzione& funzione = funzioni_[numero];
    const FunzioneAllarme& campo = kFunzioniAllarme[numero];
    funzione.Spunta = Spunta(dove, campo.Spunta);
    funzione.Lista = new QComboBox(dove);
    funzione.Lista->setObjectName(InQt(campo.Lista));
    Lega(funzione.Spunta, funzione.Lista);
    if (campo.Voci != nullptr) {
        for (const std::string& voce : *campo.Voci) funzione.Lista->addItem(InQt(voce));
        // Without its check box a function is none; the free texts stay.
        connect(funzione.Spunta, &QCheckBox::toggled, funzione.Lista,
                [elenco = funzione.Lista](bool accesa) {
                    if (!accesa) elenco->setCurrentIndex(-1);
                });
    } else {
        funzione.Lista->setEditable(true);
        funzione.Lista->setInsertPolicy(QComboBox::NoInsert);
    }
    funzione.Lista->setMinimumContentsLength(20);
    return funzione;
}

QGroupBox* frmAllarmi::CreaLed() {
    fraLed_ = Cornice(Corpo(), "fraLed");
    lblLed_ = Etichetta(fraLed_, "lblLed");
    auto* griglia = new QGridLayout(fraLed_);
    griglia->setColumnStretch(1, 1);
    griglia->addWidget(lblLed_, 0, 2);
    int riga = 1;
    for (const auto& [numero, colore] : {std::pair{kLedGiallo, QColor(255, 200, 0)},
                                         {kLedVerde, QColor(0, 170, 60)},
                                         {kLedBlu, QColor(30, 110, 255)}}) {
        const Funzione& funzione = CreaFunzione(fraLed_, numero);
        griglia->addWidget(new Lampada(colore, fraLed_), riga, 0);
        griglia->addWidget(funzione.Spunta, riga, 1);
        griglia->addWidget(funzione.Lista, riga, 2);
        ++riga;
    }
    return fraLed_;
}

QGroupBox* frmAllarmi::CreaLinee() {
    QGroupBox* cornice = Cornice(Corpo(), "fraLinee");
    auto* griglia = new QGridLayout(cornice);
    griglia->setColumnStretch(1, 1);
    int riga = 0;
    for (const std::size_t numero : {kIngresso, kUscita}) {
        const Funzione& funzione = CreaFunzione(cornice, numero);
        griglia->addWidget(funzione.Spunta, riga, 0);
        griglia->addWidget(funzione.Lista, riga, 1);
        ++riga;
    }
    return cornice;
}

QGroupBox* frmAllarmi::CreaShiftLight() {
    fraShiftLight_ = Cornice(Corpo(), "fraShiftLight");
    auto* griglia = new QGridLayout(fraShiftLight_);
    const QColor verde(0, 170, 60), giallo(255, 200, 0), rosso(230, 30, 30);
    const std::array<QColor, 5> colori = {verde, verde, giallo, giallo, rosso};
    for (std::size_t i = 0; i < txtLed_.size(); ++i) {
        const int colonna = static_cast<int>(i);
        txtLed_[i] = new CasellaNumerica(fraShiftLight_);
        txtLed_[i]->setObjectName(InQt(kShiftLight[i].Casella));
        txtLed_[i]->setAlignment(Qt::AlignHCenter);
        Sorveglia(txtLed_[i]);
        txtLed_[i]->setMinimumWidth(
            txtLed_[i]->fontMetrics().horizontalAdvance(QStringLiteral("-32768")) + 16);
        lblLedShift_[i] =
            Etichetta(fraShiftLight_, "lblLed" + TestoNumero(colonna + 1), txtLed_[i]);
        griglia->addWidget(new Lampada(colori[i], fraShiftLight_), 0, colonna, Qt::AlignHCenter);
        griglia->addWidget(lblLedShift_[i], 1, colonna, Qt::AlignHCenter);
        griglia->addWidget(txtLed_[i], 2, colonna);
    }
    return fraShiftLight_;
}

void frmAllarmi::TestiPropri(Mnemonica& lettere) {
    const auto testo = [&](Voce n) { return lettere.Con(InQt(Testo(n))); };
    const auto senza = [](Voce n) { return Mnemonica::Senza(InQt(Testo(n))); };
    setWindowTitle(InQt(Testo(Voce::TitoloAllarmi)));
    fraAllarmi_->setTitle(senza(Voce::Allarmi));
    for (std::size_t i = 0; i < kSoglie.size(); ++i) {
        spunte_[i]->setText(testo(kSoglie[i].Didascalia));
        soglie_[i]->setAccessibleName(InQt(Testo(kSoglie[i].Didascalia)));
    }
    fraLed_->setTitle(senza(Voce::LedSegnalazione));
    lblLed_->setText(senza(Voce::Funzione));
    for (std::size_t i = 0; i < funzioni_.size(); ++i) {
        const Voce didascalia = kFunzioniAllarme[i].Didascalia;
        funzioni_[i].Spunta->setText(testo(didascalia));
        funzioni_[i].Lista->setAccessibleName(InQt(Testo(didascalia)));
    }
    fraShiftLight_->setTitle(senza(Voce::ShiftLight));
    for (std::size_t i = 0; i < lblLedShift_.size(); ++i) {
        lblLedShift_[i]->setText(testo(kShiftLight[i].Didascalia));
    }
    for (QLabel* unita : lblTemp_) {
        unita->setText(InQt(NomeUnita(ListaUMTemperatura, DatiProgetto.UMTemp)));
    }
    for (QLabel* unita : lblPress_) {
        unita->setText(InQt(NomeUnita(ListaUMPressione, DatiProgetto.UMPress)));
    }
}

/// The boxes check themselves as they are left; what is left here is a box that was left by way of
/// Cancel.
bool frmAllarmi::NumeriValidi() {
    const auto errata = CasellaErrata(*Controlli());
    if (!errata) return true;
    auto* casella = findChild<CasellaNumerica*>(InQt(*errata));
    VaiAllaCasella(*casella);
    MostraNumeroErrato(*casella);
    return false;
}

void frmAllarmi::OKButton_Click() {
    if (!NumeriValidi()) return;
    SalvaDatiAllarmi(*Controlli(), DatiProgetto);
    ProgettoModificato = true;
    accept();
}

void frmAllarmi::cmdInviaDati_Click() {
    if (NumeriValidi()) Programma(kProgramma);
}

void frmAllarmi::cmdLeggiDati_Click() {
    Leggi(kLeggi);
}

}  // namespace lapvane
