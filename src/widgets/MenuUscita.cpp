#include "widgets/MenuUscita.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <algorithm>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/Domande.h"
#include "shell/FrasiErrore.h"

namespace lapvane {

void MostraMenu(QWidget* padre, const QPoint& dove, const std::vector<VoceMenu>& voci) {
    QMenu menu(padre);
    QList<QAction*> azioni;
    for (const VoceMenu& voce : voci) azioni << menu.addAction(InQt(Testo(voce.Testo)));
    const qsizetype scelta = azioni.indexOf(menu.exec(dove));
    if (scelta >= 0) voci[static_cast<std::size_t>(scelta)].Azione();
}

void CopiaTesto(const QString& testo) {
    QGuiApplication::clipboard()->setText(testo);
}

QString ConTabulazioni(const RigheTabella& righe) {
    QStringList testo;
    for (const auto& riga : righe) {
        QStringList celle;
        for (const std::string& cella : riga) celle << InQt(cella);
        testo << celle.join(QLatin1Char('\t'));
    }
    return testo.join(QLatin1Char('\n'));
}

std::optional<std::filesystem::path> ScegliFile(Voce titolo, const char* filtro,
                                                const std::filesystem::path& proposto,
                                                std::initializer_list<const char*> fini) {
    auto scelto = platform().AskSave(
        {Testo(titolo), proposto.parent_path(), filtro, proposto.filename(), {}});
    if (!scelto) return std::nullopt;
    const std::string fine = scelto->extension().string();
    const auto sua = [&fine](const char* una) { return UgualiSenzaMaiuscole(fine, una); };
    if (std::none_of(fini.begin(), fini.end(), sua)) *scelto += *fini.begin();
    if (!PuoSostituire(*scelto)) return std::nullopt;
    return scelto;
}

void ScriviOAvvisa(const std::function<void()>& scrivi) {
    try {
        scrivi();
    } catch (const ErroreRuntime& errore) {
        SegnalaScrittura(errore, Voce::UscitaNonSalvata);
    }
}

void StampaOAvvisa(Voce titolo, const std::function<void()>& stampa) {
    try {
        stampa();
    } catch (const ErroreRuntime& errore) {
        platform().MousePointer(Pointer::Normal);
        platform().MsgBox(Testo(titolo) + ": " + TestoDaPercorso(errore.File()) + "\r\n" +
                              FraseErrore(ParoleDi(errore.Numero())),
                          Buttons::Ok, Icon::Critical, platform().ExeName());
    }
}

void SalvaTabella(const RigheTabella& righe, const std::filesystem::path& proposto) {
    const auto scelto = ScegliFile(Voce::SalvaTabellaCsv, "CSV (*.csv)|*.csv", proposto, {".csv"});
    if (!scelto) return;
    ScriviOAvvisa([&] {
        ScriviFile(*scelto, CsvTabella(righe, platform().DecimalSeparator()),
                   Lavoro::ScrivereTabella);
    });
}

std::filesystem::path NomeAccanto(const std::filesystem::path& log, const char* fine) {
    std::filesystem::path nome = log.parent_path() / log.stem();
    nome += fine;
    return nome;
}

}  // namespace lapvane
