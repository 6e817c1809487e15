#include "analysis/compare/DisegnoParti.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "analysis/compare/DisegnoNumeri.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kBarra = 3.0;
constexpr double kBarraMassima = 72.0;  // pixels; longer ones would underline the table
constexpr double kSottoBarra = 2.0;
constexpr double kFuoco = 2.0;

QString Scarto(std::int32_t centesimi) {
    return Differenza(centesimi / 100.0, 2);
}

QString NomeDi(const RigaParti& riga) {
    return riga.Lettera == 0 ? InQt(Testo(Voce::GiroIdeale)) : InQt(riga.Nome);
}

}  // namespace

DisegnoParti::DisegnoParti(QWidget* parent) : DisegnoTabella(parent) {}

int DisegnoParti::Parti() const {
    std::size_t parti = 0;
    for (const RigaParti& riga : tabella_.Righe) parti = std::max(parti, riga.Parti.size());
    return static_cast<int>(parti);
}

bool DisegnoParti::Peggiore(int parte) const {
    const auto& peggiori = tabella_.Peggiori;
    return std::find(peggiori.begin(), peggiori.end(), parte) != peggiori.end();
}

void DisegnoParti::Imposta(TabellaParti tabella) {
    tabella_ = std::move(tabella);
    parte_ = std::clamp(parte_, 0, std::max(0, Parti() - 1));
    Calcola();
    updateGeometry();
    Rinnova();
}

void DisegnoParti::Calcola() {
    const auto parti = static_cast<std::size_t>(Parti());
    migliori_.assign(parti, 0);
    massimo_ = 0;
    int giri = 0;
    const RigaParti* riferimento = nullptr;
    for (const RigaParti& riga : tabella_.Righe) {
        if (riga.Lettera == 0 || riga.Parti.size() < parti) continue;
        if (riga.Lettera == kRiferimento) riferimento = &riga;
        ++giri;
        for (std::size_t p = 0; p < parti; ++p) {
            std::int32_t& migliore = migliori_[p];
            migliore = giri == 1 ? riga.Parti[p] : std::min(migliore, riga.Parti[p]);
            if (riferimento == nullptr) continue;
            massimo_ = std::max(massimo_, std::abs(riga.Parti[p] - riferimento->Parti[p]));
        }
    }
    if (giri < 2) migliori_.assign(parti, 0);
}

DisegnoTabella::Misura DisegnoParti::Disponi(double larghezza) {
    ScrittoriQuadri& scritti = Scritti();
    const Misure misure(*this);
    double nome = scritti.Piccolo.Largo(InQt(lapvane::Testo(Voce::Giro))) - misure.Lettera;
    double parte = scritti.Forte.LargoCifre(QStringLiteral("00.00"));
    larghezzaTempo_ = scritti.Piccolo.Largo(InQt(lapvane::Testo(Voce::TempoSulGiro)));
    larghezzaDistacco_ = scritti.Piccolo.Largo(InQt(lapvane::Testo(Voce::Distacco)));
    for (const RigaParti& riga : tabella_.Righe) {
        const double senza = riga.Lettera == 0 ? misure.Lettera + kSpazio : 0.0;
        nome = std::max(nome, scritti.Corpo.Largo(NomeDi(riga)) - senza);
        for (const std::int32_t tempo : riga.Parti) {
            parte = std::max(parte, scritti.Forte.LargoCifre(TempoGiro(tempo)));
        }
        larghezzaTempo_ =
            std::max(larghezzaTempo_, scritti.Forte.LargoCifre(TempoGiro(riga.Tempo)));
        larghezzaDistacco_ =
            std::max(larghezzaDistacco_, scritti.Corpo.LargoCifre(Scarto(riga.Distacco)));
    }
    larghezzaTempo_ = std::ceil(larghezzaTempo_ + 2.0 * kSpazio);
    larghezzaDistacco_ = std::ceil(larghezzaDistacco_ + 3.0 * kSpazio);
    Misura misura;
    misura.Testata = misure.Testata;
    misura.Alta = Numero() * misure.Riga;
    misura.Fisse = std::ceil(kSpazio + misure.Lettera + kSpazio + nome + kSpazio);
    const double resto = larghezza - misura.Fisse - larghezzaTempo_ - larghezzaDistacco_;
    const int parti = std::max(1, Parti());
    larghezzaParte_ = std::max(std::ceil(parte + 2.0 * kSpazio), std::floor(resto / parti));
    // What the division leaves over goes to the time.
    larghezzaTempo_ += std::max(0.0, resto - larghezzaParte_ * parti);
    misura.Larga = misura.Fisse + larghezzaParte_ * parti + larghezzaTempo_ + larghezzaDistacco_;
    return misura;
}

QRectF DisegnoParti::Posto(int riga, int parte) const {
    const double alta = Misure(*this).Riga;
    const double y = riga < 0 ? 0.0 : Misurata().Testata + riga * alta;
    return {Misurata().Fisse + parte * larghezzaParte_, y, larghezzaParte_,
            riga < 0 ? Misurata().Testata : alta};
}

QRectF DisegnoParti::Cella(int riga, int parte) const {
    const QRectF cella = InVista(Posto(riga, parte));
    return riga < 0 ? QRectF(cella.left(), 0.0, cella.width(), Misurata().Testata) : cella;
}

void DisegnoParti::DisegnaTestata(QPainter& penna, bool fisse) {
    const Colori& colori = ColoriDi(*this);
    ScrittoriQuadri& scritti = Scritti();
    const double alta = Misurata().Testata;
    penna.setFont(scritti.Piccolo.Carattere());
    penna.setPen(colori.Text2);
    if (fisse) {
        scritti.Piccolo.Scrivi(penna, QRectF(kSpazio, 0.0, Misurata().Fisse, alta),
                               Qt::AlignLeft | Qt::AlignVCenter, InQt(lapvane::Testo(Voce::Giro)));
        return;
    }
    const QRectF tempo(Misurata().Fisse + Parti() * larghezzaParte_, 0.0, larghezzaTempo_, alta);
    const QRectF distacco(tempo.right(), 0.0, larghezzaDistacco_, alta);
    for (const auto& [posto, voce] :
         {std::pair(tempo, Voce::TempoSulGiro), std::pair(distacco, Voce::Distacco)}) {
        scritti.Piccolo.Scrivi(penna, posto.adjusted(0.0, 0.0, -kSpazio, 0.0),
                               Qt::AlignRight | Qt::AlignVCenter, InQt(lapvane::Testo(voce)));
    }
    for (int parte = 0; parte < Parti(); ++parte) {
        penna.setPen(Peggiore(parte) ? colori.Loss : colori.Text2);
        Scrittore& con = Peggiore(parte) ? scritti.Marca : scritti.Piccolo;
        con.Cifre(penna, Posto(-1, parte).adjusted(0.0, 0.0, -kSpazio, 0.0),
                  QString::number(parte + 1));
    }
}

void DisegnoParti::DisegnaRighe(QPainter& penna, bool fisse) {
    const Colori& colori = ColoriDi(*this);
    for (int riga = 0; riga < Numero(); ++riga) {
        const RigaParti& dati = Riga(riga);
        QRectF tutta = Posto(riga, 0);
        tutta.setLeft(0.0);
        tutta.setRight(std::max<double>(Misurata().Larga, viewport()->width()));
        if (dati.Lettera == 0) {
            penna.fillRect(tutta, colori.Alt);
        } else if (dati.Lettera == tabella_.Fuoco) {
            penna.fillRect(tutta, colori.SelSoft);
        }
        FiloBasso(penna, tutta, colori.Grid);
        if (fisse) {
            DisegnaFissa(penna, riga);
        } else {
            DisegnaTempi(penna, riga);
        }
    }
}

void DisegnoParti::DisegnaFissa(QPainter& penna, int riga) const {
    const Colori& colori = ColoriDi(*this);
    const RigaParti& dati = Riga(riga);
    const QRectF posto = Posto(riga, 0);
    const double lato = Misure(*this).Lettera;
    double x = kSpazio;
    if (dati.Lettera != 0) {
        LetteraGiro(
            penna,
            QRectF(x, posto.top() + std::floor((posto.height() - 1.0 - lato) / 2.0), lato, lato),
            GiroDi(colori, dati.Lettera), font());
        x += lato + kSpazio;
    }
    penna.setFont(Scritti().Corpo.Carattere());
    penna.setPen(colori.Text);
    Scritti().Corpo.Scrivi(penna, QRectF(x, posto.top(), Misurata().Fisse, posto.height()),
                           Qt::AlignLeft | Qt::AlignVCenter, NomeDi(dati));
}

/// What is lost or gained, below the figures.
void DisegnoParti::DisegnaBarra(QPainter& penna, const QRectF& cella, std::int32_t perso) const {
    if (perso == 0 || massimo_ == 0) return;
    const double piena = std::min(larghezzaParte_ - kSpazio - 4.0, kBarraMassima);
    const double larga = std::max(1.0, piena * std::abs(perso) / massimo_);
    const QRectF barra(cella.right() - kSpazio - larga, cella.bottom() - kSottoBarra - kBarra,
                       larga, kBarra);
    const Colori& colori = ColoriDi(*this);
    penna.fillRect(SuiPixel(penna, barra), perso > 0 ? colori.Loss : colori.Gain);
}

void DisegnoParti::DisegnaTempi(QPainter& penna, int riga) const {
    const Colori& colori = ColoriDi(*this);
    ScrittoriQuadri& scritti = Scritti();
    const RigaParti& dati = Riga(riga);
    const auto senzaMargine = [](const QRectF& cella) {
        return cella.adjusted(0.0, 0.0, -kSpazio, 0.0);
    };
    const auto riferimento =
        std::find_if(tabella_.Righe.begin(), tabella_.Righe.end(),
                     [](const RigaParti& r) { return r.Lettera == kRiferimento; });
    for (std::size_t p = 0; p < dati.Parti.size(); ++p) {
        const QRectF cella = Posto(riga, static_cast<int>(p));
        const bool migliore = dati.Lettera != 0 && migliori_[p] == dati.Parti[p];
        penna.setPen(migliore ? colori.Ok : colori.Text);
        (migliore ? scritti.Forte : scritti.Corpo)
            .Cifre(penna, senzaMargine(cella), TempoGiro(dati.Parti[p]));
        if (dati.Lettera == 0 || riferimento == tabella_.Righe.end()) continue;
        if (p < riferimento->Parti.size()) {
            DisegnaBarra(penna, cella, dati.Parti[p] - riferimento->Parti[p]);
        }
    }
    QRectF cella = Posto(riga, Parti());
    cella.setWidth(larghezzaTempo_);
    penna.setPen(colori.Text);
    scritti.Forte.Cifre(penna, senzaMargine(cella), TempoGiro(dati.Tempo));
    if (dati.Lettera == kRiferimento || dati.Tempo == 0) return;
    cella.moveLeft(cella.right());
    cella.setWidth(larghezzaDistacco_);
    scritti.Corpo.Cifre(penna, senzaMargine(cella), Scarto(dati.Distacco));
}

int DisegnoParti::RigaFuoco() const {
    for (int riga = 0; riga < Numero(); ++riga) {
        if (Riga(riga).Lettera != 0 && Riga(riga).Lettera == tabella_.Fuoco) return riga;
    }
    return -1;
}

void DisegnoParti::DisegnaFuoco(QPainter& penna) {
    if (Parti() == 0) {
        DisegnoTabella::DisegnaFuoco(penna);
        return;
    }
    const QRectF cella =
        Cella(RigaFuoco(), parte_)
            .intersected(QRectF(viewport()->rect()).adjusted(Misurata().Fisse, 0.0, 0.0, 0.0));
    Riquadro(penna, cella, 0.0, {}, ColoriDi(*this).Accent, kFuoco);
}

void DisegnoParti::mousePressEvent(QMouseEvent* evento) {
    if (evento->button() != Qt::LeftButton) return;
    const QPointF punto = InTabella(evento->position());
    const double giu = punto.y() - Misurata().Testata;
    const int riga = static_cast<int>(std::floor(giu / Misure(*this).Riga));  // the head: below 0
    const int parte =
        static_cast<int>(std::floor((punto.x() - Misurata().Fisse) / larghezzaParte_));
    if (riga >= Numero()) return;
    Protetto([&] {
        // A copy: whoever hears of the lap may set another table.
        const char lettera = riga < 0 ? char{0} : Riga(riga).Lettera;
        const bool conParte = parte >= 0 && parte < Parti();
        if (conParte) parte_ = parte;
        viewport()->update();
        if (lettera != 0) Q_EMIT Scelto(lettera);
        if (conParte) Q_EMIT ParteScelta(parte);
    });
}

/// The next lap above or below the one in focus; the reference and the ideal lap are never in it.
void DisegnoParti::ScegliRiga(int passo) {
    const int prima = RigaFuoco();
    int riga = prima < 0 && passo < 0 ? Numero() : prima;
    for (riga += passo; riga >= 0 && riga < Numero(); riga += passo) {
        const char lettera = Riga(riga).Lettera;
        if (lettera == 0 || lettera == kRiferimento) continue;
        Mostra(Posto(riga, parte_));
        Q_EMIT Scelto(lettera);
        return;
    }
}

void DisegnoParti::ScegliParte(int parte) {
    parte_ = std::clamp(parte, 0, std::max(0, Parti() - 1));
    Mostra(Posto(std::max(0, RigaFuoco()), parte_));
    viewport()->update();
}

void DisegnoParti::keyPressEvent(QKeyEvent* evento) {
    if ((evento->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        DisegnoTabella::keyPressEvent(evento);
        return;
    }
    switch (evento->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
            Protetto([&] { ScegliRiga(evento->key() == Qt::Key_Up ? -1 : 1); });
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
            ScegliParte(parte_ + (evento->key() == Qt::Key_Left ? -1 : 1));
            break;
        case Qt::Key_Home:
            ScegliParte(0);
            break;
        case Qt::Key_End:
            ScegliParte(Parti() - 1);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (Parti() > 0) Protetto([&] { Q_EMIT ParteScelta(parte_); });
            break;
        default:
            DisegnoTabella::keyPressEvent(evento);
    }
}

QString DisegnoParti::Testo() const {
    QStringList righe;
    QStringList titoli{InQt(lapvane::Testo(Voce::Giro))};
    for (int parte = 1; parte <= Parti(); ++parte) titoli.append(QString::number(parte));
    titoli.append(InQt(lapvane::Testo(Voce::TempoSulGiro)));
    titoli.append(InQt(lapvane::Testo(Voce::Distacco)));
    righe.append(titoli.join(QLatin1Char('\t')));
    for (const RigaParti& riga : tabella_.Righe) {
        QStringList celle{NomeDi(riga)};
        if (riga.Lettera != 0) celle[0].prepend(QLatin1Char(riga.Lettera) + QStringLiteral(" "));
        for (int parte = 0; parte < Parti(); ++parte) {
            const auto p = static_cast<std::size_t>(parte);
            celle.append(p < riga.Parti.size() ? TempoGiro(riga.Parti[p]) : QString());
        }
        celle.append(TempoGiro(riga.Tempo));
        celle.append(riga.Tempo == 0 ? QString() : Scarto(riga.Distacco));
        righe.append(celle.join(QLatin1Char('\t')));
    }
    return ConTratto(righe.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

QSize DisegnoParti::sizeHint() const {
    const Misure misure(*this);
    return {768, misure.Testata + std::max(1, Numero()) * misure.Riga};
}

}  // namespace lapvane
