// Keys in every dialog of the program: Enter presses the button that has the focus and is OK
// elsewhere, Esc leaves.
#include "widgets/TastoInvio.h"

#include <QComboBox>
#include <QLineEdit>
#include <QToolButton>

#include "analysis/frmAnalisiDatiSpeed.h"
#include "project/frmStampaDatiProgetto.h"
#include "reports/ReportProva.h"
#include "reports/dlgDatiSessione.h"
#include "reports/dlgReportGiri.h"
#include "reports/dlgSetGraph.h"
#include "sensors/frmAllarmi.h"
#include "sensors/frmConfigurazione.h"
#include "sensors/frmImpostaSensore.h"
#include "sensors/frmSensori.h"
#include "shell/dlgLanguages.h"
#include "support/WindowPlatform.h"

namespace lapvane::prova {
namespace {

class InOgniDialogo : public DialogoDiReport {
 protected:
    InOgniDialogo() {
        for (const char* cartella : {"pages", "sensors", "tracks"}) {
            std::filesystem::copy(CartellaDati() / cartella, macchina.Cartella / cartella);
        }
        ValoriInizialiProgetto();
        StrumentoPresente = true;
        analisi.Giri = {{"1", "01:10.00", ""}, {"1", "01:11.00", ""}};
    }
    ImpostazioniCanale valori;
};

TEST_F(InOgniDialogo, EnterPressesTheFocusedButtonAndNoOtherAndIsOkElsewhere) {
    struct Caso {
        const char* Nome;
        std::function<std::unique_ptr<QDialog>()> Crea;
        const char* Predefinito;  // none: Enter does nothing where no button is
    };
    const auto semplice = []<class D>(D*) { return [] { return std::make_unique<D>(); }; };
    const Caso casi[] = {
        {"dlgLanguages", semplice((dlgLanguages*)nullptr), "OKButton"},
        {"frmStampaDatiProgetto", semplice((frmStampaDatiProgetto*)nullptr), nullptr},
        {"frmSensori", semplice((frmSensori*)nullptr), "OKButton"},
        {"frmImpostaSensore", semplice((frmImpostaSensore*)nullptr), "cmdDisegnaCurva"},
        {"dlgDatiSessione", [] { return std::make_unique<dlgDatiSessione>([] {}); }, "OKButton"},
        {"dlgSetGraph", [this] { return std::make_unique<dlgSetGraph>(valori); }, "OKButton"},
        {"dlgReportGiri", [this] { return std::make_unique<dlgReportGiri>(analisi); }, nullptr},
        {"frmAnalisiDatiSpeed", semplice((frmAnalisiDatiSpeed*)nullptr), nullptr},
    };
    int premuti = 0;
    for (const Caso& caso : casi) {
        const std::unique_ptr<QDialog> dialogo = caso.Crea();
        // What the buttons do is not the matter here, only which of them is pressed.
        std::vector<std::string> sentiti;
        for (auto* pulsante : dialogo->findChildren<QAbstractButton*>()) {
            QObject::disconnect(pulsante, &QAbstractButton::clicked, nullptr, nullptr);
            QObject::connect(pulsante, &QAbstractButton::clicked, [&sentiti, pulsante] {
                sentiti.push_back(DaQt(pulsante->objectName()));
            });
        }
        dialogo->show();
        dialogo->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialogo.get())) << caso.Nome;
        for (QWidget* controllo : dialogo->findChildren<QWidget*>()) {
            if (!controllo->isVisible() || !controllo->isEnabled() ||
                (controllo->focusPolicy() & Qt::TabFocus) == 0) {
                continue;
            }
            const bool pulsante = qobject_cast<QPushButton*>(controllo) != nullptr ||
                                  qobject_cast<QToolButton*>(controllo) != nullptr;
            const bool scritto = qobject_cast<QLineEdit*>(controllo) != nullptr ||
                                 qobject_cast<QComboBox*>(controllo) != nullptr;
            if (!pulsante && !(scritto && caso.Predefinito != nullptr)) continue;
            // In the boxes of a division Enter divides.
            const std::string nome = DaQt(controllo->objectName());
            if (nome == "txtLunghezzaTracciato" || nome == "txtX0") continue;
            controllo->setFocus();
            sentiti.clear();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            const std::string atteso = pulsante ? nome : caso.Predefinito;
            EXPECT_EQ(sentiti, std::vector<std::string>{atteso})
                << caso.Nome << " with the focus on " << nome;
            EXPECT_TRUE(dialogo->isVisible());
            premuti += pulsante ? 1 : 0;
        }
        QTest::keyClick(dialogo.get(), Qt::Key_Escape);
        EXPECT_FALSE(dialogo->isVisible()) << caso.Nome;
        EXPECT_EQ(dialogo->result(), QDialog::Rejected) << caso.Nome;
    }
    EXPECT_GT(premuti, 30);
    EXPECT_FALSE(ProgettoModificato);
}

TEST_F(InOgniDialogo, CancelByEnterStoresNothingAndAHeldKeyPressesOnce) {
    DatiProgetto.chkTO = true;
    frmAllarmi allarmi;
    allarmi.show();
    allarmi.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&allarmi));
    auto* soglia = Controllo<QLineEdit>(allarmi, "txtTO");
    soglia->setFocus();
    soglia->selectAll();
    QTest::keyClicks(soglia, QStringLiteral("77"));
    Controllo<QPushButton>(allarmi, "CancelButton")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_FALSE(allarmi.isVisible());
    EXPECT_EQ(DatiProgetto.mskTO, 0);
    EXPECT_FALSE(ProgettoModificato);

    frmConfigurazione setup;
    setup.show();
    setup.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&setup));
    Controllo<QPushButton>(setup, "cmdNextPage")->setFocus();
    QTest::keyPress(QApplication::focusWidget(), Qt::Key_Return);
    QKeyEvent tenuto(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
    for (int i = 0; i < 3; ++i) QApplication::sendEvent(QApplication::focusWidget(), &tenuto);
    EXPECT_EQ(DaQt(Controllo<QLabel>(setup, "lblCurrPagina")->text()), " 2/ 9");
    EXPECT_TRUE(setup.isVisible());
    // By its Alt letter as well, wherever the focus was.
    Controllo<QComboBox>(setup, "cboLingua")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_N, Qt::AltModifier);
    const auto* pagina = Controllo<QLabel>(setup, "lblCurrPagina");
    EXPECT_TRUE(QTest::qWaitFor([&] { return DaQt(pagina->text()) == " 3/ 9"; }));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(DaQt(pagina->text()), " 4/ 9");
    EXPECT_TRUE(setup.isVisible());
}

}  // namespace
}  // namespace lapvane::prova
