// What opens under the right mouse button, and what leaves an analysis window that way.
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>

#include "analysis/compare/frmConfronto.h"
#include "analysis/frmAnalisi.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "platform/qt/TestoQt.h"
#include "reports/DisegnoGrafico.h"
#include "shell/LoadStrings.h"
#include "widgets/MenuUscita.h"

namespace lapvane {

namespace {

constexpr double kRapportoImmagine = 2.0;  // pixels of a picture to one of the screen
constexpr double kMargineImmagine = 8.0;   // pixels of the screen

}  // namespace

void frmAnalisi::MenuGiri(const QPoint& dove) {
    const QModelIndex cella = MSFlexGrid1_->indexAt(dove);
    std::vector<VoceMenu> voci;
    if (cella.isValid()) {
        const int riga = cella.row() + 1;
        voci.push_back({Voce::ConfrontaColMigliore, [this, riga] { ConfrontaColMigliore(riga); }});
    }
    voci.push_back(
        {Voce::CopiaTabella, [this] { CopiaTesto(ConTabulazioni(MSFlexGrid1_->Contenuto())); }});
    voci.push_back({Voce::SalvaTabellaCsv, [this] {
                        SalvaTabella(MSFlexGrid1_->Contenuto(),
                                     NomeAccanto(NomeFileDati, "-lap-table.csv"));
                    }});
    MostraMenu(this, MSFlexGrid1_->viewport()->mapToGlobal(dove), voci);
}

/// A lap against the best one, in a window that leaves this analysis alone.
void frmAnalisi::ConfrontaColMigliore(int riga) {
    if (!analisi_->CiSonoGiri()) return;
    frmConfronto finestra(this);
    finestra.Apri(NomeFileDati, riga);
    finestra.exec();
}

void frmAnalisi::MenuGrafico(const QPoint& dove) {
    std::vector<VoceMenu> voci{
        {Voce::CopiaImmagine, [this] { QGuiApplication::clipboard()->setImage(Immagine()); }},
        {Voce::SalvaImmagine, [this] { SalvaImmagine(); }},
        {Voce::StampaGrafico,
         [this] { StampaOAvvisa(Voce::StampaGrafico, [this] { StampaGrafico(); }); }},
        {Voce::StampaVerticale, [this] {
             StampaOAvvisa(Voce::StampaGrafico, [this] { StampaGrafico(QPageLayout::Portrait); });
         }}};
    if (CaricaUltimaVista()) voci.push_back({Voce::UltimaVista, [this] { RiprendiVista(); }});
    MostraMenu(this, dove, voci);
}

UltimaVista frmAnalisi::Vista() const {
    UltimaVista vista;
    const ElencoCanali& canali = analisi_->Canali();
    for (int c = kPrimoCanale; c <= canali.Ultimo(); ++c) {
        if (canali[c].chkGrafico) vista.Canali.push_back(c);
    }
    vista.Scala = canali.CanaleScala();
    vista.Distanza = righe_[kColonnaDistanza]->chkGrafico->isChecked();
    vista.Separati = chiavi_.at("Separati")->isChecked();
    return vista;
}

/// The clicks that lead to the view of the last time. What this log lacks is left out.
void frmAnalisi::RiprendiVista() {
    const std::optional<UltimaVista> vista = CaricaUltimaVista();
    if (!vista || SSTab1_->isHidden()) return;
    const auto premi = [](QAbstractButton* pulsante) {
        if (pulsante->isEnabled() && !pulsante->isHidden() && !pulsante->isChecked()) {
            pulsante->click();
        }
    };
    if (SSTab1_->currentIndex() != 0) SSTab1_->setCurrentIndex(0);
    premi(chiavi_.at("Sovrapposti"));
    premi(righe_[vista->Distanza ? kColonnaDistanza : kColonnaTempo]->chkGrafico);
    for (const bool spunta : {false, true}) {
        for (int c = kPrimoCanale; c <= analisi_->Canali().Ultimo(); ++c) {
            const bool scelto = std::binary_search(vista->Canali.begin(), vista->Canali.end(), c);
            if (scelto == spunta) righe_[c]->chkGrafico->setChecked(spunta);
        }
    }
    if (std::binary_search(vista->Canali.begin(), vista->Canali.end(), vista->Scala) &&
        vista->Scala <= analisi_->Canali().Ultimo()) {
        premi(righe_[vista->Scala]->optScala);
    }
    if (vista->Separati) premi(chiavi_.at("Separati"));
}

/// PNG or, where the chosen name says so, PDF: the page that is printed.
void frmAnalisi::SalvaImmagine() {
    const auto scelto = ScegliFile(Voce::SalvaImmagine, "PNG, PDF (*.png *.pdf)|*.png *.pdf",
                                   NomeAccanto(NomeFileDati, ".png"), {".png", ".pdf"});
    if (!scelto) return;
    ScriviOAvvisa([&] {
        if (UgualiSenzaMaiuscole(scelto->extension().string(), ".pdf")) {
            QtPrinter stampante(*scelto, QPageLayout::Landscape);
            stampante.Titolo(InQt(Testo(Voce::StampaGrafico)));
            return DisegnaPagina(stampante);
        }
        QByteArray png;
        QBuffer posto(&png);
        posto.open(QIODevice::WriteOnly);
        Immagine().save(&posto, "PNG");
        ScriviFile(*scelto, {png.constData(), static_cast<std::size_t>(png.size())},
                   Lavoro::ScrivereImmagine);
    });
}

/// The graph in view under the name of its lap, as for paper.
QImage frmAnalisi::Immagine() const {
    const GraficoWidget& grafico = GraficoInVista();
    const QFontMetricsF misure(grafico.font());
    const QRectF disegno(QPointF(kMargineImmagine, kMargineImmagine + misure.height()),
                         QSizeF(grafico.size()));
    const QSizeF misura(disegno.right() + kMargineImmagine, disegno.bottom() + kMargineImmagine);
    QImage immagine((misura * kRapportoImmagine).toSize(), QImage::Format_RGB32);
    immagine.fill(Qt::white);
    QPainter penna(&immagine);
    penna.scale(kRapportoImmagine, kRapportoImmagine);
    penna.setFont(grafico.font());
    penna.drawText(QPointF(kMargineImmagine, kMargineImmagine / 2 + misure.ascent()),
                   InQt(TitoloGrafico()));
    grafico.DisegnaSu(penna, disegno);
    return immagine;
}

std::string frmAnalisi::TitoloGrafico() const {
    return TestoDaPercorso(NomeFileDati.filename()) + " - " + analisi_->NomeGiro();
}

const GraficoWidget& frmAnalisi::GraficoInVista() const {
    return SSTab1_->currentIndex() == 0 ? *NTGraph1_ : *NTGraphAll_;
}

void frmAnalisi::DisegnaPagina(QtPrinter& stampante) {
    const GraficoWidget& grafico = GraficoInVista();
    TestiStampaGrafico testi =
        &grafico == NTGraphAll_ ? TestiGraficoAllarmi() : TestiGraficoCanali();
    testi.Titolo = analisi_->NomeGiro();
    testi.Log = TestoDaPercorso(NomeFileDati.filename());
    testi.Valori = ValoriAlCursore();
    const bool conCursore = !testi.Valori.empty();
    StampaControllo(stampante, testi, [&](QPainter& penna, const QRectF& area) {
        grafico.DisegnaSu(penna, area, conCursore);
    });
}

/// Time, distance and the drawn channels as the boxes show them; none where nothing is drawn.
std::vector<ValoreStampato> frmAnalisi::ValoriAlCursore() const {
    std::vector<ValoreStampato> valori;
    bool disegnati = false;
    for (int c = kColonnaTempo; c <= kUltimoCanale; ++c) {
        const RigaCanale& riga = *righe_[c];
        const bool canale = c >= kPrimoCanale;
        const std::string valore = DaQt(riga.txtValore->text());
        if (valore.empty() || (canale && !riga.chkGrafico->isChecked())) continue;
        disegnati = disegnati || canale;
        // The unit stands in brackets beside its box.
        QString unita = riga.lblUM->text();
        unita.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
        const Colore tinta = canale ? analisi_->Canali()[c].ColoreCanale : Rgb(255, 255, 255);
        valori.push_back({DaQt(riga.lblNomeCampo->text()), valore, DaQt(unita), tinta});
    }
    if (!disegnati) valori.clear();
    return valori;
}

}  // namespace lapvane
