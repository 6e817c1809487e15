// The frame codec: whatever is encoded comes back, and a frame's checksum holds. The records: what
// a reply put into the project goes out again as it came.

#include "device/Codec.h"
#include "device/TabelleRecord.h"
#include "fuzz/Fuzz.h"
#include "platform/ErroreRuntime.h"
#include "shell/NumeroTesto.h"

void Fuzz(std::string_view input) {
    using namespace lapvane;
    const std::string text(input);
    const std::size_t size = text.size();
    try {
        const std::string coded = CodificaLong(text);
        Must(coded.size() == 4 && LongIn(coded, 1) == LeggiInt32(text).value_or(0));
        Must(CodificaWord(text) == coded.substr(2) && CodificaByte(text) == coded.substr(3));
    } catch (const ErroreRuntime&) {
        Must(!text.empty() && !LeggiInt32(text).has_value());
    }
    if (size == 0 || size > 100) return;
    const std::string frame = Frame(ByteIn(text, 1), input.substr(1));
    Must(frame.size() == size + 3);
    Must(CalcolaChecksum(frame.substr(0, frame.size() - 2)) == frame.substr(frame.size() - 2));
    if (size >= 4) {
        Must(CodificaLong(DecodificaLong(std::string_view(text).substr(0, 4))) ==
             text.substr(0, 4));
    }
    for (const TabellaRecord* tabella :
         {&kRecordSetup1, &kRecordSetup2, &kRecordSensori, &kRecordAllarmi}) {
        if (size != tabella->Risposta) continue;
        RiempiRecord(*tabella, text, nullptr);
        const std::string uno = ComponiRecord(*tabella, nullptr);
        Must(uno.size() == tabella->Lunghezza);
        std::string risposta = uno;
        risposta.resize(tabella->Risposta);
        RiempiRecord(*tabella, risposta, nullptr);
        Must(ComponiRecord(*tabella, nullptr) == uno);
        for (const CampoRecord& campo : tabella->Campi) {
            if (campo.Come > Natura::Ingresso) continue;  // flags, and what stands behind one
            const auto larghezza = static_cast<std::size_t>(campo.Larghezza);
            Must(uno.substr(campo.Byte - 1, larghezza) == text.substr(campo.Byte - 1, larghezza));
        }
    }
}
