#include "widgets/RigaAvvisi.h"

#include <QLineEdit>
#include <QTime>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "widgets/CasellaNumerica.h"
#include "widgets/style/Stile.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kFatto = 4000;  // ms

bool Dentro(const QLineEdit& casella, const LimitiNumero& limiti) {
    if (!casella.isEnabled() || casella.text().isEmpty()) return true;
    const auto numero = LeggiNumero(DaQt(casella.text()));
    return numero && *numero >= limiti.Minimo && *numero <= limiti.Massimo;
}

}  // namespace

QString TestoSalvato() {
    const QTime ora = QTime::currentTime();
    return InQt(Testo(Voce::SalvatoAlle))
        .arg(InQt(DueCifre(ora.hour()) + ":" + DueCifre(ora.minute())));
}

RigaAvvisi::RigaAvvisi(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("lblAvvisi"));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    quattroSecondi_.setSingleShot(true);
    quattroSecondi_.setInterval(kFatto);
    connect(&quattroSecondi_, &QTimer::timeout, this, [this] {
        Protetto([this] {
            fatto_.clear();
            Controlla();
        });
    });
}

void RigaAvvisi::Sorveglia(QLineEdit* casella, std::function<LimitiNumero()> limiti) {
    caselle_.push_back({casella, std::move(limiti)});
    connect(casella, &QLineEdit::textChanged, this, [this] { Protetto([this] { Controlla(); }); });
}

void RigaAvvisi::Sorveglia(QLineEdit* casella, const LimitiNumero& limiti) {
    Sorveglia(casella, [limiti] { return limiti; });
}

void RigaAvvisi::Controlla() {
    QString fuori;
    for (const Casella& casella : caselle_) {
        const LimitiNumero limiti = casella.Limiti();
        const bool dentro = Dentro(*casella.Campo, limiti);
        SegnaErrato(*casella.Campo, !dentro);
        // Of several the one under the hand is told.
        if (dentro || (!fuori.isEmpty() && !casella.Campo->hasFocus())) continue;
        fuori = InQt(Testo(Voce::CampoFuori)).arg(NomeCasella(*casella.Campo), InQt(limiti.Testo));
    }
    if (!fuori.isEmpty()) return Mostra(fuori, Tono::Errore);
    if (!fatto_.isEmpty()) return Mostra(fatto_, Tono::Fatto);
    Mostra(nota_, Tono::Nota);
}

void RigaAvvisi::Nota(const QString& nota) {
    nota_ = nota;
    Controlla();
}

void RigaAvvisi::Salvato() {
    fatto_ = TestoSalvato();
    quattroSecondi_.start();
    Controlla();
}

void RigaAvvisi::Mostra(const QString& testo, Tono tono) {
    const Colori& colori = ColoriDi(*this);
    const QColor& colore = tono == Tono::Errore  ? colori.Err
                           : tono == Tono::Fatto ? colori.Ok
                                                 : colori.Warn;
    if (text() != testo) setText(testo);
    if (palette().color(QPalette::WindowText) == colore) return;
    QPalette tavolozza;
    tavolozza.setColor(QPalette::WindowText, colore);
    setPalette(tavolozza);
}

}  // namespace lapvane
