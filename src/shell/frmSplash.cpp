#include "shell/frmSplash.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/Platform.h"
#include "shell/Protetto.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr Tema kTema = Tema::Scuro;  // that of the drawing, whatever the others have

}  // namespace

frmSplash::frmSplash(QWidget* parent)
    // Not a window of the kind of a splash screen: no window manager gives those the keyboard.
    : QWidget(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Lapvane"));
    setFixedSize(520, 300);
    setPalette(PalettaDi(kTema));
    setFocusPolicy(Qt::StrongFocus);
    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(28, 20, 28, 20);
    colonna->addStretch(1);
    auto* nome = new QLabel(QStringLiteral("Lapvane"), this);
    nome->setObjectName(QStringLiteral("lblProductName"));
    nome->setFont(Carattere(*this, Scrittura::Cifra));
    colonna->addWidget(nome);
    // Major, minor and revision of 1.05.0001, each in plain decimal.
    lblVersion_ = new QLabel(QStringLiteral(LAPVANE_VERSION), this);
    lblVersion_->setObjectName(QStringLiteral("lblVersion"));
    lblVersion_->setFont(Carattere(*this, Scrittura::Titolo));
    colonna->addWidget(lblVersion_);
    const QWidget* intorno = parent;
    const QRect posto = intorno != nullptr ? intorno->frameGeometry()
                                           : QGuiApplication::primaryScreen()->availableGeometry();
    move(posto.center() - rect().center());
}

void frmSplash::showEvent(QShowEvent* evento) {
    QWidget::showEvent(evento);
    raise();
    activateWindow();
    if (ModoInformazioni || attivata_) return;
    attivata_ = true;
    QTimer::singleShot(0, this, [this] { Protetto([this] { Attiva(); }); });
}

void frmSplash::Attiva() {
    constexpr int kAttesa = 3000;
    // The form may be unloaded by a key during the wait, which goes on to its end all the same.
    const QPointer<frmSplash> io(this);
    const auto nelFrattempo = NelFrattempo;
    const auto alTermine = AlTermine;
    const std::int64_t inizio = platform().GetTickCount();
    const auto attendi = [inizio](int millisecondi) {
        while (platform().GetTickCount() - inizio < millisecondi) {
            const std::int64_t resto = inizio + millisecondi - platform().GetTickCount();
            platform().DoEvents(static_cast<int>(std::max<std::int64_t>(resto, 0)));
        }
    };
    // By then the form itself is on the screen.
    attendi(kAttesa / 10);
    if (nelFrattempo) nelFrattempo();
    attendi(kAttesa);
    if (alTermine) alTermine();
    if (io) io->close();
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    close();
}

void frmSplash::mousePressEvent(QMouseEvent*) {
    if (ModoInformazioni) close();
}

bool frmSplash::event(QEvent* evento) {
    if (evento->type() == QEvent::WindowDeactivate) close();
    return QWidget::event(evento);
}

void frmSplash::paintEvent(QPaintEvent*) {
    QPainter p(this);
    Icona("splash").paint(&p, rect());
    // The main window has the same ground: the edge sets the form apart from it.
    p.setPen(ColoriDi(kTema).Edge);
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace lapvane
