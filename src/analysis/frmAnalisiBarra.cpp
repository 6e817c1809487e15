// The tool bar of an analysis window and the dialogs that it opens.
#include <QShortcut>
#include <utility>

#include "analysis/frmAnalisi.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "reports/DatiSessione.h"
#include "reports/dlgDatiSessione.h"
#include "reports/dlgReportGiri.h"
#include "reports/dlgSetGraph.h"
#include "reports/dlgStatistiche.h"
#include "reports/dlgStatisticheMisure.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/Stampante.h"
#include "widgets/style/Icone.h"

namespace lapvane {

namespace {

/// One key of the tool bar.
struct Chiave {
    const char* Nome;
    Voce Testo;         ///< of its tool tip
    bool Interruttore;  ///< it stays pressed
    bool Gruppo;        ///< a space stands before it
    const char* Tasti;
};

constexpr std::array<Chiave, 11> kChiavi = {
    {{"ChiudiGrafico", Voce::ChiudiAnalisi, false, false, "Ctrl+W"},
     {"Statistiche", Voce::StatisticheSessione, false, true, "Ctrl+1"},
     {"StatisticheMisure", Voce::StatisticheCanali, false, false, "Ctrl+2"},
     {"ReportGiri", Voce::ReportGiri, false, false, "Ctrl+3"},
     {"Sovrapposti", Voce::GraficiSovrapposti, true, true, "Ctrl+4"},
     {"Separati", Voce::GraficiSeparati, true, false, "Ctrl+5"},
     {"SetZoom", Voce::ZoomConIlMouse, true, false, "Ctrl+6"},
     {"DimOriginali", Voce::GiroIntero, false, false, "Ctrl+0"},
     {"Stampa", Voce::StampaGrafico, false, true, "Ctrl+P"},
     {"Circuito", Voce::MappaCircuito, true, false, "Ctrl+7"},
     {"DatiSessione", Voce::DatiDellaSessione, false, false, "Ctrl+8"}}};

}  // namespace

QToolBar* frmAnalisi::CreaBarra() {
    auto* barra = new QToolBar(this);
    barra->setObjectName(QStringLiteral("Toolbar1"));
    for (const Chiave& chiave : kChiavi) {
        if (chiave.Gruppo) barra->addSeparator();
        auto* pulsante = new QToolButton(barra);
        pulsante->setObjectName(QStringLiteral("Toolbar1_") + QString::fromLatin1(chiave.Nome));
        pulsante->setIcon(Icona(chiave.Nome));
        pulsante->setAutoRaise(true);
        pulsante->setCheckable(chiave.Interruttore);
        pulsante->setFocusPolicy(Qt::TabFocus);
        pulsante->setShortcut(QKeySequence(QLatin1String(chiave.Tasti)));
        const std::string nome = chiave.Nome;
        connect(pulsante, &QToolButton::clicked, this,
                [this, nome] { Protetto([&] { Esegui(nome); }); });
        barra->addWidget(pulsante);
        chiavi_[nome] = pulsante;
    }
    didascalia_ = new Didascalia;
    didascalia_->setObjectName(QStringLiteral("didascalia"));
    barra->addWidget(didascalia_);
    chiavi_.at("Sovrapposti")->setChecked(true);
    auto* vista = new QShortcut(QKeySequence(QStringLiteral("Ctrl+U")), this);
    connect(vista, &QShortcut::activated, this, [this] { Protetto([this] { RiprendiVista(); }); });
    return barra;
}

void frmAnalisi::NomiBarra() {
    for (const Chiave& chiave : kChiavi) {
        QToolButton* const pulsante = chiavi_.at(chiave.Nome);
        pulsante->setToolTip(InQt(Testo(chiave.Testo)));
        pulsante->setAccessibleName(pulsante->toolTip());
    }
    AggiornaDidascalia();
}

/// File and session: what the graphs below are of.
void frmAnalisi::AggiornaDidascalia() {
    QStringList parti{PercorsoInQt(NomeFileDati.filename())};
    const auto aggiungi = [&parti](std::initializer_list<std::string> campi) {
        QStringList pieni;
        for (const std::string& campo : campi) {
            const QString testo = InQt(campo).simplified();
            if (!testo.isEmpty()) pieni << testo;
        }
        if (!pieni.isEmpty()) parti << pieni.join(QStringLiteral(", "));
    };
    aggiungi({DatiSessione.Sessione, DatiSessione.DataSessione});
    aggiungi({DatiSessione.Piloti});
    const std::string& lungo = DatiSessione.LunghTracciato;
    aggiungi({DatiSessione.Circuito, lungo.empty() ? lungo : lungo + " m"});
    didascalia_->Testo(parti.join(QStringLiteral("  ·  ")));
}

void frmAnalisi::Esegui(const std::string& chiave) {
    using Azione = void (*)(frmAnalisi&);
    static const std::map<std::string, Azione> kAzioni = {
        {"ChiudiGrafico", [](frmAnalisi& f) { f.analisi_->ChiudiAnalisi(); }},
        {"Statistiche", [](frmAnalisi& f) { f.MostraStatistiche(); }},
        {"StatisticheMisure", [](frmAnalisi& f) { f.MostraStatisticheMisure(); }},
        {"ReportGiri", [](frmAnalisi& f) { f.MostraReport(); }},
        {"Sovrapposti", [](frmAnalisi& f) { f.analisi_->Sovrapposti_Click(); }},
        {"Separati", [](frmAnalisi& f) { f.analisi_->Separati_Click(); }},
        {"SetZoom", [](frmAnalisi& f) { f.analisi_->SetZoom_Click(); }},
        {"DimOriginali", [](frmAnalisi& f) { f.analisi_->DimOriginali_Click(); }},
        {"Stampa", [](frmAnalisi& f) { f.StampaGrafico(); }},
        {"Circuito", [](frmAnalisi& f) { f.MostraTracciato(); }},
        {"DatiSessione", [](frmAnalisi& f) { f.MostraSessione(); }},
    };
    kAzioni.at(chiave)(*this);
}

void frmAnalisi::Impostazioni(int c) {
    analisi_->cmdSetGraph_Click(
        c, [this](ImpostazioniCanale& valori) { dlgSetGraph(valori, this).exec(); });
}

void frmAnalisi::MostraStatistiche() {
    if (!analisi_->CiSonoGiri()) return;
    dlgStatistiche(CalcolaStatistiche(analisi_->Giri()), this, NomeFileDati).exec();
}

void frmAnalisi::MostraStatisticheMisure() {
    if (analisi_->CiSonoGiri()) dlgStatisticheMisure(*analisi_, this, NomeFileDati).exec();
}

void frmAnalisi::MostraReport() {
    if (!analisi_->CiSonoGiri()) return;
    std::filesystem::path filePdf = NomeFileDati;
    filePdf.replace_extension(".pdf");
    dlgReportGiri(*analisi_, filePdf, this).exec();
}

void frmAnalisi::MostraTracciato() {
    analisi_->Circuito_Click();
    chiavi_.at("Circuito")->setChecked(analisi_->TracciatoVisibile());
}

void frmAnalisi::MostraSessione() {
    dlgDatiSessione([this] { analisi_->SalvaDatiSessione(); }, this).exec();
    if (scaricata_) return;
    analisi_->RicompilaTabella();
    AdattaGiri();
    AggiornaDidascalia();
    chiavi_.at("Circuito")->setChecked(analisi_->TracciatoVisibile());
}

void frmAnalisi::StampaGrafico(QPageLayout::Orientation verso) {
    const auto stampante =
        ScegliStampante(Testo(Voce::StampaGrafico), NomeFileDati.stem().concat(".pdf"), verso);
    if (stampante) DisegnaPagina(*stampante);
}

}  // namespace lapvane
