#include "runs/ScelteArchivio.h"

#include <algorithm>
#include <array>

#include "platform/FileTesto.h"
#include "shell/NumeroTesto.h"
#include "shell/Ricordi.h"

namespace lapvane {

namespace {

constexpr std::string_view kPrimaRiga = "lapvane-runs 1";
constexpr std::string_view kFile = "Runs.lapvane";

constexpr std::array<std::string_view, kColonneUscite> kColonne = {
    "date", "time", "circuit", "session", "driver", "vehicle",
    "laps", "best", "mean",    "ideal",   "length"};
constexpr std::array<std::string_view, 3> kGruppi = {"none", "circuit", "day"};
constexpr std::array<std::pair<std::string_view, char>, 3> kSegni = {
    {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}}};

std::filesystem::path DaUtf8(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

std::string Utf8(const std::filesystem::path& percorso) {
    const std::u8string utf8 = percorso.u8string();
    return {utf8.begin(), utf8.end()};
}

void LeggiRiga(std::string_view chiave, const std::string& valore, ScelteArchivio& scelte) {
    const auto posto = [&valore](const auto& nomi, auto& dove) {
        const auto trovato = std::find(nomi.begin(), nomi.end(), valore);
        if (trovato == nomi.end()) return;
        dove = static_cast<std::remove_reference_t<decltype(dove)>>(trovato - nomi.begin());
    };
    if (chiave == "folder") {
        scelte.Cartella = DaUtf8(valore);
    } else if (chiave == "order") {
        posto(kColonne, scelte.Ordine);
    } else if (chiave == "descending") {
        scelte.Discendente = valore != "0";
    } else if (chiave == "group") {
        posto(kGruppi, scelte.Gruppo);
    } else if (chiave == "decimal") {
        scelte.Decimale = valore == "point" ? '.' : valore == "comma" ? ',' : '\0';
    } else if (chiave == "fields") {
        for (const auto& [nome, segno] : kSegni) {
            if (valore == nome) scelte.Campi = segno;
        }
    } else if (chiave == "against") {
        scelte.Contro = DaUtf8(valore);
    }
}

}  // namespace

ScelteArchivio LeggiScelteArchivio(std::string_view testo) {
    ScelteArchivio scelte;
    for (const auto& [chiave, valore] : RigheRicordo(testo, kPrimaRiga)) {
        LeggiRiga(chiave, valore, scelte);
    }
    if (scelte.Campi != 0 && scelte.Campi == scelte.Decimale) scelte.Campi = 0;
    return scelte;
}

std::string ScriviScelteArchivio(const ScelteArchivio& scelte) {
    std::vector<RigaRicordo> righe;
    const auto riga = [&righe](std::string_view chiave, std::string_view valore) {
        righe.emplace_back(chiave, valore);
    };
    riga("folder", Utf8(scelte.Cartella));
    riga("order", kColonne[static_cast<std::size_t>(scelte.Ordine)]);
    riga("descending", scelte.Discendente ? "1" : "0");
    riga("group", kGruppi[static_cast<std::size_t>(scelte.Gruppo)]);
    if (scelte.Decimale != 0) riga("decimal", scelte.Decimale == '.' ? "point" : "comma");
    for (const auto& [nome, segno] : kSegni) {
        if (scelte.Campi == segno) riga("fields", nome);
    }
    riga("against", Utf8(scelte.Contro));
    return TestoRicordo(kPrimaRiga, righe);
}

ScelteArchivio CaricaScelteArchivio() {
    return LeggiScelteArchivio(LeggiRicordo(kFile, Lavoro::LeggereUscite));
}

void SalvaScelteArchivio(const ScelteArchivio& scelte) {
    SalvaRicordo(kFile, ScriviScelteArchivio(scelte), Lavoro::ScrivereUscite);
}

}  // namespace lapvane
