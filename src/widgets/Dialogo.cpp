#include "widgets/Dialogo.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/Protetto.h"
#include "widgets/Rotella.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

/// What a window's frame takes of the screen before anybody can ask for it.
constexpr QSize kBordoFinestra(2, 32);

/// Room for a content that is larger than its window can be.
class Rotolo : public QScrollArea {
 public:
    explicit Rotolo(QWidget* contenuto) {
        setObjectName(QStringLiteral("rotolo"));
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus);
        setWidget(contenuto);
        // The ground of the window shows through.
        contenuto->setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
        // By itself it follows the focus only from one of its own to the next.
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* nuovo) {
            if (nuovo != nullptr && widget()->isAncestorOf(nuovo)) ensureWidgetVisible(nuovo);
        });
    }
    QSize sizeHint() const override { return widget()->sizeHint() + Barre(); }
    QSize minimumSizeHint() const override {
        constexpr QSize kAlmeno(200, 120);
        return widget()->minimumSizeHint().boundedTo(kAlmeno);
    }

 private:
    /// The bar beside a content that is too high takes of its width.
    QSize Barre() const { return {verticalScrollBar()->sizeHint().width(), 0}; }
};

bool HaPulsanti(const QLayout& layout) {
    for (int i = 0; i < layout.count(); ++i) {
        const QLayoutItem* voce = layout.itemAt(i);
        if (qobject_cast<QPushButton*>(voce->widget()) != nullptr) return true;
    }
    return false;
}

QSize Disponibile(const QWidget& finestra) {
    const QScreen* schermo = finestra.screen();
    if (schermo == nullptr) return {QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
    const QSize bordo = finestra.frameGeometry().size() - finestra.size();
    return schermo->availableSize() - bordo.expandedTo(kBordoFinestra);
}

}  // namespace

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

void Dialogo::setVisible(bool visibile) {
    if (visibile && !isVisible()) StaNelloSchermo();
    QDialog::setVisible(visibile);
}

/// All layouts first tell what they have: one without a spacing of its own has that of the layout
/// around it.
void Dialogo::Stringi() {
    const auto layouts = findChildren<QLayout*>();
    std::vector<std::function<void()>> passi;
    for (QLayout* uno : layouts) {
        passi.emplace_back([uno, m = uno->contentsMargins() / 2] { uno->setContentsMargins(m); });
        if (auto* griglia = qobject_cast<QGridLayout*>(uno)) {
            passi.emplace_back([griglia, x = griglia->horizontalSpacing() / 2,
                                y = griglia->verticalSpacing() / 2] {
                griglia->setHorizontalSpacing(x);
                griglia->setVerticalSpacing(y);
            });
        } else {
            passi.emplace_back([uno, s = uno->spacing() / 2] { uno->setSpacing(s); });
        }
    }
    for (const auto& passo : passi) passo();
    // From the inside out: each tells the one around it what it needs now.
    for (auto uno = layouts.crbegin(); uno != layouts.crend(); ++uno) {
        if ((*uno)->parent()->isWidgetType()) (*uno)->activate();
    }
}

/// A window whose least size is more than the screen has gives way, then it scrolls, all but its
/// row of buttons.
void Dialogo::StaNelloSchermo() {
    auto* colonna = qobject_cast<QVBoxLayout*>(layout());
    if (colonna == nullptr) return;
    colonna->activate();
    const QSize posto = Disponibile(*this);
    const auto sta = [&] {
        const QSize minima = colonna->totalMinimumSize();
        return minima.boundedTo(posto) == minima;
    };
    if (sta()) return;
    const bool adattata = testAttribute(Qt::WA_Resized);
    const QSize voluta = adattata ? size() : colonna->totalSizeHint();
    if (!std::exchange(stretta_, true)) Stringi();
    if (!sta()) MettiInRotolo(colonna);
    if (isVisible()) PortaNelloSchermo(*this);
    layout()->activate();  // before that the window's least size is the old one
    resize(voluta.expandedTo(layout()->totalSizeHint()).boundedTo(posto));
}

void Dialogo::MettiInRotolo(QVBoxLayout* colonna) {
    if (rotolo_ != nullptr) return;
    const QPointer<QWidget> fuoco = focusWidget();
    const QMargins margini = colonna->contentsMargins();  // of a window, which its content is not
    const int ultimo = colonna->count() - 1;
    QLayout* const riga = ultimo >= 0 ? colonna->itemAt(ultimo)->layout() : nullptr;
    const bool conPulsanti = riga != nullptr && HaPulsanti(*riga);
    if (conPulsanti) colonna->removeItem(riga);
    auto* contenuto = new QWidget;
    contenuto->setLayout(colonna);
    colonna->setContentsMargins(margini);
    auto* tutto = new QVBoxLayout(this);
    tutto->setContentsMargins(0, 0, 0, 0);
    tutto->setSpacing(0);
    rotolo_ = new Rotolo(contenuto);
    tutto->addWidget(rotolo_, 1);
    if (conPulsanti) {
        riga->setParent(nullptr);
        riga->setContentsMargins(margini.left(), kSpazio, margini.right(), margini.bottom());
        tutto->addLayout(riga);
    }
    if (fuoco) fuoco->setFocus();
}

bool Dialogo::event(QEvent* evento) {
    // Other letters than those that it was shown with, or more of them.
    const bool altro = evento->type() == QEvent::StyleChange ||
                       (evento->type() == QEvent::LayoutRequest && rotolo_ == nullptr);
    if (altro && isVisible()) QTimer::singleShot(0, this, [this] { StaNelloSchermo(); });
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
