#include "device/Codec.h"

#include <cassert>

#include "platform/ErroreRuntime.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr char kEsa[] = "0123456789ABCDEF";

unsigned Codice(std::string_view testo, std::size_t byte) {
    assert(byte >= 1 && byte <= testo.size());
    return static_cast<unsigned char>(testo[byte - 1]);
}

// A floating value or a text passes through the 32-bit type.
std::uint32_t BitDi(double valore) {
    return static_cast<std::uint32_t>(ConvertiInt32(valore));
}

}  // namespace

ValoreCodec::ValoreCodec(double valore) : bit_(BitDi(valore)) {}

ValoreCodec::ValoreCodec(std::string_view testo) {
    if (testo.empty()) return;
    const auto valore = LeggiNumero(testo);
    if (!valore) {
        throw ErroreRuntime(NumeroErrore::TypeMismatch, Lavoro::CodificareCampo);
    }
    bit_ = BitDi(*valore);
}

std::string ByteInEsa(ValoreCodec valore) {
    const std::uint32_t b = valore.Bit() & 0xFFu;
    return {kEsa[b >> 4], kEsa[b & 0xFu]};
}

std::string CodificaByte(ValoreCodec valore) {
    return std::string(1, static_cast<char>(valore.Bit() & 0xFFu));
}

std::string CodificaWord(ValoreCodec valore) {
    return {static_cast<char>((valore.Bit() >> 8) & 0xFFu),
            static_cast<char>(valore.Bit() & 0xFFu)};
}

std::string CodificaLong(ValoreCodec valore) {
    const std::uint32_t b = valore.Bit();
    return {static_cast<char>(b >> 24), static_cast<char>((b >> 16) & 0xFFu),
            static_cast<char>((b >> 8) & 0xFFu), static_cast<char>(b & 0xFFu)};
}

int ByteIn(std::string_view testo, std::size_t byte) {
    return static_cast<int>(Codice(testo, byte));
}

int SByteIn(std::string_view testo, std::size_t byte) {
    return static_cast<std::int8_t>(Codice(testo, byte));
}

int WordIn(std::string_view testo, std::size_t byte) {
    return static_cast<int>((Codice(testo, byte) << 8) | Codice(testo, byte + 1));
}

int Int16In(std::string_view testo, std::size_t byte) {
    return static_cast<std::int16_t>(WordIn(testo, byte));
}

std::int32_t LongIn(std::string_view testo, std::size_t byte) {
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(WordIn(testo, byte)) << 16) |
                                     static_cast<std::uint32_t>(WordIn(testo, byte + 2)));
}

std::string DecodificaByte(std::string_view campo) {
    return TestoNumero(ByteIn(campo, 1));
}
std::string DecodificaSByte(std::string_view campo) {
    return TestoNumero(SByteIn(campo, 1));
}
std::string DecodificaInt16(std::string_view campo) {
    return TestoNumero(Int16In(campo, 1));
}
std::string DecodificaWord(std::string_view campo) {
    return TestoNumero(WordIn(campo, 1));
}
std::string DecodificaLong(std::string_view campo) {
    return TestoNumero(LongIn(campo, 1));
}

std::int32_t Intero(std::string_view decodificato) {
    return LeggiIntero(decodificato).value();
}

std::string CalcolaChecksum(std::string_view testo) {
    int somma = 0;
    for (std::size_t i = 1; i <= testo.size(); ++i) {
        somma += ByteIn(testo, i);
        if (somma > 32767) throw ErroreRuntime(NumeroErrore::Overflow, Lavoro::CalcolareChecksum);
    }
    return ByteInEsa(static_cast<std::int16_t>(somma));
}

bool BitAttivo(std::int32_t valore, int bit) {
    return ((static_cast<std::uint32_t>(valore) >> bit) & 1u) != 0;
}

std::string Frame(int comando, std::string_view dati) {
    std::string frame = "H";
    frame += static_cast<char>(comando);
    frame += dati;
    return frame + CalcolaChecksum(frame);
}

std::string Conferma(int comando) {
    std::string conferma = "R";
    conferma += static_cast<char>(comando);
    return conferma + CalcolaChecksum(conferma) + "*";
}

}  // namespace lapvane
