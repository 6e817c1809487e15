#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "logs/Andamento.h"

namespace lapvane {

class DiarioScarico;

/// What the download asks of its window.
class VistaScarico {
 public:
    virtual ~VistaScarico() = default;
    virtual bool Visibile() const = 0;
    virtual void Stato(const std::string& testo) = 0;   ///< lblStatoDownload
    virtual void Percento(int percento) = 0;            ///< ProgressBar1 and lblPerc, 0 to 100
    virtual void AbilitaOK(bool acceso) = 0;            ///< OKButton
    virtual void Scarica() = 0;                         ///< unloads the window
    virtual void Andamento(const AndamentoScarico&) {}  ///< how far it is
    virtual void Avviso(const std::string&) {}          ///< something to know that stops nothing
};

/// A block of 128 bytes of the log memory or the lap memory, or the empty text with the failure of
/// the transfer pattern.
std::string LeggiBloccoDati(std::int32_t indirizzo);
std::string LeggiBloccoGiri(std::int32_t indirizzo);

/// Laps and bytes that the live frame tells; 0 after a failure.
std::int16_t LeggiNumeroGiri();
std::int32_t LeggiDimensioneDati();

/// One record of the lap memory: hundredths of a second, and whether a new session begins with it.
struct RecordGiro {
    std::int32_t Centesimi = 0;
    bool NuovaSessione = false;
};
RecordGiro DecodificaRecordGiro(std::string_view quattroByte);

/// Puts the 32 laps of a block into `TabellaGiri` from entry `i` on and counts the sessions in
/// `sessione`. Laps past the table are left out; false: one of `NumeroGiri` was among them.
bool DecodificaBloccoGiri(std::string_view blocco, int i, std::int16_t& sessione);

/// Whether the last byte of a page (two blocks of 128 bytes) is the checksum of the rest.
bool VerificaPagina(std::string_view blocco1, std::string_view blocco2);

/// One run of the download window.
class Scarico {
 public:
    /// `diario` keeps it on the disk; null: nobody does.
    explicit Scarico(VistaScarico& vista, DiarioScarico* diario = nullptr)
        : vista_(vista), diario_(diario) {}

    /// The activation of the window: sizes, lap memory, log memory. A download of this memory that
    /// was broken off is offered to go on with. At its end one box tells what did not come, if
    /// anything.
    void Esegui();

    void ScaricaGiri();
    void DecodificaGiri(int i);
    void ScaricaLog();

    std::int32_t BytesDati = 0;
    std::int16_t NumeroSessione = 0;

 private:
    /// Asks once, and up to three times more over a link that is opened anew. False: nothing came.
    bool Insisti(const std::function<void()>& chiedi);
    /// What the download lost, a sentence a line; empty: nothing.
    std::string Mancanze() const;

    /// Reads a block of the log, with the retries; false when they are used up or the window went.
    bool LeggiConRiprova(std::string& blocco, std::int32_t indirizzo);
    /// Reads a page into `BloccoDati1` and 2. `nellaPausa` runs in the pause behind it.
    bool LeggiPagina(std::int32_t indirizzo, const std::function<void()>& nellaPausa);

    /// Asks whether the download that was broken off is to go on.
    void Riprendi();
    /// Whether the first pages that came before, and the last, are still those of the instrument.
    bool StessaMemoria();
    /// Takes a page that came before into the buffers; false: it has to be read.
    bool GiaScaricata(std::int32_t indirizzo);
    /// What is done with the page in `BloccoDati1` and 2; false: the log ends here.
    bool PaginaArrivata(std::int32_t indirizzo);
    /// False: no room.
    bool Serba();
    /// How far the download is behind a page, whatever became of it.
    void MostraPagina(std::int32_t indirizzo);
    /// How the loop over the memory has ended.
    void Concludi();
    void MostraAndamento();

    VistaScarico& vista_;
    DiarioScarico* diario_;
    PassoScarico passo_;
    int falliti_ = 0;
    int ripetuti_ = 0;  ///< questions that were asked again
    bool giriOltre_ = false;
    bool senzaDimensione_ = false;
    bool senzaNumeroGiri_ = false;
    bool rinunciato_ = false;  ///< the person wanted neither to go on nor to begin afresh
    bool avvisato_ = false;    ///< that nothing goes to the disk
    bool vistaPaginaVuota_ = false;
    bool finita_ = true;             ///< the log memory was walked to its end
    std::int32_t letti_ = 0;         ///< bytes of it that were walked
    int pagineScartate_ = 0;         ///< dropped by their checksum
    int pagineNonLette_ = 0;         ///< left out because no link was there
    std::vector<int> blocchiPersi_;  ///< first lap of each lap block that did not come
};

}  // namespace lapvane
