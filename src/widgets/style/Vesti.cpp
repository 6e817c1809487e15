#include "widgets/style/Vesti.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QChildEvent>
#include <QFocusFrame>
#include <QPointer>

#include "widgets/style/Stile.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr const char* kGuardaroba = "guardaroba";

/// Sees each child that comes into the window, and where the focus goes.
class Guardaroba : public QObject {
 public:
    explicit Guardaroba(QWidget& finestra) : QObject(&finestra), finestra_(finestra) {
        setObjectName(QLatin1String(kGuardaroba));
        Veste(finestra);
        if (QWidget* preso = QApplication::focusWidget(); preso && preso->window() == &finestra) {
            Cerchia(preso);
        }
    }

 protected:
    bool eventFilter(QObject* oggetto, QEvent* evento) override {
        auto* widget = static_cast<QWidget*>(oggetto);
        switch (evento->type()) {
            case QEvent::ChildAdded:
            case QEvent::ChildPolished: {
                QObject* figlio = static_cast<QChildEvent*>(evento)->child();
                if (figlio->isWidgetType()) Veste(*static_cast<QWidget*>(figlio));
                break;
            }
            case QEvent::FocusIn:
                Cerchia(widget);
                if (qobject_cast<QAbstractScrollArea*>(widget)) widget->update();
                break;
            case QEvent::FocusOut:
                Cerchia(nullptr);
                if (qobject_cast<QAbstractScrollArea*>(widget)) widget->update();
                break;
            case QEvent::ApplicationPaletteChange:
                if (widget->isWindow()) widget->setPalette(PalettaDi(TemaDelDesktop()));
                break;
            default:
                break;
        }
        return QObject::eventFilter(oggetto, evento);
    }

 private:
    void Veste(QWidget& widget) {
        if (widget.style() != &Stile::Comune()) {
            widget.setStyle(&Stile::Comune());
            // A window of its own inherits nothing of the one that it belongs to.
            if (widget.isWindow()) widget.setPalette(PalettaDi(TemaDelDesktop()));
            widget.installEventFilter(this);
        }
        for (QObject* figlio : widget.children()) {
            if (figlio->isWidgetType()) Veste(*static_cast<QWidget*>(figlio));
        }
    }

    /// The ring around a button; what is no button draws its own.
    void Cerchia(QWidget* widget) {
        auto* pulsante = qobject_cast<QAbstractButton*>(widget);
        if (!pulsante) {
            if (anello_) anello_->setWidget(nullptr);
            return;
        }
        if (!anello_) {
            anello_ = new QFocusFrame(&finestra_);
            anello_->setStyle(&Stile::Comune());
        }
        anello_->setWidget(pulsante);
    }

    QWidget& finestra_;
    QPointer<QFocusFrame> anello_;  // goes with whatever it was put into
};

}  // namespace

void Vesti(QWidget& finestra) {
    if (finestra.findChild<QObject*>(QLatin1String(kGuardaroba), Qt::FindDirectChildrenOnly))
        return;
    new Guardaroba(finestra);
}

}  // namespace lapvane
