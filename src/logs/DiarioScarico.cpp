#include "logs/DiarioScarico.h"

#include <algorithm>
#include <array>

#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/FrasiErrore.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 2> kFini = {kFineScarico, kFineSalvato};

/// Whether two identity texts can be of one instrument.
bool StessoStrumento(const std::string& a, const std::string& b) {
    return a.empty() || b.empty() || a == b;
}

/// As far as sizes, instrument and the lap blocks that both have tell.
bool StessaMemoria(const ScaricoSuDisco& a, const ScaricoSuDisco& b) {
    if (a.Byte != b.Byte || a.Giri != b.Giri || !StessoStrumento(a.Strumento, b.Strumento)) {
        return false;
    }
    return std::all_of(a.BlocchiGiri.begin(), a.BlocchiGiri.end(), [&b](const auto& voce) {
        const auto altro = b.BlocchiGiri.find(voce.first);
        return altro == b.BlocchiGiri.end() || altro->second == voce.second;
    });
}

}  // namespace

fs::path CartellaScarichi() {
    return platform().AppPath() / "downloads";
}

std::vector<ScaricoTenuto> ScarichiTenuti(const fs::path& cartella) {
    std::vector<ScaricoTenuto> tenuti;
    for (LettoreCartella voci(cartella); !voci.Fine(); voci.Avanti()) {
        const fs::path& file = voci.Voce();
        const bool suo = file.extension() == kFineScarico || file.extension() == kFineSalvato;
        if (!suo || !FileProprio(file)) continue;
        if (const auto misura = Misura(file)) tenuti.push_back({file, misura->Scritto});
    }
    std::sort(tenuti.begin(), tenuti.end(), [](const auto& a, const auto& b) {
        return a.Scritto != b.Scritto ? a.Scritto > b.Scritto : a.File > b.File;
    });
    return tenuti;
}

std::optional<ScaricoSuDisco> ApriScarico(const fs::path& file) {
    try {
        auto scarico = LeggiScarico(LeggiFile(file, Lavoro::LeggereFile, kScaricoMassimo));
        if (scarico && scarico->Pagine.empty()) return std::nullopt;
        return scarico;
    } catch (const ErroreRuntime&) {
        return std::nullopt;
    }
}

fs::path ConFineScarico(const fs::path& file, std::string_view fine) {
    if (file.extension() == fine) return file;
    fs::path nuovo = file;
    return Sposta(file, nuovo.replace_extension(fine)) ? nuovo : file;
}

void ScaricoConcluso() {
    StatoLog& stato = logInMemoria();
    if (stato.File.empty()) return;
    stato.File = ConFineScarico(stato.File, kFineSalvato);
    const auto concluso = ApriScarico(stato.File);
    if (!concluso) return;
    for (const ScaricoTenuto& tenuto : ScarichiTenuti(stato.File.parent_path())) {
        if (tenuto.File.extension() != kFineScarico) continue;
        const auto altro = ApriScarico(tenuto.File);
        if (altro && StessaMemoria(*altro, *concluso) &&
            std::includes(concluso->Pagine.begin(), concluso->Pagine.end(), altro->Pagine.begin(),
                          altro->Pagine.end())) {
            ConFineScarico(tenuto.File, kFineSalvato);
        }
    }
}

DiarioScarico::~DiarioScarico() {
    Chiudi(false);
}

void DiarioScarico::Memoria(std::int32_t byte, std::int16_t giri) {
    nuovo_.Quando = platform().Now();
    nuovo_.Strumento = collegamento().Identita;
    nuovo_.Titoli = IntestazioneCorrente();
    nuovo_.Byte = byte;
    nuovo_.Giri = giri;
}

void DiarioScarico::Giri(std::int32_t indirizzo, std::string_view blocco) {
    nuovo_.BlocchiGiri[indirizzo] = blocco;
}

const ScaricoSuDisco* DiarioScarico::Interrotto() {
    for (const ScaricoTenuto& tenuto : ScarichiTenuti(cartella_)) {
        auto scarico = ApriScarico(tenuto.File);
        if (!scarico || !StessaMemoria(*scarico, nuovo_) || FileCrescente::InUso(tenuto.File)) {
            continue;
        }
        // One that was finished since then has what the older ones lack.
        if (scarico->Finito) break;
        vecchio_ = std::move(*scarico);
        fileVecchio_ = tenuto.File;
        return &vecchio_;
    }
    return nullptr;
}

void DiarioScarico::Prosegui() {
    pagine_ = static_cast<std::int32_t>(vecchio_.Pagine.size());
    logInMemoria().File = fileVecchio_;
    Prova([this] {
        file_.Apri(fileVecchio_, vecchio_.Fine, Lavoro::ScaricareLog);
        for (const auto& [indirizzo, blocco] : nuovo_.BlocchiGiri) {
            if (!vecchio_.BlocchiGiri.contains(indirizzo)) {
                file_.Aggiungi(RecordGiri(indirizzo, blocco));
            }
        }
        fissato_ = platform().GetTickCount();
        logInMemoria().File = ConFineScarico(fileVecchio_, kFineScarico);
        logInMemoria().TuttoSuDisco = true;
    });
}

std::vector<std::int32_t> DiarioScarico::Indirizzi() const {
    std::vector<std::int32_t> indirizzi;
    for (const auto& [indirizzo, pagina] : vecchio_.Pagine) indirizzi.push_back(indirizzo);
    return indirizzi;
}

std::string_view DiarioScarico::Pagina(std::int32_t indirizzo) const {
    const auto pagina = vecchio_.Pagine.find(indirizzo);
    return pagina == vecchio_.Pagine.end() ? std::string_view() : std::string_view(pagina->second);
}

void DiarioScarico::Crea() {
    CreaCartelle(cartella_);
    const fs::path file =
        cartella_ / PercorsoDaTesto(NomeLibero(cartella_, "Lapvane " + platform().Stamp(), kFini) +
                                    std::string(kFineScarico));
    file_.Crea(file, Lavoro::ScaricareLog);
    logInMemoria().File = file;
    logInMemoria().TuttoSuDisco = true;
    std::string inizio = TestaScarico(nuovo_);
    for (const auto& [indirizzo, blocco] : nuovo_.BlocchiGiri) {
        inizio += RecordGiri(indirizzo, blocco);
    }
    file_.Aggiungi(inizio);
    fissato_ = platform().GetTickCount();
    TogliVecchi();
}

/// The new one stays, whatever the machine's clock says.
void DiarioScarico::TogliVecchi() const {
    std::size_t tenuti = 1;
    for (const ScaricoTenuto& tenuto : ScarichiTenuti(cartella_)) {
        if (FileCrescente::InUso(tenuto.File)) continue;
        if (++tenuti > kScarichiTenuti) Elimina(tenuto.File);
    }
}

void DiarioScarico::Scrivi(std::int32_t indirizzo, std::string_view blocco1,
                           std::string_view blocco2) {
    constexpr int kOgni = 1000;  // ms
    Prova([&] {
        if (!file_.Aperto()) Crea();
        file_.Aggiungi(RecordPagina(indirizzo, blocco1, blocco2));
        ++pagine_;
        if (platform().GetTickCount() - fissato_ < kOgni) return;
        file_.Fissa();
        fissato_ = platform().GetTickCount();
    });
}

void DiarioScarico::Chiudi(bool intero) {
    if (!file_.Aperto()) return;
    Prova([&] {
        if (intero) file_.Aggiungi(RecordFine(pagine_));
        file_.Fissa();
    });
    file_.Chiudi();
}

/// What the disk refuses ends the diary, not the download.
void DiarioScarico::Prova(const std::function<void()>& azione) {
    if (!guasto_.empty()) return;
    try {
        azione();
    } catch (const ErroreRuntime& errore) {
        guasto_ = Motivo(errore);
        file_.Chiudi();
        StatoLog& stato = logInMemoria();
        stato.TuttoSuDisco = false;
        if (pagine_ != 0) return;
        if (!stato.File.empty()) Elimina(stato.File);
        stato.File.clear();
    }
}

}  // namespace lapvane
