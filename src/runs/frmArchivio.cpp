#include "runs/frmArchivio.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>
#include <utility>

#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "runs/DisegnoModello.h"
#include "runs/DisegnoUscite.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/MenuUscita.h"

namespace lapvane {

namespace {

constexpr int kPezzo = 12;                    // ms of work between two events
constexpr int kRinnovo = 400;                 // ms from a change in the archive to the list
constexpr int kAnnuncio = 4000;               // ms that what was done stands in the status line
constexpr std::size_t kConfrontoMassimo = 7;  // the reference and six laps beside it

/// What a column that is sorted by for the first time begins with.
bool DaDiscendente(ColonnaUscite colonna) {
    return colonna == ColonnaUscite::Data || colonna == ColonnaUscite::Ora ||
           colonna == ColonnaUscite::Giri || colonna == ColonnaUscite::Durata;
}

}  // namespace

frmArchivio::frmArchivio(QWidget* parent)
    : Dialogo("frmArchivio", parent,
              Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                  Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint) {
    setModal(true);
    scelte_ = CaricaScelteArchivio();
    Disponi();
    modello_->Raggruppa(scelte_.Gruppo);
    modello_->Ordina(scelte_.Ordine, scelte_.Discendente);
    lista_->SenzaCircuito(scelte_.Gruppo == GruppoPer::Circuito);
    Collega();
    CollegaTasti();
    Testi();
    resize(NelloSchermo(*this, {1366, 738}));
    Rinnova();
    if (!scelte_.Cartella.empty()) Apri(scelte_.Cartella);
}

frmArchivio::~frmArchivio() = default;

void frmArchivio::Collega() {
    connect(&tmrLavoro_, &QTimer::timeout, this, [this] { Protetto([this] { Lavora(); }); });
    tmrRinnova_.setSingleShot(true);
    tmrRinnova_.setInterval(kRinnovo);
    connect(&tmrRinnova_, &QTimer::timeout, this, [this] { Protetto([this] { Rinnova(); }); });
    tmrAnnuncio_.setSingleShot(true);
    tmrAnnuncio_.setInterval(kAnnuncio);
    connect(&tmrAnnuncio_, &QTimer::timeout, this, [this] { Annuncia({}); });
    tmrLato_.setSingleShot(true);
    connect(&tmrLato_, &QTimer::timeout, this, [this] {
        Protetto([this] {
            RiempiContro();
            AggiornaImpostazioni();
        });
    });
    connect(lista_, &DisegnoUscite::SceltaCambiata, this,
            [this] { Protetto([this] { CambiaScelta(); }); });
    connect(lista_, &DisegnoUscite::VistaMossa, this, [this] { tmrLavoro_.start(); });
    connect(lista_, &DisegnoUscite::Aperta, this,
            [this](int) { Protetto([this] { ApriAnalisi(); }); });
    connect(lista_, &DisegnoUscite::PiegaChiesta, this, [this](int riga, bool aperto) {
        Protetto([&] { Tenendo([&] { modello_->Piega(riga, aperto); }); });
    });
    connect(lista_, &DisegnoUscite::MenuChiesto, this,
            [this](QPoint dove) { Protetto([&] { MenuRighe(dove); }); });
    connect(lista_, &DisegnoUscite::CopiaChiesta, this,
            [this] { Protetto([this] { CopiaRighe(); }); });
    connect(lista_->header(), &QHeaderView::sectionClicked, this,
            [this](int colonna) { Protetto([&] { Ordina(colonna); }); });
    connect(txtCerca_, &QLineEdit::textChanged, this, [this] { Protetto([this] { Cerca(); }); });
    txtCerca_->installEventFilter(this);
    lista_->installEventFilter(this);
    lista_->Compagno(txtCerca_);
    SenzaRotella(cboGruppi_);
    SenzaRotella(cboContro_);
    connect(cboGruppi_, &QComboBox::activated, this, [this] {
        Protetto([this] {
            const auto gruppo = static_cast<GruppoPer>(cboGruppi_->currentData().toInt());
            Tenendo([&] { modello_->Raggruppa(gruppo); });
            lista_->SenzaCircuito(gruppo == GruppoPer::Circuito);
        });
    });
    connect(cboContro_, &QComboBox::activated, this, [this] {
        Protetto([this] {
            scelte_.Contro = PercorsoDaQt(cboContro_->currentData().toString());
            AggiornaImpostazioni();
        });
    });
    connect(txtNote_, &QPlainTextEdit::textChanged, this, [this] { NoteToccate(); });
}

/// Keys of the window, not of its buttons, which a narrow tool bar may hide.
void frmArchivio::CollegaTasti() {
    const auto tasto = [this](const char* quale, void (frmArchivio::*azione)()) {
        auto* scorciatoia = new QShortcut(QKeySequence(QLatin1String(quale)), this);
        connect(scorciatoia, &QShortcut::activated, this,
                [this, azione] { Protetto([&] { (this->*azione)(); }); });
    };
    tasto("Ctrl+K", &frmArchivio::Confronta);
    tasto("F5", &frmArchivio::Rileggi);
    tasto("Ctrl+S", &frmArchivio::SalvaNoteTasto);
    tasto("Ctrl+F", &frmArchivio::VaiAllaRicerca);
}

void frmArchivio::VaiAllaRicerca() {
    txtCerca_->setFocus();
    txtCerca_->selectAll();
}

void frmArchivio::ScegliCartella() {
    const auto scelta = platform().AskFolder(Testo(Voce::ArchivioCartella), archivio_.Cartella());
    if (!scelta) return;
    Apri(*scelta);
    txtCerca_->setFocus();
}

void frmArchivio::Apri(const std::filesystem::path& cartella) {
    SalvaLeNote();
    scelte_.Cartella = cartella;
    fermato_ = false;
    logProvati_.clear();
    platform().MousePointer(Pointer::Busy);
    archivio_.Apri(cartella);
    platform().MousePointer(Pointer::Normal);
    Rinnova();
    AggiornaTitolo();
    tmrLavoro_.start();
}

void frmArchivio::Rileggi() {
    if (!archivio_.Cartella().empty()) Apri(archivio_.Cartella());
}

void frmArchivio::FermaORiprendi() {
    if (archivio_.InCorso() == Archivio::Fase::Ferma) {
        Rileggi();
        return;
    }
    archivio_.Ferma();
    fermato_ = true;
    Rinnova();
}

/// One piece of what is to be done, so that the window answers meanwhile.
void frmArchivio::Lavora() {
    if (archivio_.InCorso() == Archivio::Fase::Ferma) {
        if (!LavoraLog()) tmrLavoro_.stop();
        return;
    }
    if (archivio_.Passo(kPezzo)) {
        if (!tmrRinnova_.isActive()) tmrRinnova_.start();
        AggiornaStato();
        return;
    }
    tmrRinnova_.stop();
    Rinnova();
    archivio_.Salva();
}

/// What only a log tells, of the chosen run and of those in sight. False: all of them are read.
bool frmArchivio::LavoraLog() {
    const auto serve = [this](const Uscita* uscita) {
        return uscita != nullptr && uscita->Sparito.empty() && !uscita->LogLetto &&
               !logProvati_.contains(uscita->Csv);
    };
    const Uscita* quale = serve(Corrente()) ? Corrente() : nullptr;
    const auto [da, a] = lista_->InVista();
    for (int riga = da; quale == nullptr && riga >= 0 && riga <= a; ++riga) {
        if (serve(modello_->UscitaA(riga))) quale = modello_->UscitaA(riga);
    }
    if (quale == nullptr) {
        const ColonnaUscite ordine = modello_->Elenco().Ordine();
        const bool conta = ordine == ColonnaUscite::Ideale || ordine == ColonnaUscite::Durata;
        if (std::exchange(logNuovi_, false) && conta) Tenendo([this] { modello_->Riordina(); });
        return false;
    }
    const std::filesystem::path csv = quale->Csv;
    const int posto = archivio_.Trova(csv);
    if (posto >= 0 && !archivio_.LeggiLogDi(posto, kPezzo)) return true;
    logProvati_.insert(csv);
    if (posto < 0) return true;
    logNuovi_ = true;
    modello_->AggiornaUscita(archivio_.Uscite()[static_cast<std::size_t>(posto)]);
    if (Corrente() != nullptr && Corrente()->Csv == csv) AggiornaTempi();
    AggiornaStato();
    return true;
}

/// The list takes over what the archive has now.
void frmArchivio::Rinnova() {
    Tenendo([this] {
        if (modello_->Aggiorna()) lista_->Campioni(modello_->PiuLunghi());
    });
    AggiornaConto();
    AggiornaInvito();
    AggiornaAvviso();
    AggiornaStato();
    AggiornaTempi();
}

std::vector<std::filesystem::path> frmArchivio::Scelte() const {
    std::vector<int> righe;
    for (const QModelIndex& indice : lista_->selectionModel()->selectedRows()) {
        righe.push_back(indice.row());
    }
    std::sort(righe.begin(), righe.end());
    std::vector<std::filesystem::path> scelte;
    for (const int riga : righe) {
        if (const Uscita* uscita = modello_->UscitaA(riga)) scelte.push_back(uscita->Csv);
    }
    return scelte;
}

/// The run that the side tells about: the current row where it is chosen, else the first chosen.
const Uscita* frmArchivio::Corrente() const {
    const QModelIndex corrente = lista_->currentIndex();
    const auto* scelte = lista_->selectionModel();
    if (corrente.isValid() && scelte->isSelected(corrente)) {
        return modello_->UscitaA(corrente.row());
    }
    int prima = -1;
    for (const QItemSelectionRange& tratto : scelte->selection()) {
        if (prima < 0 || tratto.top() < prima) prima = tratto.top();
    }
    return modello_->UscitaA(prima);
}

void frmArchivio::Tenendo(const std::function<void()>& cambia) {
    const auto scelte = Scelte();
    const Uscita* prima = Corrente();
    const std::filesystem::path corrente = prima != nullptr ? prima->Csv : std::filesystem::path();
    const int alto = lista_->AltezzaRiga();
    QScrollBar& barra = *lista_->verticalScrollBar();
    const QRect dove = prima != nullptr ? lista_->Cella(modello_->RigaDi(corrente), -1) : QRect();
    const bool inVista =
        prima != nullptr && dove.top() >= 0 && dove.top() < lista_->viewport()->height();
    const int valore = barra.value();
    tenendo_ = true;
    cambia();
    QItemSelection selezione;
    for (const std::filesystem::path& csv : scelte) {
        const int riga = modello_->RigaDi(csv);
        if (riga < 0) continue;
        selezione.select(modello_->index(riga, 0), modello_->index(riga, kColonneUscite - 1));
    }
    int riga = corrente.empty() ? -1 : modello_->RigaDi(corrente);
    if (riga < 0 && !selezione.isEmpty()) riga = selezione.first().top();
    // Without one that stays the first run is chosen, so that Enter always has one to open.
    for (int r = 0; riga < 0 && r < modello_->rowCount(); ++r) {
        if (modello_->TestataA(r)) continue;
        riga = r;
        selezione.select(modello_->index(r, 0), modello_->index(r, kColonneUscite - 1));
    }
    if (riga >= 0) {
        const QModelIndex indice = modello_->index(riga, 0);
        lista_->selectionModel()->setCurrentIndex(indice, QItemSelectionModel::NoUpdate);
        lista_->selectionModel()->select(selezione, QItemSelectionModel::ClearAndSelect);
        const bool stesso = modello_->UscitaA(riga)->Csv == corrente;
        lista_->Cella(riga, -1);  // lays the rows out
        barra.setValue(!stesso ? 0 : inVista ? riga * alto - dove.top() : valore);
    }
    tenendo_ = false;
    CambiaScelta();
    tmrLavoro_.start();
}

void frmArchivio::Cerca() {
    Tenendo([this] { modello_->Cerca(txtCerca_->text()); });
    AggiornaConto();
    AggiornaInvito();
}

void frmArchivio::Ordina(int colonna) {
    const auto quale = static_cast<ColonnaUscite>(colonna);
    const ElencoUscite& elenco = modello_->Elenco();
    const bool discendente =
        quale == elenco.Ordine() ? !elenco.Discendente() : DaDiscendente(quale);
    Tenendo([&] { modello_->Ordina(quale, discendente); });
}

void frmArchivio::CambiaScelta() {
    if (tenendo_) return;
    AggiornaLato();
    const std::size_t quante = Scelte().size();
    QString testo = InQt(Testo(Voce::ArchivioConfronta));
    if (quante > 1) {
        const QString intero = InQt(Testo(Voce::ArchivioConfrontaN)).arg(quante);
        testo = letteraConfronta_ + intero.mid(testo.size());
    } else {
        testo = letteraConfronta_;
    }
    cmdConfronta_->setText(testo);
    cmdConfronta_->setEnabled(quante > 0 && quante <= kConfrontoMassimo);
    cmdConfronta_->setToolTip(quante > kConfrontoMassimo ? InQt(Testo(Voce::ArchivioTroppe))
                                                         : QString());
    cmdAnalisi_->setEnabled(quante > 0);
}

/// Another window in front of this one; behind it the runs may have other sessions.
void frmArchivio::Fuori(const std::function<void()>& azione) {
    const auto scelte = Scelte();
    SalvaLeNote();
    tmrLavoro_.stop();
    azione();
    for (const std::filesystem::path& csv : scelte) {
        const int posto = archivio_.Trova(csv);
        if (posto >= 0) archivio_.Rileggi(posto);
    }
    noteDi_.clear();
    Rinnova();
    tmrLavoro_.start();
}

void frmArchivio::ApriAnalisi() {
    const Uscita* uscita = Corrente();
    if (uscita == nullptr || !QuandoAnalisi) return;
    Fuori([this, csv = uscita->Csv] { QuandoAnalisi(csv); });
}

void frmArchivio::Confronta() {
    const auto scelte = Scelte();
    if (scelte.empty() || scelte.size() > kConfrontoMassimo || !QuandoConfronto) return;
    Fuori([&] { QuandoConfronto(scelte); });
}

void frmArchivio::MenuRighe(const QPoint& dove) {
    const auto voce = [](Voce quale) { return Mnemonica::Senza(InQt(Testo(quale))); };
    QMenu menu(this);
    std::map<QAction*, std::function<void()>> azioni;
    azioni[menu.addAction(voce(Voce::ArchivioAnalisi))] = [this] { ApriAnalisi(); };
    QAction* const confronta =
        menu.addAction(Mnemonica::Senza(cmdConfronta_->text().remove(QLatin1Char('&'))));
    confronta->setEnabled(cmdConfronta_->isEnabled());
    azioni[confronta] = [this] { Confronta(); };
    menu.addSeparator();
    azioni[menu.addAction(voce(Voce::ArchivioCopiaRighe))] = [this] { CopiaRighe(); };
    azioni[menu.addAction(voce(Voce::ArchivioMostraFile))] = [this] { MostraFile(); };
    azioni[menu.addAction(voce(Voce::ArchivioRileggi))] = [this] { Rileggi(); };
    menu.addSeparator();
    QMenu* const ordine = menu.addMenu(voce(Voce::ArchivioOrdina));
    for (int c = 0; c < kColonneUscite; ++c) {
        if (static_cast<ColonnaUscite>(c) == ColonnaUscite::Ora) continue;  // as the date
        QAction* const una = ordine->addAction(voce(TitoloColonna(static_cast<ColonnaUscite>(c))));
        una->setCheckable(true);
        una->setChecked(static_cast<ColonnaUscite>(c) == modello_->Elenco().Ordine());
        azioni[una] = [this, c] { Ordina(c); };
    }
    if (QAction* const fatto = menu.exec(dove)) azioni[fatto]();
}

void frmArchivio::changeEvent(QEvent* evento) {
    Dialogo::changeEvent(evento);
    if (evento->type() == QEvent::PaletteChange && lblGuaio_ != nullptr) {
        AggiornaAvviso();
        AggiornaTempi();
    }
}

void frmArchivio::showEvent(QShowEvent* evento) {
    Dialogo::showEvent(evento);
    if (!evento->spontaneous()) txtCerca_->setFocus();
}

/// Esc takes a search away first.
void frmArchivio::keyPressEvent(QKeyEvent* evento) {
    if (evento->key() == Qt::Key_Escape && !txtCerca_->text().isEmpty()) {
        txtCerca_->clear();
        txtCerca_->setFocus();
        return;
    }
    Dialogo::keyPressEvent(evento);
}

/// The arrow keys move in the list while one types, and letters typed there go to the search.
bool frmArchivio::eventFilter(QObject* oggetto, QEvent* evento) {
    if (oggetto == lista_ && evento->type() == QEvent::KeyPress) {
        const auto* tasto = static_cast<QKeyEvent*>(evento);
        const QString testo = tasto->text();
        if (!testo.isEmpty() && testo[0].isLetterOrNumber() &&
            (tasto->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0) {
            txtCerca_->setFocus();
            QCoreApplication::sendEvent(txtCerca_, evento);
            return true;
        }
    }
    if (oggetto == txtCerca_) {
        if (evento->type() == QEvent::FocusIn || evento->type() == QEvent::FocusOut) {
            lista_->viewport()->update();
        }
        if (evento->type() == QEvent::KeyPress) {
            const int tasto = static_cast<QKeyEvent*>(evento)->key();
            if (tasto == Qt::Key_Up || tasto == Qt::Key_Down || tasto == Qt::Key_PageUp ||
                tasto == Qt::Key_PageDown) {
                QCoreApplication::sendEvent(lista_, evento);
                return true;
            }
            // Not left to the default button, which a narrow tool bar may hide.
            if (tasto == Qt::Key_Return || tasto == Qt::Key_Enter) {
                Protetto([this] { ApriAnalisi(); });
                return true;
            }
        }
    }
    return Dialogo::eventFilter(oggetto, evento);
}

void frmArchivio::done(int esito) {
    bool resta = false;
    Protetto([&] {
        SalvaLeNote();
        if (!pendenti_.empty()) {
            QStringList nomi;
            for (const auto& [csv, note] : pendenti_) nomi << PercorsoInQt(csv.filename());
            const std::string domanda =
                Testo(Voce::ArchivioChiudi) + "\r\n" + DaQt(nomi.join(QStringLiteral("\r\n")));
            resta = platform().MsgBox(domanda, Buttons::OkCancel, Icon::Warning,
                                      platform().ExeName()) != Answer::Ok;
        }
        if (resta) return;
        tmrLavoro_.stop();
        tmrRinnova_.stop();
        scelte_.Ordine = modello_->Elenco().Ordine();
        scelte_.Discendente = modello_->Elenco().Discendente();
        scelte_.Gruppo = modello_->Elenco().Gruppo();
        SalvaScelteArchivio(scelte_);
        archivio_.Salva();
    });
    if (!resta) Dialogo::done(esito);
}

}  // namespace lapvane
