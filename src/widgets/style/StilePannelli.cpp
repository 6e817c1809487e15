// The drawn parts of the style that are surfaces and signs: panels, frames, ticks, arrows, rings.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QStyleOption>
#include <QTextEdit>
#include <QToolBar>
#include <algorithm>
#include <array>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Stile.h"
#include "widgets/style/StileParti.h"

namespace lapvane {

namespace {

constexpr double kAnello = 2.0;    // of the focus
constexpr double kSorvolo = 0.06;  // of the text's colour over what lies under the mouse
constexpr double kPremuto = 0.14;
constexpr const char* kErrato = "errato";

/// A push button's ground: the default one and the pressed one of a bar are full.
void Pulsante(QPainter& penna, const QStyleOption& o, const QWidget* widget) {
    const Colori& c = ColoriDi(o.palette);
    const auto* pulsante = qstyleoption_cast<const QStyleOptionButton*>(&o);
    const bool attivo = o.state & QStyle::State_Enabled;
    const bool pieno = PulsantePieno(o);
    const bool premuto = o.state & QStyle::State_Sunken;
    const bool sopra = o.state & QStyle::State_MouseOver;
    if (pulsante && (pulsante->features & QStyleOptionButton::Flat) && !pieno && !premuto &&
        !sopra) {
        return;
    }
    QColor fondo = pieno ? c.Accent : o.palette.button().color();
    QColor bordo = pieno ? c.Accent : c.Edge;
    if (!attivo) {
        fondo = pieno ? c.Line : c.Window;
        bordo = c.Line;
    } else if (premuto || sopra) {
        fondo = Tinta(fondo, pieno ? c.AccentText : c.Text, premuto ? kPremuto : kSorvolo);
    }
    const int posto = PostoSegmento(widget);
    QRectF r = o.rect;
    penna.save();
    penna.setClipRect(r);
    // Where the bar goes on, the round corners lie outside of the button.
    if (posto == 1 || posto == 2) r.setRight(r.right() + 2 * kRaggioControllo);
    if (posto == 2 || posto == 3) r.setLeft(r.left() - 2 * kRaggioControllo);
    Riquadro(penna, r, kRaggioControllo, fondo, posto && attivo ? c.Edge : bordo);
    if (posto == 2 || posto == 3) FiloSinistro(penna, o.rect, attivo ? c.Edge : c.Line);
    penna.restore();
}

void PulsanteBarra(QPainter& penna, const QStyleOption& o) {
    const Colori& c = ColoriDi(o.palette);
    const bool attivo = o.state & QStyle::State_Enabled;
    const bool acceso = o.state & (QStyle::State_On | QStyle::State_Sunken);
    const bool sopra = attivo && (o.state & QStyle::State_MouseOver);
    if (o.state & QStyle::State_AutoRaise) {
        if (!acceso && !sopra) return;
        Riquadro(penna, o.rect, kRaggioControllo,
                 acceso ? c.SelSoft : Tinta(c.Bar, c.Text, kSorvolo));
        return;
    }
    QColor fondo = acceso ? c.SelSoft : o.palette.button().color();
    if (!attivo) fondo = c.Window;
    if (sopra) fondo = Tinta(fondo, c.Text, kSorvolo);
    Riquadro(penna, o.rect, kRaggioControllo, fondo, attivo ? c.Edge : c.Line);
}

/// Of a tick box, in the middle of its place.
QRectF Quadretto(const QStyleOption& o) {
    const int lato = std::min({LatoSpunta(), o.rect.width(), o.rect.height()});
    return QRectF(o.rect.x() + (o.rect.width() - lato) / 2,
                  o.rect.y() + (o.rect.height() - lato) / 2, lato, lato);
}

void Spunta(QPainter& penna, const QStyleOption& o) {
    const Colori& c = ColoriDi(o.palette);
    const bool attivo = o.state & QStyle::State_Enabled;
    const bool meta = o.state & QStyle::State_NoChange;
    const bool piena = meta || (o.state & QStyle::State_On);
    const QRectF r = Quadretto(o);
    QColor fondo = piena ? c.Accent : c.Base;
    QColor bordo = piena ? c.Accent : c.Edge;
    if (!attivo) {
        fondo = piena ? c.Off : c.Window;
        bordo = c.Off;
    } else if (o.state & QStyle::State_Sunken) {
        fondo = Tinta(fondo, piena ? c.AccentText : c.Text, kPremuto);
    }
    Riquadro(penna, r, kRaggioControllo, fondo, bordo);
    const QColor segno = attivo ? c.AccentText : c.Window;
    const double parte = r.width() / kLatoSpunta;
    if (meta) {
        Riquadro(penna, r.adjusted(4 * parte, 7 * parte, -4 * parte, -7 * parte), 0.0, segno);
    } else if (piena) {
        const std::array<QPointF, 3> punti = {r.topLeft() + QPointF(4.0, 8.2) * parte,
                                              r.topLeft() + QPointF(7.0, 11.2) * parte,
                                              r.topLeft() + QPointF(12.2, 5.0) * parte};
        Spezzata(penna, punti, segno, 2.0 * parte);
    }
}

void Tonda(QPainter& penna, const QStyleOption& o) {
    const Colori& c = ColoriDi(o.palette);
    const bool attivo = o.state & QStyle::State_Enabled;
    const bool piena = o.state & QStyle::State_On;
    const QRectF r = Quadretto(o);
    const double raggio = r.width() / 2.0;
    QColor bordo = attivo ? c.Edge : c.Off;
    QColor fondo = attivo ? c.Base : c.Window;
    if (piena) fondo = bordo = attivo ? c.Accent : c.Off;
    if (attivo && (o.state & QStyle::State_Sunken)) fondo = Tinta(fondo, c.Text, kPremuto);
    Riquadro(penna, r, raggio, fondo, bordo);
    const double dentro = r.width() * 5.0 / 16.0;
    if (piena) {
        Riquadro(penna, r.adjusted(dentro, dentro, -dentro, -dentro), raggio - dentro,
                 attivo ? c.AccentText : c.Window);
    }
}

/// The ring inside a cell or a tab.
void AnelloInterno(QPainter& penna, const QStyleOption& o, const QWidget* widget) {
    // Buttons have a ring around them, which a frame of its own draws.
    if (qobject_cast<const QAbstractButton*>(widget)) return;
    // A list that drops down shows its place by the selection alone.
    if (widget && widget->window()->windowType() == Qt::Popup) return;
    const Colori& c = ColoriDi(o.palette);
    const auto* cella = qstyleoption_cast<const QStyleOptionViewItem*>(&o);
    const auto* fuoco = qstyleoption_cast<const QStyleOptionFocusRect*>(&o);
    const bool scelta = (cella && (o.state & QStyle::State_Selected)) ||
                        (fuoco && fuoco->backgroundColor == o.palette.highlight().color());
    if (scelta) {
        Riquadro(penna, QRectF(o.rect).adjusted(1, 1, -1, -1), 0.0, {}, c.SelText);
    } else {
        Riquadro(penna, o.rect, 0.0, {}, c.Accent, kAnello);
    }
}

/// Frame of a view or a panel. One in which text is written is a box like any other.
void Cornice(QPainter& penna, const QStyleOption& o, const QWidget* widget) {
    const Colori& c = ColoriDi(o.palette);
    const bool fuoco = (o.state & QStyle::State_HasFocus) && (o.state & QStyle::State_Enabled);
    if (qobject_cast<const QPlainTextEdit*>(widget) || qobject_cast<const QTextEdit*>(widget)) {
        Campo(penna, o, fuoco);
        return;
    }
    // A view whose current cell has the ring needs none of its own.
    const auto* celle = qobject_cast<const QAbstractItemView*>(widget);
    const bool vista = qobject_cast<const QAbstractScrollArea*>(widget) &&
                       !(celle && celle->currentIndex().isValid());
    Riquadro(penna, o.rect, 0.0, {}, vista && fuoco ? c.Accent : c.Line);
}

void CampoEdit(QPainter& penna, const QStyleOption& o, const QWidget* widget) {
    const QWidget* sopra = widget ? widget->parentWidget() : nullptr;
    if (qobject_cast<const QComboBox*>(sopra) || qobject_cast<const QAbstractSpinBox*>(sopra))
        return;
    const auto* bordo = qstyleoption_cast<const QStyleOptionFrame*>(&o);
    if (bordo && bordo->lineWidth <= 0) {
        penna.fillRect(o.rect, o.palette.base());
        return;
    }
    Campo(penna, o, o.state & QStyle::State_HasFocus);
    if (widget && widget->property(kErrato).toBool())
        Riquadro(penna, o.rect, kRaggioControllo, {}, ColoriDi(o.palette).Err, kAnello);
}

}  // namespace

void SegnaErrato(QWidget& campo, bool errato) {
    if (campo.property(kErrato).toBool() == errato) return;
    campo.setProperty(kErrato, errato);
    campo.update();
}

bool PulsantePieno(const QStyleOption& o) {
    const auto* pulsante = qstyleoption_cast<const QStyleOptionButton*>(&o);
    return pulsante && ((pulsante->features & QStyleOptionButton::DefaultButton) ||
                        (o.state & QStyle::State_On));
}

void Campo(QPainter& penna, const QStyleOption& o, bool fuoco) {
    const Colori& c = ColoriDi(o.palette);
    const bool attivo = o.state & QStyle::State_Enabled;
    const bool solaLettura = o.state & QStyle::State_ReadOnly;
    const QColor fondo = attivo ? o.palette.base().color() : c.Window;
    if (attivo && fuoco) {
        Riquadro(penna, o.rect, kRaggioControllo, fondo, c.Accent, kAnello);
    } else {
        Riquadro(penna, o.rect, kRaggioControllo, fondo, attivo && !solaLettura ? c.Edge : c.Line);
    }
}

QColor ColoreFreccia(const QStyleOption& o) {
    const Colori& c = ColoriDi(o.palette);
    return o.state & QStyle::State_Enabled ? c.Text2 : c.Off;
}

bool Stile::DisegnaPannello(PrimitiveElement parte, const QStyleOption& o, QPainter& penna,
                            const QWidget* widget) const {
    const Colori& c = ColoriDi(o.palette);
    switch (parte) {
        case PE_PanelButtonCommand:
        case PE_PanelButtonBevel:
            Pulsante(penna, o, widget);
            return true;
        case PE_PanelButtonTool:
            PulsanteBarra(penna, o);
            return true;
        case PE_PanelLineEdit:
            CampoEdit(penna, o, widget);
            return true;
        case PE_FrameLineEdit:
            Riquadro(penna, o.rect, kRaggioControllo, {}, c.Edge);
            return true;
        case PE_Frame:
            Cornice(penna, o, widget);
            return true;
        case PE_FrameMenu:
            Riquadro(penna, o.rect, 0.0, {}, c.Line);
            return true;
        case PE_PanelMenu:
            penna.fillRect(o.rect, c.Base);
            return true;
        case PE_PanelTipLabel:
            penna.fillRect(o.rect, c.Tip);
            return true;
        case PE_PanelStatusBar:
            penna.fillRect(o.rect, c.Bar);
            FiloAlto(penna, o.rect, c.Line);
            return true;
        case PE_FrameTabWidget:
            FiloAlto(penna, o.rect, c.Line);
            return true;
        case PE_FrameTabBarBase:
            FiloBasso(penna, o.rect, c.Line);
            return true;
        case PE_PanelScrollAreaCorner:
            penna.fillRect(o.rect, FondoBarra(o, widget));
            return true;
        case PE_FrameDefaultButton:
        case PE_FrameStatusBarItem:
        case PE_FrameButtonTool:
            return true;
        default:
            return false;
    }
}

bool Stile::DisegnaSegno(PrimitiveElement parte, const QStyleOption& o, QPainter& penna,
                         const QWidget* widget) const {
    const QPointF centro = QRectF(o.rect).center();
    switch (parte) {
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            Spunta(penna, o);
            return true;
        case PE_IndicatorRadioButton:
            Tonda(penna, o);
            return true;
        case PE_FrameFocusRect:
            AnelloInterno(penna, o, widget);
            return true;
        case PE_IndicatorArrowDown:
            Freccia(penna, centro, Qt::DownArrow, ColoreFreccia(o));
            return true;
        case PE_IndicatorArrowUp:
            Freccia(penna, centro, Qt::UpArrow, ColoreFreccia(o));
            return true;
        case PE_IndicatorArrowLeft:
            Freccia(penna, centro, Qt::LeftArrow, ColoreFreccia(o));
            return true;
        case PE_IndicatorArrowRight:
            Freccia(penna, centro, Qt::RightArrow, ColoreFreccia(o));
            return true;
        case PE_IndicatorHeaderArrow:
            if (const auto* testata = qstyleoption_cast<const QStyleOptionHeader*>(&o)) {
                const bool su = testata->sortIndicator == QStyleOptionHeader::SortUp;
                Freccia(penna, centro, su ? Qt::UpArrow : Qt::DownArrow, ColoreFreccia(o));
            }
            return true;
        case PE_IndicatorToolBarSeparator: {
            const bool orizzontale = o.state & State_Horizontal;
            const QRectF r = o.rect;
            const Colori& c = ColoriDi(o.palette);
            if (orizzontale) {
                FiloSinistro(penna,
                             QRectF(centro.x(), r.top() + kSpazio, 1, r.height() - 2 * kSpazio),
                             c.Line);
            } else {
                FiloAlto(penna, QRectF(r.left() + kSpazio, centro.y(), r.width() - 2 * kSpazio, 1),
                         c.Line);
            }
            return true;
        }
        default:
            return false;
    }
}

void Stile::drawPrimitive(PrimitiveElement parte, const QStyleOption* opzioni, QPainter* penna,
                          const QWidget* widget) const {
    if (DisegnaPannello(parte, *opzioni, *penna, widget)) return;
    if (DisegnaSegno(parte, *opzioni, *penna, widget)) return;
    QProxyStyle::drawPrimitive(parte, opzioni, penna, widget);
}

}  // namespace lapvane
