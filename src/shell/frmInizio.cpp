#include "shell/frmInizio.h"

#include <QAction>
#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <utility>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/CartaAzione.h"
#include "widgets/Scheda.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kMargineLargo = 64;
constexpr int kMargineStretto = 24;
constexpr int kLarghezzaSinistra = 600;
constexpr int kLarghezzaDestra = 614;
constexpr int kLargheMinime = 228;  ///< least width of the lists beside the cards

/// The strip that tells of a log which is not saved.
class Striscia : public QWidget {
 public:
    using QWidget::QWidget;

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter penna(this);
        penna.setRenderHint(QPainter::Antialiasing);
        const Colori& colori = ColoriDi(*this);
        Riquadro(penna, rect(), kRaggioScheda, colori.WarnSoft, colori.Warn);
    }
};

QLabel* Scritta(const char* nome) {
    auto* scritta = new QLabel;
    scritta->setObjectName(QLatin1String(nome));
    scritta->setTextFormat(Qt::PlainText);
    return scritta;
}

}  // namespace

frmInizio::frmInizio(QWidget* parent) : Sfondo(parent) {
    setObjectName(QStringLiteral("frmInizio"));
    auto* dentro = new QWidget;
    dentro->setAutoFillBackground(false);
    colonne_ = new QBoxLayout(QBoxLayout::LeftToRight, dentro);
    colonne_->setSpacing(kMargineLargo);
    sinistra_ = new QWidget;
    auto* sinistra = new QVBoxLayout(sinistra_);
    sinistra->setContentsMargins(0, 0, 0, 0);
    auto* destra = new QVBoxLayout;
    sinistra->setSpacing(kSpazio);
    destra->setSpacing(kSpazioGruppi);
    CreaTesta(sinistra);
    CreaParti(sinistra);
    CreaStriscia(destra);
    progetti_ = CreaLista("lstProgettiRecenti", "Open", destra, &frmInizio::ApriProgetto);
    log_ = CreaLista("lstLogRecenti", "Analize", destra, &frmInizio::ApriLog);
    CreaRimandi(destra);
    destra->addStretch(1);
    colonne_->addWidget(sinistra_);
    colonne_->addLayout(destra, 1);

    scorre_ = new QScrollArea(this);
    scorre_->setObjectName(QStringLiteral("scrInizio"));
    scorre_->setFrameShape(QFrame::NoFrame);
    scorre_->setWidgetResizable(true);
    scorre_->setFocusPolicy(Qt::NoFocus);
    scorre_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scorre_->setWidget(dentro);
    dentro->setAutoFillBackground(false);
    scorre_->viewport()->setAutoFillBackground(false);
    Caratteri();
}

void frmInizio::CreaTesta(QVBoxLayout* colonna) {
    lblNome_ = Scritta("lblNome");
    lblDomanda_ = Scritta("lblDomanda");
    colonna->addWidget(lblNome_);
    colonna->addWidget(lblDomanda_);
    colonna->addSpacing(kSpazio);
    lblDomanda_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblNome_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void frmInizio::CreaParti(QVBoxLayout* colonna) {
    parti_ = new QVBoxLayout;
    parti_->setSpacing(kSpazioGruppi);
    for (const Parte parte :
         {Parte::Configurazione, Parte::Strumento, Parte::Progetto, Parte::Analisi}) {
        Gruppo gruppo;
        gruppo.Tutto = new QWidget;
        auto* righe = new QVBoxLayout(gruppo.Tutto);
        righe->setContentsMargins(0, 0, 0, 0);
        righe->setSpacing(kSpazio);
        auto* capo = new QHBoxLayout;
        gruppo.Titolo = Scritta("lblParte");
        gruppo.Nota = Scritta("lblNotaParte");
        gruppo.Nota->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        capo->addWidget(gruppo.Titolo);
        capo->addWidget(gruppo.Nota, 1);
        righe->addLayout(capo);
        gruppo.Carte = new QGridLayout;
        gruppo.Carte->setSpacing(kSpazio);
        gruppo.Carte->setColumnStretch(0, 1);
        gruppo.Carte->setColumnStretch(1, 1);
        righe->addLayout(gruppo.Carte);
        gruppi_.emplace(parte, gruppo);
        parti_->addWidget(gruppo.Tutto);
    }
    colonna->addLayout(parti_);
    colonna->addStretch(1);
}

void frmInizio::CreaStriscia(QVBoxLayout* colonna) {
    striscia_ = new Striscia;
    striscia_->setObjectName(QStringLiteral("fraLogDaSalvare"));
    auto* riga = new QHBoxLayout(striscia_);
    riga->setContentsMargins(kMargineCornice, kSpazio, kMargineCornice, kSpazio);
    lblLogDaSalvare_ = Scritta("lblLogDaSalvare");
    lblLogDaSalvare_->setWordWrap(true);
    cmdPiuTardi_ = new QPushButton;
    cmdPiuTardi_->setObjectName(QStringLiteral("cmdPiuTardi"));
    cmdSalvaLog_ = new QPushButton;
    cmdSalvaLog_->setObjectName(QStringLiteral("cmdSalvaLog"));
    riga->addWidget(lblLogDaSalvare_, 1);
    riga->addWidget(cmdPiuTardi_);
    riga->addWidget(cmdSalvaLog_);
    colonna->addWidget(striscia_);
    striscia_->hide();
    connect(cmdPiuTardi_, &QPushButton::clicked, this, [this] {
        rimandata_ = true;
        striscia_->hide();
    });
    connect(cmdSalvaLog_, &QPushButton::clicked, this, [this] {
        if (SalvaLog) SalvaLog();
    });
}

frmInizio::Lista frmInizio::CreaLista(const char* nome, const char* icona, QVBoxLayout* colonna,
                                      std::function<void(int)> frmInizio::*apri) {
    Lista lista;
    lista.Cornice = new Scheda(nome);
    for (std::size_t i = 0; i < lista.Righe.size(); ++i) {
        auto* riga = new CartaAzione(CartaAzione::Forma::Riga);
        riga->setObjectName(QLatin1String(nome) + QString::number(i));
        riga->setIcon(Icona(icona));
        riga->hide();
        connect(riga, &CartaAzione::clicked, this, [this, apri, i] {
            if (this->*apri) (this->*apri)(static_cast<int>(i));
        });
        lista.Cornice->Contenuto()->addWidget(riga);
        lista.Righe[i] = riga;
    }
    lista.Vuota = Scritta("lblVuota");
    lista.Vuota->setMargin(kMargineCornice);
    lista.Cornice->Contenuto()->addWidget(lista.Vuota);
    colonna->addWidget(lista.Cornice);
    return lista;
}

QPushButton* frmInizio::Rimando(const char* nome, std::function<void()> frmInizio::*apri) {
    auto* pulsante = new QPushButton;
    pulsante->setObjectName(QLatin1String(nome));
    connect(pulsante, &QPushButton::clicked, this, [this, apri] {
        if (this->*apri) (this->*apri)();
    });
    return pulsante;
}

void frmInizio::CreaRimandi(QVBoxLayout* colonna) {
    auto* riga = new QHBoxLayout;
    cmdManuale_ = Rimando("cmdManuale", &frmInizio::Manuale);
    cmdTasti_ = Rimando("cmdTasti", &frmInizio::Tasti);
    riga->addWidget(cmdManuale_);
    riga->addWidget(cmdTasti_);
    riga->addStretch(1);
    colonna->addLayout(riga);
}

void frmInizio::Aggiungi(Parte parte, QAction* azione, Voce riga, bool soloConProgetto) {
    auto* pulsante = new CartaAzione(CartaAzione::Forma::Carta, gruppi_[parte].Tutto);
    pulsante->setObjectName(QStringLiteral("card_") + azione->objectName());
    pulsante->setIcon(azione->icon());
    carte_.push_back({parte, azione, Voce::Nessuna, riga, pulsante, soloConProgetto, {}});
    connect(pulsante, &CartaAzione::clicked, this, [this, azione] {
        for (const Carta& carta : carte_) {
            if (carta.Azione == azione) return Premuta(carta);
        }
    });
    connect(azione, &QAction::changed, this, [this, azione] {
        for (const Carta& carta : carte_) {
            if (carta.Azione == azione) AggiornaCarta(carta);
        }
    });
}

CartaAzione* frmInizio::Aggiungi(Parte parte, const char* nome, Voce titolo, Voce riga,
                                 const QIcon& icona, std::function<void()> azione) {
    auto* pulsante = new CartaAzione(CartaAzione::Forma::Carta, gruppi_[parte].Tutto);
    pulsante->setObjectName(QLatin1String(nome));
    pulsante->setIcon(icona);
    carte_.push_back({parte, nullptr, titolo, riga, pulsante, false, {}});
    connect(pulsante, &CartaAzione::clicked, this, std::move(azione));
    return pulsante;
}

void frmInizio::SenzaProgetto(QAction* azione, Voce riga, std::function<void()> invece) {
    for (Carta& carta : carte_) {
        if (carta.Azione != azione) continue;
        carta.Invece = std::move(invece);
        carta.RigaInvece = riga;
        return;
    }
}

void frmInizio::Premuta(const Carta& carta) {
    if (carta.Invece && !stato_.Progetto) {
        carta.Invece();
    } else {
        carta.Azione->trigger();
    }
}

/// The parts from top to bottom.
std::vector<frmInizio::Parte> frmInizio::Ordine() const {
    if (stato_.Progetto) {
        return {Parte::Configurazione, Parte::Strumento, Parte::Analisi, Parte::Progetto};
    }
    if (stato_.Strumento) return {Parte::Strumento, Parte::Progetto, Parte::Analisi};
    return {Parte::Progetto, Parte::Analisi, Parte::Strumento};
}

void frmInizio::Mostra(const StatoInizio& stato) {
    if (stato == stato_) return;
    const bool altre = stato.Progetto != stato_.Progetto || stato.Strumento != stato_.Strumento ||
                       stato.Lingua != stato_.Lingua;
    if (!stato.LogDaSalvare) rimandata_ = false;
    stato_ = stato;
    if (altre) {
        MostraCarte();
        Colonne();
    }
    AccorciaTesta();
    lblNome_->setToolTip(stato.NomeProgetto);
    lblDomanda_->setToolTip(stato.Percorso);
    QLabel* nota = gruppi_[Parte::Strumento].Nota;
    nota->setText(stato.Strumento
                      ? InQt(Testo(Voce::InizioRisponde)).arg(stato.Identita, stato.Porta)
                      : InQt(Testo(Voce::InizioMuto)));
    striscia_->setVisible(stato.LogDaSalvare && !rimandata_);
    lblLogDaSalvare_->setText(InQt(Testo(Voce::LogDaSalvare)));
    cmdPiuTardi_->setText(InQt(Testo(Voce::PiuTardi)));
    cmdSalvaLog_->setText(InQt(Testo(Voce::SalvaDatiScaricati)));
    Riempi(progetti_, Voce::ProgettiRecenti, stato.Progetti);
    Riempi(log_, Voce::LogUltimi, stato.Log);
    cmdManuale_->setText(InQt(Testo(Voce::VoceManuale)) + QStringLiteral(" (F1)"));
    cmdTasti_->setText(InQt(Testo(Voce::TuttiITasti)));
}

/// Name and path of the project as far as there is room for them.
void frmInizio::AccorciaTesta() {
    const int largo = sinistra_->width();
    const bool percorso = stato_.Progetto && !stato_.Percorso.isEmpty();
    lblNome_->setText(lblNome_->fontMetrics().elidedText(
        stato_.Progetto ? stato_.NomeProgetto : QStringLiteral("Lapvane"), Qt::ElideRight, largo));
    lblDomanda_->setText(
        percorso ? lblDomanda_->fontMetrics().elidedText(stato_.Percorso, Qt::ElideMiddle, largo)
                 : InQt(Testo(Voce::InizioDomanda)));
}

void frmInizio::Riempi(const Lista& lista, Voce titolo, const std::vector<RecenteInizio>& righe) {
    lista.Cornice->Titolo(InQt(Testo(titolo)));
    lista.Vuota->setText(InQt(Testo(Voce::NienteRecente)));
    lista.Vuota->setVisible(righe.empty());
    for (std::size_t i = 0; i < lista.Righe.size(); ++i) {
        lista.Righe[i]->setVisible(i < righe.size());
        if (i < righe.size()) {
            lista.Righe[i]->Mostra(righe[i].Nome, righe[i].Riga, righe[i].Data);
        }
    }
}

/// Lays the parts and their cards in their order and gives them their words.
void frmInizio::MostraCarte() {
    const std::vector<Parte> ordine = Ordine();
    for (auto& [parte, gruppo] : gruppi_) {
        const bool visibile = std::find(ordine.begin(), ordine.end(), parte) != ordine.end();
        gruppo.Tutto->setVisible(visibile);
        parti_->removeWidget(gruppo.Tutto);
    }
    const std::map<Parte, Voce> titoli{{Parte::Configurazione, Voce::MenuConfigurazione},
                                       {Parte::Strumento, Voce::MenuStrumento},
                                       {Parte::Progetto, Voce::MenuProgetto},
                                       {Parte::Analisi, Voce::MenuAnalisi}};
    const QWidget* precedente = this;
    bool prima = true;
    for (const Parte parte : ordine) {
        const Gruppo& gruppo = gruppi_[parte];
        parti_->addWidget(gruppo.Tutto);
        gruppo.Titolo->setText(InQt(Testo(titoli.at(parte))));
        int posto = 0;
        for (const Carta& carta : carte_) {
            if (carta.Dove != parte) continue;
            const bool c = !carta.SoloConProgetto || stato_.Progetto;
            carta.Pulsante->setVisible(c);
            if (!c) continue;
            gruppo.Carte->addWidget(carta.Pulsante, posto / 2, posto % 2);
            carta.Pulsante->Principale(prima);
            prima = false;
            ++posto;
            setTabOrder(const_cast<QWidget*>(precedente), carta.Pulsante);
            precedente = carta.Pulsante;
            AggiornaCarta(carta);
        }
    }
}

void frmInizio::AggiornaCarta(const Carta& carta) {
    if (carta.Azione == nullptr) {
        carta.Pulsante->Mostra(InQt(Testo(carta.Titolo)), InQt(Testo(carta.Riga)), {});
        return;
    }
    const bool invece = carta.Invece && !stato_.Progetto;
    carta.Pulsante->setEnabled(invece ? stato_.Strumento : carta.Azione->isEnabled());
    carta.Pulsante->Mostra(carta.Azione->text().remove(QLatin1Char('&')),
                           InQt(Testo(invece ? carta.RigaInvece : carta.Riga)),
                           carta.Azione->shortcut().toString(QKeySequence::NativeText));
}

void frmInizio::Caratteri() {
    lblNome_->setFont(Carattere(*this, Scrittura::Testa));
    QFont domanda = Carattere(*this, Scrittura::Titolo);
    domanda.setWeight(QFont::Normal);
    lblDomanda_->setFont(domanda);
    lblLogDaSalvare_->setFont(Carattere(*this, Scrittura::Forte));
    const auto tenue = [this](QLabel* scritta) {
        QPalette paletta = palette();
        paletta.setColor(QPalette::WindowText, ColoriDi(*this).Text2);
        scritta->setPalette(paletta);
    };
    tenue(lblDomanda_);
    tenue(progetti_.Vuota);
    tenue(log_.Vuota);
    for (auto& [parte, gruppo] : gruppi_) {
        gruppo.Titolo->setFont(Carattere(*this, Scrittura::Forte));
        tenue(gruppo.Nota);
    }
}

void frmInizio::resizeEvent(QResizeEvent* evento) {
    Sfondo::resizeEvent(evento);
    scorre_->setGeometry(rect());
    Colonne();
}

/// The cards are as wide as their words, the lists take what is left, or stand below.
void frmInizio::Colonne() {
    int carta = (kLarghezzaSinistra - kSpazio) / 2;
    for (const Carta& una : carte_) {
        if (una.Pulsante->isVisibleTo(this)) carta = std::max(carta, una.Pulsante->Larghezza());
    }
    const int sinistra = 2 * carta + kSpazio;
    const int liste = std::max(kLargheMinime, colonne_->itemAt(1)->minimumSize().width());
    const bool due = width() >= sinistra + liste + 3 * kMargineStretto;
    const int largo = sinistra + liste + 4 * kMargineLargo;
    const int margine = width() >= largo ? kMargineLargo : kMargineStretto;
    colonne_->setDirection(due ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    colonne_->setSpacing(margine);
    sinistra_->setMinimumWidth(due ? sinistra : 0);
    sinistra_->setMaximumWidth(due ? sinistra : QWIDGETSIZE_MAX);
    // Wider than both columns need: the page stays at the left, as a sheet would.
    const int destra =
        std::max(margine, due ? width() - margine * 2 - sinistra - kLarghezzaDestra : margine);
    const auto disponi = [&](bool fitta) {
        const int sopra = fitta ? kSpazio : margine / 2;
        parti_->setSpacing(fitta ? kSpazio : kSpazioGruppi);
        for (const Carta& una : carte_) una.Pulsante->Fitta(fitta);
        colonne_->setContentsMargins(margine, sopra, destra, sopra);
        colonne_->invalidate();
        colonne_->activate();
    };
    disponi(false);
    // Closer together where the cards would reach below the window.
    if (due && colonne_->totalMinimumSize().height() > height()) disponi(true);
    AccorciaTesta();
}

void frmInizio::changeEvent(QEvent* evento) {
    Sfondo::changeEvent(evento);
    const bool altro =
        evento->type() == QEvent::FontChange || evento->type() == QEvent::PaletteChange;
    if (!altro || cmdTasti_ == nullptr) return;
    Caratteri();
    Colonne();
}

}  // namespace lapvane
