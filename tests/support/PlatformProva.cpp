#include "support/PlatformProva.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

#include "platform/FileTesto.h"
#include "shell/TabelleNomi.h"

namespace lapvane::prova {

PlatformProva::PlatformProva() {
    std::random_device caso;
    do {
        Cartella =
            std::filesystem::temp_directory_path() / ("lapvane-prova-" + std::to_string(caso()));
    } while (!std::filesystem::create_directory(Cartella));
    CartellaCorrente = Cartella;
    SetPlatform(this);
    ImpostaRiserva(Cartella);
    AzzeraTutto();
}

PlatformProva::~PlatformProva() {
    EXPECT_TRUE(Risposte.empty()) << Risposte.size() << " scripted answers were not asked for";
    EXPECT_TRUE(FileScelti.empty()) << "a scripted file dialog did not appear";
    AzzeraTutto();
    SetPlatform(nullptr);
    ImpostaRiserva({});
    std::error_code ignorato;
    std::filesystem::remove_all(Cartella, ignorato);
}

void PlatformProva::DoEvents(int waitMs) {
    ++ChiamateEventi;
    Orologio += std::min(waitMs, Passo);
    if (DuranteEventi) DuranteEventi();
}

Answer PlatformProva::MsgBox(const std::string& text, Buttons buttons, Icon icon,
                             const std::string& title) {
    Mostrati.push_back({text, buttons, icon, title});
    if (AlBox) AlBox();
    if (Risposte.empty()) {
        if (!BoxLiberi) ADD_FAILURE() << "unexpected message box: " << text;
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
    const Answer risposta = Risposte.front();
    Risposte.pop_front();
    return risposta;
}

namespace {

std::optional<std::filesystem::path> Prossimo(
    std::deque<std::optional<std::filesystem::path>>& scelti) {
    if (scelti.empty()) {
        ADD_FAILURE() << "unexpected file dialog";
        return std::nullopt;
    }
    const auto scelto = scelti.front();
    scelti.pop_front();
    return scelto;
}

}  // namespace

std::optional<std::filesystem::path> PlatformProva::AskOpen(const FileRequest& request) {
    RichiesteFile.push_back(request);
    const auto scelto = Prossimo(FileScelti);
    if (scelto) CartellaCorrente = scelto->parent_path();
    return scelto;
}

std::optional<std::filesystem::path> PlatformProva::AskSave(const FileRequest& request) {
    return AskOpen(request);
}

std::optional<std::filesystem::path> PlatformProva::AskFolder(const std::string&,
                                                              const std::filesystem::path&) {
    return Prossimo(CartelleScelte);
}

std::optional<Colore> PlatformProva::AskColor(Colore) {
    if (ColoriScelti.empty()) {
        ADD_FAILURE() << "unexpected colour dialog";
        return std::nullopt;
    }
    const auto scelto = ColoriScelti.front();
    ColoriScelti.pop_front();
    return scelto;
}

void PlatformProva::End(int code) {
    throw FineProgramma{code};
}

PrincipaleProva::PrincipaleProva() {
    for (const auto& c : kComandi) {
        Menu_[static_cast<std::size_t>(c.Codice)] = c.MenuAcceso;
        Pulsanti_[static_cast<std::size_t>(c.Codice)] = c.PulsanteAcceso;
    }
    for (const auto& t : kTitoli) Titoli_[static_cast<std::size_t>(t.Codice)] = t.Acceso;
    ImpostaPrincipale(this);
}

PrincipaleProva::~PrincipaleProva() {
    ImpostaPrincipale(nullptr);
}

void PrincipaleProva::TestoPannello(Pannello pannello, const std::string& testo) {
    Testi_[static_cast<std::size_t>(pannello)] = testo;
    Storia.push_back(std::to_string(static_cast<int>(pannello)) + ":" + testo);
}
void PrincipaleProva::MostraFileRecente(int indice, const std::filesystem::path& percorso) {
    ASSERT_EQ(static_cast<std::size_t>(indice), Recenti.size());
    Recenti.push_back(percorso);
}
void PrincipaleProva::QuandoLibero(const void* chi, std::function<void()> azione) {
    if (!PollAttivo) return azione();
    for (const auto& attesa : inAttesa_) {
        if (chi != nullptr && attesa.first == chi) return;
    }
    inAttesa_.emplace_back(chi, std::move(azione));
}
void PrincipaleProva::FinePoll() {
    PollAttivo = false;
    for (auto attese = std::exchange(inAttesa_, {}); !attese.empty(); attese.pop_front()) {
        attese.front().second();
    }
}
SerialControl& PrincipaleProva::SerialComm() {
    if (Seriale == nullptr) throw std::logic_error("no serial control in this test");
    return *Seriale;
}

void CaricaTestiVeri(int lingua) {
    const std::filesystem::path dato = platform().AppPath() / "LANGUAGES.DAT";
    std::filesystem::copy_file(CartellaBin() / "LANGUAGES.DAT", dato,
                               std::filesystem::copy_options::overwrite_existing);
    CaricaTesti();
    IndiceLingua = lingua;
    CalcolaBaseTesti();
    CaricaTabelleNomi();
}

std::filesystem::path ConFine(std::filesystem::path stelo, const char* fine) {
    stelo += fine;
    return stelo;
}

std::string Leggi(const std::filesystem::path& percorso) {
    std::ifstream file(percorso, std::ios::binary);
    EXPECT_TRUE(file.good()) << percorso;
    return {std::istreambuf_iterator<char>(file), {}};
}

void Scrivi(const std::filesystem::path& percorso, const std::string& testo) {
    std::filesystem::create_directories(percorso.parent_path());
    std::ofstream file(percorso, std::ios::binary);
    file << testo;
    ASSERT_TRUE(file.good()) << percorso;
}

}  // namespace lapvane::prova
