#include "sensors/frmImpostaSensore.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>
#include <vector>

#include "device/RecordStrumento.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "sensors/Curve.h"
#include "sensors/dlgCalibrazione.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "shell/Utility.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr std::int16_t kFaseLettura = 25;
constexpr Voce kTestoLettura = Voce::LetturaCurvaSensore;
constexpr Voce kTestoCalibrazione = Voce::CalibrazioneLivelloBenzina;
constexpr std::int16_t kRinuncia = 3;
constexpr std::string_view kBenzina = "LivelloBenzina";
constexpr Colore kBianco = Rgb(255, 255, 255);
constexpr Colore kRosso = Rgb(255, 0, 0);

/// A box that takes no typing has the window's ground, in dark palettes as well.
QPalette Grigia() {
    QPalette tavolozza;
    tavolozza.setColor(QPalette::Base, QApplication::palette().color(QPalette::Window));
    return tavolozza;
}

}  // namespace

frmImpostaSensore::frmImpostaSensore(QWidget* parent) : frmScambio("frmImpostaSensore", parent) {
    auto* sinistra = new QVBoxLayout;
    auto* sopra = new QHBoxLayout;
    sopra->addWidget(CreaLibreria(), 1);
    sopra->addWidget(CreaStrumento());
    sinistra->addLayout(sopra);
    sinistra->addLayout(CreaGrafico(), 1);
    QGroupBox* tabella = CreaTabella();
    sinistra->addLayout(CreaSalvataggio());
    auto* parti = new QHBoxLayout(Corpo());
    parti->setContentsMargins(0, 0, 0, 0);
    parti->setSpacing(12);
    parti->addLayout(sinistra, 1);
    parti->addWidget(tabella);

    CasellaNumerica::SenzaControllo(CreaCancel());
    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(Corpo(), 1);
    colonna->addLayout(RigaPulsanti(CreaProgresso(), {CancelButton_}));
    cmdDisegnaCurva_->setDefault(true);
    resize(1000, 660);

    Form_Load();
    Testi();
}

/// The graph with the names of its axes beside it: it has none of its own.
QLayout* frmImpostaSensore::CreaGrafico() {
    GraficoSensore_ = new DisegnoCurva(Corpo());
    GraficoSensore_->setObjectName(QStringLiteral("GraficoSensore"));
    GraficoSensore_->setFocusPolicy(Qt::NoFocus);
    GraficoSensore_->MostraPunti(true);
    GraficoSensore_->EventoPreso = [this](int i) {
        if (!Lascia()) return false;
        txtY_[static_cast<std::size_t>(i)]->setFocus(Qt::OtherFocusReason);
        return true;
    };
    GraficoSensore_->EventoSpostato = [this](int i, const QPointF& dove) { Sposta(i, dove); };
    GraficoSensore_->EventoLasciato = [this] { cmdDisegnaCurva_Click(); };
    GraficoSensore_->Scritta = [this](int i) {
        const RigaPunto& riga = tabella_.Riga(i);
        return InQt(TestoNumero(i + 1) + ": " + riga.X + " " + std::string(Tipo().EtichettaX) +
                    ", " + riga.Y + " " + std::string(Tipo().UnitaY))
            .trimmed();
    };
    lblAsseY_ = Etichetta(Corpo(), "lblAsseY");
    lblAsseX_ = Etichetta(Corpo(), "lblAsseX");
    lblCurva_ = Etichetta(Corpo(), "lblCurva");
    lblCurva_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (QLabel* etichetta : {lblAsseX_, lblAsseY_, lblCurva_}) {
        etichetta->setTextFormat(Qt::PlainText);
        etichetta->setFont(Carattere(*this, Scrittura::Piccola));
    }
    auto* sotto = new QHBoxLayout;
    sotto->addWidget(lblCurva_, 1);
    sotto->addWidget(lblAsseX_);
    auto* colonna = new QVBoxLayout;
    colonna->setSpacing(kGriglia);
    colonna->addWidget(lblAsseY_);
    colonna->addWidget(GraficoSensore_, 1);
    colonna->addLayout(sotto);
    return colonna;
}

QPushButton* frmImpostaSensore::Pulsante(QWidget* dove, const char* nome,
                                         void (frmImpostaSensore::*gestore)()) {
    auto* pulsante = new QPushButton(dove);
    pulsante->setObjectName(QString::fromLatin1(nome));
    connect(pulsante, &QPushButton::clicked, this, [this, pulsante, gestore] {
        Comandato(pulsante, [this, gestore] {
            if (Lascia()) (this->*gestore)();
        });
    });
    return pulsante;
}

/// A list that takes typing, although a letter typed never stays: it means that no entry is chosen.
QComboBox* frmImpostaSensore::Lista(QWidget* dove, const char* nome,
                                    void (frmImpostaSensore::*gestore)()) {
    auto* lista = new QComboBox(dove);
    lista->setObjectName(QString::fromLatin1(nome));
    lista->setEditable(true);
    lista->setInsertPolicy(QComboBox::NoInsert);
    lista->setCompleter(nullptr);
    SenzaRotella(lista);
    lista->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    lista->setMinimumContentsLength(16);
    connect(lista, &QComboBox::activated, this,
            [this, gestore] { Protetto([this, gestore] { (this->*gestore)(); }); });
    connect(lista->lineEdit(), &QLineEdit::textEdited, this, [this, lista, gestore] {
        Protetto([this, lista, gestore] {
            {
                const QSignalBlocker muta(lista);
                lista->setCurrentIndex(-1);
            }
            (this->*gestore)();
        });
    });
    return lista;
}

QGroupBox* frmImpostaSensore::CreaLibreria() {
    fraLibreriaSensori_ = Cornice(Corpo(), "fraLibreriaSensori");
    auto* griglia = new QGridLayout(fraLibreriaSensori_);
    constexpr int kRigheOpzioni = 4;
    for (std::size_t i = 0; i < opzioni_.size(); ++i) {
        opzioni_[i] = new QRadioButton(fraLibreriaSensori_);
        opzioni_[i]->setObjectName(QStringLiteral("opt") + InQt(kTipiSensore[i].Tipo));
        const int n = static_cast<int>(i);
        griglia->addWidget(opzioni_[i], n % kRigheOpzioni, n / kRigheOpzioni);
        connect(opzioni_[i], &QRadioButton::toggled, this, [this](bool accesa) {
            if (accesa) Protetto([this] { Opzione_Click(); });
        });
    }
    cboListaSensori_ =
        Lista(fraLibreriaSensori_, "cboListaSensori", &frmImpostaSensore::cboListaSensori_Click);
    lblSelezionaSensore_ = Etichetta(fraLibreriaSensori_, "lblSelezionaSensore", cboListaSensori_);
    cmdNuovoSensore_ =
        Pulsante(fraLibreriaSensori_, "cmdNuovoSensore", &frmImpostaSensore::cmdNuovoSensore_Click);
    auto* scelta = new QVBoxLayout;
    scelta->setSpacing(6);
    scelta->addWidget(lblSelezionaSensore_);
    scelta->addWidget(cboListaSensori_);
    scelta->addWidget(cmdNuovoSensore_);
    scelta->addStretch(1);
    griglia->addLayout(scelta, 0, 2, kRigheOpzioni, 1);
    griglia->setColumnStretch(2, 1);
    griglia->setHorizontalSpacing(kSpazio);
    return fraLibreriaSensori_;
}

QGroupBox* frmImpostaSensore::CreaStrumento() {
    fraStrumento_ = Cornice(Corpo(), "fraStrumento");
    cboTipiSensore_ =
        Lista(fraStrumento_, "cboTipiSensore", &frmImpostaSensore::cboTipiSensore_Click);
    lblTipoSensore_ = Etichetta(fraStrumento_, "lblTipoSensore", cboTipiSensore_);
    cmdLeggiSensoreStrumento_ = Pulsante(fraStrumento_, "cmdLeggiSensoreStrumento",
                                         &frmImpostaSensore::cmdLeggiSensoreStrumento_Click);
    cmdCalibrazione_ =
        Pulsante(fraStrumento_, "cmdCalibrazione", &frmImpostaSensore::cmdCalibrazione_Click);
    TieniPosto(cmdCalibrazione_);
    auto* colonna = new QVBoxLayout(fraStrumento_);
    colonna->setSpacing(6);
    colonna->addWidget(lblTipoSensore_);
    colonna->addWidget(cboTipiSensore_);
    colonna->addWidget(cmdLeggiSensoreStrumento_);
    colonna->addWidget(cmdCalibrazione_);
    colonna->addStretch(1);
    return fraStrumento_;
}

void frmImpostaSensore::CreaRiga(std::size_t i) {
    const int n = static_cast<int>(i);
    Check1_[i] = new QCheckBox(QStringLiteral(" %1").arg(n + 1), fraTabella_);
    Check1_[i]->setObjectName(QStringLiteral("Check1%1").arg(n));
    connect(Check1_[i], &QCheckBox::clicked, this,
            [this, n] { Protetto([this, n] { Check1_Click(n); }); });
    txtX_[i] = CreaCasella("txtX", n, &TabellaPunti::X);
    txtY_[i] = CreaCasella("txtY", n, &TabellaPunti::Y);
    txtX_[i]->PersoFuoco = [this, n] { txtX_LostFocus(n); };
    txtY_[i]->PersoFuoco = [this, n] { txtY_LostFocus(n); };
    Avvisi().Sorveglia(txtX_[i], [this, n] { return LimitiX(n); });
    Avvisi().Sorveglia(txtY_[i], [this] { return LimitiY(); });
}

CasellaNumerica* frmImpostaSensore::CreaCasella(const char* nome, int n,
                                                void (TabellaPunti::*scrive)(int,
                                                                             std::string_view)) {
    auto* nuova = new CasellaNumerica(fraTabella_);
    nuova->setObjectName(QString::fromLatin1(nome) + QString::number(n));
    nuova->setAlignment(Qt::AlignRight);
    nuova->setFixedWidth(nuova->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 9);
    nuova->setEnabled(false);
    nuova->setPalette(Grigia());
    connect(nuova, &QLineEdit::textChanged, this, [this, n, scrive](const QString& testo) {
        Protetto([&] {
            (tabella_.*scrive)(n, DaQt(testo));
            // The curve follows each key.
            if (n < tabella_.NumPuntiTabella()) cmdDisegnaCurva_Click();
        });
    });
    return nuova;
}

QGroupBox* frmImpostaSensore::CreaTabella() {
    fraTabella_ = Cornice(Corpo(), "fraTabella");
    auto* griglia = new QGridLayout(fraTabella_);
    griglia->setVerticalSpacing(0);
    lblX_ = Etichetta(fraTabella_, "lblX", nullptr);
    lblY_ = Etichetta(fraTabella_, "lblY", nullptr);
    griglia->addWidget(lblX_, 0, 1, Qt::AlignHCenter | Qt::AlignBottom);
    griglia->addWidget(lblY_, 0, 2, Qt::AlignHCenter | Qt::AlignBottom);
    for (std::size_t i = 0; i < Check1_.size(); ++i) {
        CreaRiga(i);
        const int riga = static_cast<int>(i) + 1;
        griglia->addWidget(Check1_[i], riga, 0);
        for (QLineEdit* casella : {txtX_[i], txtY_[i]}) {
            casella->setFixedHeight(Misure(*casella).Riga);
        }
        griglia->addWidget(txtX_[i], riga, 1);
        griglia->addWidget(txtY_[i], riga, 2);
    }
    griglia->setRowMinimumHeight(TabellaPunti::kRighe + 1, 8);
    griglia->setRowStretch(TabellaPunti::kRighe + 1, 1);
    cmdDisegnaCurva_ =
        Pulsante(fraTabella_, "cmdDisegnaCurva", &frmImpostaSensore::cmdDisegnaCurva_Click);
    griglia->addWidget(cmdDisegnaCurva_, TabellaPunti::kRighe + 2, 0, 1, 3);
    return fraTabella_;
}

QLayout* frmImpostaSensore::CreaSalvataggio() {
    txtNomeNuovo_ = new QLineEdit(Corpo());
    txtNomeNuovo_->setObjectName(QStringLiteral("txtNomeNuovo"));
    lblNomeNuovo_ = Etichetta(Corpo(), "lblNomeNuovo", txtNomeNuovo_);
    cmdSalvaSensore_ =
        Pulsante(Corpo(), "cmdSalvaSensore", &frmImpostaSensore::cmdSalvaSensore_Click);
    auto* riga = new QHBoxLayout;
    riga->addWidget(lblNomeNuovo_);
    riga->addWidget(txtNomeNuovo_, 1);
    riga->addWidget(cmdSalvaSensore_);
    return riga;
}

void frmImpostaSensore::AggiornaTesti(Mnemonica& lettere) {
    const auto con = [&lettere](Voce n) { return lettere.Con(InQt(Testo(n))); };
    const auto senza = [](Voce n) { return Mnemonica::Senza(InQt(Testo(n))); };
    setWindowTitle(InQt(titolo_.empty() ? Testo(Voce::TitoloLibreriaSensori) : titolo_));
    fraLibreriaSensori_->setTitle(senza(Voce::CorniceLibreria));
    fraTabella_->setTitle(senza(Voce::TabellaPunti));
    fraStrumento_->setTitle(senza(Voce::Strumento));
    cmdSalvaSensore_->setText(con(Voce::SalvaSensore));
    cmdNuovoSensore_->setText(con(Voce::NuovoSensore));
    cmdDisegnaCurva_->setText(con(Voce::DisegnaCurva));
    cmdLeggiSensoreStrumento_->setText(con(Voce::LeggiCurva));
    cmdCalibrazione_->setText(con(Voce::CalibraLivelloBenzina));
    CancelButton_->setText(con(Voce::Annulla));
    lblNomeNuovo_->setText(con(Voce::NomeSensore));
    lblSelezionaSensore_->setText(con(Voce::SelezionaSensore));
    lblTipoSensore_->setText(con(Voce::TipoDiSensore));
    cmdSalvaSensore_->setMinimumWidth(cmdSalvaSensore_->sizeHint().width() + 16);
    for (std::size_t i = 0; i < opzioni_.size(); ++i) {
        opzioni_[i]->setText(con(kTipiSensore[i].Testo));
    }
    DiceCurva();
}

/// Twenty points are what makes it high: their rows close up.
void frmImpostaSensore::Stringi() {
    constexpr int kAria = 2, kCaratteri = 12;
    for (std::size_t i = 0; i < txtX_.size(); ++i) {
        const int alto = Misure(*txtX_[i]).Linea + kAria;
        for (CasellaNumerica* casella : {txtX_[i], txtY_[i]}) casella->setFixedHeight(alto);
        Check1_[i]->setMaximumHeight(alto);
    }
    for (QComboBox* lista : {cboListaSensori_, cboTipiSensore_})
        lista->setMinimumContentsLength(kCaratteri);
    frmScambio::Stringi();
}

/// What stands around the graph.
void frmImpostaSensore::DiceCurva() {
    const TipoSensore& tipo = Tipo();
    const std::string unita = tipo.UnitaY.empty() ? "" : " [" + std::string(tipo.UnitaY) + "]";
    lblAsseY_->setText(InQt(Testo(tipo.Testo) + unita));
    lblAsseX_->setText(InQt(Testo(Voce::AsseIngresso)).arg(InQt(tipo.EtichettaX)));
    QString curva = InQt(Testo(Voce::TrascinaPunti));
    if (daLibreria_ && GraficoSensore_->DietroSiVede()) {
        curva = InQt(Testo(Voce::CurvaLibreria)).arg(InQt(daLibreria_->Nome())) +
                QStringLiteral(". ") + curva;
    }
    lblCurva_->setText(tabella_.NumPuntiTabella() > 0 ? curva : QString());
}

void frmImpostaSensore::done(int esito) {
    GraficoSensore_->PulisciGrafico();
    frmScambio::done(esito);
}

void frmImpostaSensore::AbilitaStrumento(bool presente) {
    cmdLeggiSensoreStrumento_->setEnabled(presente);
    cmdCalibrazione_->setEnabled(presente);
}

void frmImpostaSensore::RiempiTipiSensore() {
    for (const std::string& tipo : ListaTipiSensore) cboTipiSensore_->addItem(InQt(tipo));
}

void frmImpostaSensore::Form_Load() {
    RiempiTipiSensore();
    GraficoSensore_->ColoreSfondo(kBianco);
    GraficoSensore_->PulisciGrafico();
    GraficoSensore_->ImpostaIntervallo(0.0, 1.0, 0.0, 1.0, 0);
    opzioni_[0]->setChecked(true);  // runs its click
    cboTipiSensore_->setCurrentIndex(0);
    cboTipiSensore_Click();
    cmdLeggiSensoreStrumento_->setEnabled(cboTipiSensore_->currentIndex() >= 0 &&
                                          StrumentoPresente);
    cmdCalibrazione_->setEnabled(StrumentoPresente);
    opzioni_[0]->setFocus();
}

const TipoSensore& frmImpostaSensore::Tipo() const {
    std::size_t i = 0;
    while (i + 1 < opzioni_.size() && !opzioni_[i]->isChecked()) ++i;
    return kTipiSensore[i];
}

/// The window's title with a sensor's name, or its own again.
void frmImpostaSensore::Titolo(const std::string& sensore) {
    titolo_ = sensore.empty() ? std::string() : Testo(Voce::TitoloSensore) + sensore;
    setWindowTitle(InQt(titolo_.empty() ? Testo(Voce::TitoloLibreriaSensori) : titolo_));
}

/// Brings the controls in line with the table.
void frmImpostaSensore::Mostra() {
    for (std::size_t i = 0; i < Check1_.size(); ++i) {
        const RigaPunto& riga = tabella_.Riga(static_cast<int>(i));
        const auto mostra = [this, &riga](CasellaNumerica* casella, const std::string& testo) {
            // A number that was only put in order can be undone like any other typing.
            if (casella->hasFocus() || casella == riscritta_) {
                Riscrivi(*casella, InQt(testo));
            } else if (DaQt(casella->text()) != testo) {
                casella->setText(InQt(testo));
            }
            if (casella->isEnabledTo(fraTabella_) == riga.Caselle) return;
            casella->setEnabled(riga.Caselle);
            casella->setPalette(riga.Caselle ? QPalette() : Grigia());
        };
        mostra(txtX_[i], riga.X);
        mostra(txtY_[i], riga.Y);
        Check1_[i]->setChecked(riga.Spunta);
        Check1_[i]->setEnabled(riga.SpuntaAttiva);
    }
    if (tabella_.DaDisegnare()) cmdDisegnaCurva_Click();
    DiceCurva();
}

void frmImpostaSensore::Svuota() {
    daLibreria_.reset();
    tabella_.SvuotaTabella();
    Mostra();
}

void frmImpostaSensore::Opzione_Click() {
    const TipoSensore& tipo = Tipo();
    TipoCorrente_ = tipo.Tipo;
    txtNomeNuovo_->clear();
    Titolo({});
    {
        const QSignalBlocker muta(cboListaSensori_);
        cboListaSensori_->clear();
        for (const std::string& nome : NomiSensori(tipo.Tipo))
            cboListaSensori_->addItem(InQt(nome));
        cboListaSensori_->setCurrentIndex(-1);
        cboListaSensori_->clearEditText();
    }
    lblX_->setText(InQt(tipo.EtichettaX));
    lblY_->setText(InQt(tipo.EtichettaY));
    for (std::size_t i = 0; i < txtX_.size(); ++i) {
        const QString numero = QStringLiteral(" %1").arg(i + 1);
        txtX_[i]->setAccessibleName(lblX_->text() + numero);
        txtY_[i]->setAccessibleName(lblY_->text() + numero);
    }
    cmdCalibrazione_->setVisible(tipo.Tipo == kBenzina);
    Svuota();
}

void frmImpostaSensore::cboListaSensori_Click() {
    // Kept: a letter typed into the list chooses nothing and so begins a new sensor.
    if (cboListaSensori_->currentIndex() < 0) return cmdNuovoSensore_Click();
    tabella_.SvuotaTabella();
    daLibreria_.reset();
    if (const CSensore* sensore = CercaSensore(DaQt(cboListaSensori_->currentText()))) {
        txtNomeNuovo_->setText(InQt(sensore->Nome()));
        tabella_.MostraSensore(*sensore, TipoCorrente_);
        daLibreria_ = *sensore;
        Titolo(sensore->Nome());
    }
    Mostra();
    cmdDisegnaCurva_Click();
}

void frmImpostaSensore::cboTipiSensore_Click() {
    Svuota();
    const int canale = cboTipiSensore_->currentIndex();
    // Kept: an entry switches the button on whether or not the instrument is there.
    cmdLeggiSensoreStrumento_->setEnabled(canale >= 0);
    if (canale < 0) {
        cboTipiSensore_->clearEditText();
        return;
    }
    // One that is on already is not clicked: the list stays.
    opzioni_[TipoDelCanale(canale)]->setChecked(true);
}

void frmImpostaSensore::cmdNuovoSensore_Click() {
    tabella_.NuovoSensore();
    daLibreria_.reset();
    Mostra();
    Titolo(Testo(Voce::Nuovo));
    const QSignalBlocker muta(cboListaSensori_);
    cboListaSensori_->setCurrentIndex(-1);
    cboListaSensori_->clearEditText();
}

void frmImpostaSensore::Check1_Click(int i) {
    // A click that left a refused box does nothing more.
    if (avviso_) {
        AvvisaCrescente();
    } else {
        tabella_.Spunta(i, Check1_[static_cast<std::size_t>(i)]->isChecked());
    }
    Mostra();
}

void frmImpostaSensore::txtX_LostFocus(int i) {
    // A fuel level may fall.
    if (Cala() || tabella_.Crescente(i)) return cmdDisegnaCurva_Click();
    tabella_.X(i, "");
    tabella_.Spunta(i, false);
    Mostra();
    cmdDisegnaCurva_Click();
    rigaAvviso_ = static_cast<std::size_t>(i);
    AvvisaCrescente();
}

void frmImpostaSensore::txtY_LostFocus(int i) {
    std::string testo = VirgolaInPunto(tabella_.Riga(i).Y);
    tabella_.Y(i, FormattaDecimali(testo, FattoreSensore(TipoCorrente_)));
    riscritta_ = txtY_[static_cast<std::size_t>(i)];
    Mostra();
    riscritta_ = nullptr;
    cmdDisegnaCurva_Click();
}

bool frmImpostaSensore::Cala() const {
    return TipoCorrente_ == kBenzina;
}

LimitiNumero frmImpostaSensore::LimitiX(int i) const {
    constexpr auto kPieno = std::numeric_limits<std::int16_t>::max();
    const bool cresce = i > 0 && !Cala();
    const double minimo = cresce ? tabella_.X(i - 1) : -kPieno - 1;
    return {minimo, kPieno, TestoNumero(minimo) + " ... " + TestoNumero(kPieno)};
}

/// What the word of the instrument carries, in the unit of the sensor.
LimitiNumero frmImpostaSensore::LimitiY() const {
    const double massimo = double(std::numeric_limits<std::int16_t>::max()) / Tipo().Fattore;
    return {-massimo, massimo, TestoNumero(-massimo) + " ... " + TestoNumero(massimo)};
}

/// A drag of point `i`: what is written is what could be typed, with the decimals of the sensor.
void frmImpostaSensore::Sposta(int i, const QPointF& dove) {
    const auto [primo, ultimo] = tabella_.Insieme(i);
    const double x = tabella_.XPossibile(primo, ultimo, dove.x(), Cala());
    const double massimo = LimitiY().Massimo;
    const int fattore = Tipo().Fattore;
    const char* const figura = fattore == 1000  ? "0.000"
                               : fattore == 100 ? "0.00"
                               : fattore == 10  ? "0.0"
                                                : "0";
    const std::string y = Formatta(std::clamp(dove.y(), -massimo, massimo), figura);
    for (int n = primo; n <= ultimo; ++n) {
        const auto posto = static_cast<std::size_t>(n);
        Riscrivi(*txtX_[posto], InQt(TestoNumero(x)));
        Riscrivi(*txtY_[posto], InQt(y));
    }
}

/// The message waits until the click that moved the focus has ended: a box inside a mouse press
/// would leave the pressed button down.
void frmImpostaSensore::AvvisaCrescente() {
    avviso_ = true;
    QTimer::singleShot(0, this, [this] {
        Protetto([this] { QuandoLibero(this, this, [this] { MostraAvviso(); }); });
    });
}

void frmImpostaSensore::MostraAvviso() {
    if (!avviso_) return;
    if (isVisible() && QApplication::mouseButtons() != Qt::NoButton) {
        QTimer::singleShot(20, this, [this] { Protetto([this] { MostraAvviso(); }); });
        return;
    }
    avviso_ = false;
    if (!isVisible()) return;
    // Kept: Italian in every language.
    platform().MsgBox(Testo(Voce::BitNonCrescente), Buttons::Ok, Icon::Warning,
                      DaQt(windowTitle()));
    // The row has lost its tick and its X: an empty box would not let go.
    CasellaNumerica::NonRestareInUnaErrata(*this, *Check1_[rigaAvviso_]);
}

/// Leaves the box that has the focus. False: it was refused, and nothing else happens.
bool frmImpostaSensore::Lascia() {
    if (!CasellaNumerica::Lascia(*this)) return false;
    if (!avviso_) return true;
    MostraAvviso();
    return false;
}

void frmImpostaSensore::cmdDisegnaCurva_Click() {
    GraficoWidget& grafico = *GraficoSensore_;
    grafico.Titolo("");
    grafico.EtichettaX("");
    grafico.EtichettaY("");
    grafico.ColoreSfondo(kBianco);
    grafico.PulisciGrafico();
    const LimitiCurva limiti = tabella_.CalcolaLimiti();
    if (!GraficoSensore_->Trascina())
        grafico.ImpostaIntervallo(limiti.XMin, limiti.XMax, limiti.YMin, limiti.YMax, 0);
    DisegnaLibreria();
    grafico.ColoreElemento(kRosso);
    grafico.SpessoreElemento(2);
    std::vector<QPointF> punti;
    for (int i = 0; i < tabella_.NumPuntiTabella(); ++i) {
        grafico.AggiungiPunto(tabella_.X(i), tabella_.Y(i));
        punti.emplace_back(tabella_.X(i), tabella_.Y(i));
    }
    GraficoSensore_->Maniglie(std::move(punti));
    DiceCurva();
}

/// The sensor as the library has it, behind the one that is edited.
void frmImpostaSensore::DisegnaLibreria() {
    std::vector<QPointF> punti;
    if (!daLibreria_) return GraficoSensore_->Dietro(std::move(punti));
    for (int i = 0; i < std::min<int>(daLibreria_->NumPunti(), TabellaPunti::kRighe); ++i) {
        punti.emplace_back(daLibreria_->X(i), daLibreria_->Y(i));
    }
    GraficoSensore_->Dietro(std::move(punti));
}

void frmImpostaSensore::cmdSalvaSensore_Click() {
    if (SalvaSensore(TipoCorrente_, txtNomeNuovo_->text().toStdString(), tabella_,
                     DaQt(windowTitle()))) {
        Opzione_Click();
        Avvisi().Salvato();
    }
}

void frmImpostaSensore::cmdLeggiSensoreStrumento_Click() {
    const int canale = cboTipiSensore_->currentIndex();
    if (canale < 0) return;
    const InCorso scambio(*this, {Corpo()}, kFaseLettura, kTestoLettura);
    Svuota();
    const Esito esito = Passo([canale] { LeggiCurvaSensore(static_cast<std::int16_t>(canale)); });
    if (esito == Esito::Chiusa) return;
    // Kept: the channel is that of the list and the factor that of the option, which may disagree;
    // and whatever the arrays hold is shown, also when the read has failed.
    tabella_.MostraCurva(FattoreSensore(TipoCorrente_));
    Mostra();
}

void frmImpostaSensore::cmdCalibrazione_Click() {
    Svuota();
    dlgCalibrazione finestra(
        tabella_, [this] { Mostra(); }, this);
    finestra.lblTitolo->setText(InQt(Testo(kTestoCalibrazione)));
    finestra.exec();
    if (finestra.StatoCalibrazione() != kRinuncia) return;
    AzzeraCurvaSensore();
    Svuota();
}

}  // namespace lapvane
