#include "analysis/LettoreDati.h"

#include <bit>
#include <cstring>
#include <limits>
#include <new>

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

const char* Trova(const char* da, const char* fine, char c) {
    const std::size_t posto = std::string_view(da, fine).find(c);
    return posto != std::string_view::npos ? da + posto : fine;
}

constexpr std::uint64_t kUni = 0x0101010101010101u;

/// Nonzero where a byte of the word is `c`; the lowest bit that is set is the first such byte's.
std::uint64_t Dove(std::uint64_t parola, char c) {
    const std::uint64_t x = parola ^ (kUni * static_cast<unsigned char>(c));
    return (x - kUni) & ~x & (kUni << 7);
}

/// The end of the field that begins at `p`. Fields are of a few characters and of all lengths:
/// eight bytes at a time spare the branches that a processor can't foresee.
const char* FineCampo(const char* p, const char* fine, char aCapo) {
    if constexpr (std::endian::native == std::endian::little) {
        while (fine - p >= 8) {
            std::uint64_t parola = 0;
            std::memcpy(&parola, p, sizeof parola);
            const std::uint64_t trovati = Dove(parola, ';') | Dove(parola, aCapo);
            if (trovati != 0) return p + std::countr_zero(trovati) / 8;
            p += 8;
        }
    }
    while (p != fine && *p != ';' && *p != aCapo) ++p;
    return p;
}

}  // namespace

LettoreDati::LettoreDati(std::string_view testo) {
    p_ = testo.data();
    fine_ = p_ + testo.size();
    const char* aCapo = Trova(p_, fine_, '\n');
    if (aCapo == fine_) {
        aCapo_ = '\r';
        aCapo = Trova(p_, fine_, '\r');
    }
    titolo_ = {p_, aCapo};
    if (!titolo_.empty() && titolo_.back() == '\r') titolo_.remove_suffix(1);
    p_ = aCapo == fine_ ? fine_ : aCapo + 1;
    while (fine_ != p_ && (fine_[-1] == '\n' || fine_[-1] == '\r')) --fine_;
    if (p_ == fine_) return;
    numero_ = 1;
    for (const char* q = Trova(p_, fine_, aCapo_);
         q != fine_ && numero_ != std::numeric_limits<std::int32_t>::max();
         q = Trova(q + 1, fine_, aCapo_)) {
        ++numero_;
    }
}

bool LettoreDati::LeggiRiga(std::span<double* const> colonne, std::int32_t riga) {
    if (p_ == fine_) return false;
    const char* p = p_;
    for (double* const colonna : colonne) {
        const char* const inizio = p;
        p = FineCampo(p, fine_, aCapo_);
        if (p != inizio) colonna[riga] = CampoNumerico(inizio, p);
        if (p == fine_ || *p == aCapo_) {
            p_ = p == fine_ ? p : p + 1;
            return true;
        }
        ++p;
    }
    p = Trova(p, fine_, aCapo_);
    p_ = p == fine_ ? p : p + 1;
    return true;
}

std::string LeggiLog(const std::filesystem::path& percorso) {
    constexpr std::size_t kInizio = std::size_t{1} << 16;
    constexpr std::int64_t kGrande = std::int64_t{16} << 20;
    try {
        // A huge file without a line in all its beginning is no log: nobody waits for it to be
        // read.
        const auto misura = Misura(percorso);
        if (misura && misura->Byte > kGrande) {
            const std::string inizio = LeggiFile(percorso, Lavoro::LeggereLog, kInizio);
            if (inizio.find_first_of("\r\n") == std::string::npos ||
                inizio.find('\0') != std::string::npos) {
                platform().MsgBox(TestoDaPercorso(percorso) + "\r\n" + Testo(Voce::NonUnLog),
                                  Buttons::Ok, Icon::Critical, platform().ExeName());
                return {};
            }
        }
        return LeggiFile(percorso, Lavoro::LeggereLog);
    } catch (const ErroreRuntime&) {
        return {};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace lapvane
