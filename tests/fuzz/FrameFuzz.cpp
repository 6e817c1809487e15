// The frame codec: whatever is encoded comes back, and a frame's checksum holds. The records: what
// a reply put into the project goes out again as it came.
#include <cstdlib>

#include "device/Codec.h"
#include "device/TabelleRecord.h"
#include "platform/ErroreRuntime.h"
#include "shell/NumeroTesto.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace lapvane;
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const std::string coded = CodificaLong(text);
        if (coded.size() != 4 || LongIn(coded, 1) != LeggiInt32(text).value_or(0)) std::abort();
        if (CodificaWord(text) != coded.substr(2) || CodificaByte(text) != coded.substr(3)) {
            std::abort();
        }
    } catch (const ErroreRuntime&) {
        if (text.empty() || LeggiInt32(text).has_value()) std::abort();
    }
    if (size == 0 || size > 100) return 0;
    const std::string frame = Frame(data[0], std::string_view(text).substr(1));
    if (frame.size() != size + 3) std::abort();
    if (CalcolaChecksum(frame.substr(0, frame.size() - 2)) != frame.substr(frame.size() - 2)) {
        std::abort();
    }
    if (size >= 4) {
        if (CodificaLong(DecodificaLong(std::string_view(text).substr(0, 4))) !=
            text.substr(0, 4)) {
            std::abort();
        }
    }
    for (const TabellaRecord* tabella :
         {&kRecordSetup1, &kRecordSetup2, &kRecordSensori, &kRecordAllarmi}) {
        if (size != tabella->Risposta) continue;
        RiempiRecord(*tabella, text, nullptr);
        const std::string uno = ComponiRecord(*tabella, nullptr);
        if (uno.size() != tabella->Lunghezza) std::abort();
        std::string risposta = uno;
        risposta.resize(tabella->Risposta);
        RiempiRecord(*tabella, risposta, nullptr);
        if (ComponiRecord(*tabella, nullptr) != uno) std::abort();
        for (const CampoRecord& campo : tabella->Campi) {
            if (campo.Come > Natura::Ingresso) continue;  // flags, and what stands behind one
            const auto larghezza = static_cast<std::size_t>(campo.Larghezza);
            if (uno.substr(campo.Byte - 1, larghezza) != text.substr(campo.Byte - 1, larghezza)) {
                std::abort();
            }
        }
    }
    return 0;
}
