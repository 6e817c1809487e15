#include "device/Differenze.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <type_traits>
#include <variant>

#include "device/Codec.h"
#include "device/TabelleRecord.h"
#include "platform/ErroreRuntime.h"
#include "project/DatiProgetto.h"
#include "sensors/Allarmi.h"
#include "sensors/CSensore.h"
#include "sensors/CampiEditor.h"
#include "sensors/CanaliSensore.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/TabelleNomi.h"
#include "shell/Utility.h"

namespace lapvane {

const std::array<const TabellaRecord*, 4> kRecordCopiati = {&kRecordSetup1, &kRecordSetup2,
                                                            &kRecordSensori, &kRecordAllarmi};

namespace {

using R = RecordProgetto;

constexpr std::array<Voce, 4> kGruppi = {Voce::VoceImpostazioni, Voce::VoceImpostazioni,
                                         Voce::VoceSensori, Voce::VoceAllarmi};

/// A field on one side: its value on the wire or, where it can't be encoded, its text.
struct Valore {
    std::optional<std::int32_t> Numero;
    std::string Scritto;

    bool operator==(const Valore&) const = default;
};
/// All fields of a side, by their places in the tables.
using Valori = std::array<std::vector<Valore>, kRecordCopiati.size()>;

Valori ValoriDi(const std::function<Valore(std::size_t tabella, const CampoRecord&)>& valore) {
    Valori valori;
    for (std::size_t t = 0; t < kRecordCopiati.size(); ++t) {
        for (const CampoRecord& campo : kRecordCopiati[t]->Campi) {
            valori[t].push_back(valore(t, campo));
        }
    }
    return valori;
}

Valore ValoreDi(const R& record, const CampoRecord& campo) {
    const auto numero = ValoreInviato(campo, record);
    if (numero) return {numero, {}};
    return {numero, record.*std::get<std::string R::*>(campo.Progetto)};
}

/// A caption and what it says in brackets of limits or units ("Shift light [RPM]").
std::string SenzaQuadre(Voce voce) {
    const std::string testo = Testo(voce);
    return testo.substr(0, testo.find(" ["));
}
std::string FraQuadre(Voce voce) {
    const std::string testo = Testo(voce);
    const std::size_t inizio = testo.find('[');
    if (inizio == std::string::npos) return {};
    return testo.substr(inizio + 1, testo.find(']', inizio) - inizio - 1);
}

std::string Con(const std::string& prima, Voce dopo) {
    return prima + ": " + SenzaQuadre(dopo);
}

bool EDelloShift(const CampoRecord& campo) {
    return std::any_of(kShiftLight.begin(), kShiftLight.end(),
                       [&](const LuceShift& luce) { return luce.Casella == campo.Controllo; });
}

/// What a field is called outside of its frame in the editor.
std::string Nome(const CampoRecord& campo) {
    const std::string titolo = SenzaQuadre(campo.Didascalia);
    switch (campo.Come) {
        case Natura::Bit:
            return Testo(Voce::Pagina) + " " + TestoNumero(campo.Dettaglio + 2);
        case Natura::Ingresso:
            return Con(titolo, Voce::IngressoAnalogico);
        case Natura::Scelta:
            for (const LivelloSensori& livello : kLivelliSensori) {
                if (livello.Lista == campo.Controllo) return Con(titolo, Voce::LivelloAttivazione);
            }
            if (campo.Controllo == kListeSetup[kLingua].Lista) return titolo;
            return Con(Testo(Voce::UnitaDiMisura), campo.Didascalia);
        case Natura::Numero:
            if (EDelloShift(campo)) return Con(SenzaQuadre(Voce::ShiftLight), campo.Didascalia);
            return titolo;
        default:
            return titolo;
    }
}

/// The entries of a field's list; null for a field without.
const std::vector<std::string>* Lista(const CampoRecord& campo) {
    if (campo.Come == Natura::Ingresso) return &ListaIngressiAN;
    for (const ListaSetup& lista : kListeSetup) {
        if (lista.Lista == campo.Controllo) return lista.Voci;
    }
    for (const LivelloSensori& livello : kLivelliSensori) {
        if (livello.Lista == campo.Controllo) return livello.Voci;
    }
    for (const FunzioneAllarme& funzione : kFunzioniAllarme) {
        if (funzione.Lista == campo.Controllo) return funzione.Voci;
    }
    return nullptr;
}

std::string Acceso(bool acceso) {
    return Testo(acceso ? Voce::FlagAttivo : Voce::FlagNonAttivo);
}

std::string ConDecimali(std::int32_t valore, int fattore) {
    std::string testo = TestoNumero(static_cast<double>(valore) / fattore);
    return FormattaDecimali(testo, fattore);
}

/// An entry by its position; one that the list does not have as the number that it is.
std::string DaLista(const CampoRecord& campo, std::int32_t posto, std::int32_t numero) {
    const std::vector<std::string>* lista = Lista(campo);
    const bool presente =
        lista != nullptr && posto >= 0 && static_cast<std::size_t>(posto) < lista->size();
    return presente ? (*lista)[static_cast<std::size_t>(posto)] : TestoNumero(numero);
}

std::string Mostra(const CampoRecord& campo, const Valore& valore) {
    if (!valore.Numero) return valore.Scritto;
    const std::int32_t numero = *valore.Numero;
    switch (campo.Come) {
        case Natura::Scelta:
        case Natura::Ingresso:
            return DaLista(campo, numero, numero);
        case Natura::Flag:
        case Natura::Bit:
            return Acceso(numero != 0);
        case Natura::Soglia:
            return numero == 0 ? Acceso(false) : ConDecimali(numero, campo.Dettaglio);
        case Natura::Tipo:
        case Natura::TipoLetto:
            return numero == 0 ? Acceso(false) : DaLista(campo, numero - 1, numero);
        case Natura::Numero:
            break;
    }
    return TestoNumero(numero);
}

/// The unit that a side names by the index of a field in one of the setup's lists.
std::string UnitaScelta(const Valori& valori, std::size_t lista) {
    const auto& campi = kRecordSetup1.Campi;
    for (std::size_t i = 0; i < campi.size(); ++i) {
        if (campi[i].Controllo != kListeSetup[lista].Lista) continue;
        return NomeUnita(*kListeSetup[lista].Voci,
                         static_cast<std::int16_t>(valori[0][i].Numero.value_or(-1)));
    }
    return {};
}

std::string Unita(const CampoRecord& campo, const Valori& valori) {
    for (const SogliaAllarme& soglia : kSoglie) {
        if (soglia.Casella != campo.Controllo) continue;
        switch (soglia.Unita) {
            case UnitaSoglia::Temperatura:
                return UnitaScelta(valori, kTemperatura);
            case UnitaSoglia::Pressione:
                return UnitaScelta(valori, kPressione);
            case UnitaSoglia::Volt:
                return "V";
            case UnitaSoglia::Nessuna:
                return {};
        }
    }
    if (EDelloShift(campo)) return FraQuadre(Voce::ShiftLight);
    if (campo.Controllo == kNumeriSensori[kDiametroRuota].Casella) return "mm";
    for (std::size_t i = 0; i < kNumeriSetup.size(); ++i) {
        if (kNumeriSetup[i].Casella != campo.Controllo) continue;
        if (i == kRecVel) return UnitaScelta(valori, kVelocita);
        return i >= kSettore ? "m" : "s";
    }
    return {};
}

void Confronta(const Valori& prima, const Valori& ora, std::vector<Differenza>& differenze) {
    for (std::size_t t = 0; t < kRecordCopiati.size(); ++t) {
        for (std::size_t i = 0; i < prima[t].size(); ++i) {
            if (prima[t][i] == ora[t][i]) continue;
            const CampoRecord& campo = kRecordCopiati[t]->Campi[i];
            std::string unita = Unita(campo, prima);
            if (const std::string altra = Unita(campo, ora); altra != unita) {
                unita += " / " + altra;
            }
            differenze.push_back({Testo(kGruppi[t]), Nome(campo), Mostra(campo, prima[t][i]),
                                  Mostra(campo, ora[t][i]), unita});
        }
    }
}

/// The curve that a project wants in a channel. Points behind `Punti` are nobody's.
struct CurvaVoluta {
    CurvaStrumento Curva;
    std::size_t Punti = 0;
    /// A value that no word carries, as text, by its point.
    std::array<std::string, CSensore::kPunti> NonInviabile;
};

std::int16_t Parola(double valore) {
    // By way of the decimal text, as the frame takes it.
    return static_cast<std::int16_t>(Int16In(CodificaWord(TestoNumero(valore)), 1));
}

CurvaVoluta VolutaDa(const CanaleSensore& canale, const R& progetto) {
    CurvaVoluta voluta;
    voluta.Punti = CSensore::kPunti;
    if (!(progetto.*canale.Abil)) return voluta;
    AsseCurva x{}, y{};
    voluta.Punti = std::min(CaricaCurvaSensore(progetto.*canale.Nome, x, y), CSensore::kPunti);
    for (std::size_t i = 0; i < voluta.Punti; ++i) {
        try {
            voluta.Curva.X[i] = Parola(x[i]);
            voluta.Curva.Y[i] = Parola(y[i]);
        } catch (const ErroreRuntime&) {
            voluta.NonInviabile[i] = TestoNumero(x[i]) + " = " + TestoNumero(y[i]);
        }
    }
    return voluta;
}

/// "48 Bit = 171.0"
std::string Punto(const TipoSensore& tipo, const CurvaStrumento& curva, std::size_t punto) {
    return TestoNumero(int{curva.X[punto]}) + " " + std::string(tipo.EtichettaX) + " = " +
           ConDecimali(curva.Y[punto], tipo.Fattore);
}

/// The unit in the heading of a type's column ("Y (bar)", "G").
std::string UnitaCurva(const TipoSensore& tipo) {
    const std::string_view titolo = tipo.EtichettaY;
    if (titolo == "Y") return {};
    const std::size_t inizio = titolo.find('(');
    if (inizio == std::string_view::npos) return std::string(titolo);
    return std::string(Rifila(titolo.substr(inizio + 1, titolo.find(')') - inizio - 1)));
}

std::string NomeCurva(const TipoSensore& tipo, const CurvaStrumento& curva) {
    AsseCurva x{}, y{};
    for (std::size_t i = 0; i < CSensore::kPunti; ++i) {
        x[i] = curva.X[i];
        y[i] = static_cast<double>(curva.Y[i]) / tipo.Fattore;
    }
    return CercaNomeSensore(tipo.Tipo, x, y);
}

std::string QuantiPunti(std::size_t diversi, std::size_t primo) {
    std::string testo = Testo(Voce::PuntiDiversi);
    testo.replace(testo.find("%1"), 2, TestoNumero(static_cast<int>(diversi)));
    return testo.replace(testo.find("%2"), 2, TestoNumero(static_cast<int>(primo + 1)));
}

std::optional<Differenza> ConfrontaCurva(const CanaleSensore& canale, const R& progetto,
                                         const CurvaStrumento& letta) {
    const TipoSensore& tipo = *canale.Sensore;
    const CurvaVoluta voluta = VolutaDa(canale, progetto);
    const std::string trovato = NomeCurva(tipo, letta);
    const std::string nome(Rifila(progetto.*canale.Nome));
    Differenza riga{Testo(Voce::GruppoCurve), Testo(canale.Titolo),
                    progetto.*canale.Abil ? nome : Acceso(false),
                    trovato.empty() ? Testo(Voce::CurvaIgnota) : trovato, UnitaCurva(tipo)};
    if (voluta.Punti == 0) {
        riga.Prima += (nome.empty() ? "" : ", ") + Testo(Voce::SensoreAssente);
        riga.Unita.clear();
        return riga;
    }
    std::size_t diversi = 0;
    std::size_t primo = 0;
    for (std::size_t i = voluta.Punti; i-- > 0;) {
        const bool uguale = voluta.NonInviabile[i].empty() && voluta.Curva.X[i] == letta.X[i] &&
                            voluta.Curva.Y[i] == letta.Y[i];
        if (uguale) continue;
        ++diversi;
        primo = i;
    }
    if (diversi == 0) return std::nullopt;
    riga.Cosa += ": " + QuantiPunti(diversi, primo);
    riga.Prima += ": " + (voluta.NonInviabile[primo].empty() ? Punto(tipo, voluta.Curva, primo)
                                                             : voluta.NonInviabile[primo]);
    riga.Ora += ": " + Punto(tipo, letta, primo);
    return riga;
}

/// A field that no frame carries, and its name.
struct Descrittivo {
    CampoProgetto Campo;
    std::string Nome;
};

std::vector<Descrittivo> Descrittivi() {
    std::vector<Descrittivo> campi = {{&R::NomeProgetto, Testo(Voce::NomeProgetto)},
                                      {&R::AutoreProgetto, Testo(Voce::Autore)},
                                      {&R::Strumento, Testo(Voce::NoteStrumento)},
                                      {&R::Veicolo, Testo(Voce::NoteVettura)},
                                      {&R::NoteProgetto, Testo(Voce::NoteNote)},
                                      {&R::PaginaAbilitata1, Testo(Voce::Pagina) + " 1"},
                                      {&R::PaginaAbilitata10, Testo(Voce::Pagina) + " 10"}};
    const auto aggiungi = [&campi](CampoProgetto campo, Voce prima, Voce dopo) {
        campi.push_back({campo, Con(Testo(prima), dopo)});
    };
    aggiungi(&R::TCampRPM, Voce::CorniceGiriMotore, Voce::FrequenzaCampionamento);
    aggiungi(&R::TCampVV, Voce::CorniceVelocitaVettura, Voce::FrequenzaCampionamento);
    for (const CanaleSensore& canale : kCanaliSensore) {
        aggiungi(canale.Nome, canale.Titolo, Voce::NomeSensore);
        aggiungi(canale.TCamp, canale.Titolo, Voce::FrequenzaCampionamento);
    }
    for (const std::size_t led : {kLedVerde, kLedBlu}) {
        const FunzioneAllarme& funzione = kFunzioniAllarme[led];
        campi.push_back({funzione.Attiva, Testo(funzione.Didascalia)});
        aggiungi(funzione.Tipo, funzione.Didascalia, Voce::Funzione);
    }
    return campi;
}

/// A value of a file: there an empty text is a blank, and a line break one as well.
std::string Mostra(const R& record, const CampoProgetto& campo) {
    return std::visit(
        [&record](auto membro) -> std::string {
            const auto& valore = record.*membro;
            using T = std::remove_cvref_t<decltype(valore)>;
            if constexpr (std::is_same_v<T, std::string>) {
                std::string testo(Rifila(valore));
                std::erase(testo, '\r');
                std::replace(testo.begin(), testo.end(), '\n', ' ');
                return testo;
            } else if constexpr (std::is_same_v<T, bool>) {
                return Acceso(valore);
            } else {
                return TestoNumero(std::int64_t{valore});
            }
        },
        campo);
}

}  // namespace

std::vector<Differenza> Differenze(const RecordProgetto& progetto,
                                   const CopiaStrumento& strumento) {
    std::vector<Differenza> differenze;
    Confronta(
        ValoriDi([&](std::size_t, const CampoRecord& campo) { return ValoreDi(progetto, campo); }),
        ValoriDi([&](std::size_t t, const CampoRecord& campo) {
            return Valore{ValoreLetto(campo, strumento.Record[t]), {}};
        }),
        differenze);
    for (std::size_t n = 0; n < kCanaliSensore.size(); ++n) {
        auto riga = ConfrontaCurva(kCanaliSensore[n], progetto, strumento.Curve[n]);
        if (riga) differenze.push_back(std::move(*riga));
    }
    return differenze;
}

std::vector<Differenza> Differenze(const RecordProgetto& prima, const RecordProgetto& ora) {
    const auto valori = [](const R& record) {
        return ValoriDi([&record](std::size_t, const CampoRecord& campo) {
            // No write carries the input's type, but a read has brought it.
            if (campo.Come == Natura::TipoLetto) return Valore{record.TipoIngresso, {}};
            return ValoreDi(record, campo);
        });
    };
    std::vector<Differenza> differenze;
    Confronta(valori(prima), valori(ora), differenze);
    for (const Descrittivo& campo : Descrittivi()) {
        const std::string a = Mostra(prima, campo.Campo);
        const std::string b = Mostra(ora, campo.Campo);
        if (a != b) differenze.push_back({Testo(Voce::MenuProgetto), campo.Nome, a, b, {}});
    }
    return differenze;
}

}  // namespace lapvane
