// What the files promise where Windows has rules of its own.
#include "platform/FileTesto.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <clocale>
#include <iterator>
#include <string>
#include <vector>

#include "analysis/compare/Confronto.h"
#include "logs/BufferLog.h"
#include "logs/DiarioScarico.h"
#include "logs/Soccorso.h"
#include "platform/CartellaProgramma.h"
#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileCrescente.h"
#include "platform/FileSistema.h"
#include "project/FileRecenti.h"
#include "runs/Archivio.h"
#include "shell/Domande.h"
#include "shell/LogRecenti.h"
#include "shell/NumeroTesto.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;

constexpr Lavoro kLavoro = Lavoro::LeggereFile;  // any

/// Another program that has a file open.
class Altrui {
 public:
    Altrui(const fs::path& file, DWORD condivide)
        : handle_(::CreateFileW(file.c_str(), GENERIC_READ, condivide, nullptr, OPEN_EXISTING, 0,
                                nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~Altrui() { ::CloseHandle(handle_); }
    Altrui(const Altrui&) = delete;
    Altrui& operator=(const Altrui&) = delete;

 private:
    HANDLE handle_;
};

/// Whether a save went well; one that did not has told why.
template <class F>
bool Riesce(F azione) {
    try {
        azione();
        return true;
    } catch (const ErroreRuntime& errore) {
        EXPECT_EQ(errore.Numero(), NumeroErrore::PathAccess);
        return false;
    }
}

std::size_t Voci(const fs::path& cartella) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(cartella), fs::directory_iterator()));
}

// Windows refuses to rename over a file that is open; where the other shares its writing the save
// is then made in place. Under wine one that shares its removal gives way.
TEST(FileWindows, AFileThatAnotherHoldsIsSavedWholeOrNotAtAll) {
    PlatformProva macchina;
    const fs::path txt = macchina.Cartella / "run.txt", csv = macchina.Cartella / "run.csv";
    const DWORD r = FILE_SHARE_READ, w = FILE_SHARE_WRITE, d = FILE_SHARE_DELETE;
    for (const DWORD condivide : {DWORD{0}, r, r | w, r | d, r | w | d}) {
        for (const fs::path& file : {txt, csv}) prova::Scrivi(file, "vecchio e lungo");
        bool uno = false, insieme = false;
        {
            const Altrui tiene(csv, condivide);
            uno = Riesce([&] { ScriviFile(csv, "nuovo", kLavoro); });
            const std::vector<FileNuovo> file = {{txt, "secondo"}, {csv, "secondo"}};
            insieme = Riesce([&] { ScriviInsieme(file, kLavoro); });
        }
        EXPECT_FALSE(condivide == 0 && (uno || insieme));
        EXPECT_EQ(prova::Leggi(txt), insieme ? "secondo" : "vecchio e lungo") << condivide;
        EXPECT_EQ(prova::Leggi(csv), insieme ? "secondo" : uno ? "nuovo" : "vecchio e lungo");
        EXPECT_EQ(Voci(macchina.Cartella), 2u) << "a copy or a mark was left behind";
    }
    ::SetFileAttributesW(csv.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(Riesce([&] { ScriviFile(csv, "protetto", kLavoro); }));
    EXPECT_NE(prova::Leggi(csv), "protetto");
    EXPECT_EQ(Voci(macchina.Cartella), 2u);
    ::SetFileAttributesW(csv.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(FileWindows, NamesOfOtherCaseAreTheSameFile) {
    PlatformProva macchina;
    const fs::path& cartella = macchina.Cartella;
    ScriviFile(cartella / "a.PRO", "1", kLavoro);
    ScriviFile(cartella / "A.pro", "2", kLavoro);
    EXPECT_EQ(LeggiFile(cartella / "a.PRO", kLavoro), "2");
    EXPECT_EQ(Voci(cartella), 1u);
    constexpr std::array<std::string_view, 1> kFine = {".Pro"};
    EXPECT_EQ(NomeLibero(cartella, "a", kFine), "a 2");
    // The mark of a save that was cut; its name is made from "RUN.".
    prova::Scrivi(cartella / "Run.csv", "vecchio");
    prova::Scrivi(cartella / ".lapvane-c", "nuovo");
    prova::Scrivi(cartella / ".lapvane+00f1282c0edd370c",
                  "Lapvane save 1\r\nR\r\nRun.csv\r\n.lapvane-c\r\nend\r\n");
    {
        const Altrui tiene(cartella / "Run.csv", FILE_SHARE_READ);
        EXPECT_EQ(LeggiFile(cartella / "rUN.CSV", kLavoro), "nuovo") << "it is read from its copy";
    }
    EXPECT_EQ(LeggiFile(cartella / "rUN.CSV", kLavoro), "nuovo");
    EXPECT_EQ(prova::Leggi(cartella / "Run.csv"), "nuovo");
}

/// A folder below whose path is longer than what the system takes in its oldest form.
fs::path Lunga(const fs::path& cartella) {
    fs::path lunga = cartella;
    while (lunga.native().size() < 300) lunga /= std::wstring(60, L'x');
    EXPECT_TRUE(CreaCartelle(lunga));
    return lunga;
}

/// Takes away a folder with all that lies in it.
bool Sgombera(const fs::path& cartella) {
    for (LettoreCartella voci(cartella); !voci.Fine(); voci.Avanti()) {
        voci.Cartella() ? Sgombera(voci.Voce()) : Elimina(voci.Voce());
    }
    return Elimina(cartella);
}

// Wine takes a long path in any form, but for those that go by way of the library.
TEST(FileWindows, LongPathsAndForeignNamesAreReadSavedAndListed) {
    PlatformProva macchina;
    const fs::path cartella = Lunga(macchina.Cartella);
    EXPECT_EQ(sistema::Nativo(cartella), L"\\\\?\\" + cartella.native());
    EXPECT_EQ(sistema::Nativo(cartella / ".." / "."), L"\\\\?\\" + cartella.parent_path().native());
    EXPECT_EQ(sistema::Nativo(L"\\\\box\\logs\\" + std::wstring(250, L'x')),
              L"\\\\?\\UNC\\box\\logs\\" + std::wstring(250, L'x'));
    EXPECT_EQ(sistema::Nativo(L"a.pro"), L"a.pro");
    const std::string testo = "a\r\nb\nc\r\x1A\r\n";
    for (const fs::path& dove : {macchina.Cartella, cartella}) {
        const fs::path file = dove / L"\u65E5\u672C \u0141\u00F3d\u017A \u20AC.pro";
        for (const std::string& byte : {std::string("vecchio e lungo"), testo}) {
            ScriviFile(file, byte, kLavoro);
        }
        EXPECT_EQ(LeggiFile(file, kLavoro), testo);
        EXPECT_TRUE(CartellaScrivibile(dove));
        EXPECT_EQ(ElencaPercorsi(dove), std::vector<fs::path>{file});
        FileCrescente cresce;
        cresce.Crea(dove / "b.txt", kLavoro);
        EXPECT_TRUE(FileCrescente::InUso(dove / "b.txt"));
        cresce.Chiudi();
        const std::vector<FileNuovo> insieme = {{dove / "b.txt", "due"}, {dove / "b.csv", "due"}};
        ScriviInsieme(insieme, kLavoro);
        EXPECT_EQ(LeggiFile(dove / "b.txt", kLavoro), "due");
        EXPECT_EQ(ElencaPercorsi(dove).size(), 3u);
        for (const fs::path& uno : ElencaPercorsi(dove)) EXPECT_TRUE(Elimina(uno));
    }
}

/// The sample run in a folder.
fs::path Uscita(const fs::path& cartella) {
    CreaCartelle(cartella);
    for (const char* fine : {"csv", "txt", "tim"}) {
        const std::string file = std::string("Esempio.") + fine;
        ScriviFile(cartella / file, LeggiFile(prova::CartellaBin() / "sample" / file, kLavoro),
                   kLavoro);
    }
    return cartella / "Esempio.csv";
}

TEST(FileWindows, TheProgramWorksInALongFolder) {
    PlatformProva macchina;
    prova::PrincipaleProva finestra;
    prova::CaricaTestiVeri(1);
    const fs::path prima = macchina.Cartella, cartella = Lunga(prima);
    macchina.Cartella = cartella;
    {
        DiarioScarico diario(CartellaScarichi());
        diario.Memoria(256, 1);
        diario.Scrivi(0, std::string(kByteBlocco, '\0'), std::string(kByteBlocco, '\0'));
    }
    ProgettoModificato = true;
    EXPECT_EQ(MettiDaParte().File.parent_path(), cartella);
    ProgettoModificato = false;
    macchina.Risposte = {Answer::No, Answer::No};
    for (int volta = 0; volta < 2; ++volta) OffriSoccorso();
    EXPECT_EQ(macchina.Mostrati.size(), 2u) << "what is declined is not offered again";

    Uscita(cartella / "runs");
    for (const char* nome : {"runs", "RUNS"}) {
        Archivio archivio;
        archivio.Apri(cartella / nome);
        while (archivio.Passo(0)) {
        }
        ASSERT_EQ(archivio.Uscite().size(), 1u);
        EXPECT_EQ(archivio.Uscite()[0].LogLetto, nome[0] == 'R') << "known from the index";
        while (!archivio.LeggiLogDi(0, 1000)) {
        }
        EXPECT_EQ(archivio.Uscite()[0].Migliore, 7848);
        EXPECT_EQ(FraseProblema(archivio.Uscite()[0]), "");
        archivio.Salva();
    }

    const fs::path installata = cartella / "programma", personale = cartella / "casa" / "sua";
    CreaCartelle(installata / "sensors");
    for (const char* nome : {"for-all-users", "LANGUAGES.DAT", "sensors\\A.sns"}) {
        ScriviFile(installata / nome, "x", kLavoro);
    }
    EXPECT_EQ(CartellaDelProgramma(installata, personale), personale);
    EXPECT_TRUE(FileEsiste(personale / "sensors" / "A.sns"));
    EXPECT_EQ(SgomberaCartella(personale), 0u);
    EXPECT_EQ(GenereDi(personale), Genere::Niente);
    EXPECT_TRUE(Sgombera(prima)) << "something was left behind";
}

TEST(FileWindows, ListsAndQuestionsTakeNamesOfOtherCaseAsOne) {
    PlatformProva macchina;
    prova::PrincipaleProva finestra;
    prova::CaricaTestiVeri(1);
    const fs::path csv = Uscita(macchina.Cartella);
    const fs::path altro = (macchina.Cartella / "ESEMPIO.Csv").generic_wstring();
    ElencoLog elenco;
    for (const fs::path& uno : {csv, altro}) MettiInCima(elenco, uno);
    EXPECT_EQ(elenco, ElencoLog{altro});
    prova::Scrivi(macchina.Cartella / "RecentFiles.ini", "1\r\n" + csv.string() + "\r\n");
    LeggiFileRecenti();
    FileRecenteScelto = altro;
    AggiornaFileRecenti();
    EXPECT_EQ(finestra.Recenti, std::vector<fs::path>{altro});
    macchina.Risposte = {Answer::Cancel};
    EXPECT_FALSE(ConfermaSostituzione(altro));
    Confronto confronto;
    for (const fs::path& uno : {csv, altro}) EXPECT_EQ(confronto.Apri(uno), 0);
    EXPECT_TRUE(StessoNome(L"C:\\\u0416.pro", L"c:/\u0436.PRO")) << "no letters of the program's";
    EXPECT_FALSE(StessoFile(csv, macchina.Cartella / "Esempio.txt"));
}

TEST(FileWindows, TheDecimalCommaOfTheSystemChangesNoNumber) {
    const std::string prima = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "Italian_Italy.1252"), nullptr);
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    constexpr std::string_view kCampo = "-12.25;";
    std::array<char, 64> dove{};
    const std::string decimali(dove.data(), ScriviDecimali(dove.data(), 1234.5, '.'));
    EXPECT_EQ(TestoNumero(1.5) + " " + Formatta(1.5, "0.00") + " " + decimali, "1.5 1.50 1234.5");
    EXPECT_EQ(LeggiNumero("1.5"), 1.5);
    EXPECT_EQ(CampoNumerico(kCampo.data(), kCampo.data() + 6), -12.25);
    std::setlocale(LC_ALL, prima.c_str());
}

}  // namespace
}  // namespace lapvane
