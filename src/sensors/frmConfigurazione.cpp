#include "sensors/frmConfigurazione.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "device/RecordStrumento.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "widgets/ControlliFinestra.h"

namespace lapvane {

namespace {

const ScambioEditor kProgramma = {18,
                                  Voce::DomandaProgrammaImpostazioni,
                                  Voce::ProgrammazioneImpostazioni,
                                  Voce::ImpostazioniTrasmesse,
                                  {InviaDatiSetup1, InviaDatiSetup2},
                                  {&kRecordSetup1, &kRecordSetup2}};
const ScambioEditor kLeggi = {19,
                              Voce::DomandaLeggiImpostazioni,
                              Voce::LetturaImpostazioni,
                              Voce::Nessuna,
                              {LeggiDatiSetup1, LeggiDatiSetup2}};

constexpr std::string_view kFlagPagina = "PagineAbilitateTemp";

/// Position of a page flag by its name; empty for another control.
std::optional<int> IndicePagina(std::string_view controllo) {
    if (!controllo.starts_with(kFlagPagina)) return std::nullopt;
    return LeggiIntero(controllo.substr(kFlagPagina.size()));
}

}  // namespace

/// The window's controls, and the page flags that no control holds.
class ControlliSetup : public ControlliFinestra {
 public:
    explicit ControlliSetup(frmConfigurazione& finestra)
        : ControlliFinestra(finestra), finestra_(finestra) {}

    using ControlliFinestra::Spunta;
    bool Spunta(std::string_view controllo) const override {
        if (const auto indice = IndicePagina(controllo))
            return finestra_.pagine_.Abilitata(*indice);
        return ControlliFinestra::Spunta(controllo);
    }
    void Spunta(std::string_view controllo, bool accesa) override {
        if (const auto indice = IndicePagina(controllo)) {
            finestra_.pagine_.Abilita(*indice, accesa);
            finestra_.AggiornaPagina();
            return;
        }
        ControlliFinestra::Spunta(controllo, accesa);
    }

 private:
    frmConfigurazione& finestra_;
};

frmConfigurazione::frmConfigurazione(QWidget* parent) : frmEditor("frmConfigurazione", parent) {
    auto* parti = new QHBoxLayout(Corpo());
    parti->setContentsMargins(0, 0, 0, 0);
    parti->setSpacing(12);
    auto* sinistra = new QVBoxLayout;
    sinistra->addLayout(CreaLingua());
    sinistra->addWidget(CreaUnita());
    sinistra->addWidget(CreaRegistrazione());
    sinistra->addStretch(1);
    parti->addLayout(sinistra);
    auto* destra = new QVBoxLayout;
    destra->addWidget(CreaPagine());
    destra->addWidget(CreaCronometro());
    destra->addStretch(1);
    parti->addLayout(destra, 1);
    sinistra->addWidget(CreaStrumento());
    auto controlli = std::make_unique<ControlliSetup>(*this);
    MostraDatiSetup(DatiProgetto, *controlli);
    lblUnitaRecVel_->setText(liste_[kVelocita]->currentText());
    pagine_.Carica(DatiProgetto);
    CaricaImmagini();
    MostraImmagine();
    AggiornaPagina();
    Completa(std::move(controlli));
    liste_[kLingua]->setFocus();
}

QLineEdit* frmConfigurazione::Casella(QWidget* dove, std::size_t numero) {
    auto* casella = new QLineEdit(dove);
    casella->setObjectName(InQt(kNumeriSetup[numero].Casella));
    casella->setAlignment(Qt::AlignRight);
    casella->setFixedWidth(casella->fontMetrics().horizontalAdvance(QStringLiteral("-2147483648")) +
                           16);
    caselle_[numero] = casella;
    Sorveglia(casella);
    return casella;
}

/// The boxes keep room for what the record carries.
void frmConfigurazione::Stringi() {
    for (QLineEdit* casella : caselle_) {
        const QFontMetrics misure = casella->fontMetrics();
        casella->setFixedWidth(misure.horizontalAdvance(QStringLiteral("-32768")) + 16);
    }
    frmEditor::Stringi();
}

QComboBox* frmConfigurazione::Lista(QWidget* dove, std::size_t numero) {
    auto* lista = new QComboBox(dove);
    lista->setObjectName(InQt(kListeSetup[numero].Lista));
    for (const std::string& voce : *kListeSetup[numero].Voci) lista->addItem(InQt(voce));
    liste_[numero] = lista;
    return lista;
}

QLayout* frmConfigurazione::CreaLingua() {
    auto* riga = new QHBoxLayout;
    riga->setContentsMargins(12, 4, 12, 4);  // in line with the frames below
    QComboBox* lista = Lista(Corpo(), kLingua);
    etichetteListe_[kLingua] = Etichetta(Corpo(), "lblLinguaDisplay", lista);
    riga->addWidget(etichetteListe_[kLingua], 1);
    riga->addWidget(lista);
    return riga;
}

QGroupBox* frmConfigurazione::CreaUnita() {
    fraUnitaMisura_ = Cornice(Corpo(), "fraUnitaMisura");
    auto* griglia = new QGridLayout(fraUnitaMisura_);
    griglia->setColumnStretch(0, 1);
    const char* const nomi[] = {"lblUMVelocita", "lblUMTemperatura", "lblUMPressione"};
    for (int riga = 0; riga < 3; ++riga) {
        const std::size_t numero = kVelocita + static_cast<std::size_t>(riga);
        QComboBox* lista = Lista(fraUnitaMisura_, numero);
        etichetteListe_[numero] = Etichetta(fraUnitaMisura_, nomi[riga], lista);
        griglia->addWidget(etichetteListe_[numero], riga, 0);
        griglia->addWidget(lista, riga, 1);
    }
    // The language's list stands over the units', in one column.
    int larghezza = 0;
    for (const QComboBox* lista : liste_)
        larghezza = std::max(larghezza, lista->sizeHint().width());
    for (QComboBox* lista : liste_) lista->setFixedWidth(larghezza + 8);
    return fraUnitaMisura_;
}

QGroupBox* frmConfigurazione::CreaRegistrazione() {
    fraRegistrazione_ = Cornice(Corpo(), "fraRegistrazione");
    auto* griglia = new QGridLayout(fraRegistrazione_);
    griglia->setColumnStretch(0, 1);
    chkAbilRecLAP_ = new QCheckBox(fraRegistrazione_);
    chkAbilRecLAP_->setObjectName(QStringLiteral("chkAbilRecLAP"));
    griglia->addWidget(chkAbilRecLAP_, 0, 0, 1, 3);
    QLineEdit* velocita = Casella(fraRegistrazione_, kRecVel);
    etichetteCaselle_[kRecVel] = Etichetta(fraRegistrazione_, "lblAbilRecVel", velocita);
    lblUnitaRecVel_ = Etichetta(fraRegistrazione_, "lblUnitaRecVel");
    QLineEdit* secondi = Casella(fraRegistrazione_, kStopRec);
    etichetteCaselle_[kStopRec] = Etichetta(fraRegistrazione_, "lblAbilStopRec", secondi);
    QLabel* unitaStop = Etichetta(fraRegistrazione_, "lblUnitaStopRec");
    unitaStop->setText(QStringLiteral("s"));
    lblUnitaRecVel_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("Km/h")) + 4);
    griglia->addWidget(etichetteCaselle_[kRecVel], 1, 0);
    griglia->addWidget(velocita, 1, 1);
    griglia->addWidget(lblUnitaRecVel_, 1, 2);
    griglia->addWidget(etichetteCaselle_[kStopRec], 2, 0);
    griglia->addWidget(secondi, 2, 1);
    griglia->addWidget(unitaStop, 2, 2);
    // The speed is one of the instrument: in the unit that the list above says.
    connect(liste_[kVelocita], &QComboBox::currentTextChanged, lblUnitaRecVel_, &QLabel::setText);
    return fraRegistrazione_;
}

QGroupBox* frmConfigurazione::CreaPagine() {
    fraPagine_ = Cornice(Corpo(), "fraPagine");
    const auto pulsante = [this](const char* nome, auto gestore) {
        auto* nuovo = new QPushButton(fraPagine_);
        nuovo->setObjectName(QString::fromLatin1(nome));
        connect(nuovo, &QPushButton::clicked, this, gestore);
        return nuovo;
    };
    striscia_ = new StrisciaPagine(fraPagine_);
    striscia_->EventoPagina = [this](int pagina) { VaiAllaPagina(pagina); };
    auto* posto = new QWidget(fraPagine_);
    posto->setFixedSize(ImmaginePagina::kGrande);
    imgPagina_ = new ImmaginePagina(posto);
    imgPagina_->setObjectName(QStringLiteral("imgPagina"));
    auto* centro = new QVBoxLayout(posto);
    centro->setContentsMargins(0, 0, 0, 0);
    centro->addWidget(imgPagina_, 0, Qt::AlignCenter);

    cmdPrevPage_ = pulsante("cmdPrevPage", [this] { Protetto([this] { VaiA(false); }); });
    lblPagina_ = Etichetta(fraPagine_, "lblPagina");
    lblCurrPagina_ = Etichetta(fraPagine_, "lblCurrPagina");
    cmdNextPage_ = pulsante("cmdNextPage", [this] { Protetto([this] { VaiA(true); }); });
    auto* giro = new QHBoxLayout;
    giro->addWidget(cmdPrevPage_);
    giro->addStretch(1);
    giro->addWidget(lblPagina_);
    giro->addWidget(lblCurrPagina_);
    giro->addStretch(1);
    giro->addWidget(cmdNextPage_);

    chkAbilitaPagina_ = new QCheckBox(fraPagine_);
    chkAbilitaPagina_->setObjectName(QStringLiteral("chkAbilitaPagina"));
    connect(chkAbilitaPagina_, &QCheckBox::toggled, this,
            [this] { Protetto([this] { chkAbilitaPagina_Click(); }); });
    txtFilePagina_ = new QLineEdit(fraPagine_);
    txtFilePagina_->setObjectName(QStringLiteral("txtFilePagina"));
    txtFilePagina_->setReadOnly(true);
    cmdScegliImmagine_ = pulsante("cmdScegliImmagine", [this] {
        Comandato(cmdScegliImmagine_, [this] { cmdScegliImmagine_Click(); });
    });
    cmdScegliImmagine_->setText(QStringLiteral("..."));
    auto* file = new QHBoxLayout;
    file->addWidget(txtFilePagina_, 1);
    file->addWidget(cmdScegliImmagine_);
    TieniPosto(txtFilePagina_);
    TieniPosto(cmdScegliImmagine_);

    auto* colonna = new QVBoxLayout(fraPagine_);
    colonna->addWidget(striscia_);
    colonna->addWidget(posto, 0, Qt::AlignHCenter);
    colonna->addLayout(giro);
    colonna->addWidget(chkAbilitaPagina_);
    colonna->addLayout(file);
    return fraPagine_;
}

QGroupBox* frmConfigurazione::CreaCronometro() {
    fraCronometro_ = Cornice(Corpo(), "fraCronometro");
    auto* tempi = new QHBoxLayout;
    const char* const nomi[] = {"lblTempoMsgGiro", "lblTempoVisGiro"};
    for (int riga = 0; riga < 2; ++riga) {
        const std::size_t numero = kMsgGiro + static_cast<std::size_t>(riga);
        QLineEdit* casella = Casella(fraCronometro_, numero);
        etichetteCaselle_[numero] = Etichetta(fraCronometro_, nomi[riga], casella);
        QLabel* unita = Etichetta(fraCronometro_, riga == 0 ? "lblUnitaMsg" : "lblUnitaVis");
        unita->setText(QStringLiteral("s"));
        if (riga > 0) tempi->addStretch(1);
        tempi->addWidget(etichetteCaselle_[numero]);
        tempi->addWidget(casella);
        tempi->addWidget(unita);
    }
    auto* settori = new QGridLayout;
    for (int i = 0; i < 5; ++i) {
        const std::size_t numero = kSettore + static_cast<std::size_t>(i);
        QLineEdit* casella = Casella(fraCronometro_, numero);
        etichetteCaselle_[numero] =
            Etichetta(fraCronometro_, ("lblSettoreCrono" + TestoNumero(i)).c_str(), casella);
        settori->addWidget(etichetteCaselle_[numero], 0, i);
        settori->addWidget(casella, 1, i);
        settori->setColumnStretch(i, 1);
    }
    QLabel* metri = Etichetta(fraCronometro_, "lblUnitaSettori");
    metri->setText(QStringLiteral("m"));
    settori->addWidget(metri, 1, 5);
    auto* colonna = new QVBoxLayout(fraCronometro_);
    colonna->addLayout(tempi);
    colonna->addSpacing(4);
    colonna->addLayout(settori);
    return fraCronometro_;
}

void frmConfigurazione::TestiPropri(Mnemonica& lettere) {
    const auto testo = [&](Voce n) { return lettere.Con(InQt(Testo(n))); };
    const auto senza = [](Voce n) { return Mnemonica::Senza(InQt(Testo(n))); };
    setWindowTitle(InQt(Testo(Voce::TitoloConfigurazione)));
    for (std::size_t i = 0; i < liste_.size(); ++i) {
        etichetteListe_[i]->setText(testo(kListeSetup[i].Didascalia));
    }
    for (std::size_t i = 0; i < caselle_.size(); ++i) {
        etichetteCaselle_[i]->setText(testo(kNumeriSetup[i].Didascalia));
    }
    fraUnitaMisura_->setTitle(senza(Voce::UnitaDiMisura));
    fraPagine_->setTitle(senza(Voce::AbilitazionePagine));
    chkAbilitaPagina_->setText(testo(Voce::AbilitaPagina));
    lblPagina_->setText(senza(Voce::Pagina));
    cmdPrevPage_->setText(testo(Voce::PaginaPrecedente));
    cmdNextPage_->setText(testo(Voce::PaginaSuccessiva));
    fraRegistrazione_->setTitle(senza(Voce::Registrazione));
    chkAbilRecLAP_->setText(testo(Voce::AvvioAlGiro));
    fraCronometro_->setTitle(senza(Voce::Cronometro));
    txtFilePagina_->setAccessibleName(InQt(Testo(Voce::Pagina)));
    cmdScegliImmagine_->setAccessibleName(InQt(Testo(Voce::Pagina)) + QStringLiteral(" ..."));
    MostraImmagine();
}

void frmConfigurazione::CaricaImmagini() {
    for (std::size_t i = 0; i < ImageList1_.size(); ++i) {
        ImageList1_[i] =
            ImmaginePagina::Carica(platform().AppPath() / "pages" /
                                   ("Pagina" + TestoNumero(static_cast<int>(i) + 1) + ".bmp"));
    }
    // Kept: page 9 keeps its stock picture, and the picture of the last page goes to page 8.
    for (const auto& [pagina, file] :
         {std::pair{1, &DatiProgetto.Pagina1}, {8, &DatiProgetto.Pagina8}}) {
        if (!Nominata(*file)) continue;
        ImageList1_[static_cast<std::size_t>(pagina - 1)] =
            ImmaginePagina::Carica(PercorsoDaTesto(*file));
    }
}

/// The picture of a page; a project may have one page more than there are pictures.
QImage frmConfigurazione::Immagine(int pagina) const {
    const auto posto = static_cast<std::size_t>(pagina - 1);
    return posto < ImageList1_.size() ? ImageList1_[posto] : QImage();
}

void frmConfigurazione::MostraImmagine() {
    imgPagina_->Mostra(Immagine(pagine_.Corrente()), InQt(Testo(Voce::ImmagineNonDisponibile)));
}

void frmConfigurazione::AggiornaStriscia() {
    striscia_->Pagine(pagine_.Numero());
    for (int n = 1; n <= pagine_.Numero(); ++n)
        striscia_->Mostra(n, Immagine(n), pagine_.Abilitata(n - 1));
    striscia_->Corrente(pagine_.Corrente());
    striscia_->setAccessibleName(InQt(Testo(Voce::Pagina) + pagine_.Conteggio()));
}

void frmConfigurazione::AggiornaPagina() {
    // A button that goes off under the hand passes the focus to its twin, not to what comes next.
    const bool prima = pagine_.Prima(), ultima = pagine_.Ultima();
    const QWidget* fuoco = focusWidget();
    cmdPrevPage_->setEnabled(true);
    cmdNextPage_->setEnabled(true);
    if (prima && !ultima && fuoco == cmdPrevPage_) cmdNextPage_->setFocus();
    if (ultima && !prima && fuoco == cmdNextPage_) cmdPrevPage_->setFocus();
    cmdPrevPage_->setEnabled(!prima);
    cmdNextPage_->setEnabled(!ultima);
    txtFilePagina_->setVisible(pagine_.ConFile());
    cmdScegliImmagine_->setVisible(pagine_.ConFile());
    if (pagine_.ConFile()) {
        txtFilePagina_->setText(InQt(pagine_.File(DatiProgetto)));
        txtFilePagina_->setToolTip(txtFilePagina_->text());
    }
    lblCurrPagina_->setText(InQt(pagine_.Conteggio()));
    const bool accesa = pagine_.Abilitata(pagine_.Corrente() - 1);
    const QSignalBlocker muto(chkAbilitaPagina_);
    chkAbilitaPagina_->setChecked(accesa);
    imgPagina_->Grande(accesa);
    AggiornaStriscia();
}

/// As many steps of the two buttons as it takes.
void frmConfigurazione::VaiAllaPagina(int pagina) {
    while (pagine_.Corrente() < pagina && !pagine_.Ultima()) VaiA(true);
    while (pagine_.Corrente() > pagina && !pagine_.Prima()) VaiA(false);
}

void frmConfigurazione::VaiA(bool avanti) {
    if (avanti) {
        pagine_.Avanti();
    } else {
        pagine_.Indietro();
    }
    MostraImmagine();
    AggiornaPagina();
}

void frmConfigurazione::chkAbilitaPagina_Click() {
    pagine_.Abilita(pagine_.Corrente() - 1, chkAbilitaPagina_->isChecked());
    AggiornaPagina();
}

void frmConfigurazione::cmdScegliImmagine_Click() {
    const auto scelto =
        platform().AskOpen({Testo(Voce::Pagina) + " " + TestoNumero(pagine_.Corrente()),
                            platform().AppPath(),
                            "Display Page File (*.bmp)|*.bmp",
                            {},
                            {}});
    if (!scelto) return;
    const QImage immagine = ImmaginePagina::Carica(*scelto);
    const auto posto = static_cast<std::size_t>(pagine_.Corrente() - 1);
    if (posto < ImageList1_.size()) ImageList1_[posto] = immagine;
    MostraImmagine();
    AggiornaStriscia();
    // Kept: a file that is no picture is refused without a word; the page's picture is gone until
    // the editor opens again, and the project keeps the path that it had.
    if (immagine.isNull()) return;
    // Kept: the choice is the project's at once, whether or not OK follows, and the path on show
    // stays until the page is shown again.
    pagine_.Scegli(DatiProgetto, TestoDaPercorso(*scelto));
}

void frmConfigurazione::OKButton_Click() {
    // All boxes are looked at before anything is stored.
    if (const auto i = NumeroErrato(*Controlli())) {
        VaiAllaCasella(*caselle_[*i]);
        platform().MsgBox(Testo(kNumeriSetup[*i].Didascalia) + "\r\n" +
                              Testo(Voce::NumeroNellIntervallo) + " " +
                              Ammessi(*CampoDi(kNumeriSetup[*i].Casella)),
                          Buttons::Ok, Icon::Warning, DaQt(windowTitle()));
        return;
    }
    SalvaDatiSetup(*Controlli(), pagine_, DatiProgetto);
    ProgettoModificato = true;
    accept();
}

void frmConfigurazione::cmdInviaDati_Click() {
    Programma(kProgramma);
}

void frmConfigurazione::cmdLeggiDati_Click() {
    Leggi(kLeggi);
}

}  // namespace lapvane
