#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "device/SerialComm.h"
#include "support/StrumentoProva.h"
#include "support/WindowPlatform.h"
#include "tools/support/Fit.h"

namespace lapvane::prova {

/// A program with a new project and an instrument, and one of its editors under real keys.
template <class F>
class EditorWindowProva : public ConStrumento<WindowPlatform> {
 protected:
    EditorWindowProva() {
        std::filesystem::copy(CartellaDati() / "pages", macchina.Cartella / "pages");
        ValoriInizialiProgetto();
        ProgettoModificato = false;
    }
    void Apri() {
        finestra = std::make_unique<F>();
        finestra->show();
        Attiva(*finestra);
    }
    static void Attiva(QWidget& quale) {
        quale.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&quale));
    }
    /// The poll has found the instrument.
    void Collega() {
        tmrComm_Timer();
        ASSERT_TRUE(StrumentoPresente);
    }
    template <class W>
    W* C(const std::string& nome) {
        return Controllo<W>(*finestra, nome.c_str());
    }
    std::string Testo(const std::string& nome) { return DaQt(C<QLineEdit>(nome)->text()); }
    std::string Scritta(const std::string& nome) { return DaQt(C<QLabel>(nome)->text()); }
    bool Acceso(const std::string& nome) { return C<QWidget>(nome)->isEnabled(); }
    static std::string Dice(Voce voce) { return lapvane::Testo(voce); }
    /// Goes to a box and types over its text.
    void Scrivi(const std::string& nome, const std::string& testo) {
        auto* casella = C<QLineEdit>(nome);
        casella->setFocus();
        casella->selectAll();
        QTest::keyClick(casella, Qt::Key_Delete);
        QTest::keyClicks(casella, InQt(testo));
    }
    void Tasto(Qt::Key tasto, Qt::KeyboardModifiers con = {}) {
        QTest::keyClick(QApplication::focusWidget(), tasto, con);
        QCoreApplication::processEvents();
    }
    void Clic(const std::string& nome) {
        auto* pulsante = C<QAbstractButton>(nome);
        const QPoint dove = qobject_cast<QCheckBox*>(pulsante) != nullptr
                                ? QPoint(8, pulsante->height() / 2)
                                : pulsante->rect().center();
        QTest::mouseClick(pulsante, Qt::LeftButton, {}, dove);
        QCoreApplication::processEvents();
    }
    /// What was shown since the last call.
    std::vector<std::string> Mostrati() {
        const std::vector<std::string> testi = Detto();
        macchina.Mostrati.clear();
        return testi;
    }

    /// What shows of the window fits a small screen, its words whole.
    void SchermoIntero() {
        EXPECT_LE(finestra->width(), 1366);
        EXPECT_LE(finestra->height(), 700);
        EXPECT_EQ(Fit(finestra.get()).join(QLatin1Char(' ')).toStdString(), "");
    }
    using V = std::vector<std::string>;
    PrincipaleProva& principale = ConStrumento<WindowPlatform>::finestra;
    std::unique_ptr<F> finestra;
};

}  // namespace lapvane::prova
