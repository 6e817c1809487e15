#include "widgets/Dialogo.h"

#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPointer>
#include <QScreen>
#include <utility>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/Protetto.h"

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

QLabel* Etichetta(QWidget* dove, const char* nome, QWidget* compagno) {
    auto* etichetta = new QLabel(dove);
    etichetta->setObjectName(QString::fromLatin1(nome));
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

QHBoxLayout* Dialogo::CreaPulsanti(QWidget* davanti, std::function<void()> ok) {
    OKButton_ = new QPushButton(QStringLiteral("OK"), this);
    OKButton_->setObjectName(QStringLiteral("OKButton"));
    OKButton_->setDefault(true);
    connect(OKButton_, &QPushButton::clicked, this, [ok = std::move(ok)] { Protetto(ok); });
    CancelButton_ = new QPushButton(this);
    CancelButton_->setObjectName(QStringLiteral("CancelButton"));
    connect(CancelButton_, &QPushButton::clicked, this, &QDialog::reject);
    auto* riga = new QHBoxLayout;
    if (davanti != nullptr) {
        riga->addWidget(davanti, 1);
    } else {
        riga->addStretch(1);
    }
    riga->addWidget(OKButton_);
    riga->addWidget(CancelButton_);
    return riga;
}

bool Dialogo::event(QEvent* evento) {
    if (evento->type() == QEvent::WindowActivate && seguono_) Protetto([this] { Testi(); });
    return QDialog::event(evento);
}

}  // namespace lapvane
