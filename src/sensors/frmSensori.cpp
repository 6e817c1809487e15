#include "sensors/frmSensori.h"

#include <QAbstractItemView>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <QTabBar>
#include <QVBoxLayout>
#include <algorithm>

#include "device/RecordStrumento.h"
#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "widgets/ControlliFinestra.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr Voce kTestoFrequenza = Voce::FrequenzaCampionamento,
               kTestoLivello = Voce::LivelloAttivazione, kTestoNome = Voce::NomeSensore,
               kTestoAbilita = Voce::Abilita;
constexpr Voce kTestoIngresso = Voce::IngressoAnalogico;
constexpr Voce kTestoErrore = Voce::ErroreDiComunicazione;
constexpr Voce kTestoConflitto = Voce::StessoIngresso;
constexpr int kCaratteriNome = 20, kCaratteriStretti = 14;
constexpr int kCifreNumero = 9;  // width of a number box in digits
/// What the captions of the wheel's boxes say; the boxes take more.
constexpr int kMassimoImpulsi = 99, kMassimoDiametro = 9999;
constexpr std::array<Voce, 3> kTestiPulsanti = {Voce::ProgrammaDaFinestra, Voce::LeggiDaFinestra,
                                                Voce::Annulla};  // in the order of the base

const ScambioEditor kProgramma = {22,
                                  Voce::DomandaProgrammaSensori,
                                  Voce::ProgrammazioneSensori,
                                  Voce::SensoriTrasmessi,
                                  {},
                                  {&kRecordSensori}};
const ScambioEditor kLeggi = {
    23, Voce::DomandaLeggiSensori, Voce::LetturaIngressiSensori, Voce::SensoriLetti, {}};
constexpr Voce kProgrammaInterrotta = Voce::ProgrammazioneInterrotta,
               kLetturaInterrotta = Voce::LetturaInterrotta;

/// Channels by their place on the tabs.
constexpr std::array<std::size_t, 4> kColonnaBase = {kCanaleTO, kCanalePO, kCanaleTA, kCanalePB};
constexpr std::array<std::size_t, 4> kOpzionali = {kCanaleSG, kCanaleCambio, kCanalePT,
                                                   kCanaleLambda};

bool LasciaCasella(const QWidget& controllo) {
    bool lascia = false;
    Protetto([&] { lascia = CasellaNumerica::Lascia(*controllo.window()); });
    return lascia;
}

/// Tabs that do not take the user away from a refused number box, as any other control.
class Linguette : public QTabBar {
 public:
    explicit Linguette(QWidget* parent) : QTabBar(parent) { setFocusPolicy(Qt::StrongFocus); }

 protected:
    bool event(QEvent* evento) override {
        if (evento->type() == QEvent::Shortcut && !LasciaCasella(*this)) return true;
        // A wheel that only passes over the tabs does not turn the page.
        if (evento->type() == QEvent::Wheel) return false;
        return QTabBar::event(evento);
    }
};

class Schede : public QTabWidget {
 public:
    explicit Schede(QWidget* parent) : QTabWidget(parent) { setTabBar(new Linguette(this)); }

 protected:
    void keyPressEvent(QKeyEvent* evento) override {
        const int tasto = evento->key();
        const bool cambia = evento->modifiers().testFlag(Qt::ControlModifier) &&
                            (tasto == Qt::Key_Tab || tasto == Qt::Key_Backtab);
        if (cambia && !LasciaCasella(*this)) return;
        QTabWidget::keyPressEvent(evento);
    }
};

/// The window's controls. A text of a list that is one of its entries chooses it, and no choice
/// counts as the first one, as it does at OK.
class ControlliSensori : public ControlliFinestra {
 public:
    explicit ControlliSensori(QWidget& finestra)
        : ControlliFinestra(finestra), finestra_(finestra) {}

    using ControlliFinestra::Indice;
    using ControlliFinestra::Testo;
    int Indice(std::string_view controllo) const override {
        return std::max(ControlliFinestra::Indice(controllo), 0);
    }
    void Testo(std::string_view controllo, const std::string& testo) override {
        if (auto* lista = finestra_.findChild<QComboBox*>(InQt(controllo))) {
            lista->setCurrentIndex(
                lista->findText(InQt(testo), Qt::MatchExactly | Qt::MatchCaseSensitive));
        }
        ControlliFinestra::Testo(controllo, testo);
    }

 private:
    QWidget& finestra_;
};

}  // namespace

frmSensori::frmSensori(QWidget* parent) : frmEditor("frmSensori", parent) {
    SSTab1_ = new Schede(Corpo());
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    SSTab1_->addTab(CreaBase(), QString());
    SSTab1_->addTab(CreaOpzionali(), QString());
    auto* colonna = new QVBoxLayout(Corpo());
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->addWidget(SSTab1_, 1);
    auto* sotto = new QHBoxLayout;
    sotto->addWidget(CreaStrumento(), 1);
    sotto->addStretch(1);
    colonna->addLayout(sotto);

    auto controlli = std::make_unique<ControlliSensori>(*this);
    campi_ = controlli.get();
    MostraDatiSensori(DatiProgetto, *campi_);
    Completa(std::move(controlli));
    DiceInsieme();
    caselle_[kNumAccRPM]->setFocus();
}

QGridLayout* frmSensori::CreaCornice(QWidget* dove, std::string_view nome, Voce titolo) {
    auto* riquadro = lapvane::Cornice(dove, nome);
    cornici_.push_back({riquadro, titolo});
    auto* griglia = new QGridLayout(riquadro);
    // The fullest of all windows: its rows stand closer, so that it fits a screen of 768 rows.
    griglia->setContentsMargins(kMargineCornice, kSpazio, kMargineCornice, kSpazio);
    griglia->setVerticalSpacing(kGriglia);
    return griglia;
}

/// A list as wide as all others, so that the columns line up.
QComboBox* frmSensori::CreaLista(QWidget* dove, std::string_view nome) {
    auto* lista = new QComboBox(dove);
    lista->setObjectName(InQt(nome));
    lista->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    lista->setMinimumContentsLength(kCaratteriNome);
    return lista;
}

void frmSensori::AggiungiRiga(QGridLayout* griglia, int riga, std::string_view etichetta,
                              Voce didascalia, QWidget* campo) {
    QLabel* davanti = Etichetta(campo->parentWidget(), etichetta, campo);
    didascalie_.push_back({davanti, didascalia});
    griglia->addWidget(davanti, riga, 1);
    griglia->addWidget(campo, riga, 2);
}

void frmSensori::AggiungiNumero(QGridLayout* griglia, int riga, std::size_t numero) {
    auto* casella = new CasellaNumerica(griglia->parentWidget());
    casella->setObjectName(InQt(kNumeriSensori[numero].Casella));
    casella->setAlignment(Qt::AlignRight);
    casella->PersoFuoco = [casella] {
        if (casella->text().isEmpty()) Riscrivi(*casella, QStringLiteral("1"));
    };
    casella->setFixedWidth(casella->fontMetrics().horizontalAdvance(QLatin1Char('0')) *
                           kCifreNumero);
    caselle_[numero] = casella;
    if (numero == kNumAccRPM) {
        Sorveglia(casella);
    } else {
        const int massimo = numero == kImpulsiRuota ? kMassimoImpulsi : kMassimoDiametro;
        Avvisi().Sorveglia(casella, {1.0, double(massimo), "1 ... " + TestoNumero(massimo)});
    }
    AggiungiRiga(griglia, riga, kNumeriSensori[numero].Etichetta, kNumeriSensori[numero].Didascalia,
                 casella);
    if (numero != kDiametroRuota) return;
    auto* posto = new QHBoxLayout;
    griglia->removeWidget(casella);
    posto->setSpacing(kSpazio);
    posto->addWidget(casella);
    QLabel* unita = Etichetta(griglia->parentWidget(), "lblUnitaDiametro");
    unita->setText(QStringLiteral("mm"));
    posto->addWidget(unita);
    posto->addStretch(1);
    griglia->addLayout(posto, riga, 2);
}

void frmSensori::AggiungiFrequenza(QGridLayout* griglia, int riga, std::string_view etichetta,
                                   std::string_view lista) {
    QComboBox* frequenza = CreaLista(griglia->parentWidget(), lista);
    frequenza->setEditable(true);
    frequenza->setInsertPolicy(QComboBox::NoInsert);
    frequenza->setCompleter(nullptr);
    for (const std::string_view voce : kFrequenze) frequenza->addItem(InQt(voce));
    AggiungiRiga(griglia, riga, etichetta, kTestoFrequenza, frequenza);
}

QWidget* frmSensori::CreaGiri(QWidget* dove) {
    QGridLayout* griglia = CreaCornice(dove, "fraRPM", Voce::CorniceGiriMotore);
    griglia->setColumnStretch(1, 1);
    AggiungiNumero(griglia, 0, kNumAccRPM);
    const FrequenzaSensori& frequenza = kFrequenzeSensori[kFrequenzaRPM];
    AggiungiFrequenza(griglia, 1, frequenza.Etichetta, frequenza.Lista);
    return griglia->parentWidget();
}

QWidget* frmSensori::CreaVelocita(QWidget* dove) {
    QGridLayout* griglia = CreaCornice(dove, "fraVelocitaVettura", Voce::CorniceVelocitaVettura);
    griglia->setColumnStretch(1, 1);
    AggiungiNumero(griglia, 0, kImpulsiRuota);
    AggiungiNumero(griglia, 1, kDiametroRuota);
    const FrequenzaSensori& frequenza = kFrequenzeSensori[kFrequenzaVV];
    AggiungiFrequenza(griglia, 2, frequenza.Etichetta, frequenza.Lista);
    return griglia->parentWidget();
}

QWidget* frmSensori::CreaLivello(QWidget* dove, std::size_t numero) {
    const LivelloSensori& livello = kLivelliSensori[numero];
    QGridLayout* griglia = CreaCornice(dove, livello.Cornice, livello.Didascalia);
    griglia->setColumnStretch(1, 1);
    QComboBox* lista = CreaLista(griglia->parentWidget(), livello.Lista);
    for (const std::string& voce : *livello.Voci) lista->addItem(InQt(voce));
    AggiungiRiga(griglia, 0, livello.Etichetta, kTestoLivello, lista);
    return griglia->parentWidget();
}

QWidget* frmSensori::CreaCanale(QWidget* dove, std::size_t numero) {
    const CanaleSensore& canale = kCanaliSensore[numero];
    QGridLayout* griglia = CreaCornice(dove, canale.fraCanale, canale.Titolo);
    QWidget* riquadro = griglia->parentWidget();
    griglia->setColumnStretch(0, 1);
    auto* spunta = new QCheckBox(riquadro);
    spunta->setObjectName(InQt(canale.chkAbil));
    spunte_[numero] = spunta;
    griglia->addWidget(spunta, 0, 0);
    connect(spunta, &QCheckBox::toggled, this, [this, &canale] {
        Protetto([&] {
            AbilitaCanale(canale, *campi_);
            DiceInsieme();
        });
    });

    QComboBox* nome = CreaLista(riquadro, canale.cboNome);
    nome->setEditable(true);
    nome->setInsertPolicy(QComboBox::NoInsert);
    // What is typed stays what was typed: no entry completes it.
    nome->setCompleter(nullptr);
    for (const std::string& voce : NomiSensori(numero)) nome->addItem(InQt(voce));
    // What it unfolds shows whole names.
    nome->view()->setMinimumWidth(nome->view()->sizeHintForColumn(0) +
                                  style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    nomi_[numero] = nome;
    AggiungiRiga(griglia, 0, canale.lblNome, kTestoNome, nome);
    AggiungiFrequenza(griglia, 1, canale.lblTCamp, canale.cboTCamp);
    if (canale.Chann != nullptr) {
        QComboBox* ingresso = CreaLista(riquadro, canale.cboChann);
        for (const std::string& voce : ListaIngressiAN) ingresso->addItem(InQt(voce));
        ingressi_[numero] = ingresso;
        connect(ingresso, &QComboBox::currentIndexChanged, this,
                [this] { Protetto([this] { DiceInsieme(); }); });
        AggiungiRiga(griglia, 2, canale.lblChann, kTestoIngresso, ingresso);
    }
    return riquadro;
}

QWidget* frmSensori::CreaBase() {
    auto* pagina = new QWidget(SSTab1_);
    auto* sinistra = new QVBoxLayout;
    sinistra->addWidget(CreaGiri(pagina));
    sinistra->addWidget(CreaVelocita(pagina));
    for (std::size_t i = 0; i < kLivelliSensori.size(); ++i) {
        sinistra->addWidget(CreaLivello(pagina, i));
    }
    sinistra->addWidget(CreaCanale(pagina, kCanaleLB));
    sinistra->addStretch(1);
    auto* destra = new QVBoxLayout;
    for (const std::size_t canale : kColonnaBase) destra->addWidget(CreaCanale(pagina, canale));
    destra->addStretch(1);
    auto* colonne = new QHBoxLayout(pagina);
    colonne->setSpacing(12);
    colonne->addLayout(sinistra, 1);
    colonne->addLayout(destra, 1);
    return pagina;
}

QWidget* frmSensori::CreaOpzionali() {
    auto* pagina = new QWidget(SSTab1_);
    auto* griglia = new QGridLayout(pagina);
    griglia->setHorizontalSpacing(12);
    for (std::size_t i = 0; i < kOpzionali.size(); ++i) {
        const int posto = static_cast<int>(i);
        griglia->addWidget(CreaCanale(pagina, kOpzionali[i]), posto / 2, posto % 2);
    }
    griglia->setColumnStretch(0, 1);
    griglia->setColumnStretch(1, 1);
    griglia->setRowStretch(2, 1);
    return pagina;
}

void frmSensori::TestiPropri(Mnemonica& lettere) {
    setWindowTitle(InQt(Testo(Voce::TitoloSensori)));
    SSTab1_->setAccessibleName(InQt(Testo(Voce::TitoloSensori)));
    SSTab1_->setTabText(0, lettere.Con(InQt(Testo(Voce::SchedaBase))));
    SSTab1_->setTabText(1, lettere.Con(InQt(Testo(Voce::SchedaOpzionali))));
    // The captions inside the frames repeat: a frame's letter leads to its first control. The
    // letters of the buttons, which come last, stay theirs. Of the two tabs one shows at a time, so
    // each has all the others; they suffice when the sensors choose first.
    Mnemonica libere = lettere;
    for (const Voce pulsante : kTestiPulsanti) libere.Con(InQt(Testo(pulsante)));
    std::array<Mnemonica, 2> schede = {libere, libere};
    for (const bool conSpunta : {true, false}) {
        for (const Cornice& cornice : cornici_) {
            auto* spunta = cornice.Riquadro->findChild<QCheckBox*>();
            if ((spunta != nullptr) != conSpunta) continue;
            const QString titolo = InQt(Testo(cornice.Titolo));
            const bool opzionale = SSTab1_->widget(1)->isAncestorOf(cornice.Riquadro);
            cornice.Riquadro->setTitle(schede[opzionale ? 1 : 0].Con(titolo));
            if (!conSpunta) continue;
            spunta->setText(Mnemonica::Senza(InQt(Testo(kTestoAbilita))));
            spunta->setAccessibleName(titolo + QStringLiteral(": ") + spunta->text());
        }
    }
    for (const auto& [etichetta, numero] : didascalie_) {
        etichetta->setText(Mnemonica::Senza(InQt(Testo(numero))));
        const auto* cornice = static_cast<QGroupBox*>(etichetta->parentWidget());
        etichetta->buddy()->setAccessibleName(cornice->title().remove(QLatin1Char('&')) +
                                              QStringLiteral(": ") + InQt(Testo(numero)));
    }
}

void frmSensori::Stringi() {
    for (QComboBox* lista : Corpo()->findChildren<QComboBox*>())
        lista->setMinimumContentsLength(kCaratteriStretti);
    // Below the tick the captions begin at the edge of the frame.
    for (const Didascalia& una : didascalie_) {
        auto* griglia = qobject_cast<QGridLayout*>(una.Etichetta->parentWidget()->layout());
        const int posto = griglia->indexOf(una.Etichetta);
        int riga = 0, colonna = 0, righe = 0, colonne = 0;
        griglia->getItemPosition(posto, &riga, &colonna, &righe, &colonne);
        if (riga == 0 || griglia->parentWidget()->findChild<QCheckBox*>() == nullptr) continue;
        griglia->removeWidget(una.Etichetta);
        griglia->addWidget(una.Etichetta, riga, 0, 1, 2);
    }
    frmEditor::Stringi();
}

/// Shows the tab of a control and goes there.
void frmSensori::Vai(QWidget* controllo) {
    for (int i = 0; i < SSTab1_->count(); ++i) {
        if (SSTab1_->widget(i)->isAncestorOf(controllo)) SSTab1_->setCurrentIndex(i);
    }
    controllo->setFocus();
}

/// Two channels on one input are told before OK refuses them; the gear may share one.
void frmSensori::DiceInsieme() {
    if (Controlli() == nullptr) return;  // the lists are still being filled
    const auto coppia = CanaliInsieme(*campi_);
    if (!coppia) return Avvisi().Nota({});
    const auto canale = [](std::size_t n) { return InQt(Testo(kCanaliSensore[n].Titolo)); };
    Avvisi().Nota(InQt(Testo(Voce::CanaliInsieme))
                      .arg(InQt(campi_->Testo(kCanaliSensore[coppia->second].cboChann)),
                           canale(coppia->first), canale(coppia->second)));
}

bool frmSensori::ValidaSensori() {
    const auto canale = CanaleSenzaNome(*campi_);
    if (!canale) return true;
    Vai(nomi_[*canale]);
    platform().MsgBox(Testo(kCanaliSensore[*canale].TestoManca) + "\r\n" + Testo(Voce::MancaNome),
                      Buttons::Ok, Icon::Warning, DaQt(windowTitle()));
    return false;
}

bool frmSensori::ValidaCanali() {
    const auto coppia = CanaliInConflitto(*campi_);
    if (!coppia) return true;
    const auto& [primo, secondo] = *coppia;
    Vai(ingressi_[secondo]);
    platform().MsgBox(Testo(kTestoConflitto) + "\r\n" + Testo(kCanaliSensore[primo].Titolo) + ", " +
                          Testo(kCanaliSensore[secondo].Titolo) + ": " +
                          campi_->Testo(kCanaliSensore[secondo].cboChann),
                      Buttons::Ok, Icon::Warning, DaQt(windowTitle()));
    return false;
}

/// The boxes check themselves as they are left; what is left here is a box that was left by way of
/// Cancel.
bool frmSensori::NumeriValidi(bool ancheVuoti) {
    for (std::size_t i = 0; i < caselle_.size(); ++i) {
        NumeroSensori numero = kNumeriSensori[i];
        numero.VuotoZero = numero.VuotoZero && ancheVuoti;
        if (LeggiNumero(numero, DaQt(caselle_[i]->text()))) continue;
        VaiAllaCasella(*caselle_[i]);
        MostraNumeroErrato(*caselle_[i]);
        return false;
    }
    return true;
}

void frmSensori::OKButton_Click() {
    if (!ValidaSensori() || !NumeriValidi(true)) return;
    // Kept: what is stored here stays stored when the check of the inputs refuses, the project not
    // marked as changed and the inputs as they were.
    SalvaDatiSensori(*campi_, DatiProgetto);
    if (!ValidaCanali()) return;
    SalvaIngressiSensori(*campi_, DatiProgetto);
    ProgettoModificato = true;
    accept();
}

void frmSensori::cmdInviaDati_Click() {
    if (!ValidaSensori() || !ValidaCanali() || !NumeriValidi(false)) return;
    if (!PuoInviare(kProgramma)) return;
    if (!Conferma(kProgramma.TitoloDomanda, Voce::StrumentoSovrascritto)) return;
    bool riuscito = false;
    Scambia(
        kProgramma,
        [&] {
            riuscito = Passo(InviaDatiSensori) == Esito::Fatto;
            for (std::size_t i = 0; riuscito && i < kCanaliSensore.size(); ++i) {
                Progresso(Testo(kCanaliSensore[i].TestoInvio));
                PreparaCurva(i, *campi_);
                riuscito =
                    Passo([i] { InviaCurvaSensore(static_cast<std::int16_t>(i)); }) == Esito::Fatto;
            }
        },
        [&] {
            Concludi(riuscito, kProgramma.TestoFine, platform().ExeName(), kProgrammaInterrotta);
        });
}

void frmSensori::cmdLeggiDati_Click() {
    if (!Conferma(kLeggi.TitoloDomanda, Voce::DatiSostituiti)) return;
    bool riuscito = false;
    Scambia(
        kLeggi,
        [&] {
            riuscito = Passo(LeggiDatiSensori) == Esito::Fatto;
            for (std::size_t i = 0; riuscito && i < kCanaliSensore.size(); ++i) {
                Progresso(Testo(kCanaliSensore[i].TestoLettura));
                riuscito =
                    Passo([i] { LeggiCurvaSensore(static_cast<std::int16_t>(i)); }) == Esito::Fatto;
                if (riuscito) NominaCurva(i, *campi_);
            }
        },
        [&] { Concludi(riuscito, kLeggi.TestoFine, DaQt(windowTitle()), kLetturaInterrotta); });
}

void frmSensori::done(int esito) {
    // At once, also where no exchange ran: what the live view has left ends here.
    FaseComunicazione = 0;
    frmEditor::done(esito);
}

/// Tells how an exchange ended: the success under its own title, what stopped it under the
/// program's.
void frmSensori::Concludi(bool riuscito, Voce fine, const std::string& titolo, Voce interrotta) {
    const auto informa = [](Voce testo, const std::string& intestazione) {
        platform().MsgBox(Testo(testo), Buttons::Ok, Icon::Information, intestazione);
    };
    if (riuscito) return informa(fine, titolo);
    if (!isVisible()) informa(interrotta, platform().ExeName());
    // What the person has cut off is no failure of the link.
    if (ErroreComunicazione && !collegamento().Abbandonato)
        informa(kTestoErrore, platform().ExeName());
}

}  // namespace lapvane
