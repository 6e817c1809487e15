#include "device/dlgDiagnostica.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "device/SerialComm.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "shell/TabelleNomi.h"

namespace lapvane {

namespace {

constexpr int kColonne = 4;
constexpr double kGrande = 2.6;  // of the letters: a value is read from two metres
constexpr double kMedio = 1.5;
constexpr int kLambda = 14;
constexpr int kMemoriaLibera = 15;  // with all its decimals
constexpr int kLambdaUnitaria = 16;
constexpr int kMinimoValore = 60;  // pixels
constexpr int kVecchio = 1000;     // ms from which a value is old
constexpr int kPrimaLampada = 2;   // the lamps of the instrument come before

QFont Ingrandito(QFont carattere, double volte, bool grassetto) {
    carattere.setPointSizeF(carattere.pointSizeF() * volte);
    carattere.setBold(grassetto);
    return carattere;
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
    auto* campi = new QGridLayout;
    campi->setSpacing(8);
    int posto = 0;
    for (const CampoLive& campo : CampiLive) {
        if (campo.Campo == kLambdaUnitaria) continue;  // beside the first lambda
        campi->addWidget(CreaCampo(campo), posto / kColonne, posto % kColonne);
        ++posto;
    }
    for (int c = 0; c < kColonne; ++c) campi->setColumnStretch(c, 1);
    auto* sotto = new QHBoxLayout;
    sotto->addWidget(CreaAllarmi(), 1);
    sotto->addWidget(CreaIngressi(), 1);
    lblFermi_ = Etichetta(this, "lblFermi");
    lblFermi_->setFont(Ingrandito(font(), kMedio, true));
    lblFermi_->setAlignment(Qt::AlignCenter);
    QPalette cartello = palette();
    cartello.setColor(QPalette::Window, QColor(255, 191, 0));
    cartello.setColor(QPalette::WindowText, Qt::black);
    lblFermi_->setPalette(cartello);
    // The values do not move when it comes and goes.
    TieniPosto(lblFermi_);
    lblFermi_->setAutoFillBackground(true);
    lblFermi_->hide();
    for (const GruppoLive gruppo : {GruppoLive::Valori, GruppoLive::Analogici}) {
        QTimer& eta = eta_[static_cast<std::size_t>(gruppo)];
        eta.setParent(this);
        eta.setSingleShot(true);
        eta.setInterval(kVecchio);
        connect(&eta, &QTimer::timeout, this,
                [this, gruppo] { Protetto([&] { Letto(gruppo, false); }); });
    }
    auto* colonna = new QVBoxLayout(this);
    colonna->setSpacing(10);
    colonna->addWidget(lblFermi_);
    colonna->addLayout(campi, 1);
    colonna->addLayout(sotto);
    Testi();
    resize(NelloSchermo(*this, {1180, 680}));
}

QWidget* dlgDiagnostica::CreaCampo(const CampoLive& campo) {
    const auto crea = [](const char* nome, int indice, QWidget* dove) {
        QLabel* etichetta = Etichetta(dove, nome + std::to_string(indice));
        etichetta->setTextFormat(Qt::PlainText);
        return etichetta;
    };
    auto* riquadro = new QFrame(this);
    riquadro->setFrameShape(QFrame::StyledPanel);
    riquadro->setBackgroundRole(QPalette::Base);
    riquadro->setAutoFillBackground(true);
    const auto i = static_cast<std::size_t>(campo.Campo);
    nomi_[i] = crea("lblNomeCampo", campo.Campo, riquadro);
    auto* colonna = new QVBoxLayout(riquadro);
    colonna->setContentsMargins(10, 6, 10, 6);
    colonna->setSpacing(0);
    colonna->addWidget(nomi_[i]);
    auto* riga = new QHBoxLayout;
    const auto valore = [&](int indice, double volte) {
        QLabel* const testo = crea("txtValoreCampo", indice, riquadro);
        testo->setFont(Ingrandito(font(), volte, true));
        testo->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        // A value that grows a digit must not move the others.
        const QString largo = indice == kMemoriaLibera ? QStringLiteral("00.0000000000000")
                              : indice == kLambda || indice == kLambdaUnitaria
                                  ? QStringLiteral("00.000")
                                  : QStringLiteral("-00.000");
        testo->setMinimumWidth(QFontMetrics(testo->font()).horizontalAdvance(largo));
        testo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        txtValoreCampo_[static_cast<std::size_t>(indice)] = testo;
        riga->addWidget(testo, 1);
    };
    valore(campo.Campo, campo.Campo == kMemoriaLibera ? kMedio : kGrande);
    if (campo.Campo == kLambda) valore(kLambdaUnitaria, kMedio);
    lblUM_[i] = crea("lblUM", campo.Campo, riquadro);
    riga->addWidget(lblUM_[i], 0, Qt::AlignBottom);
    colonna->addLayout(riga, 1);
    return riquadro;
}

QWidget* dlgDiagnostica::CreaAllarmi() {
    auto* riquadro = Cornice(this, "fraAllarmi");
    auto* griglia = new QGridLayout(riquadro);
    griglia->setHorizontalSpacing(8);
    for (int n = 0; n < kAllarmiLive; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const std::string numero = std::to_string(n + kPrimaLampada);
        shpAllarme_[i] = new LampadaAllarme(riquadro);
        shpAllarme_[i]->setObjectName(InQt("shpAllarme" + numero));
        shpAllarme_[i]->setFont(Ingrandito(font(), kMedio, false));
        lblNomeAllarme_[i] = Etichetta(riquadro, "lblNomeAllarme" + numero);
        griglia->addWidget(shpAllarme_[i], n % kColonne, n / kColonne * 2);
        griglia->addWidget(lblNomeAllarme_[i], n % kColonne, n / kColonne * 2 + 1);
    }
    griglia->setColumnStretch(1, 1);
    griglia->setColumnStretch(3, 1);
    return riquadro;
}

QWidget* dlgDiagnostica::CreaIngressi() {
    fraIngressiAnalogici_ = Cornice(this, "fraIngressiAnalogici");
    auto* griglia = new QGridLayout(fraIngressiAnalogici_);
    for (int i = 0; i < kIngressiAnalogici; ++i) {
        auto* numero = new QLabel(QString::number(i + 1), fraIngressiAnalogici_);
        QLabel* valore = Etichetta(fraIngressiAnalogici_, "txtValoreAnalogico" + std::to_string(i));
        valore->setFont(Ingrandito(font(), kMedio, true));
        valore->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        valore->setMinimumWidth(
            QFontMetrics(valore->font()).horizontalAdvance(QStringLiteral("-00000")));
        griglia->addWidget(numero, i % kColonne, i / kColonne * 2);
        griglia->addWidget(valore, i % kColonne, i / kColonne * 2 + 1);
        txtValoreAnalogico_[static_cast<std::size_t>(i)] = valore;
    }
    griglia->setColumnStretch(1, 1);
    griglia->setColumnStretch(3, 1);
    return fraIngressiAnalogici_;
}

void dlgDiagnostica::AggiornaTesti(Mnemonica&) {
    setWindowTitle(InQt(Testo(Voce::ValoriInTempoReale)));
    lblFermi_->setText(InQt(Testo(Voce::ValoriFermi)));
    fraIngressiAnalogici_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::IngressiAnalogici))));
    findChild<QGroupBox*>(QStringLiteral("fraAllarmi"))
        ->setTitle(Mnemonica::Senza(InQt(Testo(Voce::Allarmi))));
    for (const CampoLive& campo : CampiLive) {
        const auto i = static_cast<std::size_t>(campo.Campo);
        if (nomi_[i] == nullptr) continue;
        nomi_[i]->setText(InQt(Testo(campo.Testo)));
        lblUM_[i]->setText(Unita(campo.Misura));
        txtValoreCampo_[i]->setAccessibleName(nomi_[i]->text());
    }
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
    QLabel* const valore = txtValoreCampo_.at(static_cast<std::size_t>(campo));
    // Its first digits must never be the ones that are cut off.
    valore->setText(valore->fontMetrics().elidedText(InQt(testo), Qt::ElideRight,
                                                     std::max(valore->width(), kMinimoValore)));
}

void dlgDiagnostica::Allarme(int n, bool acceso) {
    shpAllarme_.at(static_cast<std::size_t>(n))->Accendi(acceso);
}

void dlgDiagnostica::ValoreAnalogico(int ingresso, const std::string& testo) {
    txtValoreAnalogico_.at(static_cast<std::size_t>(ingresso))->setText(InQt(testo));
}

/// Old values are grey and a line says so: the status bar is behind this window.
void dlgDiagnostica::Letto(GruppoLive gruppo, bool riuscito) {
    const auto i = static_cast<std::size_t>(gruppo);
    if (riuscito) eta_[i].start();
    const bool prima = letti_[i];
    letti_[i] = riuscito;
    lblFermi_->setVisible(!letti_[0] || !letti_[1]);
    if (gruppo == GruppoLive::Valori) {
        for (QLabel* valore : txtValoreCampo_) {
            if (valore != nullptr) valore->setEnabled(riuscito);
        }
        for (LampadaAllarme* lampada : shpAllarme_) lampada->setEnabled(riuscito);
    } else {
        for (QLabel* valore : txtValoreAnalogico_) valore->setEnabled(riuscito);
    }
    if (prima == riuscito) return;
    // The poll rests: nothing else says it in the status bar.
    if (riuscito) {
        MostraComunicazione();
    } else {
        MostraNessunaComunicazione();
    }
}

}  // namespace lapvane
