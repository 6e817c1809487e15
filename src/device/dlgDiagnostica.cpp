#include "device/dlgDiagnostica.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <tuple>

#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "shell/TabelleNomi.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr double kMedio = 1.5;  // of the letters
constexpr int kLambda = 14;
constexpr int kLambdaUnitaria = 16;
constexpr int kAccelerazione = 13;
constexpr int kVecchio = 1000;    // ms from which a value is old
constexpr int kPrimaLampada = 2;  // the lamps of the instrument come before
constexpr int kSecondo = 1000;    // ms

/// The tile of the measure that an alarm lamp watches; -1: none shows it.
constexpr std::array<int, kAllarmiLive> kMisuraAllarme = {-1, -1, 3, 4, 7, 6, 5, 9};

/// The least range of a value's line by its field, in the units of the table; what is less than
/// that is noise. A turbo, pressures and temperatures have it by their unit.
double Apertura(const CampoLive& campo) {
    switch (campo.Misura) {
        case 'V':
            return 20.0;
        case 'T':
            return DatiProgetto.UMTemp == 1 ? 36.0 : 20.0;
        case 'P':
            return DatiProgetto.UMPress == 1 ? 15.0 : 1.0;
        default:
            break;
    }
    constexpr std::array<double, kCampiLive> kAltre = {
        2000.0, 0, 0, 0, 0, 0, 0, 2.0, 4.0, 5.0, 3, 0, 20.0, 1.0, 2, 1, 2.0 / 14.7};
    return kAltre.at(static_cast<std::size_t>(campo.Campo));
}

/// Width of lamps and inputs: what the longest name of an alarm and its time take.
int LargoDestra(const QWidget& finestra) {
    return std::max(240, finestra.fontMetrics().averageCharWidth() * 33);
}

QFont Ingrandito(QFont carattere, double volte) {
    carattere.setPointSizeF(carattere.pointSizeF() * volte);
    return carattere;
}

/// "12 s", from a minute on "1:05".
std::string Durata(std::int64_t ms) {
    const std::int64_t secondi = ms / kSecondo;
    if (secondi < 60) return TestoNumero(secondi) + " s";
    return TestoNumero(secondi / 60) + ":" + DueCifre(secondi % 60);
}

/// Unit of a measure by the project's choice; empty for a choice that no list has.
QString Unita(char misura) {
    const auto voce = [](const std::vector<std::string>& lista, int indice) {
        return indice >= 0 && indice < static_cast<int>(lista.size())
                   ? InQt(lista[static_cast<std::size_t>(indice)])
                   : QString();
    };
    switch (misura) {
        case 'V':
            return voce(ListaUMVelocita, DatiProgetto.UMVel);
        case 'T':
            return voce(ListaUMTemperatura, DatiProgetto.UMTemp);
        case 'P':
            return voce(ListaUMPressione, DatiProgetto.UMPress);
        default:
            return {};
    }
}

}  // namespace

dlgDiagnostica::dlgDiagnostica(QWidget* parent)
    : Dialogo("dlgDiagnostica", parent,
              Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                  Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint) {
    setModal(true);
    pannello_ = new PannelloLive(this);
    auto* destra = new QVBoxLayout;
    destra->setSpacing(kSpazioGruppi);
    destra->addWidget(CreaAllarmi(), 1);
    destra->addWidget(CreaIngressi(), 1);
    for (const GruppoLive gruppo : {GruppoLive::Valori, GruppoLive::Analogici}) {
        QTimer& eta = eta_[static_cast<std::size_t>(gruppo)];
        eta.setParent(this);
        eta.setSingleShot(true);
        eta.setInterval(kVecchio);
        connect(&eta, &QTimer::timeout, this,
                [this, gruppo] { Protetto([&] { Letto(gruppo, false); }); });
    }
    secondi_.setInterval(kSecondo);
    connect(&secondi_, &QTimer::timeout, this, [this] { Protetto([this] { DiceDaQuando(); }); });
    auto* parti = new QHBoxLayout(this);
    parti->setContentsMargins(kMargineDialogo, kMargineCornice, kMargineDialogo, kMargineCornice);
    parti->setSpacing(kSpazioGruppi);
    parti->addWidget(pannello_, 1);
    parti->addLayout(destra);
    Testi();
    resize(NelloSchermo(*this, {1320, 730}));
}

QWidget* dlgDiagnostica::CreaAllarmi() {
    fraAllarmi_ = new CorniceLive(this, "fraAllarmi");
    fraAllarmi_->setFixedWidth(LargoDestra(*this));
    auto* griglia = new QGridLayout(fraAllarmi_);
    griglia->setHorizontalSpacing(kSpazio);
    griglia->setVerticalSpacing(0);
    for (int n = 0; n < kAllarmiLive; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const std::string numero = std::to_string(n + kPrimaLampada);
        shpAllarme_[i] = new LampadaAllarme(fraAllarmi_);
        shpAllarme_[i]->setObjectName(InQt("shpAllarme" + numero));
        shpAllarme_[i]->setFont(Ingrandito(font(), kMedio));
        lblNomeAllarme_[i] = Etichetta(fraAllarmi_, "lblNomeAllarme" + numero);
        lblDaQuanto_[i] = Etichetta(fraAllarmi_, "lblDaQuanto" + numero);
        lblDaQuanto_[i]->setFont(Carattere(*this, Scrittura::Piccola));
        griglia->addWidget(shpAllarme_[i], n, 0);
        griglia->addWidget(lblNomeAllarme_[i], n, 1);
        griglia->addWidget(lblDaQuanto_[i], n, 2);
    }
    griglia->setColumnStretch(1, 1);
    return fraAllarmi_;
}

QWidget* dlgDiagnostica::CreaIngressi() {
    fraIngressiAnalogici_ = new CorniceLive(this, "fraIngressiAnalogici");
    fraIngressiAnalogici_->setFixedWidth(LargoDestra(*this));
    auto* griglia = new QGridLayout(fraIngressiAnalogici_);
    griglia->setHorizontalSpacing(kMargineCornice);
    griglia->setVerticalSpacing(0);
    for (int i = 0; i < kIngressiAnalogici; ++i) {
        auto* numero = new QLabel(QString::number(i + 1), fraIngressiAnalogici_);
        auto* valore = new CifraLive(fraIngressiAnalogici_);
        valore->setObjectName(InQt("txtValoreAnalogico" + std::to_string(i)));
        valore->setAccessibleName(numero->text());
        const QFont grande = Ingrandito(font(), kMedio);
        valore->Grande(grande, -1);
        valore->setMinimumSize(QFontMetrics(grande).horizontalAdvance(QStringLiteral("-00000")),
                               QFontMetrics(grande).ascent());
        const auto posto = static_cast<std::size_t>(i);
        barre_[posto] = new BarraIngresso(fraIngressiAnalogici_);
        griglia->addWidget(numero, i, 0);
        griglia->addWidget(barre_[posto], i, 1);
        griglia->addWidget(valore, i, 2);
        txtValoreAnalogico_[posto] = valore;
    }
    griglia->setColumnStretch(1, 1);
    return fraIngressiAnalogici_;
}

void dlgDiagnostica::AggiornaTesti(Mnemonica&) {
    setWindowTitle(InQt(Testo(Voce::ValoriInTempoReale)));
    fraIngressiAnalogici_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::IngressiAnalogici))));
    fraAllarmi_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::Allarmi))));
    constexpr std::array<Voce, PannelloLive::kRighe> kTitoli = {
        Voce::LiveGuida, Voce::LiveTemperature, Voce::LiveMiscela, Voce::LiveVettura};
    for (std::size_t r = 0; r < kTitoli.size(); ++r)
        pannello_->Titoli[r]->setText(InQt(Testo(kTitoli[r])));
    for (const CampoLive& campo : CampiLive) {
        RiquadroLive& riquadro = pannello_->Riquadro(campo.Campo);
        // Lambda has no caption of its own: it is the other form of the air-fuel ratio.
        const bool lambda = campo.Campo == kLambdaUnitaria;
        riquadro.lblNomeCampo->setText(InQt(Testo(lambda ? Voce::SondaLambda : campo.Testo)));
        riquadro.lblUM->setText(Unita(campo.Misura));
        riquadro.Apertura(Apertura(campo));
        riquadro.setToolTip(InQt(Testo(Voce::LiveUltimoMinuto)));
        riquadro.txtValoreCampo->setAccessibleName(riquadro.lblNomeCampo->text());
    }
    pannello_->Riquadro(kAccelerazione).UnitaPropria(QStringLiteral("G"));
    for (const auto& [campo, coda, unita] :
         {std::tuple{kLambda, Voce::LiveRapporto, u"A/F"},
          std::tuple{kLambdaUnitaria, Voce::LiveLambda, u"\u03BB"}}) {
        RiquadroLive& riquadro = pannello_->Riquadro(campo);
        riquadro.lblNomeCampo->Coda(InQt(Testo(coda)));
        riquadro.UnitaPropria(QString::fromUtf16(unita));
        riquadro.txtValoreCampo->setAccessibleName(riquadro.lblNomeCampo->text() +
                                                   QStringLiteral(", ") + InQt(Testo(coda)));
    }
    pannello_->Ridisponi();
    for (int n = 0; n < kAllarmiLive; ++n) {
        const auto i = static_cast<std::size_t>(n);
        lblNomeAllarme_[i]->setText(InQt(Testo(TestoAllarmeLive(n))));
        shpAllarme_[i]->setAccessibleName(lblNomeAllarme_[i]->text());
    }
}

void dlgDiagnostica::showEvent(QShowEvent* evento) {
    QDialog::showEvent(evento);
    if (avviata_) return;
    avviata_ = true;
    for (QTimer& eta : eta_) eta.start();
    ultima_.fill(platform().GetTickCount());
    QTimer::singleShot(0, this, [this] {
        inCorso_ = true;
        Protetto([this] { EseguiDiagnostica(*this); });
        inCorso_ = false;
        collegamento().Abbandonato = false;
    });
}

void dlgDiagnostica::done(int esito) {
    // A wait that still runs gives up at once.
    if (inCorso_) collegamento().Abbandonato = true;
    QDialog::done(esito);
}

void dlgDiagnostica::ValoreCampo(int campo, const std::string& testo) {
    pannello_->Riquadro(campo).Valore(InQt(testo), platform().GetTickCount());
}

void dlgDiagnostica::Allarme(int n, bool acceso) {
    const auto i = static_cast<std::size_t>(n);
    const std::int64_t ora = platform().GetTickCount();
    if (acceso != acceso_.at(i).has_value()) {
        acceso_[i] = acceso ? std::optional(ora) : std::nullopt;
        shpAllarme_[i]->Accendi(acceso);
        lblNomeAllarme_[i]->setFont(Carattere(*this, acceso ? Scrittura::Forte : Scrittura::Corpo));
        if (kMisuraAllarme[i] >= 0) pannello_->Riquadro(kMisuraAllarme[i]).Allarme(acceso);
    }
    lblDaQuanto_[i]->setText(acceso ? InQt(Durata(ora - *acceso_[i])) : QString());
}

void dlgDiagnostica::ValoreAnalogico(int ingresso, const std::string& testo) {
    const auto i = static_cast<std::size_t>(ingresso);
    txtValoreAnalogico_.at(i)->setText(InQt(testo));
    barre_[i]->Valore(LeggiIntero(testo).value_or(0));
}

/// Old values are grey and their group says since when: the status bar is behind this window.
void dlgDiagnostica::Letto(GruppoLive gruppo, bool riuscito) {
    const auto i = static_cast<std::size_t>(gruppo);
    if (riuscito) {
        eta_[i].start();
        ultima_[i] = platform().GetTickCount();
    }
    const bool prima = letti_[i];
    letti_[i] = riuscito;
    if (gruppo == GruppoLive::Valori) {
        for (const CampoLive& campo : CampiLive) pannello_->Riquadro(campo.Campo).Fermo(!riuscito);
        for (LampadaAllarme* lampada : shpAllarme_) lampada->setEnabled(riuscito);
        fraAllarmi_->Fermo(!riuscito);
    } else {
        for (QLabel* valore : txtValoreAnalogico_) valore->setEnabled(riuscito);
        fraIngressiAnalogici_->Fermo(!riuscito);
    }
    DiceDaQuando();
    if (prima == riuscito) return;
    // The poll rests: nothing else says it in the status bar.
    if (riuscito) {
        MostraComunicazione();
    } else {
        MostraNessunaComunicazione();
    }
}

void dlgDiagnostica::DiceDaQuando() {
    const std::int64_t ora = platform().GetTickCount();
    for (const GruppoLive gruppo : {GruppoLive::Valori, GruppoLive::Analogici}) {
        const auto i = static_cast<std::size_t>(gruppo);
        const QString testo =
            InQt(Testo(Voce::ValoriFermi)).arg(InQt(TestoNumero((ora - ultima_[i]) / kSecondo)));
        const bool valori = gruppo == GruppoLive::Valori;
        for (QLabel* riga : {valori ? pannello_->lblFermi : fraIngressiAnalogici_->lblFermi,
                             valori ? fraAllarmi_->lblFermi : nullptr}) {
            if (riga == nullptr) continue;
            riga->setVisible(!letti_[i]);
            riga->setText(testo);
        }
    }
    if (letti_[0] && letti_[1]) {
        secondi_.stop();
    } else if (!secondi_.isActive()) {
        secondi_.start();
    }
}

}  // namespace lapvane
