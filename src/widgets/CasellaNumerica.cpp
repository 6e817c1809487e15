#include "widgets/CasellaNumerica.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFocusEvent>
#include <QLabel>
#include <QTimer>
#include <utility>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "widgets/Dialogo.h"

namespace lapvane {

namespace {

constexpr Voce kTestoNumeroErrato = Voce::NumeroNonValido;
constexpr char kSenzaControllo[] = "lapvaneSenzaControllo";

bool ChiedeControllo(const QObject* controllo) {
    return controllo == nullptr || !controllo->property(kSenzaControllo).toBool();
}

}  // namespace

QString NomeCasella(const QWidget& casella) {
    QString nome = casella.accessibleName();
    for (const QLabel* etichetta : casella.window()->findChildren<QLabel*>()) {
        if (nome.isEmpty() && etichetta->buddy() == &casella)
            nome = etichetta->text().remove(QLatin1Char('&'));
    }
    return nome;
}

void Riscrivi(QLineEdit& casella, const QString& testo) {
    if (casella.text() == testo) return;
    casella.selectAll();
    if (testo.isEmpty()) {
        casella.del();
    } else {
        casella.insert(testo);
    }
}

void MostraNumeroErrato(const QWidget& casella) {
    platform().MsgBox(Testo(kTestoNumeroErrato) + "\r\n" + DaQt(NomeCasella(casella)), Buttons::Ok,
                      Icon::Warning, DaQt(casella.window()->windowTitle()));
}

CasellaNumerica::CasellaNumerica(QWidget* parent) : QLineEdit(parent) {}

void CasellaNumerica::SenzaControllo(QWidget* controllo) {
    controllo->setProperty(kSenzaControllo, true);
}

bool CasellaNumerica::Lascia(const QWidget& finestra) {
    auto* casella = qobject_cast<CasellaNumerica*>(finestra.focusWidget());
    return casella == nullptr || casella->Esci();
}

void CasellaNumerica::NonRestareInUnaErrata(const QWidget& finestra, QWidget& altrove) {
    auto* casella = qobject_cast<CasellaNumerica*>(finestra.focusWidget());
    if (casella == nullptr || casella->Valida()) return;
    casella->esente_ = true;
    altrove.setFocus(Qt::OtherFocusReason);
    casella->esente_ = false;
}

bool CasellaNumerica::Esci() {
    if (rifiutata_) return false;
    if (!Valida()) {
        clear();
        Avvisa();
        return false;
    }
    if (PersoFuoco) PersoFuoco();
    return true;
}

bool CasellaNumerica::Valida() const {
    return LeggiInt16(DaQt(text())).has_value();
}

void CasellaNumerica::Avvisa() {
    MostraNumeroErrato(*this);
}

/// The message waits until the event that moved the focus has run to its end: a message box inside
/// a mouse press would leave the pressed button down.
void CasellaNumerica::Rifiuta() {
    clear();
    const bool giaRifiutata = std::exchange(rifiutata_, true);
    setFocus(Qt::OtherFocusReason);
    if (giaRifiutata) return;
    QTimer::singleShot(0, this, [this] {
        Protetto([this] {
            rifiutata_ = false;
            QuandoLibero(this, this, [this] {
                if (isVisible()) Avvisa();
            });
        });
    });
}

void CasellaNumerica::focusInEvent(QFocusEvent* evento) {
    QLineEdit::focusInEvent(evento);
    qApp->installEventFilter(this);
}

void CasellaNumerica::focusOutEvent(QFocusEvent* evento) {
    QLineEdit::focusOutEvent(evento);
    const Qt::FocusReason motivo = evento->reason();
    // A box that was refused takes the focus back; the one that had it for that moment was not
    // left.
    const auto* altra = qobject_cast<CasellaNumerica*>(QApplication::focusWidget());
    const bool resta = esente_ || motivo == Qt::ActiveWindowFocusReason ||
                       motivo == Qt::PopupFocusReason || motivo == Qt::MenuBarFocusReason ||
                       (altra != nullptr && altra->rifiutata_);
    if (!resta && isVisible() && isEnabled()) {
        if (ChiedeControllo(QApplication::focusWidget()) && !Valida()) return Rifiuta();
        if (PersoFuoco) Protetto(PersoFuoco);
    }
    qApp->removeEventFilter(this);
}

bool CasellaNumerica::eventFilter(QObject* oggetto, QEvent* evento) {
    const bool premuto = evento->type() == QEvent::MouseButtonPress;
    if (!premuto && evento->type() != QEvent::Shortcut) return false;
    const auto* controllo = qobject_cast<QWidget*>(oggetto);
    if (controllo == nullptr || controllo == this || controllo->window() != window()) return false;
    // The press that a refused box has already answered.
    if (premuto) return rifiutata_ && ChiedeControllo(controllo);
    // An Alt letter presses a button without taking the focus there.
    if (!hasFocus() || !ChiedeControllo(controllo)) return false;
    if (qobject_cast<const QAbstractButton*>(controllo) == nullptr) return false;
    if (!Valida()) Rifiuta();
    return rifiutata_;
}

}  // namespace lapvane
