// The measures of the style: metrics, sizes, where the parts of a control lie.
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFocusFrame>
#include <QGroupBox>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyleOption>
#include <QTextEdit>
#include <algorithm>

#include "widgets/style/Misure.h"
#include "widgets/style/Stile.h"

namespace lapvane {

namespace {

constexpr int kBarraScorrimento = 12;
constexpr int kFreccia = 24;         // place of the arrow of a combo
constexpr int kFrecciaSpin = 20;     // ... and of the two of a spin box
constexpr int kMargineEdit = 6;      // the line edit adds 2 of its own
constexpr int kManigliaMinima = 28;  // of a scroll bar
constexpr int kColonnaSpunte = 20;   // of a menu
constexpr int kSopraCornice = 4;     // between the title of a group box and its card

Misure MisureDi(const QStyleOption* opzioni, const QWidget* widget) {
    if (widget) return Misure(*widget);
    return opzioni ? Misure(opzioni->fontMetrics) : Misure(QFontMetrics(QApplication::font()));
}

/// How much wider the text is in semibold, for what is semibold now or can become so.
int PiuForte(const QWidget* widget, const QString& testo) {
    if (!widget || testo.isEmpty()) return 0;
    const QFontMetrics forte(Carattere(*widget, Scrittura::Forte));
    const auto largo = [&testo](const QFontMetrics& m) {
        return m.size(Qt::TextShowMnemonic, testo).width();
    };
    return std::max(0, largo(forte) - largo(widget->fontMetrics()));
}

int MargineLayout(const QWidget* widget) {
    if (!widget || widget->isWindow()) return kMargineDialogo;
    return qobject_cast<const QGroupBox*>(widget) ? kMargineCornice : kSpazio;
}

QSize MisuraPulsante(const QStyleOptionButton& o, const QSize& contenuto, const QWidget* widget) {
    const Misure m = MisureDi(&o, widget);
    const bool inRiga = widget && qobject_cast<const QDialogButtonBox*>(widget->parentWidget());
    const auto* pulsante = qobject_cast<const QPushButton*>(widget);
    int largo = contenuto.width() + InBox(24);
    if (o.text.isEmpty()) largo = contenuto.width() + InBox(12);
    // Whichever has the focus can become the default, and must not grow then.
    if (pulsante || inRiga) largo += PiuForte(widget, o.text);
    if (inRiga || (pulsante && pulsante->isDefault()))
        largo = std::max(largo, InBox(kLarghezzaPulsante));
    return {largo, std::max(m.Controllo, contenuto.height() + 8)};
}

QSize MisuraVoceMenu(const QStyleOptionMenuItem& o, const QSize& contenuto, const QWidget* widget) {
    if (o.menuItemType == QStyleOptionMenuItem::Separator) return {contenuto.width(), 9};
    const int colonna = std::max(o.maxIconWidth, kColonnaSpunte);
    const int scorciatoia = o.text.contains(QLatin1Char('\t')) ? 24 : 0;
    return {contenuto.width() + kSpazio + colonna + kSpazio + scorciatoia + 24,
            std::max(contenuto.height(), MisureDi(&o, widget).Riga)};
}

QRect ParteGruppo(const QStyleOptionGroupBox& o, QStyle::SubControl parte, const QWidget* widget) {
    const Misure m = MisureDi(&o, widget);
    const bool spunta = o.subControls & QStyle::SC_GroupBoxCheckBox;
    const int titolo = o.text.isEmpty() && !spunta ? 0 : m.Linea + kSopraCornice;
    const QRect cornice = o.rect.adjusted(0, titolo, 0, 0);
    const int lato = LatoSpunta();
    const int davanti = spunta ? lato + kSpazio : 0;
    switch (parte) {
        case QStyle::SC_GroupBoxFrame:
            return cornice;
        case QStyle::SC_GroupBoxContents:
            return cornice.adjusted(1, 1, -1, -1);
        case QStyle::SC_GroupBoxCheckBox:
            return {o.rect.left(), o.rect.top() + (m.Linea - lato) / 2, lato, lato};
        default:
            return {o.rect.left() + davanti, o.rect.top(), o.rect.width() - davanti, m.Linea};
    }
}

/// No arrows: the groove takes the whole bar.
QRect ParteScorrimento(const QStyleOptionSlider& o, QStyle::SubControl parte) {
    const bool orizzontale = o.orientation == Qt::Horizontal;
    const int lungo = orizzontale ? o.rect.width() : o.rect.height();
    const std::int64_t corsa = static_cast<std::int64_t>(o.maximum) - o.minimum;
    int maniglia = lungo;
    if (corsa > 0) {
        const double quota =
            static_cast<double>(o.pageStep) / static_cast<double>(corsa + o.pageStep);
        maniglia = std::clamp(qRound(quota * lungo), std::min(kManigliaMinima, lungo), lungo);
    }
    const int inizio = QStyle::sliderPositionFromValue(o.minimum, o.maximum, o.sliderPosition,
                                                       lungo - maniglia, o.upsideDown);
    const auto tratto = [&](int da, int quanto) {
        return orizzontale ? QRect(o.rect.left() + da, o.rect.top(), quanto, o.rect.height())
                           : QRect(o.rect.left(), o.rect.top() + da, o.rect.width(), quanto);
    };
    switch (parte) {
        case QStyle::SC_ScrollBarSlider:
            return tratto(inizio, maniglia);
        case QStyle::SC_ScrollBarSubPage:
            return tratto(0, inizio);
        case QStyle::SC_ScrollBarAddPage:
            return tratto(inizio + maniglia, lungo - inizio - maniglia);
        case QStyle::SC_ScrollBarGroove:
            return o.rect;
        default:
            return {};
    }
}

QRect ParteElenco(const QStyleOptionComboBox& o, QStyle::SubControl parte) {
    switch (parte) {
        case QStyle::SC_ComboBoxArrow:
            return {o.rect.right() - kFreccia + 1, o.rect.top(), kFreccia, o.rect.height()};
        case QStyle::SC_ComboBoxEditField:
            return o.editable ? o.rect.adjusted(kMargineEdit, 1, -kFreccia, -1)
                              : o.rect.adjusted(kSpazio, 0, -kFreccia, 0);
        default:
            return o.rect;
    }
}

QRect ParteSpin(const QStyleOptionSpinBox& o, QStyle::SubControl parte) {
    const bool frecce = o.buttonSymbols != QAbstractSpinBox::NoButtons;
    const int largo = frecce ? kFrecciaSpin : 0;
    const int mezzo = o.rect.height() / 2;
    const QRect destra(o.rect.right() - largo + 1, o.rect.top(), largo, o.rect.height());
    switch (parte) {
        case QStyle::SC_SpinBoxUp:
            return frecce ? destra.adjusted(0, 0, 0, -mezzo) : QRect();
        case QStyle::SC_SpinBoxDown:
            return frecce ? destra.adjusted(0, o.rect.height() - mezzo, 0, 0) : QRect();
        case QStyle::SC_SpinBoxEditField:
            return o.rect.adjusted(kMargineEdit, 1, -largo - 1, -1);
        default:
            return o.rect;
    }
}

/// The metrics that are the same for all fonts and widgets; less than 0: not one of them.
int MisuraFissa(QStyle::PixelMetric misura) {
    switch (misura) {
        case QStyle::PM_ButtonMargin:
            return 12;
        case QStyle::PM_ComboBoxFrameWidth:
        case QStyle::PM_SpinBoxFrameWidth:
        case QStyle::PM_MenuPanelWidth:
        case QStyle::PM_TabBarBaseOverlap:
            return 1;
        case QStyle::PM_ButtonDefaultIndicator:
        case QStyle::PM_ButtonShiftHorizontal:
        case QStyle::PM_ButtonShiftVertical:
        case QStyle::PM_ToolBarFrameWidth:
        case QStyle::PM_TabBarTabOverlap:
        case QStyle::PM_TabBarTabShiftVertical:
        case QStyle::PM_TabBarTabShiftHorizontal:
        case QStyle::PM_MenuHMargin:
            return 0;
        case QStyle::PM_LayoutHorizontalSpacing:
        case QStyle::PM_LayoutVerticalSpacing:
        case QStyle::PM_SplitterWidth:
        case QStyle::PM_CheckBoxLabelSpacing:
        case QStyle::PM_RadioButtonLabelSpacing:
            return kSpazio;
        case QStyle::PM_ScrollBarSliderMin:
            return kManigliaMinima;
        case QStyle::PM_ToolBarItemSpacing:
            return 2;
        case QStyle::PM_ToolBarItemMargin:
        case QStyle::PM_MenuVMargin:
            return 4;
        case QStyle::PM_ToolBarSeparatorExtent:
            return 17;
        case QStyle::PM_TabBarTabHSpace:
            return 32;
        case QStyle::PM_TabBarTabVSpace:
        case QStyle::PM_MenuButtonIndicator:
            return 12;
        default:
            return -1;
    }
}

}  // namespace

int Stile::pixelMetric(PixelMetric misura, const QStyleOption* opzioni,
                       const QWidget* widget) const {
    if (const int fissa = MisuraFissa(misura); fissa >= 0) return fissa;
    switch (misura) {
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
        case PM_SmallIconSize:
            return LatoSpunta();
        case PM_ScrollBarExtent:
            return InBox(kBarraScorrimento);
        case PM_ToolBarIconSize:
            return LatoIcona();
        case PM_MessageBoxIconSize:
            return kLatoIcona * 3 / 2 * LatoIcona() / kLatoIcona;
        case PM_DefaultFrameWidth: {
            // The ring of the focus lies in the frame of a box for text.
            const bool testo = qobject_cast<const QPlainTextEdit*>(widget) ||
                               qobject_cast<const QTextEdit*>(widget);
            return testo ? 2 : 1;
        }
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin:
            return MargineLayout(widget);
        case PM_HeaderMargin: {
            // With more a row of a table could not be as low as `Misure` wants it.
            const auto* testata = qobject_cast<const QHeaderView*>(widget);
            return testata && testata->orientation() == Qt::Vertical ? kSpazio / 2 : kSpazio;
        }
        case PM_HeaderDefaultSectionSizeVertical:
            return MisureDi(opzioni, widget).Riga;
        case PM_FocusFrameHMargin:
        case PM_FocusFrameVMargin:
            // Of the cells of a view too: text at 8 from the edge.
            return qobject_cast<const QFocusFrame*>(widget) ? 3 : kSpazio - 1;
        default:
            return QProxyStyle::pixelMetric(misura, opzioni, widget);
    }
}

int Stile::styleHint(StyleHint quale, const QStyleOption* opzioni, const QWidget* widget,
                     QStyleHintReturn* risposta) const {
    switch (quale) {
        case SH_DialogButtonBox_ButtonsHaveIcons:
        case SH_ComboBox_Popup:  // a list below the box, not a menu over it
        case SH_EtchDisabledText:
        case SH_Widget_Animate:
        case SH_Widget_Animation_Duration:
        case SH_ScrollBar_Transient:
        case SH_FocusFrame_Mask:
            return 0;
        case SH_FocusFrame_AboveWidget:
        case SH_ItemView_ShowDecorationSelected:
            return 1;
        case SH_ToolTipLabel_Opacity:
            return 255;
        case SH_Table_GridLineColor:
            return static_cast<int>((opzioni ? opzioni->palette : QApplication::palette(widget))
                                        .midlight()
                                        .color()
                                        .rgb());
        default:
            return QProxyStyle::styleHint(quale, opzioni, widget, risposta);
    }
}

QSize Stile::sizeFromContents(ContentsType tipo, const QStyleOption* opzioni,
                              const QSize& contenuto, const QWidget* widget) const {
    const Misure m = MisureDi(opzioni, widget);
    const auto alta = [](QSize misura, int almeno) {
        return QSize(misura.width(), std::max(misura.height(), almeno));
    };
    const auto base = [&] {
        return QProxyStyle::sizeFromContents(tipo, opzioni, contenuto, widget);
    };
    switch (tipo) {
        case CT_PushButton:
            if (const auto* o = qstyleoption_cast<const QStyleOptionButton*>(opzioni)) {
                return MisuraPulsante(*o, contenuto, widget);
            }
            return base();
        case CT_LineEdit: {
            const auto* o = qstyleoption_cast<const QStyleOptionFrame*>(opzioni);
            if (!o || o->lineWidth <= 0) return contenuto;
            return {contenuto.width() + 2 * kMargineEdit, m.Controllo};
        }
        case CT_ComboBox:
            return {contenuto.width() + kSpazio + kFreccia + 2,
                    std::max(m.Controllo, contenuto.height())};
        case CT_SpinBox:
            return {contenuto.width() + kSpazio + kFrecciaSpin, m.Controllo};
        case CT_CheckBox:
        case CT_RadioButton:
            return alta(base(), m.Linea + InBox(4));
        case CT_ToolButton: {
            const auto* o = qstyleoption_cast<const QStyleOptionToolButton*>(opzioni);
            const bool icona = o && !o->icon.isNull();
            return alta(contenuto + QSize(InBox(12), InBox(icona ? 12 : 10)), m.Controllo);
        }
        case CT_ItemViewItem:
            return alta(base(), m.Riga);
        case CT_HeaderSection:
            // The margin at the sides is 8, above and below 5.
            return base() + QSize(0, m.Testata - m.Linea - 2 * kSpazio);
        case CT_TabBarTab:
            if (const auto* o = qstyleoption_cast<const QStyleOptionTab*>(opzioni)) {
                return {contenuto.width() + PiuForte(widget, o->text), m.Linguetta};
            }
            return base();
        case CT_MenuItem:
            if (const auto* o = qstyleoption_cast<const QStyleOptionMenuItem*>(opzioni)) {
                return MisuraVoceMenu(*o, contenuto, widget);
            }
            return base();
        case CT_MenuBarItem:
            return {contenuto.width() + 16, m.Riga};
        default:
            return base();
    }
}

QRect Stile::subElementRect(SubElement parte, const QStyleOption* opzioni,
                            const QWidget* widget) const {
    const QRect base = QProxyStyle::subElementRect(parte, opzioni, widget);
    switch (parte) {
        case SE_LineEditContents: {
            const auto* o = qstyleoption_cast<const QStyleOptionFrame*>(opzioni);
            const int margine = o && o->lineWidth > 0 ? kMargineEdit - o->lineWidth : 0;
            return base.adjusted(margine, 0, -margine, 0);
        }
        default:
            return base;
    }
}

QRect Stile::subControlRect(ComplexControl controllo, const QStyleOptionComplex* opzioni,
                            SubControl parte, const QWidget* widget) const {
    const auto visto = [&](const QRect& r) {
        return visualRect(opzioni->direction, opzioni->rect, r);
    };
    switch (controllo) {
        case CC_GroupBox:
            if (const auto* o = qstyleoption_cast<const QStyleOptionGroupBox*>(opzioni)) {
                return visto(ParteGruppo(*o, parte, widget));
            }
            break;
        case CC_ScrollBar:
            if (const auto* o = qstyleoption_cast<const QStyleOptionSlider*>(opzioni)) {
                return visto(ParteScorrimento(*o, parte));
            }
            break;
        case CC_ComboBox:
            if (const auto* o = qstyleoption_cast<const QStyleOptionComboBox*>(opzioni)) {
                if (parte != SC_ComboBoxListBoxPopup) return visto(ParteElenco(*o, parte));
            }
            break;
        case CC_SpinBox:
            if (const auto* o = qstyleoption_cast<const QStyleOptionSpinBox*>(opzioni)) {
                return visto(ParteSpin(*o, parte));
            }
            break;
        default:
            break;
    }
    return QProxyStyle::subControlRect(controllo, opzioni, parte, widget);
}

}  // namespace lapvane
