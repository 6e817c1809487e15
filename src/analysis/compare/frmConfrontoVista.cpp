// What the comparison shows: lists, answer, panes, tables, map.
#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>
#include <cmath>

#include "analysis/compare/DisegnoElenco.h"
#include "analysis/compare/DisegnoIstogramma.h"
#include "analysis/compare/DisegnoMappa.h"
#include "analysis/compare/DisegnoNumeri.h"
#include "analysis/compare/DisegnoParti.h"
#include "analysis/compare/DisegnoQuadri.h"
#include "analysis/compare/DisegnoValori.h"
#include "analysis/compare/DisegnoXY.h"
#include "analysis/compare/FasceConfronto.h"
#include "analysis/compare/frmConfronto.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "reports/Circuiti.h"
#include "shell/LoadStrings.h"
#include "widgets/BarraTasti.h"
#include "widgets/Scheda.h"
#include "widgets/StrisciaAvviso.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kPassiMappa = 400;

QString T(Voce voce) {
    return InQt(Testo(voce));
}

QString Grassetto(const QString& testo) {
    return QStringLiteral("<b>") + testo.toHtmlEscaped() + QStringLiteral("</b>");
}

QString Colorato(const QString& testo, const QColor& colore) {
    return QStringLiteral("<b><span style=\"color:") + colore.name() + QStringLiteral("\">") +
           testo.toHtmlEscaped() + QStringLiteral("</span></b>");
}

}  // namespace

QString frmConfronto::NomeLog(int log) const {
    const LogAperto& suo = confronto_.Log(log);
    const std::string& giorno = suo.Sessione().DataSessione;
    const QString file = PercorsoInQt(suo.File().stem());
    return giorno.empty() ? file : InQt(giorno) + QStringLiteral(" · ") + file;
}

/// "Lap 9 (Bianchi, 16 May)": who and when only where two logs are open.
QString frmConfronto::NomeGiro(GiroScelto giro, bool conLog) const {
    const QString nome = InQt(Testo(Voce::RigaGiro)) + QString::number(confronto_.Numero(giro));
    if (!conLog || confronto_.NumLog() < 2) return nome;
    const RecordSessione& sessione = confronto_.Log(giro.Log).Sessione();
    QString chi = InQt(sessione.Piloti);
    if (!sessione.DataSessione.empty()) {
        chi += (chi.isEmpty() ? QString() : QStringLiteral(", ")) + InQt(sessione.DataSessione);
    }
    if (chi.isEmpty()) chi = PercorsoInQt(confronto_.Log(giro.Log).File().stem());
    return nome + QStringLiteral(" (") + chi + QStringLiteral(")");
}

QString frmConfronto::NomeParte(int parte) const {
    const bool settori = confronto_.Parti() == 0 && confronto_.ConSettori();
    return T(settori ? Voce::SettoreNumero : Voce::ParteNumero).arg(parte + 1);
}

QString frmConfronto::Perche(PercheNo esito) const {
    switch (esito) {
        case PercheNo::SenzaTempo:
            return T(Voce::GiroSenzaTempo);
        case PercheNo::SenzaRighe:
            return T(Voce::GiroSenzaRighe);
        case PercheNo::Interrotto:
            return T(Voce::GiroInterrotto);
        case PercheNo::SenzaDistanza:
        case PercheNo::Allineato:  // its numbers make no way
            return T(Voce::GiroSenzaDistanza);
    }
    return {};
}

std::vector<std::string> frmConfronto::ChiaviQuadri() const {
    return quadri_;
}

void frmConfronto::Aggiorna() {
    tabella_ = confronto_.Tabella();
    AggiornaTitolo();
    AggiornaElenchi();
    AggiornaQuadri();
    AggiornaRisposta();
    AggiornaAvviso();
    AggiornaTabelle();
    AggiornaCursore();
    AggiornaMappa();
    AggiornaXY();
    AggiornaIstogramma();
    AggiornaStato();
}

void frmConfronto::AggiornaElenchi() {
    std::vector<VoceElenco> giri;
    righe_.clear();
    const std::int32_t migliore = confronto_.Migliore();
    for (int l = 0; l < confronto_.NumLog(); ++l) {
        const LogAperto& log = confronto_.Log(l);
        QStringList sotto;
        if (!log.Sessione().Sessione.empty()) sotto << InQt(log.Sessione().Sessione);
        if (!log.Sessione().Piloti.empty()) sotto << InQt(log.Sessione().Piloti);
        sotto << T(Voce::SoloGiriLog).arg(log.Giri().size());
        VoceElenco testata;
        testata.Testata = true;
        testata.Nome = NomeLog(l);
        testata.Sotto = sotto.join(QStringLiteral(" · "));
        testata.Suggerimento = PercorsoInQt(log.File());
        giri.push_back(testata);
        righe_.push_back({l, -1});
        for (int i = 0; i < std::ssize(log.Giri()); ++i) {
            const GiroScelto giro{l, i};
            const std::int32_t tempo = confronto_.Giro(giro).Centesimi;
            VoceElenco voce;
            voce.Nome = NomeGiro(giro, false);
            voce.ConLettera = true;
            voce.Lettera = confronto_.Lettera(giro);
            voce.Spuntata = voce.Lettera != 0;
            voce.Fuoco = voce.Lettera != 0 && voce.Lettera == confronto_.Fuoco();
            voce.Valore = tempo > 0 ? TempoGiro(tempo) : QStringLiteral("–");
            voce.Forte = tempo > 0 && tempo == migliore;
            if (confronto_.Esito(giro) != PercheNo::Allineato) {
                voce.Suggerimento = Perche(confronto_.Esito(giro));
                voce.Destra = QStringLiteral("▲");
            } else if (tempo > 0 && tempo != migliore) {
                voce.Destra = Differenza((tempo - migliore) / 100.0, 2);
            }
            giri.push_back(voce);
            righe_.push_back({l, i});
        }
    }
    lstGiri_->Imposta(std::move(giri));
    cmdApri_->setVisible(confronto_.NumLog() == 0);
    const auto scelti = confronto_.Accanto().size();
    schedaGiri_->Nota(confronto_.NumLog() == 0
                          ? QString()
                          : QString::number(scelti) + QLatin1Char(' ') + T(Voce::SceltiDi));

    std::vector<VoceElenco> quadri;
    const auto aggiungi = [&](const std::string& chiave, const std::string& nome,
                              const std::string& unita) {
        VoceElenco voce;
        voce.Nome = InQt(nome);
        voce.Destra = InQt(unita);
        voce.Spuntata = std::find(quadri_.begin(), quadri_.end(), chiave) != quadri_.end();
        quadri.push_back(voce);
    };
    if (confronto_.NumLog() > 0) aggiungi(kChiaveDistacco, Testo(Voce::TempoGuadagnatoPerso), "s");
    for (const CanaleConfronto& canale : confronto_.Canali()) {
        aggiungi(canale.Chiave(), canale.Nome, canale.Unita);
    }
    const auto accesi = std::count_if(quadri.begin(), quadri.end(),
                                      [](const VoceElenco& voce) { return voce.Spuntata; });
    schedaQuadri_->Nota(quadri.empty() ? QString()
                                       : QStringLiteral("%1/%2").arg(accesi).arg(quadri.size()));
    lstQuadri_->Imposta(std::move(quadri));
}

void frmConfronto::AggiornaQuadri() {
    grafico_->Invito(confronto_.NumLog() == 0 ? T(Voce::ApriOTrascina) : T(Voce::SpuntaCanale));
    grafico_->Imposta(confronto_.Quadri(ChiaviQuadri()));
}

void frmConfronto::AggiornaRisposta() {
    const Colori& colori = ColoriDi(*this);
    const auto primo = confronto_.Di(kRiferimento);
    const auto fuoco = confronto_.Fuoco() != 0 ? confronto_.Di(confronto_.Fuoco()) : std::nullopt;
    QString frase = primo ? QString() : T(Voce::ApriOTrascina).toHtmlEscaped();
    std::vector<std::pair<int, std::int32_t>> perse;
    const TabellaParti& tabella = tabella_;
    if (primo && !fuoco) {
        frase = T(Voce::RispostaSolo).toHtmlEscaped().arg(Grassetto(NomeGiro(*primo, true)));
    } else if (primo && fuoco) {
        const std::int32_t suo = confronto_.Giro(*fuoco).Centesimi;
        const std::int32_t riferimento = confronto_.Giro(*primo).Centesimi;
        if (suo > 0 && riferimento > 0) {
            const double secondi = std::abs(suo - riferimento) / 100.0;
            const QString quanto = Numero(secondi, 2) + QStringLiteral(" s");
            const Voce voce = suo > riferimento   ? Voce::RispostaLento
                              : suo < riferimento ? Voce::RispostaVeloce
                                                  : Voce::RispostaPari;
            frase = T(voce).toHtmlEscaped();
            frase.replace(QStringLiteral("%1"), Grassetto(NomeGiro(*fuoco, true)))
                .replace(QStringLiteral("%2"),
                         Colorato(quanto, suo > riferimento ? colori.Loss : colori.Gain))
                .replace(QStringLiteral("%3"), Grassetto(NomeGiro(*primo, true)));
        }
        for (const RigaParti& riga : tabella.Righe) {
            if (riga.Lettera != confronto_.Fuoco()) continue;
            for (const int parte : tabella.Peggiori) {
                const auto p = static_cast<std::size_t>(parte);
                perse.emplace_back(parte, riga.Parti[p] - tabella.Righe.front().Parti[p]);
            }
            if (!riga.Parti.empty()) {
                frase += QLatin1Char(' ') +
                         T(perse.empty() ? Voce::NullaPerso : Voce::SiPerdeIn).toHtmlEscaped();
            }
        }
    }
    lblRisposta_->setText(frase);
    for (std::size_t i = 0; i < cmdParte_.size(); ++i) {
        cmdParte_[i]->setVisible(i < perse.size());
        if (i >= perse.size()) continue;
        cmdParte_[i]->setText(NomeParte(perse[i].first) + QStringLiteral(": ") +
                              Differenza(perse[i].second / 100.0, 2) + QStringLiteral(" s"));
        QPalette paletta = palette();
        paletta.setColor(QPalette::ButtonText, colori.Loss);
        cmdParte_[i]->setPalette(paletta);
        cmdParte_[i]->setFont(Carattere(*this, Scrittura::Forte));
    }
    lblIdeale_->clear();
    if (!tabella.Righe.empty() && tabella.Righe.back().Lettera == 0) {
        lblIdeale_->setText(T(Voce::GiroIdeale).toHtmlEscaped() + QLatin1Char(' ') +
                            Grassetto(TempoGiro(tabella.Righe.back().Tempo)));
    }
}

/// What stands in the way of the comparison, the gravest first; the strip is there only then.
void frmConfronto::AggiornaAvviso() {
    QStringList righe;
    if (!guaio_.isEmpty()) righe << guaio_;
    for (int l = 0; l < confronto_.NumLog(); ++l) {
        const LogAperto& log = confronto_.Log(l);
        if (log.Giri().empty()) {
            righe << NomeLog(l) + QStringLiteral(": ") + T(Voce::LogSenzaGiri);
        } else if (!log.ConTempi()) {
            righe << NomeLog(l) + QStringLiteral(": ") + T(Voce::LogSenzaTempi);
        }
    }
    const auto primo = confronto_.Di(kRiferimento);
    for (const char lettera : std::string(1, kRiferimento) + confronto_.Accanto()) {
        const auto giro = confronto_.Di(lettera);
        if (!giro) continue;
        if (confronto_.Log(giro->Log).ConTempi() && confronto_.Allineato(*giro) == nullptr) {
            righe << T(Voce::GiroNonAllineato)
                         .arg(NomeGiro(*giro, true), Perche(confronto_.Esito(*giro)));
        }
        if (primo && lettera != kRiferimento && confronto_.TracciatiDiversi(*primo, *giro)) {
            righe << T(Voce::AltroTracciato).arg(NomeGiro(*giro, true));
        }
    }
    avviso_->Mostra(righe);
}

void frmConfronto::AggiornaTabelle() {
    notaDi_ = {-1, 0};
    AggiornaNotaParti();
    parti_->Imposta(tabella_);
}

/// The best of all laps, not only of those in the table. Made anew only when it can have changed:
/// a log has hundreds of laps.
void frmConfronto::AggiornaNotaParti() {
    const auto primo = confronto_.Di(kRiferimento);
    const std::pair<int, int> di{primo ? primo->Log : -1,
                                 primo ? confronto_.NumAllineati(primo->Log) : 0};
    if (di == notaDi_) return;
    notaDi_ = di;
    QStringList nota;
    tabella_.Continuo = confronto_.Continuo();
    if (tabella_.Continuo > 0) {
        nota << T(Voce::MiglioreContinuo) + QLatin1Char(' ') + TempoGiro(tabella_.Continuo);
    }
    if (const std::int32_t tutti = confronto_.IdealeDiTutti(); tutti > 0) {
        nota << T(Voce::IdealeTutti) + QLatin1Char(' ') + TempoGiro(tutti);
    }
    schedaParti_->Nota(nota.join(QStringLiteral("   ")));
}

void frmConfronto::AggiornaCursore() {
    const TabellaCursore tabella =
        confronto_.AlCursore(ChiaviQuadri(), grafico_->Cursore(), grafico_->Secondo());
    valori_->Imposta(tabella, confronto_.Fuoco());
    const QString dove = valori_->Titolo();
    schedaValori_->Titolo(dove.isEmpty() ? T(Voce::CursoreConfronto) : dove);
    schedaValori_->Nota(valori_->Nota());
    const auto primo = confronto_.Di(kRiferimento);
    const GiroAllineato* riferimento = primo ? confronto_.Allineato(*primo) : nullptr;
    if (riferimento != nullptr) mappa_->Cursore(tabella.Metri / riferimento->Lunghezza);
    AggiornaAnello();
}

/// The ring in the XY picture is where the lap in focus is at the cursor.
void frmConfronto::AggiornaAnello() {
    if (schede_->currentWidget() != xy_->parentWidget()) return;
    const char lettera = confronto_.Fuoco() != 0 ? confronto_.Fuoco() : kRiferimento;
    const auto valore = [&](const std::string& chiave) -> std::optional<double> {
        for (const RigaCursore& riga :
             confronto_.AlCursore({chiave}, grafico_->Cursore(), std::nullopt).Righe) {
            if (riga.Lettera == lettera && !riga.Canali.empty() && riga.Canali[0].Esiste) {
                return riga.Canali[0].Qui;
            }
        }
        return std::nullopt;
    };
    const auto x = valore(scelte_.X);
    const auto y = valore(scelte_.Y);
    xy_->Cursore(x && y ? std::optional(PuntoGrafico{*x, *y}) : std::nullopt);
}

void frmConfronto::AggiornaMappa() {
    DatiMappa dati;
    const auto primo = confronto_.Di(kRiferimento);
    QString circuito;
    if (primo) {
        circuito = InQt(confronto_.Log(primo->Log).Sessione().Circuito);
        if (const auto punti = LeggiFileTracciato(confronto_.Log(primo->Log).Sessione().Circuito)) {
            dati.Punti = *punti;
        }
        const GiroAllineato* riferimento = confronto_.Allineato(*primo);
        if (riferimento != nullptr) {
            for (const double metri : confronto_.Confini()) {
                dati.Confini.push_back(metri / riferimento->Lunghezza);
            }
            schedaMappa_->Nota(QString::number(std::lround(riferimento->Lunghezza)) +
                               QStringLiteral(" m"));
        }
        dati.Peggiori = tabella_.Peggiori;
        dati.Tempo = scelte_.Mappa.empty();
        dati.Valori = dati.Tempo ? confronto_.RitmoPerCentoMetri(kPassiMappa)
                                 : confronto_.LungoIlGiro(scelte_.Mappa, kPassiMappa);
        dati.Nome = T(Voce::MappaConfronto) + QLatin1Char(' ') + circuito;
    }
    if (!dati.Tempo && !dati.Valori.empty()) {
        const auto [minimo, massimo] = std::minmax_element(dati.Valori.begin(), dati.Valori.end());
        const int decimali = *massimo - *minimo < 10.0 ? 2 : 0;
        dati.Minimo = Numero(*minimo, decimali);
        dati.Massimo = Numero(*massimo, decimali);
    }
    dati.Perde = T(Voce::MappaPerde);
    dati.Uguale = T(Voce::MappaPari);
    dati.Guadagna = T(Voce::MappaGuadagna);
    if (primo) dati.Invito = T(Voce::SenzaTracciato);
    const QString contro = confronto_.Fuoco() == 0 ? QString()
                                                   : QStringLiteral("   %1 %2 R")
                                                         .arg(QLatin1Char(confronto_.Fuoco()))
                                                         .arg(T(Voce::ControGiro));
    schedaMappa_->Titolo((circuito.isEmpty() ? T(Voce::MappaConfronto) : circuito) + contro);
    mappa_->Imposta(std::move(dati));
}

/// "0 to 2760 m, as on the graph".
QString frmConfronto::TrattoInVista() const {
    const bool metri = confronto_.PerDistanza;
    const auto testo = [&](double x) {
        return metri ? QString::number(std::lround(x)) : Numero(x, 2);
    };
    return T(Voce::ComeNelGrafico)
        .arg(testo(grafico_->Da()),
             testo(grafico_->A()) + (metri ? QStringLiteral(" m") : QStringLiteral(" s")));
}

void frmConfronto::AggiornaXY() {
    lblTrattoXY_->setText(TrattoInVista());
    if (schede_->currentWidget() != xy_->parentWidget()) return;
    const QuadroConfronto x = confronto_.Quadro(scelte_.X);
    const QuadroConfronto y = confronto_.Quadro(scelte_.Y);
    DatiXY dati;
    dati.X = {InQt(x.Titolo), InQt(x.Unita)};
    dati.Y = {InQt(y.Titolo), InQt(y.Unita)};
    dati.Fuoco = confronto_.Fuoco();
    dati.Linea = scelte_.Linea;
    dati.Nota = T(Voce::DieciPunti);
    dati.Invito = T(Voce::ApriOTrascina);
    for (PuntiXY& punti : Accoppia(x, y, grafico_->Da(), grafico_->A())) {
        const auto giro = confronto_.Di(punti.Lettera);
        dati.Serie.push_back({giro ? NomeGiro(*giro, false) : QString(), std::move(punti)});
    }
    xy_->Imposta(std::move(dati));
    AggiornaAnello();
}

void frmConfronto::AggiornaIstogramma() {
    lblTrattoFasce_->setText(TrattoInVista());
    if (schede_->currentWidget() != istogramma_->parentWidget()) return;
    const QuadroConfronto canale = confronto_.Quadro(scelte_.Istogramma);
    const auto passi = PassiFasce(canale, grafico_->Da(), grafico_->A());
    const int scelto = std::max(cboFasce_->currentIndex(), 0);
    cboFasce_->clear();
    for (const double passo : passi) {
        cboFasce_->addItem(
            T(Voce::FasciaOgni)
                .arg(QString::number(passo, 'g', 6) + QLatin1Char(' ') + InQt(canale.Unita)));
    }
    cboFasce_->setCurrentIndex(std::min(scelto, cboFasce_->count() - 1));
    DatiIstogramma dati;
    dati.Titolo = T(Voce::PercentualeTempo);
    dati.Tratto = T(Voce::FasciaTratto);
    dati.Invito = T(Voce::ApriOTrascina);
    dati.Fasce = Ripartisci(canale, grafico_->Da(), grafico_->A(),
                            passi[static_cast<std::size_t>(cboFasce_->currentIndex())]);
    istogramma_->Imposta(std::move(dati));
}

void frmConfronto::AggiornaTitolo() {
    QString titolo = T(Voce::VoceConfronto);
    if (const auto primo = confronto_.Di(kRiferimento)) {
        const std::string& circuito = confronto_.Log(primo->Log).Sessione().Circuito;
        if (!circuito.empty()) titolo += QStringLiteral(" – ") + InQt(circuito);
    }
    setWindowTitle(titolo);
}

void frmConfronto::AggiornaStato() {
    int giri = 0;
    int fatti = 0;
    for (int l = 0; l < confronto_.NumLog(); ++l) {
        giri += static_cast<int>(confronto_.Log(l).Giri().size());
        fatti += confronto_.NumAllineati(l);
    }
    const bool lavora = tmrAllinea_.isActive() && fatti < giri && !fermato_;
    progresso_->setVisible(lavora);
    cmdFerma_->setVisible(lavora);
    progresso_->setRange(0, std::max(giri, 1));
    progresso_->setValue(fatti);
    const QString lungo = T(Voce::AllineaGiri) + QStringLiteral(" %1/%1").arg(giri);
    lblStato_->setMinimumWidth(lavora ? lblStato_->fontMetrics().horizontalAdvance(lungo) : 0);
    if (lavora) {
        lblStato_->setText(T(Voce::AllineaGiri) + QStringLiteral(" %1/%2").arg(fatti).arg(giri));
    } else if (confronto_.NumLog() == 0) {
        lblStato_->clear();
    } else {
        QString testo =
            T(confronto_.NumLog() == 1 ? Voce::StatoConfrontoUno : Voce::StatoConfronto);
        testo.replace(QStringLiteral("%1"), QString::number(confronto_.NumLog()))
            .replace(QStringLiteral("%2"), QString::number(giri));
        lblStato_->setText(testo);
    }
}

}  // namespace lapvane
