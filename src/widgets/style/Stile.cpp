// The controls that the style draws as a whole, and their texts.
#include "widgets/style/Stile.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QFocusFrame>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTextEdit>
#include <algorithm>
#include <array>
#include <cmath>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/StileParti.h"

namespace lapvane {

namespace {

constexpr const char* kSegmento = "segmento";
constexpr double kAnello = 2.0;
constexpr double kOpacitaManiglia = 0.6;
constexpr int kManiglia = 6;
constexpr int kBarra = 6;                // height of a progress bar
constexpr double kOpacitaSpenta = 0.36;  // of an icon

/// A widget inside one of its kind: a card in a card has no frame.
bool Annidato(const QWidget* widget) {
    for (const QWidget* w = widget ? widget->parentWidget() : nullptr; w && !w->isWindow();
         w = w->parentWidget()) {
        if (qobject_cast<const QGroupBox*>(w)) return true;
    }
    return false;
}

void BarraScorrimento(const QStyleOptionSlider& o, QPainter& penna, const QWidget* widget) {
    penna.fillRect(o.rect, FondoBarra(o, widget));
    if (o.maximum <= o.minimum) return;
    const Colori& c = ColoriDi(o.palette);
    const QStyle& stile = widget ? *widget->style() : Stile::Comune();
    QRectF r = stile.subControlRect(QStyle::CC_ScrollBar, &o, QStyle::SC_ScrollBarSlider, widget);
    const double fuori = (std::min(o.rect.width(), o.rect.height()) - kManiglia) / 2.0;
    r = o.orientation == Qt::Horizontal ? r.adjusted(2, fuori, -2, -fuori)
                                        : r.adjusted(fuori, 2, -fuori, -2);
    QColor colore = c.Edge;
    const bool presa = o.activeSubControls & QStyle::SC_ScrollBarSlider;
    if (!presa) colore.setAlphaF(static_cast<float>(kOpacitaManiglia));
    Riquadro(penna, r, kManiglia / 2.0, colore);
}

void Gruppo(const Stile& stile, const QStyleOptionGroupBox& o, QPainter& penna,
            const QWidget* widget) {
    const Colori& c = ColoriDi(o.palette);
    const auto parte = [&](QStyle::SubControl quale) {
        return stile.subControlRect(QStyle::CC_GroupBox, &o, quale, widget);
    };
    if (!(o.features & QStyleOptionFrame::Flat) && !Annidato(widget)) {
        Riquadro(penna, parte(QStyle::SC_GroupBoxFrame), kRaggioScheda, c.Base, c.Line);
    }
    if (o.subControls & QStyle::SC_GroupBoxCheckBox) {
        QStyleOptionButton spunta;
        static_cast<QStyleOption&>(spunta) = o;
        spunta.rect = parte(QStyle::SC_GroupBoxCheckBox);
        stile.drawPrimitive(QStyle::PE_IndicatorCheckBox, &spunta, &penna, widget);
    }
    if (o.text.isEmpty()) return;
    penna.save();
    penna.setFont(Carattere(penna.font(), Scrittura::Forte));
    const int nascosta = stile.styleHint(QStyle::SH_UnderlineShortcut, &o, widget, nullptr)
                             ? Qt::TextShowMnemonic
                             : Qt::TextHideMnemonic;
    stile.drawItemText(&penna, parte(QStyle::SC_GroupBoxLabel),
                       Qt::AlignLeft | Qt::AlignVCenter | nascosta, o.palette,
                       o.state & QStyle::State_Enabled, o.text, QPalette::WindowText);
    penna.restore();
}

void Elenco(const Stile& stile, const QStyleOptionComboBox& o, QPainter& penna,
            const QWidget* widget) {
    if (o.frame) Campo(penna, o, o.state & QStyle::State_HasFocus);
    const QRectF freccia =
        stile.subControlRect(QStyle::CC_ComboBox, &o, QStyle::SC_ComboBoxArrow, widget);
    Freccia(penna, freccia.center(), Qt::DownArrow, ColoreFreccia(o));
}

void TestoElenco(const Stile& stile, const QStyleOptionComboBox& o, QPainter& penna,
                 const QWidget* widget) {
    const bool attivo = o.state & QStyle::State_Enabled;
    QRect r = stile.subControlRect(QStyle::CC_ComboBox, &o, QStyle::SC_ComboBoxEditField, widget);
    if (!o.currentIcon.isNull()) {
        const QRect icona(r.left(), r.center().y() - o.iconSize.height() / 2, o.iconSize.width(),
                          o.iconSize.height());
        o.currentIcon.paint(&penna, icona, Qt::AlignCenter,
                            attivo ? QIcon::Normal : QIcon::Disabled);
        r.setLeft(icona.right() + kSpazio);
    }
    const QString testo = o.fontMetrics.elidedText(o.currentText, Qt::ElideRight, r.width());
    stile.drawItemText(&penna, r, Qt::AlignLeft | Qt::AlignVCenter, o.palette, attivo, testo,
                       QPalette::Text);
}

void Spin(const Stile& stile, const QStyleOptionSpinBox& o, QPainter& penna,
          const QWidget* widget) {
    if (o.frame) Campo(penna, o, o.state & QStyle::State_HasFocus);
    for (const auto& [parte, verso, passo] :
         {std::tuple{QStyle::SC_SpinBoxUp, Qt::UpArrow, QAbstractSpinBox::StepUpEnabled},
          {QStyle::SC_SpinBoxDown, Qt::DownArrow, QAbstractSpinBox::StepDownEnabled}}) {
        const QRectF r = stile.subControlRect(QStyle::CC_SpinBox, &o, parte, widget);
        if (r.isEmpty()) continue;
        const QColor colore = o.stepEnabled & passo ? ColoreFreccia(o) : ColoriDi(o.palette).Off;
        Freccia(penna, r.center() + QPointF(0.0, verso == Qt::UpArrow ? 1.0 : -1.0), verso, colore,
                7.0);
    }
}

/// The part of a button that the ring goes around: of one with a label box and text, not the
/// empty rest of its row.
QRectF ParteVisibile(const QWidget& pulsante) {
    const bool spunta = qobject_cast<const QCheckBox*>(&pulsante);
    if (!spunta && !qobject_cast<const QRadioButton*>(&pulsante)) return pulsante.rect();
    QStyleOptionButton o;
    o.initFrom(&pulsante);
    const auto& b = static_cast<const QAbstractButton&>(pulsante);
    o.text = b.text();
    o.icon = b.icon();
    o.iconSize = b.iconSize();
    const QStyle& stile = *pulsante.style();
    const QRect r = stile.subElementRect(
        spunta ? QStyle::SE_CheckBoxClickRect : QStyle::SE_RadioButtonClickRect, &o, &pulsante);
    return r.intersected(QRect(QPoint(), pulsante.sizeHint().boundedTo(pulsante.size())))
        .united(stile.subElementRect(
            spunta ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator, &o,
            &pulsante));
}

void AnelloEsterno(const QFocusFrame& cornice, QPainter& penna) {
    if (!cornice.widget()) return;
    const QPointF origine = cornice.widget()->mapToGlobal(QPoint()) - cornice.mapToGlobal(QPoint());
    const QRectF r = ParteVisibile(*cornice.widget()).translated(origine).adjusted(-3, -3, 3, 3);
    Riquadro(penna, r, kRaggioControllo + 3.0, {}, ColoriDi(cornice.palette()).Accent, kAnello);
}

void Linguetta(const QStyleOptionTab& o, QPainter& penna) {
    const Colori& c = ColoriDi(o.palette);
    FiloBasso(penna, o.rect, c.Line);
    if (o.state & QStyle::State_Selected) {
        FiloBasso(penna, o.rect, o.state & QStyle::State_Enabled ? c.Accent : c.Off, 2.0);
    }
}

void Divisore(const QStyleOption& o, QPainter& penna) {
    if (!(o.state & QStyle::State_MouseOver)) return;
    const QPointF centro = QRectF(o.rect).center();
    const bool verticale = o.state & QStyle::State_Horizontal;  // of a splitter of columns
    for (const int i : {-1, 0, 1}) {
        const QPointF p = centro + (verticale ? QPointF(0, i * 6) : QPointF(i * 6, 0));
        Riquadro(penna, QRectF(p.x() - 1.5, p.y() - 1.5, 3, 3), 1.5, ColoriDi(o.palette).Text2);
    }
}

/// The part of a progress bar that is done. Where nobody knows how much there is, a piece in the
/// middle, which does not move.
QRectF Fatto(const QStyleOptionProgressBar& o, const QRectF& binario) {
    const double corsa = static_cast<double>(o.maximum) - o.minimum;
    if (corsa <= 0.0) {
        return binario.adjusted(binario.width() / 3.0, 0, -binario.width() / 3.0, 0);
    }
    const double quota =
        std::clamp((o.progress - static_cast<double>(o.minimum)) / corsa, 0.0, 1.0);
    QRectF fatto = binario;
    if (quota <= 0.0) return {};
    fatto.setWidth(std::max<double>(kBarra, binario.width() * quota));
    if (o.invertedAppearance) fatto.moveRight(binario.right());
    return fatto;
}

void BarraLavoro(const Stile& stile, const QStyleOptionProgressBar& o, QPainter& penna) {
    const Colori& c = ColoriDi(o.palette);
    const bool attiva = o.state & QStyle::State_Enabled;
    QRectF binario = o.rect;
    if (o.textVisible) {
        // The count stands behind the bar.
        const int testo = o.fontMetrics.horizontalAdvance(o.text);
        stile.drawItemText(&penna, o.rect, Qt::AlignRight | Qt::AlignVCenter, o.palette, attiva,
                           o.text, QPalette::WindowText);
        binario.setRight(binario.right() - testo - kSpazio);
    }
    binario.setTop(std::floor(binario.center().y()) - kBarra / 2.0);
    binario.setHeight(kBarra);
    Riquadro(penna, binario, kBarra / 2.0, c.Line);
    Riquadro(penna, Fatto(o, binario), kBarra / 2.0, attiva ? c.Accent : c.Off);
}

int SegnoScorciatoia(const Stile& stile, const QStyleOption& o, const QWidget* widget) {
    return stile.styleHint(QStyle::SH_UnderlineShortcut, &o, widget, nullptr)
               ? Qt::TextShowMnemonic
               : Qt::TextHideMnemonic;
}

}  // namespace

QColor FondoBarra(const QStyleOption& o, const QWidget* widget) {
    for (const QWidget* w = widget; w; w = w->parentWidget()) {
        const auto* vista = qobject_cast<const QAbstractScrollArea*>(w);
        if (!vista) continue;
        const QWidget* campo = vista->viewport();
        return campo->palette().color(campo->backgroundRole());
    }
    return o.palette.window().color();
}

Stile::Stile() : QProxyStyle(QStyleFactory::create(QStringLiteral("fusion"))) {}

Stile& Stile::Comune() {
    static QPointer<Stile> stile;
    if (!stile) {
        stile = new Stile;
        stile->setParent(qApp);
    }
    return *stile;
}

void Stile::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    // A tool tip has a palette of the toolkit's own.
    if (widget->inherits("QTipLabel")) widget->setPalette(PalettaDi(TemaInUso()));
}

bool Stile::DisegnaTesto(ControlElement parte, const QStyleOption& opzioni, QPainter& penna,
                         const QWidget* widget) const {
    const Colori& c = ColoriDi(opzioni.palette);
    if (parte == CE_PushButtonLabel) {
        const auto* o = qstyleoption_cast<const QStyleOptionButton*>(&opzioni);
        if (!o || !PulsantePieno(*o)) return false;
        QStyleOptionButton piena(*o);
        const QFont forte = Carattere(penna.font(), Scrittura::Forte);
        penna.setFont(forte);
        piena.fontMetrics = QFontMetrics(forte);
        if (o->state & State_Enabled) piena.palette.setColor(QPalette::ButtonText, c.AccentText);
        QProxyStyle::drawControl(parte, &piena, &penna, widget);
        return true;
    }
    if (parte == CE_TabBarTabLabel) {
        const auto* o = qstyleoption_cast<const QStyleOptionTab*>(&opzioni);
        if (!o) return false;
        QStyleOptionTab linguetta(*o);
        const bool aperta = o->state & State_Selected;
        if (aperta) penna.setFont(Carattere(penna.font(), Scrittura::Forte));
        linguetta.fontMetrics = QFontMetrics(penna.font());
        if (o->state & State_Enabled) {
            linguetta.palette.setColor(QPalette::WindowText, aperta ? c.Text : c.Text2);
        }
        QProxyStyle::drawControl(parte, &linguetta, &penna, widget);
        return true;
    }
    if (parte == CE_HeaderLabel) {
        const auto* o = qstyleoption_cast<const QStyleOptionHeader*>(&opzioni);
        if (!o) return false;
        QStyleOptionHeaderV2 testata;
        if (const auto* o2 = qstyleoption_cast<const QStyleOptionHeaderV2*>(&opzioni)) {
            testata = *o2;
        } else {
            static_cast<QStyleOptionHeader&>(testata) = *o;
        }
        testata.state.setFlag(State_On, false);  // bold for the column of the current cell
        penna.setFont(Carattere(penna.font(), Scrittura::Piccola));
        testata.fontMetrics = QFontMetrics(penna.font());
        // The base takes the margin of the sides off above and below too, and cuts the letters.
        const int manca = std::max(0, testata.fontMetrics.height() - testata.rect.height());
        testata.rect.adjust(0, -(manca + 1) / 2, 0, (manca + 1) / 2);
        if (o->state & State_Enabled) testata.palette.setColor(QPalette::ButtonText, c.Text2);
        QProxyStyle::drawControl(parte, &testata, &penna, widget);
        return true;
    }
    if (parte == CE_ComboBoxLabel) {
        const auto* o = qstyleoption_cast<const QStyleOptionComboBox*>(&opzioni);
        if (!o || o->editable) return false;
        TestoElenco(*this, *o, penna, widget);
        return true;
    }
    return false;
}

void Stile::DisegnaVoceMenu(const QStyleOption& opzioni, QPainter& penna,
                            const QWidget* widget) const {
    const auto* o = qstyleoption_cast<const QStyleOptionMenuItem*>(&opzioni);
    if (!o) return;
    const Colori& c = ColoriDi(o->palette);
    penna.fillRect(o->rect, c.Base);
    if (o->menuItemType == QStyleOptionMenuItem::Separator) {
        FiloAlto(penna, QRectF(o->rect).adjusted(0, o->rect.height() / 2, 0, 0), c.Line);
        return;
    }
    const bool attiva = o->state & State_Enabled;
    const bool scelta = attiva && (o->state & State_Selected);
    if (scelta) penna.fillRect(o->rect, c.Sel);
    const QColor colore = !attiva ? c.Off : scelta ? c.SelText : c.Text;
    const QRect r = o->rect.adjusted(kSpazio, 0, -kSpazio, 0);
    const QRect colonna(r.left(), r.top(), std::max(o->maxIconWidth, 20), r.height());
    const QPointF centro = QRectF(colonna).center();
    if (o->checked) {
        const std::array<QPointF, 3> segno = {
            centro + QPointF(-4.5, 0.2), centro + QPointF(-1.5, 3.2), centro + QPointF(4.0, -3.5)};
        Spezzata(penna, segno, colore, 2.0);
    } else if (!o->icon.isNull()) {
        const int lato = LatoSpunta();
        const QRect icona(colonna.center() - QPoint(lato / 2, lato / 2), QSize(lato, lato));
        o->icon.paint(&penna, icona, Qt::AlignCenter, attiva ? QIcon::Normal : QIcon::Disabled);
    }
    const QStringList testi = o->text.split(QLatin1Char('\t'));
    const int come = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip;
    const QRect posto(colonna.right() + kSpazio, r.top(), r.right() - colonna.right() - 2 * kSpazio,
                      r.height());
    penna.setFont(o->font);
    penna.setPen(colore);
    penna.drawText(posto, come | Qt::AlignLeft | SegnoScorciatoia(*this, *o, widget),
                   testi.front());
    if (testi.size() > 1) {
        penna.setPen(!attiva ? c.Off : scelta ? c.SelText : c.Text2);
        penna.drawText(posto, come | Qt::AlignRight, testi.at(1));
    }
    if (o->menuItemType == QStyleOptionMenuItem::SubMenu) {
        Freccia(penna, QPointF(r.right() - 4.0, centro.y()), Qt::RightArrow, colore);
    }
}

bool Stile::DisegnaParte(ControlElement parte, const QStyleOption& o, QPainter& penna,
                         const QWidget* widget) const {
    const Colori& c = ColoriDi(o.palette);
    switch (parte) {
        case CE_FocusFrame:
            if (const auto* cornice = qobject_cast<const QFocusFrame*>(widget)) {
                AnelloEsterno(*cornice, penna);
            }
            return true;
        case CE_TabBarTabShape:
            if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(&o))
                Linguetta(*tab, penna);
            return true;
        case CE_ToolBar:
            penna.fillRect(o.rect, c.Bar);
            FiloBasso(penna, o.rect, c.Line);
            return true;
        case CE_HeaderSection:
        case CE_HeaderEmptyArea:
            penna.fillRect(o.rect, c.Alt);
            FiloBasso(penna, o.rect, c.Line);
            return true;
        case CE_MenuBarEmptyArea:
        case CE_MenuBarItem: {
            penna.fillRect(o.rect, c.Bar);
            const auto* voce = qstyleoption_cast<const QStyleOptionMenuItem*>(&o);
            if (parte == CE_MenuBarEmptyArea || !voce) return true;
            if (o.state & (State_Selected | State_Sunken)) penna.fillRect(o.rect, c.SelSoft);
            drawItemText(&penna, o.rect, Qt::AlignCenter | SegnoScorciatoia(*this, o, widget),
                         o.palette, o.state & State_Enabled, voce->text, QPalette::WindowText);
            return true;
        }
        case CE_MenuItem:
            DisegnaVoceMenu(o, penna, widget);
            return true;
        case CE_MenuEmptyArea:
            penna.fillRect(o.rect, c.Base);
            return true;
        case CE_Splitter:
            Divisore(o, penna);
            return true;
        case CE_ProgressBar:
            if (const auto* barra = qstyleoption_cast<const QStyleOptionProgressBar*>(&o)) {
                BarraLavoro(*this, *barra, penna);
            }
            return true;
        default:
            return false;
    }
}

void Stile::drawControl(ControlElement parte, const QStyleOption* opzioni, QPainter* penna,
                        const QWidget* widget) const {
    penna->save();
    if (!DisegnaTesto(parte, *opzioni, *penna, widget) &&
        !DisegnaParte(parte, *opzioni, *penna, widget)) {
        QProxyStyle::drawControl(parte, opzioni, penna, widget);
    }
    penna->restore();
}

void Stile::drawComplexControl(ComplexControl controllo, const QStyleOptionComplex* opzioni,
                               QPainter* penna, const QWidget* widget) const {
    if (const auto* barra = qstyleoption_cast<const QStyleOptionSlider*>(opzioni);
        barra && controllo == CC_ScrollBar) {
        BarraScorrimento(*barra, *penna, widget);
    } else if (const auto* gruppo = qstyleoption_cast<const QStyleOptionGroupBox*>(opzioni)) {
        Gruppo(*this, *gruppo, *penna, widget);
    } else if (const auto* elenco = qstyleoption_cast<const QStyleOptionComboBox*>(opzioni)) {
        Elenco(*this, *elenco, *penna, widget);
    } else if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(opzioni)) {
        Spin(*this, *spin, *penna, widget);
    } else {
        QProxyStyle::drawComplexControl(controllo, opzioni, penna, widget);
    }
}

void Stile::drawItemText(QPainter* penna, const QRect& posto, int come, const QPalette& paletta,
                         bool attivo, const QString& testo, QPalette::ColorRole ruolo) const {
    if (attivo && penna->device()->devType() == QInternal::Widget) {
        const auto* etichetta =
            qobject_cast<const QLabel*>(static_cast<const QWidget*>(penna->device()));
        const QWidget* compagno = etichetta ? etichetta->buddy() : nullptr;
        if (compagno && !compagno->isEnabled()) {
            QPalette spenta(paletta);
            spenta.setCurrentColorGroup(QPalette::Disabled);
            return QProxyStyle::drawItemText(penna, posto, come, spenta, false, testo, ruolo);
        }
    }
    QProxyStyle::drawItemText(penna, posto, come, paletta, attivo, testo, ruolo);
}

QPixmap Stile::generatedIconPixmap(QIcon::Mode modo, const QPixmap& immagine,
                                   const QStyleOption* opzioni) const {
    if (modo != QIcon::Disabled) return QProxyStyle::generatedIconPixmap(modo, immagine, opzioni);
    QImage grigia(immagine.size(), QImage::Format_ARGB32_Premultiplied);
    grigia.setDevicePixelRatio(immagine.devicePixelRatio());
    grigia.fill(Qt::transparent);
    QPainter penna(&grigia);
    penna.setOpacity(kOpacitaSpenta);
    penna.drawPixmap(0, 0, immagine);
    penna.end();
    grigia.convertTo(QImage::Format_ARGB32);
    for (int y = 0; y < grigia.height(); ++y) {
        auto* riga = reinterpret_cast<QRgb*>(grigia.scanLine(y));
        std::for_each(riga, riga + grigia.width(), [](QRgb& p) {
            const int g = qGray(p);
            p = qRgba(g, g, g, qAlpha(p));
        });
    }
    return QPixmap::fromImage(grigia);
}

void Segmenti(std::initializer_list<QAbstractButton*> pulsanti) {
    int i = 0;
    const int ultimo = static_cast<int>(pulsanti.size()) - 1;
    for (QAbstractButton* pulsante : pulsanti) {
        pulsante->setCheckable(true);
        pulsante->setProperty(kSegmento, i == 0 ? 1 : i == ultimo ? 3 : 2);
        ++i;
    }
}

int PostoSegmento(const QWidget* pulsante) {
    return pulsante ? pulsante->property(kSegmento).toInt() : 0;
}

}  // namespace lapvane
