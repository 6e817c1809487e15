#include "tools/support/Fit.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFocusFrame>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSizeGrip>
#include <QStyleOption>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>

namespace lapvane {

namespace {

/// A scroll bar's worth of pixels is a fault, a rounding is none.
constexpr int kSlack = 1;

QString Who(const QWidget* control) {
    return QStringLiteral("%1 \"%2\"")
        .arg(QString::fromLatin1(control->metaObject()->className()), control->objectName());
}

/// Room that words need and what they have; nothing if they have it.
QString Cut(const QString& words, const QSize& need, const QSize& room) {
    const bool wide = need.width() > room.width() + kSlack;
    const bool high = need.height() > room.height() + kSlack;
    if (!wide && !high) return {};
    return QStringLiteral("\"%1\" needs %2 x %3, has %4 x %5")
        .arg(words.simplified())
        .arg(need.width())
        .arg(need.height())
        .arg(room.width())
        .arg(room.height());
}

QSize Words(const QFont& font, const QString& text) {
    return QFontMetrics(font).size(Qt::TextShowMnemonic, text);
}

/// The letters of a title, of what is chosen, of the default button.
QFont Strong(QFont font) {
    font.setWeight(QFont::DemiBold);
    return font;
}

QString CutLabel(const QLabel& label) {
    if (label.text().isEmpty()) return {};
    if (label.wordWrap()) {
        return Cut(label.text(), QSize(0, label.heightForWidth(label.width())), label.size());
    }
    return Cut(label.text(), label.minimumSizeHint(), label.size());
}

QString CutButton(const QAbstractButton& button) {
    if (button.text().isEmpty()) return {};
    if (qobject_cast<const QCheckBox*>(&button) != nullptr ||
        qobject_cast<const QRadioButton*>(&button) != nullptr) {
        // Higher than its words and its box it need not be.
        const int box = button.style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &button);
        const int high = std::max(box, Words(button.font(), button.text()).height());
        return Cut(button.text(), QSize(button.sizeHint().width(), high), button.size());
    }
    if (const auto* push = qobject_cast<const QPushButton*>(&button)) {
        const bool strong = push->isDefault() || push->isChecked();
        const QFont font = strong ? Strong(push->font()) : push->font();
        return Cut(push->text(), Words(font, push->text()) + QSize(12, 2), push->size());
    }
    if (const auto* tool = qobject_cast<const QToolButton*>(&button)) {
        if (!tool->icon().isNull() && tool->toolButtonStyle() == Qt::ToolButtonIconOnly) return {};
        return Cut(tool->text(), Words(tool->font(), tool->text()) + QSize(2, 2), tool->size());
    }
    return {};
}

QStringList CutTabs(const QTabBar& bar) {
    QStringList faults;
    const QFont strong = Strong(bar.font());
    for (int i = 0; i < bar.count(); ++i) {
        if (!bar.isTabVisible(i)) continue;
        const QRect tab = bar.tabRect(i);
        faults << Cut(bar.tabText(i), Words(strong, bar.tabText(i)), tab.size());
        if (!bar.rect().adjusted(-kSlack, 0, kSlack, 0).contains(tab)) {
            faults << QStringLiteral("tab \"%1\" is out of view").arg(bar.tabText(i));
        }
    }
    return faults;
}

QStringList CutHeads(const QHeaderView& head) {
    QStringList faults;
    if (head.orientation() != Qt::Horizontal || head.model() == nullptr) return {};
    QFont font = head.font();
    font.setPointSizeF(font.pointSizeF() - 1.0);  // the small step of the type scale
    for (int i = 0; i < head.count(); ++i) {
        if (head.isSectionHidden(i)) continue;
        const QString text = head.model()->headerData(i, Qt::Horizontal).toString();
        faults << Cut(text, Words(font, text), QSize(head.sectionSize(i), head.height()));
    }
    return faults;
}

QStringList CutWords(const QWidget& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) return {CutLabel(*label)};
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        return {CutButton(*button)};
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&control)) {
        const QSize words = Words(Strong(group->font()), group->title());
        return {Cut(group->title(), words, group->size())};
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(&control)) return CutTabs(*tabs);
    if (const auto* head = qobject_cast<const QHeaderView*>(&control)) return CutHeads(*head);
    if (const auto* list = qobject_cast<const QComboBox*>(&control); list && !list->isEditable()) {
        QStyleOptionComboBox o;
        o.initFrom(list);
        o.editable = false;
        const QRect room = list->style()->subControlRect(QStyle::CC_ComboBox, &o,
                                                         QStyle::SC_ComboBoxEditField, list);
        const QFontMetrics font(list->font());
        const QSize words(font.horizontalAdvance(list->currentText()), font.height());
        return {Cut(list->currentText(), words, room.size())};
    }
    return {};
}

/// A widget that lies on purpose elsewhere than its parent: what scrolls, what the toolkit lays
/// over or beside.
bool Free(const QWidget* control) {
    const QWidget* parent = control->parentWidget();
    const auto* view = qobject_cast<const QAbstractScrollArea*>(parent->parentWidget());
    return (view != nullptr && view->viewport() == parent) ||
           qobject_cast<const QFocusFrame*>(control) != nullptr ||
           qobject_cast<const QSizeGrip*>(control) != nullptr ||
           qobject_cast<const QAbstractScrollArea*>(parent) != nullptr ||
           qobject_cast<const QTabBar*>(parent) != nullptr;
}

QStringList OutOfScreen(const QWidget* window) {
    const QScreen* screen = window->screen();
    if (screen == nullptr) return {};
    QStringList faults;
    const QSize room = screen->availableSize();
    if (window->width() > room.width() || window->height() > room.height()) {
        faults << QStringLiteral("the window is %1 x %2, the screen has %3 x %4")
                      .arg(window->width())
                      .arg(window->height())
                      .arg(room.width())
                      .arg(room.height());
    }
    for (const char* name : {"OKButton", "CancelButton"}) {
        const auto* button = window->findChild<QPushButton*>(QLatin1String(name));
        if (button == nullptr || !button->isVisible()) continue;
        const QRect place(button->mapTo(window, QPoint()), button->size());
        const QRect seen = button->visibleRegion().boundingRect();
        if (!QRect(QPoint(), room).contains(place) || seen.size() != button->size()) {
            faults << Who(button) + QStringLiteral(" is out of view");
        }
    }
    return faults;
}

}  // namespace

QStringList Fit(QWidget* window) {
    QStringList faults = OutOfScreen(window);
    // What the toolkit lays out in its own file dialog is not ours to judge.
    if (qobject_cast<QFileDialog*>(window) != nullptr) return faults;
    const auto controls = window->findChildren<QWidget*>();
    for (const QWidget* control : controls) {
        if (control->window() != window || !control->isVisible()) continue;
        for (const QString& cut : CutWords(*control)) {
            if (!cut.isEmpty()) faults << Who(control) + QStringLiteral(": ") + cut;
        }
        const QRect inside = control->parentWidget()->rect();
        if (!control->size().isEmpty() && !Free(control) && !inside.contains(control->geometry())) {
            const QRect g = control->geometry();
            faults << QStringLiteral("%1 at %2,%3 %4 x %5 reaches beyond %6, which is %7 x %8")
                          .arg(Who(control))
                          .arg(g.x())
                          .arg(g.y())
                          .arg(g.width())
                          .arg(g.height())
                          .arg(Who(control->parentWidget()))
                          .arg(inside.width())
                          .arg(inside.height());
        }
    }
    return faults;
}

}  // namespace lapvane
