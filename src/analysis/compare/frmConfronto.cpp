#include "analysis/compare/frmConfronto.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QTabWidget>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "analysis/compare/DisegnoElenco.h"
#include "analysis/compare/DisegnoMappa.h"
#include "analysis/compare/DisegnoParti.h"
#include "analysis/compare/DisegnoQuadri.h"
#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"

namespace lapvane {

frmConfronto::frmConfronto(QWidget* parent)
    : Dialogo("frmConfronto", parent,
              Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                  Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint) {
    setModal(true);
    setAcceptDrops(true);
    scelte_ = CaricaScelte();
    quadri_ = scelte_.Quadri;
    confronto_.PerDistanza = scelte_.PerDistanza;
    confronto_.Parti(scelte_.Parti);
    Disponi();
    Collega();
    Testi();
    resize(NelloSchermo(*this, {1366, 738}));
    lstGiri_->setFocus();
    Aggiorna();
}

frmConfronto::~frmConfronto() = default;

void frmConfronto::Collega() {
    CollegaElenchi();
    CollegaGrafico();
    CollegaScelte();
    tmrAllinea_.setInterval(0);
    connect(&tmrAllinea_, &QTimer::timeout, this,
            [this] { Protetto([this] { AllineaAncora(); }); });
    for (std::size_t i = 0; i < cmdParte_.size(); ++i) {
        connect(cmdParte_[i], &QPushButton::clicked, this, [this, i] {
            Protetto([this, i] {
                const std::vector<int>& peggiori = tabella_.Peggiori;
                schede_->setCurrentWidget(grafico_);
                if (i < peggiori.size()) grafico_->VediParte(peggiori[i]);
            });
        });
    }
}

void frmConfronto::CollegaElenchi() {
    connect(lstGiri_, &DisegnoElenco::SpuntaChiesta, this,
            [this](int riga, bool accesa) { Protetto([&] { SpuntaGiro(riga, accesa); }); });
    connect(lstGiri_, &DisegnoElenco::Scelta, this, [this](int riga) {
        Protetto([&] {
            const RigaGiri& scelta = righe_[static_cast<std::size_t>(riga)];
            confronto_.Fuoco(confronto_.Lettera({scelta.Log, scelta.Giro}));
            Aggiorna();
        });
    });
    connect(lstGiri_, &DisegnoElenco::Azionata, this,
            [this](int riga) { Protetto([&] { MettiRiferimento(riga); }); });
    connect(lstGiri_, &DisegnoElenco::MenuChiesto, this,
            [this](int riga, QPoint dove) { Protetto([&] { MenuGiri(riga, dove); }); });
    connect(lstQuadri_, &DisegnoElenco::SpuntaChiesta, this,
            [this](int riga, bool accesa) { Protetto([&] { SpuntaQuadro(riga, accesa); }); });
    const auto inverti = [this](int riga) {
        Protetto([&] {
            SpuntaQuadro(riga, !lstQuadri_->Voci()[static_cast<std::size_t>(riga)].Spuntata);
        });
    };
    connect(lstQuadri_, &DisegnoElenco::Scelta, this, inverti);
}

void frmConfronto::CollegaGrafico() {
    connect(grafico_, &DisegnoQuadri::CursoreMosso, this,
            [this](double) { Protetto([this] { AggiornaCursore(); }); });
    connect(grafico_, &DisegnoQuadri::SecondoMosso, this, [this](std::optional<double> x) {
        Protetto([&] {
            AggiornaCursore();
            FaiPosto(x.has_value());
        });
    });
    connect(grafico_, &DisegnoQuadri::VistaCambiata, this, [this](double, double) {
        Protetto([this] {
            AggiornaXY();
            AggiornaIstogramma();
        });
    });
    connect(mappa_, &DisegnoMappa::Mosso, this, [this](double quota) {
        Protetto([&] {
            const auto primo = confronto_.Di(kRiferimento);
            const GiroAllineato* riferimento = primo ? confronto_.Allineato(*primo) : nullptr;
            if (riferimento == nullptr) return;
            grafico_->MettiCursore(confronto_.XDaMetri(quota * riferimento->Lunghezza));
        });
    });
    connect(parti_, &DisegnoParti::Scelto, this, [this](char lettera) {
        Protetto([&] {
            confronto_.Fuoco(lettera);
            Aggiorna();
        });
    });
    connect(parti_, &DisegnoParti::ParteScelta, this, [this](int parte) {
        Protetto([&] {
            schede_->setCurrentWidget(grafico_);
            grafico_->VediParte(parte);
        });
    });
}

void frmConfronto::CollegaScelte() {
    connect(optDistanza_, &QPushButton::toggled, this, [this](bool distanza) {
        Protetto([&] {
            confronto_.PerDistanza = distanza;
            Aggiorna();
        });
    });
    connect(cboParti_, &QComboBox::activated, this, [this] {
        Protetto([this] {
            confronto_.Parti(cboParti_->currentData().toInt());
            Aggiorna();
        });
    });
    connect(schede_, &QTabWidget::currentChanged, this, [this] {
        Protetto([this] {
            AggiornaXY();
            AggiornaIstogramma();
        });
    });
    const auto cambia = [this](QComboBox* lista, std::string& scelto,
                               void (frmConfronto::*aggiorna)()) {
        SenzaRotella(lista);
        connect(lista, &QComboBox::activated, this, [this, lista, &scelto, aggiorna] {
            Protetto([&] {
                scelto = lista->currentData().toByteArray().toStdString();
                (this->*aggiorna)();
            });
        });
    };
    SenzaRotella(cboParti_);
    SenzaRotella(cboFasce_);
    cambia(cboX_, scelte_.X, &frmConfronto::AggiornaXY);
    cambia(cboY_, scelte_.Y, &frmConfronto::AggiornaXY);
    cambia(cboCanale_, scelte_.Istogramma, &frmConfronto::AggiornaIstogramma);
    cambia(cboMappa_, scelte_.Mappa, &frmConfronto::AggiornaMappa);
    connect(cboFasce_, &QComboBox::activated, this,
            [this] { Protetto([this] { AggiornaIstogramma(); }); });
    connect(optLinea_, &QPushButton::toggled, this, [this](bool linea) {
        Protetto([&] {
            scelte_.Linea = linea;
            AggiornaXY();
        });
    });
    optTempo_->setChecked(!confronto_.PerDistanza);
    optLinea_->setChecked(scelte_.Linea);
}

void frmConfronto::RiempiParti() {
    cboParti_->clear();
    if (confronto_.ConSettori()) cboParti_->addItem(InQt(Testo(Voce::SettoriCircuito)), 0);
    for (int n = 3; n <= 20; ++n) {
        cboParti_->addItem(QString::number(n) + QLatin1Char(' ') + InQt(Testo(Voce::PartiUguali)),
                           n);
    }
    const int parti = confronto_.Parti() == 0 && !confronto_.ConSettori() ? 9 : confronto_.Parti();
    cboParti_->setCurrentIndex(cboParti_->findData(parti));
}

void frmConfronto::RiempiCanale(QComboBox* lista, const std::string& scelto, bool conDistacco) {
    lista->clear();
    if (conDistacco) lista->addItem(InQt(Testo(Voce::MappaTempo)), QByteArray());
    for (const CanaleConfronto& canale : confronto_.Canali()) {
        lista->addItem(InQt(canale.Titolo()), QByteArray::fromStdString(canale.Chiave()));
    }
    const int posto = lista->findData(QByteArray::fromStdString(scelto));
    lista->setCurrentIndex(std::max(posto, 0));
}

void frmConfronto::RiempiCanali() {
    const std::vector<CanaleConfronto> canali = confronto_.Canali();
    const auto primo = [&canali](std::string& scelto, std::size_t quale) {
        const bool gia = std::any_of(canali.begin(), canali.end(),
                                     [&](const auto& canale) { return canale.Chiave() == scelto; });
        if (!gia && quale < canali.size()) scelto = canali[quale].Chiave();
    };
    // Speed and engine, which every log has first.
    primo(scelte_.X, 1);
    primo(scelte_.Y, 0);
    primo(scelte_.Istogramma, 1);
    RiempiCanale(cboX_, scelte_.X, false);
    RiempiCanale(cboY_, scelte_.Y, false);
    RiempiCanale(cboCanale_, scelte_.Istogramma, false);
    RiempiCanale(cboMappa_, scelte_.Mappa, true);
}

void frmConfronto::Apri(const std::filesystem::path& file, std::optional<int> indiceGiro) {
    platform().MousePointer(Pointer::Busy);
    try {
        const bool primo = confronto_.NumLog() == 0;
        const int prima = confronto_.NumLog();
        const int log = confronto_.Apri(file);
        Dici({});
        if (indiceGiro) {
            const auto& giri = confronto_.Log(log).Giri();
            for (int i = 0; i < std::ssize(giri); ++i) {
                if (giri[static_cast<std::size_t>(i)].Indice != *indiceGiro) continue;
                if (confronto_.Lettera({log, i}) != kRiferimento) {
                    for (const char lettera : confronto_.Accanto()) {
                        confronto_.Spunta(*confronto_.Di(lettera), false);
                    }
                    confronto_.Spunta({log, i}, true);
                }
            }
        } else if (log == prima) {
            for (const ScelteLog& scelta : scelte_.Log) {
                if (StessoPercorso(scelta.File, confronto_.Log(log).File())) {
                    confronto_.Ripristina(log, scelta.Giri);
                }
            }
        }
        if (primo && quadri_.empty()) {
            quadri_ = {kChiaveDistacco};
            const auto canali = confronto_.Canali();
            // Speed, engine, throttle.
            for (const std::size_t c : {1U, 0U, 4U}) {
                if (c < canali.size()) quadri_.push_back(canali[c].Chiave());
            }
        }
        fermato_ = false;
    } catch (const ErroreRuntime& errore) {
        Dici(PercorsoInQt(file.filename()) + QStringLiteral(": ") +
             InQt(Testo(Voce::LogNonAperto)) + QStringLiteral(" ") +
             InQt(FraseErrore(ParoleDi(errore.Numero()))));
    }
    platform().MousePointer(Pointer::Normal);
    RiempiParti();
    RiempiCanali();
    Aggiorna();
    if (confronto_.NumLog() > 0) grafico_->setFocus();
    tmrAllinea_.start();
}

void frmConfronto::cmdApri_Click() {
    const auto scelto = platform().AskOpen({Testo(Voce::ApriLogConfronto),
                                            platform().AppPath(),
                                            "Analysis File (*.csv)|*.csv",
                                            {},
                                            {}});
    if (scelto) Apri(*scelto);
}

/// The log of the current row goes; of the only one where there is one alone.
void frmConfronto::cmdTogli_Click() {
    const int riga = lstGiri_->currentRow();
    if (confronto_.NumLog() == 0 || (riga < 0 && confronto_.NumLog() > 1)) return;
    Ricorda();
    confronto_.Chiudi(riga < 0 ? 0 : righe_[static_cast<std::size_t>(riga)].Log);
    Dici({});
    RiempiParti();
    RiempiCanali();
    Aggiorna();
}

void frmConfronto::SpuntaGiro(int riga, bool accesa) {
    const RigaGiri& scelta = righe_[static_cast<std::size_t>(riga)];
    const GiroScelto giro{scelta.Log, scelta.Giro};
    Dici(accesa && !confronto_.Spunta(giro, true) ? InQt(Testo(Voce::GiriTutti)) : QString());
    if (!accesa) confronto_.Spunta(giro, false);
    Aggiorna();
}

void frmConfronto::MettiRiferimento(int riga) {
    const RigaGiri& scelta = righe_[static_cast<std::size_t>(riga)];
    if (scelta.Giro < 0) return;
    confronto_.Riferimento({scelta.Log, scelta.Giro});
    Dici({});
    RiempiParti();
    Aggiorna();
}

void frmConfronto::MenuGiri(int riga, const QPoint& dove) {
    const RigaGiri scelta = righe_[static_cast<std::size_t>(riga)];
    QMenu menu(this);
    QAction* riferimento = nullptr;
    if (scelta.Giro >= 0) riferimento = menu.addAction(InQt(Testo(Voce::UsaRiferimento)));
    const QAction* const togli = menu.addAction(InQt(Testo(Voce::TogliLog)));
    const QAction* const fatto = menu.exec(dove);
    if (fatto == nullptr) return;
    if (fatto == riferimento) {
        MettiRiferimento(riga);
    } else if (fatto == togli) {
        lstGiri_->setCurrentRow(riga);
        cmdTogli_Click();
    }
}

void frmConfronto::SpuntaQuadro(int riga, bool accesa) {
    std::vector<std::string> tutti = {kChiaveDistacco};
    for (const CanaleConfronto& canale : confronto_.Canali()) tutti.push_back(canale.Chiave());
    const std::string& chiave = tutti[static_cast<std::size_t>(riga)];
    std::erase(quadri_, chiave);
    if (accesa) quadri_.push_back(chiave);
    // Panes stand in the order of the list, the gained time first.
    std::stable_sort(quadri_.begin(), quadri_.end(),
                     [](const std::string& a, const std::string& b) {
                         return a == kChiaveDistacco && b != kChiaveDistacco;
                     });
    Aggiorna();
}

/// One lap at a time, so that the window answers meanwhile.
void frmConfronto::AllineaAncora() {
    if (fermato_ || !confronto_.AllineaUnAltro()) {
        tmrAllinea_.stop();
        AggiornaNotaParti();
    }
    AggiornaStato();
}

void frmConfronto::changeEvent(QEvent* evento) {
    Dialogo::changeEvent(evento);
    if (evento->type() == QEvent::PaletteChange && lblRisposta_ != nullptr) AggiornaRisposta();
}

void frmConfronto::dragEnterEvent(QDragEnterEvent* evento) {
    const auto indirizzi = evento->mimeData()->urls();
    const bool log = std::any_of(indirizzi.begin(), indirizzi.end(), [](const QUrl& uno) {
        return uno.isLocalFile() &&
               uno.toLocalFile().endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive);
    });
    if (log) evento->acceptProposedAction();
}

void frmConfronto::dropEvent(QDropEvent* evento) {
    Protetto([&] {
        for (const QUrl& uno : evento->mimeData()->urls()) {
            const QString file = uno.toLocalFile();
            if (file.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive)) {
                Apri(PercorsoDaQt(file));
            }
        }
        evento->acceptProposedAction();
    });
}

/// What is chosen now, for the next time; logs that are not open keep what was said of them.
void frmConfronto::Ricorda() {
    scelte_.PerDistanza = confronto_.PerDistanza;
    scelte_.Parti = confronto_.Parti();
    scelte_.Quadri = quadri_;
    std::vector<ScelteLog> log;
    for (int l = 0; l < confronto_.NumLog(); ++l) {
        log.push_back({confronto_.Log(l).File(), confronto_.ScelteDi(l)});
    }
    for (const ScelteLog& vecchio : scelte_.Log) {
        const bool gia = std::any_of(log.begin(), log.end(), [&](const ScelteLog& nuovo) {
            return StessoPercorso(nuovo.File, vecchio.File);
        });
        if (!gia) log.push_back(vecchio);
    }
    scelte_.Log = std::move(log);
}

void frmConfronto::done(int esito) {
    Protetto([this] {
        tmrAllinea_.stop();
        Ricorda();
        SalvaScelte(scelte_);
    });
    Dialogo::done(esito);
}

}  // namespace lapvane
