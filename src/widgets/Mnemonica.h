#pragma once

#include <QSet>
#include <QString>

namespace lapvane {

/// Hands out Alt letters: the texts of the table carry none, so that one text can serve as caption,
/// tool tip and heading. One object for the captions of one menu or one window.
class Mnemonica {
 public:
    /// The text as a caption: "&" doubled, and one "&" in front of the first letter (word
    /// beginnings before others) that no earlier caption took.
    QString Con(const QString& testo);
    /// The text as a caption without an Alt letter: "&" doubled.
    static QString Senza(QString testo);

 private:
    QSet<QChar> prese_;
};

}  // namespace lapvane
