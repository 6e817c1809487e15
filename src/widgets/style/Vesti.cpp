#include "widgets/style/Vesti.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QFocusFrame>
#include <QLabel>
#include <QPointer>

#include "widgets/style/Stile.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr const char* kGuardaroba = "guardaroba";

/// Sees where the focus goes, and that the desktop has another theme.
class Guardaroba : public QObject {
 public:
    explicit Guardaroba(QObject* padre) : QObject(padre) {
        setObjectName(QLatin1String(kGuardaroba));
        qApp->installEventFilter(this);
    }

 protected:
    bool eventFilter(QObject* oggetto, QEvent* evento) override {
        switch (evento->type()) {
            case QEvent::FocusIn:
            case QEvent::FocusOut:
                if (oggetto->isWidgetType()) {
                    Cerchia(*static_cast<QWidget*>(oggetto), evento->type() == QEvent::FocusIn);
                }
                break;
            case QEvent::EnabledChange:
                if (oggetto->isWidgetType()) Etichette(static_cast<QWidget*>(oggetto));
                break;
            case QEvent::ThemeChange:
                if (!cambia_) {
                    cambia_ = true;
                    AggiornaTema();
                    cambia_ = false;
                }
                break;
            default:
                break;
        }
        return QObject::eventFilter(oggetto, evento);
    }

 private:
    /// Labels are as dull as what they belong to.
    static void Etichette(const QWidget* widget) {
        if (!widget->parentWidget()) return;
        for (QObject* altro : widget->parentWidget()->children()) {
            auto* etichetta = qobject_cast<QLabel*>(altro);
            if (etichetta && etichetta->buddy() == widget) etichetta->update();
        }
    }

    /// The ring around a button; what is no button draws its own.
    void Cerchia(QWidget& widget, bool preso) {
        if (qobject_cast<QAbstractScrollArea*>(&widget)) widget.update();
        auto* pulsante = qobject_cast<QAbstractButton*>(&widget);
        if (!preso || !pulsante) {
            if (anello_) anello_->setWidget(nullptr);
            return;
        }
        // A frame stays in the window that it was made for.
        if (anello_ && anello_->window() != widget.window()) delete anello_;
        if (!anello_) anello_ = new QFocusFrame(widget.window());
        anello_->setWidget(pulsante);
    }

    QPointer<QFocusFrame> anello_;  // goes with whatever it was put into
    bool cambia_ = false;
};

}  // namespace

void Vesti() {
    if (qApp->findChild<QObject*>(QLatin1String(kGuardaroba), Qt::FindDirectChildrenOnly)) return;
    new Guardaroba(qApp);
    AggiornaTema();
    QApplication::setStyle(&Stile::Comune());
}

}  // namespace lapvane
