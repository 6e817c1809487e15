#include "logs/FileScarico.h"

#include <algorithm>
#include <array>
#include <utility>

#include "device/Codec.h"
#include "logs/Andamento.h"
#include "logs/Scarico.h"
#include "platform/FileTesto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr std::string_view kPrimaRiga = "Lapvane raw 1\r\n";
constexpr std::string_view kSegno = "LR";
constexpr std::size_t kTesta = 9;  // sign, kind, address, length
constexpr std::size_t kSomma = 4;
constexpr std::int32_t kByteGiri = 65536;   // what the address of a lap block reaches
constexpr std::size_t kTestoMassimo = 200;  // of a line of the head
constexpr char kInizio = 'T';
constexpr char kGiri = 'G';
constexpr char kPagina = 'P';
constexpr char kFine = 'F';

/// CRC-32 as in IEEE 802.3: polynomial 0xEDB88320, low bit first, all bits turned at both ends.
std::uint32_t Crc32(std::string_view testo) {
    static constexpr auto kTavola = [] {
        std::array<std::uint32_t, 256> tavola{};
        for (std::uint32_t i = 0; i < tavola.size(); ++i) {
            std::uint32_t c = i;
            for (int bit = 0; bit < 8; ++bit) c = (c >> 1) ^ ((c & 1u) != 0 ? 0xEDB88320u : 0u);
            tavola[i] = c;
        }
        return tavola;
    }();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const char c : testo) {
        crc = kTavola[(crc ^ static_cast<unsigned char>(c)) & 0xFFu] ^ (crc >> 8);
    }
    return ~crc;
}

/// So many bytes, the high one first.
std::string InByte(std::uint32_t numero, int byte) {
    std::string testo;
    for (int b = byte - 1; b >= 0; --b) testo += static_cast<char>((numero >> (8 * b)) & 0xFFu);
    return testo;
}

std::uint32_t DaByte(std::string_view testo) {
    std::uint32_t numero = 0;
    for (const char c : testo) numero = (numero << 8) | static_cast<unsigned char>(c);
    return numero;
}

std::string Record(char tipo, std::int32_t indirizzo, std::string_view contenuto) {
    std::string record(kSegno);
    record += tipo;
    record += InByte(static_cast<std::uint32_t>(indirizzo), 4);
    record += InByte(static_cast<std::uint32_t>(contenuto.size()), 2);
    record += contenuto;
    record += InByte(Crc32(std::string_view(record).substr(kSegno.size())), kSomma);
    return record;
}

struct Letto {
    char Tipo = 0;
    std::int32_t Indirizzo = 0;
    std::string_view Contenuto;
    std::size_t Lungo = 0;  // of the whole record
};

/// The record that a text begins with; empty: none, or a damaged one.
std::optional<Letto> Primo(std::string_view testo) {
    if (testo.size() < kTesta + kSomma || !testo.starts_with(kSegno)) return std::nullopt;
    const std::size_t contenuto = DaByte(testo.substr(7, 2));
    if (testo.size() < kTesta + contenuto + kSomma) return std::nullopt;
    const std::string_view coperto = testo.substr(2, kTesta - 2 + contenuto);
    if (DaByte(testo.substr(kTesta + contenuto, kSomma)) != Crc32(coperto)) return std::nullopt;
    return Letto{testo[2], static_cast<std::int32_t>(DaByte(testo.substr(3, 4))),
                 testo.substr(kTesta, contenuto), kTesta + contenuto + kSomma};
}

void LeggiTesta(std::string_view testo, ScaricoSuDisco& scarico) {
    const std::array<std::pair<std::string_view, std::string*>, 4> testi = {
        {{"written", &scarico.Quando},
         {"instrument", &scarico.Strumento},
         {"speed", &scarico.Titoli.UMVelocita},
         {"temperature", &scarico.Titoli.UMTemperatura}}};
    LettoreRighe righe(testo);
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        const std::size_t uguale = std::min(riga.find('='), riga.size());
        const std::string_view chiave = riga.substr(0, uguale);
        const std::string_view valore = riga.substr(std::min(uguale + 1, riga.size()));
        if (chiave == "bytes") scarico.Byte = std::max(LeggiIntero(valore).value_or(0), 0);
        if (chiave == "language") scarico.Titoli.Lingua = valore == "it" ? 0 : 1;
        if (chiave == "laps") scarico.Giri = LeggiInt16(valore).value_or(0);
        for (const auto& [nome, dove] : testi) {
            if (chiave == nome) *dove = DaUnaRiga(valore).substr(0, kTestoMassimo);
        }
    }
    scarico.Giri = std::max<std::int16_t>(scarico.Giri, 0);
}

/// Whether a page is one that a download stores.
bool Buona(std::int32_t indirizzo, std::string_view pagina) {
    return indirizzo >= 0 && indirizzo < kFineMemoria && indirizzo % kBytePagina == 0 &&
           pagina.size() == kBytePagina && ByteIn(pagina, 1) != 255 &&
           VerificaPagina(pagina.substr(0, kByteBlocco), pagina.substr(kByteBlocco));
}

}  // namespace

std::optional<ScaricoSuDisco> LeggiScarico(std::string_view testo) {
    if (!testo.starts_with(kPrimaRiga)) return std::nullopt;
    ScaricoSuDisco scarico;
    bool testa = false;
    std::size_t pagine = kFineMemoria;  // that a whole one has; more than there can be
    for (std::size_t p = kPrimaRiga.size(); p < testo.size();) {
        const auto letto = Primo(testo.substr(p));
        if (!letto) {
            p = std::min(testo.find(kSegno, p + 1), testo.size());
            continue;
        }
        p += letto->Lungo;
        scarico.Fine = p;
        if (letto->Tipo == kInizio) {
            LeggiTesta(letto->Contenuto, scarico);
            testa = true;
        } else if (letto->Tipo == kGiri && letto->Contenuto.size() == kByteBlocco &&
                   letto->Indirizzo >= 0 && letto->Indirizzo < kByteGiri &&
                   letto->Indirizzo % static_cast<std::int32_t>(kByteBlocco) == 0) {
            scarico.BlocchiGiri[letto->Indirizzo] = letto->Contenuto;
        } else if (letto->Tipo == kPagina && Buona(letto->Indirizzo, letto->Contenuto)) {
            scarico.Pagine[letto->Indirizzo] = letto->Contenuto;
        } else if (letto->Tipo == kFine && letto->Contenuto.size() == 4) {
            pagine = DaByte(letto->Contenuto);
        }
    }
    if (!testa && scarico.Pagine.empty()) return std::nullopt;
    scarico.Finito = scarico.Pagine.size() >= pagine;
    return scarico;
}

std::string TestaScarico(const ScaricoSuDisco& scarico) {
    std::string testa;
    const auto riga = [&testa](std::string_view chiave, const std::string& valore) {
        testa.append(chiave).append("=").append(InUnaRiga(valore)).append("\r\n");
    };
    riga("written", scarico.Quando);
    riga("instrument", scarico.Strumento);
    riga("language", scarico.Titoli.Lingua == 0 ? "it" : "en");
    riga("speed", scarico.Titoli.UMVelocita);
    riga("temperature", scarico.Titoli.UMTemperatura);
    riga("bytes", TestoNumero(scarico.Byte));
    riga("laps", TestoNumero(int{scarico.Giri}));
    return std::string(kPrimaRiga) + Record(kInizio, 0, testa);
}

std::string RecordGiri(std::int32_t indirizzo, std::string_view blocco) {
    return Record(kGiri, indirizzo, blocco);
}

std::string RecordPagina(std::int32_t indirizzo, std::string_view blocco1,
                         std::string_view blocco2) {
    return Record(kPagina, indirizzo, std::string(blocco1).append(blocco2));
}

std::string RecordFine(std::int32_t pagine) {
    return Record(kFine, 0, InByte(static_cast<std::uint32_t>(pagine), 4));
}

std::string FraseArrivato(const ScaricoSuDisco& scarico) {
    AndamentoScarico quanto;
    quanto.Letti = static_cast<std::int32_t>(scarico.Pagine.size()) * kBytePagina;
    quanto.Totale = std::max(scarico.Byte, quanto.Letti);
    return Testo(Voce::ScaricoCominciato) + " " + scarico.Quando + "\r\n" +
           Testo(Voce::ScaricoArrivati) + " " + FraseQuanto(quanto);
}

void MettiInMemoria(const ScaricoSuDisco& scarico) {
    AzzeraBufferLog();
    for (const auto& [indirizzo, pagina] : scarico.Pagine) {
        BlocchiLog.push_back(pagina.substr(0, kByteBlocco));
        BlocchiLog.push_back(pagina.substr(kByteBlocco));
    }
    NumBlocchi = static_cast<std::int32_t>(BlocchiLog.size());
    NumeroGiri = scarico.Giri;
    std::int16_t sessione = 0;
    for (const auto& [indirizzo, blocco] : scarico.BlocchiGiri) {
        DecodificaBloccoGiri(blocco, indirizzo / 4 + 1, sessione);
    }
    logInMemoria().Parziale = !scarico.Finito;
    logInMemoria().DaSalvare = !BlocchiLog.empty();
}

}  // namespace lapvane
