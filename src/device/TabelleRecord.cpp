#include "device/TabelleRecord.h"

#include <array>
#include <cassert>
#include <type_traits>
#include <variant>

#include "device/Codec.h"
#include "platform/ErroreRuntime.h"
#include "sensors/CampiEditor.h"
#include "sensors/CanaliSensore.h"
#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

using R = RecordProgetto;
using enum Natura;

// What is known of a field elsewhere, at its place in the record.
template <class Campo>
constexpr CampoRecord NumeroDi(std::size_t byte, int larghezza, const Campo& campo) {
    return {byte, larghezza, Numero, campo.Campo, campo.Casella, campo.Didascalia};
}

template <class Campo>
constexpr CampoRecord SceltaDi(std::size_t byte, const Campo& campo) {
    return {byte, 1, Scelta, campo.Campo, campo.Lista, campo.Didascalia};
}

constexpr CampoRecord TipoDi(std::size_t byte, Natura come, const FunzioneAllarme& campo) {
    return {byte,         1,           come, campo.Tipo, campo.Lista, campo.Didascalia, 0,
            campo.Attiva, campo.Spunta};
}

constexpr CampoRecord Acceso(std::size_t byte, std::size_t numero) {
    const CanaleSensore& canale = kCanaliSensore[numero];
    return {byte, 1, Flag, canale.Abil, canale.chkAbil, canale.Titolo};
}

constexpr CampoRecord IngressoDi(std::size_t byte, std::size_t numero) {
    const CanaleSensore& canale = kCanaliSensore[numero];
    return {byte, 1, Ingresso, canale.Chann, canale.cboChann, canale.Titolo};
}

constexpr CampoRecord SogliaDi(std::size_t byte, const SogliaAllarme& soglia) {
    return {byte,           2,
            Soglia,         soglia.Valore,
            soglia.Casella, soglia.Didascalia,
            soglia.Fattore, soglia.Attiva,
            soglia.Spunta};
}

constexpr std::array<CampoRecord, 15> kSetup1 = {{
    SceltaDi(3, kListeSetup[kLingua]),
    SceltaDi(4, kListeSetup[kVelocita]),
    SceltaDi(5, kListeSetup[kTemperatura]),
    SceltaDi(6, kListeSetup[kPressione]),
    // Pages 1 and 10 have no bit.
    {7, 2, Bit, &R::PaginaAbilitata2, "PagineAbilitateTemp1", Voce::AbilitazionePagine, 0},
    {7, 2, Bit, &R::PaginaAbilitata3, "PagineAbilitateTemp2", Voce::AbilitazionePagine, 1},
    {7, 2, Bit, &R::PaginaAbilitata4, "PagineAbilitateTemp3", Voce::AbilitazionePagine, 2},
    {7, 2, Bit, &R::PaginaAbilitata5, "PagineAbilitateTemp4", Voce::AbilitazionePagine, 3},
    {7, 2, Bit, &R::PaginaAbilitata6, "PagineAbilitateTemp5", Voce::AbilitazionePagine, 4},
    {7, 2, Bit, &R::PaginaAbilitata7, "PagineAbilitateTemp6", Voce::AbilitazionePagine, 5},
    {7, 2, Bit, &R::PaginaAbilitata8, "PagineAbilitateTemp7", Voce::AbilitazionePagine, 6},
    {7, 2, Bit, &R::PaginaAbilitata9, "PagineAbilitateTemp8", Voce::AbilitazionePagine, 7},
    {9, 1, Flag, &R::chkAbilRecLap, "chkAbilRecLAP", Voce::AvvioAlGiro},
    NumeroDi(10, 1, kNumeriSetup[kStopRec]),
    NumeroDi(11, 2, kNumeriSetup[kRecVel]),
}};

constexpr std::array<CampoRecord, 7> kSetup2 = {{
    NumeroDi(3, 1, kNumeriSetup[kMsgGiro]),
    NumeroDi(4, 1, kNumeriSetup[kVisGiro]),
    NumeroDi(5, 2, kNumeriSetup[kSettore]),
    NumeroDi(7, 2, kNumeriSetup[kSettore + 1]),
    NumeroDi(9, 2, kNumeriSetup[kSettore + 2]),
    NumeroDi(11, 2, kNumeriSetup[kSettore + 3]),
    NumeroDi(13, 2, kNumeriSetup[kSettore + 4]),
}};

constexpr std::array<CampoRecord, 18> kSensori = {{
    NumeroDi(3, 1, kNumeriSensori[kNumAccRPM]),
    NumeroDi(4, 1, kNumeriSensori[kImpulsiRuota]),
    NumeroDi(5, 2, kNumeriSensori[kDiametroRuota]),
    SceltaDi(7, kLivelliSensori[0]),
    SceltaDi(8, kLivelliSensori[1]),
    Acceso(9, kCanaleTO),
    Acceso(10, kCanalePO),
    Acceso(11, kCanalePB),
    Acceso(12, kCanaleTA),
    Acceso(13, kCanaleLB),
    Acceso(14, kCanaleCambio),
    Acceso(15, kCanaleSG),
    Acceso(16, kCanaleLambda),
    IngressoDi(17, kCanaleCambio),
    IngressoDi(18, kCanaleSG),
    IngressoDi(19, kCanaleLambda),
    IngressoDi(20, kCanalePT),
    Acceso(21, kCanalePT),
}};

constexpr std::array<CampoRecord, 14> kAllarmi = {{
    SogliaDi(3, kSoglie[0]),
    SogliaDi(5, kSoglie[1]),
    SogliaDi(7, kSoglie[2]),
    SogliaDi(9, kSoglie[3]),
    SogliaDi(11, kSoglie[4]),
    SogliaDi(13, kSoglie[5]),
    NumeroDi(15, 2, kShiftLight[0]),
    NumeroDi(17, 2, kShiftLight[1]),
    NumeroDi(19, 2, kShiftLight[2]),
    NumeroDi(21, 2, kShiftLight[3]),
    NumeroDi(23, 2, kShiftLight[4]),
    TipoDi(25, Tipo, kFunzioniAllarme[kLedGiallo]),
    TipoDi(28, Tipo, kFunzioniAllarme[kUscita]),
    // Kept: a write puts 0 here, so the input's type is the instrument's business alone, and its
    // flag in the project is off after every read.
    TipoDi(29, TipoLetto, kFunzioniAllarme[kIngresso]),
}};

/// What a field is worth to the codec.
ValoreCodec DiTesto(const CampoRecord& campo, std::string_view testo) {
    try {
        return ValoreCodec(testo);
    } catch (const ErroreRuntime&) {
        throw NonCodificabile{std::string(testo), campo.Didascalia};
    }
}

ValoreCodec DiSoglia(const CampoRecord& campo, const std::string& testo) {
    try {
        return ValoreCodec(PrefissoNumerico(testo) * campo.Dettaglio);
    } catch (const ErroreRuntime&) {
        throw NonCodificabile{testo, campo.Didascalia};
    }
}

ValoreCodec DiIndice(int indice) {
    return ValoreCodec(static_cast<std::int16_t>(indice));
}

bool Testuale(const CampoRecord& campo) {
    return std::holds_alternative<std::string R::*>(campo.Progetto);
}

/// A project field as a number; a flag is 1 or 0. Not for text fields.
std::int32_t NumeroProgetto(const CampoRecord& campo, const RecordProgetto& record) {
    return std::visit(
        [&record](auto membro) -> std::int32_t {
            if constexpr (std::is_same_v<decltype(membro), std::string R::*>) {
                assert(false);
                return 0;
            } else {
                return static_cast<std::int32_t>(record.*membro);
            }
        },
        campo.Progetto);
}

void NelProgetto(const CampoRecord& campo, const std::string& letto) {
    std::visit(
        [&letto, valore = Intero(letto)](auto membro) {
            auto& dove = DatiProgetto.*membro;
            using T = std::remove_reference_t<decltype(dove)>;
            if constexpr (std::is_same_v<T, std::string>) {
                dove = letto;
            } else if constexpr (std::is_same_v<T, bool>) {
                dove = valore != 0;
            } else {
                dove = static_cast<T>(valore);
            }
        },
        campo.Progetto);
}

ValoreCodec DalProgetto(const CampoRecord& campo, const RecordProgetto& record) {
    if (campo.Attivo != nullptr && !(record.*campo.Attivo)) return ValoreCodec(0);
    if (Testuale(campo)) return DiTesto(campo, record.*std::get<std::string R::*>(campo.Progetto));
    return ValoreCodec(NumeroProgetto(campo, record) + (campo.Come == Ingresso ? 1 : 0));
}

ValoreCodec DaiControlli(const CampoRecord& campo, const ControlliEditor& controlli) {
    switch (campo.Come) {
        case Numero:
            return DiTesto(campo, controlli.Testo(campo.Controllo));
        case Scelta:
            return DiIndice(controlli.Indice(campo.Controllo));
        case Ingresso:
            return DiIndice(controlli.Indice(campo.Controllo) + 1);
        case Flag:
        case Bit:
            return ValoreCodec(controlli.Spunta(campo.Controllo) ? 1 : 0);
        case Soglia:
            if (!controlli.Spunta(campo.Spunta)) break;
            return DiSoglia(campo, controlli.Testo(campo.Controllo));
        case Tipo:
        case TipoLetto:
            if (!controlli.Spunta(campo.Spunta)) break;
            return DiIndice(controlli.Indice(campo.Controllo) + 1);
    }
    return ValoreCodec(0);
}

ValoreCodec Valore(const CampoRecord& campo, const ControlliEditor* controlli) {
    return controlli != nullptr ? DaiControlli(campo, *controlli)
                                : DalProgetto(campo, DatiProgetto);
}

/// What arrives of a value in the byte or word of its field.
std::int32_t Arrivato(const CampoRecord& campo, ValoreCodec valore) {
    return campo.Larghezza == 1 ? static_cast<std::int32_t>(valore.Bit() & 0xFFu)
                                : std::int32_t{static_cast<std::int16_t>(valore.Bit() & 0xFFFFu)};
}

/// A number of the wire as the editor shows it.
std::string Mostrato(const CampoRecord& campo, std::int64_t valore) {
    if (campo.Come != Soglia) return TestoNumero(valore);
    std::string testo = TestoNumero(static_cast<double>(valore) / campo.Dettaglio);
    return FormattaDecimali(testo, campo.Dettaglio);
}

/// A field of a reply as decimal text.
std::string Decodifica(const CampoRecord& campo, std::string_view risposta) {
    const auto byte = risposta.substr(campo.Byte - 1, static_cast<std::size_t>(campo.Larghezza));
    const std::string testo = campo.Larghezza == 1 ? DecodificaByte(byte) : DecodificaInt16(byte);
    if (campo.Come == Bit) return BitAttivo(Intero(testo), campo.Dettaglio) ? "1" : "0";
    return campo.Come == Ingresso ? TestoNumero(Intero(testo) - 1) : testo;
}

void NeiControlli(const CampoRecord& campo, const std::string& letto, ControlliEditor& controlli) {
    const int valore = Intero(letto);
    const bool acceso = valore >= 1;
    switch (campo.Come) {
        case Numero:
            controlli.Testo(campo.Controllo, letto);
            break;
        case Scelta:
        case Ingresso:
            controlli.Indice(campo.Controllo, valore);
            break;
        case Flag:
        case Bit:
            controlli.Spunta(campo.Controllo, acceso);
            break;
        case Soglia:
            controlli.Spunta(campo.Spunta, acceso);
            controlli.Abilita(campo.Controllo, acceso);
            if (acceso) {
                std::string testo = TestoNumero(static_cast<double>(valore) / campo.Dettaglio);
                controlli.Testo(campo.Controllo, FormattaDecimali(testo, campo.Dettaglio));
            }
            break;
        case Tipo:
        case TipoLetto:
            controlli.Spunta(campo.Spunta, acceso);
            controlli.Abilita(campo.Controllo, acceso);
            if (acceso) controlli.Indice(campo.Controllo, valore - 1);
            break;
    }
}

}  // namespace

const TabellaRecord kRecordSetup1 = {18, 30, 19, 30, "frmConfigurazione", AltraForm::Coda, kSetup1};
const TabellaRecord kRecordSetup2 = {28,     26, 29, 16, "frmConfigurazione", AltraForm::Testata,
                                     kSetup2};
const TabellaRecord kRecordSensori = {22, 38, 23, 21, "frmSensori", AltraForm::Niente, kSensori};
const TabellaRecord kRecordAllarmi = {20, 52, 21, 31, "frmAllarmi", AltraForm::Niente, kAllarmi};

std::string ComponiRecord(const TabellaRecord& tabella, const ControlliEditor* controlli) {
    constexpr std::size_t kTestata = 2;
    std::string dati(tabella.Lunghezza - 4, '\0');
    for (const CampoRecord& campo : tabella.Campi) {
        if (campo.Come == TipoLetto) continue;
        const ValoreCodec valore = Valore(campo, controlli);
        const std::size_t posto = campo.Byte - kTestata - 1;
        if (campo.Come == Bit) {
            const std::size_t byte =
                posto + static_cast<std::size_t>(campo.Larghezza - 1 - campo.Dettaglio / 8);
            if (valore.Bit() != 0) {
                dati[byte] = static_cast<char>(dati[byte] | 1 << campo.Dettaglio % 8);
            }
        } else if (campo.Larghezza == 1) {
            dati.replace(posto, 1, CodificaByte(valore));
        } else {
            dati.replace(posto, 2, CodificaWord(valore));
        }
    }
    return Frame(tabella.Scrivi, dati);
}

std::vector<ValoreFuori> ValoriFuori(const TabellaRecord& tabella,
                                     const ControlliEditor* controlli) {
    std::vector<ValoreFuori> fuori;
    for (const CampoRecord& campo : tabella.Campi) {
        if (campo.Come == TipoLetto || campo.Come == Flag || campo.Come == Bit) continue;
        try {
            const ValoreCodec codice = Valore(campo, controlli);
            const auto bit = codice.Bit();
            const std::int32_t arrivato = Arrivato(campo, codice);
            // A list's index travels in 16 bits, where "none" is all ones.
            const auto valore = controlli != nullptr && campo.Come != Numero && campo.Come != Soglia
                                    ? std::int32_t{static_cast<std::int16_t>(bit & 0xFFFFu)}
                                    : static_cast<std::int32_t>(bit);
            if (arrivato == valore) continue;
            const bool scritto =
                controlli != nullptr && (campo.Come == Numero || campo.Come == Soglia);
            fuori.push_back({&campo,
                             scritto ? controlli->Testo(campo.Controllo) : Mostrato(campo, valore),
                             Mostrato(campo, arrivato)});
        } catch (const NonCodificabile& valore) {
            fuori.push_back({&campo, valore.Testo, std::nullopt});
        }
    }
    return fuori;
}

LimitiCampo Limiti(const CampoRecord& campo) {
    const double fattore = campo.Come == Soglia ? campo.Dettaglio : 1.0;
    if (campo.Larghezza == 1) return {0.0, 255.0 / fattore};
    return {-32768.0 / fattore, 32767.0 / fattore};
}

std::string Ammessi(const CampoRecord& campo) {
    const int minimo = campo.Larghezza == 1 ? 0 : -32768;
    const int massimo = campo.Larghezza == 1 ? 255 : 32767;
    return Mostrato(campo, minimo) + " ... " + Mostrato(campo, massimo);
}

const CampoRecord* CampoDi(std::string_view controllo) {
    for (const TabellaRecord* tabella :
         {&kRecordSetup1, &kRecordSetup2, &kRecordSensori, &kRecordAllarmi}) {
        for (const CampoRecord& campo : tabella->Campi) {
            if (campo.Controllo == controllo) return &campo;
        }
    }
    return nullptr;
}

std::int32_t ValoreLetto(const CampoRecord& campo, std::string_view risposta) {
    const std::int32_t valore = Intero(Decodifica(campo, risposta));
    return campo.Come == Flag ? std::int32_t{valore != 0} : valore;
}

std::optional<std::int32_t> ValoreInviato(const CampoRecord& campo, const RecordProgetto& record) {
    if (campo.Come == TipoLetto) return 0;
    try {
        const std::int32_t arrivato = Arrivato(campo, DalProgetto(campo, record));
        return campo.Come == Ingresso ? arrivato - 1 : arrivato;
    } catch (const NonCodificabile&) {
        return std::nullopt;
    }
}

void RiempiRecord(const TabellaRecord& tabella, std::string_view risposta,
                  ControlliEditor* controlli) {
    assert(risposta.size() == tabella.Risposta);
    for (const CampoRecord& campo : tabella.Campi) {
        const std::string letto = Decodifica(campo, risposta);
        if (controlli != nullptr) {
            NeiControlli(campo, letto, *controlli);
            continue;
        }
        NelProgetto(campo, letto);
        if (campo.Attivo != nullptr) {
            DatiProgetto.*campo.Attivo = Intero(letto) >= 1 && campo.Come != TipoLetto;
        }
    }
}

}  // namespace lapvane
