#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lapvane {

// The records of the instrument, each carried whole by one command: setup, sensor assignment,
// curves, alarms. The caller has called `LinkPronto` and set `FaseComunicazione`, which stays as it
// is. The outcome is in `ErroreComunicazione`; a failed exchange is shown (text 242), and the
// target of a failed read keeps its values. Each successful exchange flashes a lamp for half a
// second, during which events run.
//
// Without an open editor (`FormAttiva`) a record goes out of and into `DatiProgetto`, with the
// editor of that record open out of and into its controls. With any other form open a read fills
// nothing; the setup is sent without its fields, which the instrument does not acknowledge, and
// sensors and alarms are not sent and count as failed. A read whose editor has closed meanwhile
// fills nothing either. A value that cannot be encoded (a text that is no number, a number beyond
// 32 bits) is shown with its field's name and counts as a failed exchange; nothing is sent.
// `ConfermaInvio` tells before.

struct TabellaRecord;

/// Whether these records can go to the instrument as they stand: out of the open editor's controls
/// if it shows them, else out of `DatiProgetto`. A value that cannot be encoded is told by its
/// field's name; of values that do not fit their byte or word it is told what the instrument would
/// get, and asked. Empty: yes. Otherwise the control of the field that stands in the way.
std::optional<std::string_view> ConfermaInvio(std::span<const TabellaRecord* const> record);

/// First and second half of the setup; editor `frmConfigurazione`.
void InviaDatiSetup1();
void InviaDatiSetup2();
void LeggiDatiSetup1();
void LeggiDatiSetup2();

/// The sensor assignment; editor `frmSensori`.
void InviaDatiSensori();
void LeggiDatiSensori();

/// Alarm thresholds, shift light, lamp and output; editor `frmAllarmi`.
void InviaDatiAllarmi();
void LeggiDatiAllarmi();

/// Sends elements 0 to 19 of `CurvaX` and `CurvaY` as the curve of a channel (0 to 8). A fraction
/// is rounded half to even; of a value beyond 16 bits the low 16 travel.
void InviaCurvaSensore(std::int16_t canale);
/// Fills elements 0 to 19 of `CurvaX` and `CurvaY` with the instrument's integers (signed, still
/// multiplied by the channel's factor).
void LeggiCurvaSensore(std::int16_t canale);

// The same reads into copies of the caller's, whatever form is open: neither `DatiProgetto` nor a
// control nor `CurvaX` and `CurvaY` is touched.

/// A curve as the instrument holds it.
struct CurvaStrumento {
    std::array<std::int16_t, 20> X{};
    std::array<std::int16_t, 20> Y{};  ///< multiplied by the channel's factor
};

/// The reply that holds a record; the empty text after a failure.
std::string ChiediRecord(const TabellaRecord& tabella);
/// The curve of a channel (0 to 8); empty after a failure.
std::optional<CurvaStrumento> ChiediCurva(std::int16_t canale);

}  // namespace lapvane
