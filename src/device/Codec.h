#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lapvane {

// Numbers into frames and out of replies: raw bytes, high byte first, one character a byte.

/// A number to be encoded: the two's complement of the width of the value's own type
/// (a 16-bit -1 is 0xFFFF). A floating value and a text pass through 32 bits: a fraction is rounded
/// half to even, the empty text is 0. Raises error 6 beyond 32 bits, 13 for a text that is no
/// number.
class ValoreCodec {
 public:
    ValoreCodec(std::int16_t valore) : bit_(static_cast<std::uint16_t>(valore)) {}
    ValoreCodec(std::int32_t valore) : bit_(static_cast<std::uint32_t>(valore)) {}
    ValoreCodec(bool) = delete;
    ValoreCodec(double valore);
    ValoreCodec(std::string_view testo);
    ValoreCodec(const std::string& testo) : ValoreCodec(std::string_view(testo)) {}
    ValoreCodec(const char* testo) : ValoreCodec(std::string_view(testo)) {}

    std::uint32_t Bit() const { return bit_; }

 private:
    std::uint32_t bit_ = 0;
};

/// The last two upper-case hexadecimal digits of a value.
std::string ByteInEsa(ValoreCodec valore);
std::string CodificaByte(ValoreCodec valore);  ///< 1 byte
std::string CodificaWord(ValoreCodec valore);  ///< 2 bytes
std::string CodificaLong(ValoreCodec valore);  ///< 4 bytes

// The same fields as numbers. `byte` counts from 1; the field must lie inside `testo`.
int ByteIn(std::string_view testo, std::size_t byte);           ///< 0 to 255
int SByteIn(std::string_view testo, std::size_t byte);          ///< -128 to 127
int Int16In(std::string_view testo, std::size_t byte);          ///< -32768 to 32767
int WordIn(std::string_view testo, std::size_t byte);           ///< 0 to 65535
std::int32_t LongIn(std::string_view testo, std::size_t byte);  ///< signed 32 bits

// Decimal text of a field of 1, 1, 2, 2 and 4 characters, as what shows a reply takes it.
std::string DecodificaByte(std::string_view campo);
std::string DecodificaSByte(std::string_view campo);
std::string DecodificaInt16(std::string_view campo);
std::string DecodificaWord(std::string_view campo);
std::string DecodificaLong(std::string_view campo);
/// Such a text as a number again.
std::int32_t Intero(std::string_view decodificato);

/// The low byte of the sum of the character codes, as two upper-case hexadecimal digits. The sum is
/// a signed 16-bit integer: error 6 for a text that overflows it.
std::string CalcolaChecksum(std::string_view testo);

/// Bit `bit` (0 the lowest) of a value.
bool BitAttivo(std::int32_t valore, int bit);

/// "H", command, payload, checksum.
std::string Frame(int comando, std::string_view dati = {});
/// The acknowledgement that a write of `comando` expects: "R", command, checksum, "*".
std::string Conferma(int comando);

}  // namespace lapvane
