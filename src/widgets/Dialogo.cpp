#include "widgets/Dialogo.h"

#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/Protetto.h"
#include "widgets/Rotella.h"

namespace lapvane {

void TieniPosto(QWidget* widget) {
    QSizePolicy regola = widget->sizePolicy();
    regola.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(regola);
}

QSize NelloSchermo(const QWidget& finestra, QSize misura) {
    const QScreen* schermo = finestra.screen();
    return misura.boundedTo(schermo != nullptr ? schermo->availableSize() : QSize(1366, 768));
}

void PortaNelloSchermo(QWidget& finestra) {
    const QScreen* schermo = finestra.screen();
    if (schermo == nullptr) return;
    const QRect libero = schermo->availableGeometry();
    const QRect cornice = finestra.frameGeometry();
    const int x =
        std::max(libero.left(), std::min(cornice.x(), libero.right() + 1 - cornice.width()));
    const int y =
        std::max(libero.top(), std::min(cornice.y(), libero.bottom() + 1 - cornice.height()));
    if (QPoint(x, y) != cornice.topLeft()) finestra.move(x, y);
}

QLabel* Etichetta(QWidget* dove, std::string_view nome, QWidget* compagno) {
    auto* etichetta = new QLabel(dove);
    etichetta->setObjectName(InQt(nome));
    etichetta->setBuddy(compagno);
    return etichetta;
}

QGroupBox* Cornice(QWidget* dove, std::string_view nome) {
    auto* cornice = new QGroupBox(dove);
    cornice->setObjectName(InQt(nome));
    return cornice;
}

void QuandoLibero(const QObject* chi, QObject* vivo, std::function<void()> azione) {
    principale().QuandoLibero(chi, [vivo = QPointer<QObject>(vivo), azione = std::move(azione)] {
        if (vivo != nullptr) azione();
    });
}

Dialogo::Dialogo(const char* nome, QWidget* parent, Qt::WindowFlags tipo) : QDialog(parent, tipo) {
    setObjectName(QString::fromLatin1(nome));
    CalcolaBaseTesti();
}

void Dialogo::Testi() {
    seguono_ = true;
    CalcolaBaseTesti();
    Mnemonica lettere;
    AggiornaTesti(lettere);
}

QPushButton* Dialogo::CreaPulsante(const char* nome, std::function<void()> azione) {
    auto* pulsante = new QPushButton(this);
    pulsante->setObjectName(QString::fromLatin1(nome));
    connect(pulsante, &QPushButton::clicked, this,
            [azione = std::move(azione)] { Protetto(azione); });
    return pulsante;
}

QPushButton* Dialogo::CreaOK(std::function<void()> ok) {
    OKButton_ = CreaPulsante("OKButton", std::move(ok));
    OKButton_->setText(QStringLiteral("OK"));
    OKButton_->setDefault(true);
    return OKButton_;
}

QPushButton* Dialogo::CreaCancel() {
    CancelButton_ = CreaPulsante("CancelButton", [this] { reject(); });
    return CancelButton_;
}

QHBoxLayout* Dialogo::RigaPulsanti(QWidget* davanti, std::initializer_list<QPushButton*> quali) {
    auto* riga = new QHBoxLayout;
    if (davanti != nullptr) {
        riga->addWidget(davanti, 1);
    } else {
        riga->addStretch(1);
    }
    for (QPushButton* pulsante : quali) riga->addWidget(pulsante);
    return riga;
}

QHBoxLayout* Dialogo::CreaPulsanti(QWidget* davanti, std::function<void()> ok) {
    return RigaPulsanti(davanti, {CreaOK(std::move(ok)), CreaCancel()});
}

void Dialogo::SenzaRotella(QComboBox* lista) {
    lista->setFocusPolicy(Qt::StrongFocus);
    lista->installEventFilter(this);
}

bool Dialogo::event(QEvent* evento) {
    // The window manager has its own mind about the place, and tells it a little later.
    constexpr int kPoiPosto = 150;  // ms
    if (evento->type() == QEvent::WindowActivate && !std::exchange(aSuoPosto_, true)) {
        QTimer::singleShot(kPoiPosto, this, [this] { PortaNelloSchermo(*this); });
    }
    if (evento->type() == QEvent::WindowActivate && seguono_) Protetto([this] { Testi(); });
    return QDialog::event(evento);
}

bool Dialogo::eventFilter(QObject* oggetto, QEvent* evento) {
    return RotellaDiPassaggio(oggetto, evento) || QDialog::eventFilter(oggetto, evento);
}

}  // namespace lapvane
