#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "project/DatiProgetto.h"
#include "shell/Editor.h"
#include "shell/Voci.h"

namespace lapvane {

/// What a field of a record is.
enum class Natura {
    Numero,    ///< number; text box
    Scelta,    ///< index of a list
    Ingresso,  ///< index of a list, travels plus 1
    Flag,      ///< 1 or 0; check box
    Bit,       ///< bit `Dettaglio` of the field; check box
    Soglia,    ///< integer behind a flag, 0 when that is off; text box with the value divided by
               ///< `Dettaglio`
    Tipo,      ///< index plus 1 behind a flag, 0 when that is off; list
    TipoLetto  ///< the same, travels in replies alone, and the project's flag never comes on
};

/// One field of a record that travels, at the same place in the frame that writes it and in the
/// reply that reads it. Words are high byte first, and signed in a reply; bytes are unsigned.
struct CampoRecord {
    std::size_t Byte = 0;  ///< its first character, from 1
    int Larghezza = 1;     ///< bytes, 1 or 2
    Natura Come = Natura::Numero;
    CampoProgetto Progetto;
    std::string_view Controllo;       ///< in the record's editor
    Voce Didascalia = Voce::Nessuna;  ///< its name to a person
    int Dettaglio = 0;
    bool RecordProgetto::*Attivo = nullptr;  ///< the flag of `Soglia`, `Tipo` and `TipoLetto`
    std::string_view Spunta = {};            ///< its check box
};

/// What a write sends while a form is open that does not show the record.
enum class AltraForm {
    Niente,   ///< nothing; the exchange counts as failed
    Coda,     ///< header, the zeros behind the fields, checksum
    Testata,  ///< the two characters of the header
};

/// One record: its commands, the lengths of frame and reply in characters, its fields in order.
/// What belongs to no field is 0.
struct TabellaRecord {
    int Scrivi = 0;
    std::size_t Lunghezza = 0;
    int Leggi = 0;
    std::size_t Risposta = 0;
    std::string_view NomeEditor;
    AltraForm ConAltraForm = AltraForm::Niente;
    std::span<const CampoRecord> Campi;
};

extern const TabellaRecord kRecordSetup1;
extern const TabellaRecord kRecordSetup2;
extern const TabellaRecord kRecordSensori;
extern const TabellaRecord kRecordAllarmi;

/// A value that cannot be a number of the instrument, and the text that names its field.
struct NonCodificabile {
    std::string Testo;
    Voce Didascalia = Voce::Nessuna;
};

/// What a field of a record would not bring to the instrument as it stands: a value that cannot be
/// encoded, or one of which the field's byte or word carries the low bits alone.
struct ValoreFuori {
    const CampoRecord* Campo = nullptr;
    std::string Scritto;                  ///< as the box or the project has it
    std::optional<std::string> Arrivato;  ///< what a read would give back; empty: cannot be encoded
};

/// Those fields of a record, in order; out of the controls or, without, out of `DatiProgetto`.
std::vector<ValoreFuori> ValoriFuori(const TabellaRecord& tabella,
                                     const ControlliEditor* controlli);

/// The least and the greatest number that a field carries and gives back, as its editor shows it.
struct LimitiCampo {
    double Minimo = 0.0;
    double Massimo = 0.0;
};
LimitiCampo Limiti(const CampoRecord& campo);

/// The numbers that the byte or word of a field carries and gives back ("0 ... 255"); those of a
/// threshold are divided by its factor.
std::string Ammessi(const CampoRecord& campo);

/// The field of a record behind a control of its editor; null for a control that has none.
const CampoRecord* CampoDi(std::string_view controllo);

/// The frame that writes a record from an editor's controls or, without, from `DatiProgetto`.
/// Raises `NonCodificabile`.
std::string ComponiRecord(const TabellaRecord& tabella, const ControlliEditor* controlli);

/// What a field holds on the wire, as a read decodes it: words signed, bytes unsigned, flags and
/// bits 0 or 1, an index of a list from 0.
std::int32_t ValoreLetto(const CampoRecord& campo, std::string_view risposta);
/// What a write of that project puts there, in the same form; empty: it cannot be encoded.
std::optional<std::int32_t> ValoreInviato(const CampoRecord& campo, const RecordProgetto& record);

/// Fills controls or, without, `DatiProgetto` from a reply of the record's length.
void RiempiRecord(const TabellaRecord& tabella, std::string_view risposta,
                  ControlliEditor* controlli);

}  // namespace lapvane
