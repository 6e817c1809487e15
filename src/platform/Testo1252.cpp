#include "platform/Testo1252.h"

#include <array>
#include <cstdint>

namespace lapvane {

namespace {

// Codes 0x80 to 0x9F; the rest of the page equals the first 256 characters of Unicode.
constexpr std::array<std::uint16_t, 32> kAlti = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AggiungiUtf8(std::string& uscita, std::uint32_t codice) {
    if (codice < 0x80) {
        uscita += static_cast<char>(codice);
    } else if (codice < 0x800) {
        uscita += static_cast<char>(0xC0 | (codice >> 6));
        uscita += static_cast<char>(0x80 | (codice & 0x3F));
    } else {
        uscita += static_cast<char>(0xE0 | (codice >> 12));
        uscita += static_cast<char>(0x80 | ((codice >> 6) & 0x3F));
        uscita += static_cast<char>(0x80 | (codice & 0x3F));
    }
}

}  // namespace

std::string Utf8Da1252(std::string_view testo) {
    std::string uscita;
    uscita.reserve(testo.size());
    for (const char c : testo) {
        const auto codice = static_cast<unsigned char>(c);
        AggiungiUtf8(uscita, codice >= 0x80 && codice < 0xA0 ? kAlti[codice - 0x80u] : codice);
    }
    return uscita;
}

std::string Utf8In1252(std::string_view utf8) {
    std::string uscita;
    uscita.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto primo = static_cast<unsigned char>(utf8[i]);
        const std::size_t lunghezza = primo < 0x80 ? 1 : primo < 0xE0 ? 2 : primo < 0xF0 ? 3 : 4;
        if (primo < 0x80) {
            uscita += utf8[i++];
            continue;
        }
        std::uint32_t codice = lunghezza == 2   ? primo & 0x1Fu
                               : lunghezza == 3 ? primo & 0x0Fu
                                                : primo & 0x07u;
        std::size_t letti = 1;
        while (letti < lunghezza && i + letti < utf8.size() &&
               (static_cast<unsigned char>(utf8[i + letti]) & 0xC0u) == 0x80u) {
            codice = (codice << 6) | (static_cast<unsigned char>(utf8[i + letti]) & 0x3Fu);
            ++letti;
        }
        i += letti;
        char trovato = '?';
        if (letti == lunghezza && primo >= 0xC0) {
            if (codice >= 0xA0 && codice <= 0xFF) {
                trovato = static_cast<char>(codice);
            } else {
                for (std::size_t k = 0; k < kAlti.size(); ++k) {
                    if (kAlti[k] == codice) trovato = static_cast<char>(0x80 + k);
                }
            }
        }
        uscita += trovato;
    }
    return uscita;
}

std::string TestoDaPercorso(const std::filesystem::path& percorso) {
    const std::u8string utf8 = percorso.u8string();
    return Utf8In1252({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

namespace {

std::filesystem::path DaUtf8(std::string_view utf8) {
    return std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size());
}

constexpr std::string_view kSegnoUtf8 = "\xEF\xBB\xBF";

}  // namespace

std::filesystem::path PercorsoDaTesto(std::string_view testo) {
    return DaUtf8(Utf8Da1252(testo));
}

bool InTesto(const std::filesystem::path& percorso) {
    return PercorsoDaTesto(TestoDaPercorso(percorso)) == percorso;
}

std::string RigaDaPercorso(const std::filesystem::path& percorso) {
    if (InTesto(percorso)) return TestoDaPercorso(percorso);
    const std::u8string utf8 = percorso.u8string();
    return std::string(kSegnoUtf8).append(reinterpret_cast<const char*>(utf8.data()), utf8.size());
}

std::filesystem::path PercorsoDaRiga(std::string_view riga) {
    if (riga.rfind(kSegnoUtf8, 0) != 0) return PercorsoDaTesto(riga);
    try {
        return DaUtf8(riga.substr(kSegnoUtf8.size()));
    } catch (const std::exception&) {
        return PercorsoDaTesto(riga);  // no UTF-8 behind them: letters of the page
    }
}

}  // namespace lapvane
