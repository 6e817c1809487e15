#include "Census.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QFileDialog>
#include <QKeySequence>
#include <QLabel>
#include <QMap>
#include <QMessageBox>
#include <QToolButton>

namespace lapvane::tour {

namespace {

QString Who(const QWidget* control) {
    return QStringLiteral("%1 \"%2\"")
        .arg(QString::fromLatin1(control->metaObject()->className()), control->objectName());
}

/// A part of another control: a box's inner line, a scroll bar, the corner of a table.
bool IsPart(const QWidget* control) {
    if (control->objectName().startsWith(QLatin1String("qt_"))) return true;
    const QWidget* parent = control->parentWidget();
    return parent != nullptr &&
           (parent->inherits("QAbstractSpinBox") || parent->inherits("QComboBox") ||
            parent->inherits("QTabBar") || parent->inherits("QAbstractItemView") ||
            parent->objectName().startsWith(QLatin1String("qt_")));
}

QString Name(QWidget* control) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
    return face != nullptr ? face->text(QAccessible::Name).trimmed() : QString();
}

QKeySequence AltLetter(const QWidget* control) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
        return button->shortcut().isEmpty() ? QKeySequence::mnemonic(button->text())
                                            : button->shortcut();
    }
    if (const auto* label = qobject_cast<const QLabel*>(control)) {
        return label->buddy() != nullptr && label->buddy()->isEnabled()
                   ? QKeySequence::mnemonic(label->text())
                   : QKeySequence();
    }
    return {};
}

}  // namespace

QStringList Census(QWidget* window) {
    // The dialogs of the system and of Qt are not ours to name.
    if (qobject_cast<QFileDialog*>(window) != nullptr ||
        qobject_cast<QMessageBox*>(window) != nullptr) {
        return {};
    }
    QStringList faults;
    QMap<QString, QString> letters;
    const auto controls = window->findChildren<QWidget*>();
    for (QWidget* control : controls) {
        if (control->window() != window || !control->isVisible() || IsPart(control)) continue;
        const QString letter = AltLetter(control).toString();
        if (!letter.isEmpty() && control->isEnabled()) {
            if (letters.contains(letter)) {
                faults << QStringLiteral("%1 is claimed by %2 and by %3")
                              .arg(letter, letters[letter], Who(control));
            }
            letters.insert(letter, Who(control));
        }
        if (!control->isEnabled()) continue;
        const auto* button = qobject_cast<QAbstractButton*>(control);
        const bool byTab = (control->focusPolicy() & Qt::TabFocus) != 0;
        if ((byTab || button != nullptr) && Name(control).isEmpty()) {
            faults << Who(control) + QStringLiteral(" has no accessible name");
        }
        // Of a group of option buttons Tab reaches the chosen one, the arrows the others.
        const bool option = button != nullptr && button->autoExclusive() && button->isCheckable();
        if (button != nullptr && !byTab && letter.isEmpty() && !option) {
            const auto* tool = qobject_cast<const QToolButton*>(button);
            // A tool button's command is in the menu as well.
            if (tool == nullptr || tool->defaultAction() == nullptr) {
                faults << Who(control) + QStringLiteral(" is reached by no key");
            }
        }
    }
    return faults;
}

}  // namespace lapvane::tour
