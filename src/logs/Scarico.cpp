#include "logs/Scarico.h"

#include <algorithm>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "logs/DiarioScarico.h"
#include "platform/Platform.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

constexpr int kComandoDati = 14;
constexpr int kComandoValori = 37;
constexpr int kComandoGiri = 38;
constexpr std::size_t kRispostaBlocco = 130;
constexpr std::size_t kRispostaValori = 36;
constexpr int kGiriBlocco = 32;
constexpr int kFallitiMassimi = 3;

std::string LeggiBlocco(int comando, const std::string& indirizzo) {
    const std::string risposta = ChiediStrumento(Frame(comando, indirizzo), kRispostaBlocco);
    return risposta.empty() ? risposta : risposta.substr(2, kByteBlocco);
}

}  // namespace

std::string LeggiBloccoDati(std::int32_t indirizzo) {
    return LeggiBlocco(kComandoDati, CodificaLong(indirizzo));
}

std::string LeggiBloccoGiri(std::int32_t indirizzo) {
    return LeggiBlocco(kComandoGiri, CodificaWord(indirizzo));
}

std::int16_t LeggiNumeroGiri() {
    const std::string risposta = ChiediStrumento(Frame(kComandoValori), kRispostaValori);
    return risposta.empty()
               ? std::int16_t{0}
               : static_cast<std::int16_t>(Intero(DecodificaInt16(risposta.substr(22, 2))));
}

std::int32_t LeggiDimensioneDati() {
    const std::string risposta = ChiediStrumento(Frame(kComandoValori), kRispostaValori);
    return risposta.empty() ? 0 : Intero(DecodificaLong(risposta.substr(31, 4)));
}

RecordGiro DecodificaRecordGiro(std::string_view quattroByte) {
    const std::int32_t tutto = LongIn(quattroByte, 1);
    if (ByteIn(quattroByte, 1) < 128) return {tutto, false};
    return {tutto & 0xFFFFFF, true};
}

bool DecodificaBloccoGiri(std::string_view blocco, int i, std::int16_t& sessione) {
    bool tutti = true;
    for (int j = 0; j < kGiriBlocco; ++j) {
        const RecordGiro giro =
            DecodificaRecordGiro(blocco.substr(4 * static_cast<std::size_t>(j), 4));
        if (giro.NuovaSessione) ++sessione;
        const int indice = i + j;
        if (indice >= kGiriTabella) {
            tutti = tutti && indice > NumeroGiri;
            continue;
        }
        TabellaGiri[static_cast<std::size_t>(indice)] =
            CentesimiInTempo(giro.Centesimi) + ", " + TestoNumero(int{sessione});
    }
    return tutti;
}

bool VerificaPagina(std::string_view blocco1, std::string_view blocco2) {
    if (blocco1.size() != kByteBlocco || blocco2.size() != kByteBlocco) return false;
    int somma = 0;
    for (std::size_t i = 1; i <= kByteBlocco; ++i) somma += ByteIn(blocco1, i);
    for (std::size_t i = 1; i < kByteBlocco; ++i) somma += ByteIn(blocco2, i);
    return (somma & 0xFF) == ByteIn(blocco2, kByteBlocco);
}

void Scarico::Esegui() {
    constexpr int kPausa = 1000;
    FaseComunicazione = 38;
    vista_.Stato(Testo(Voce::ScaricamentoInCorso));
    platform().MousePointer(Pointer::Busy);
    platform().DoEvents();
    senzaDimensione_ = !Insisti([this] { BytesDati = LeggiDimensioneDati(); });
    platform().Sleep(kPausa);
    senzaNumeroGiri_ = !Insisti([] { NumeroGiri = LeggiNumeroGiri(); });
    platform().Sleep(kPausa);
    ScaricaGiri();
    platform().Sleep(kPausa);
    if (diario_ != nullptr) Riprendi();
    ScaricaLog();
    // The poll keeps off the port until the window may let go of it.
    if (const std::string mancanze = Mancanze(); !mancanze.empty() && !rinunciato_) {
        platform().MsgBox(mancanze, Buttons::Ok, Icon::Warning, platform().ExeName());
    }
    FaseComunicazione = 0;
}

bool Scarico::Insisti(const std::function<void()>& chiedi) {
    constexpr int kAncora = 3;
    chiedi();
    for (int prova = 0; ErroreComunicazione && prova < kAncora && vista_.Visibile(); ++prova) {
        ++ripetuti_;
        MostraAndamento();
        ChiudiPorta();
        if (LinkPronto() && vista_.Visibile()) chiedi();
    }
    return !ErroreComunicazione;
}

std::string Scarico::Mancanze() const {
    std::string testo;
    const auto riga = [&testo](const std::string& frase) {
        if (!testo.empty()) testo += "\r\n\r\n";
        testo += frase;
    };
    const auto conNumero = [&riga](Voce frase, std::int32_t numero) {
        if (numero != 0) riga(Testo(frase) + " " + TestoNumero(numero));
    };
    if (senzaDimensione_) {
        riga(Testo(Voce::ScaricoDimensione));
    } else if (!finita_) {
        riga(Testo(Voce::ScaricoFine) + " " + TestoNumero(letti_) + " / " + TestoNumero(BytesDati));
    }
    conNumero(Voce::ScaricoPagine, pagineScartate_);
    conNumero(Voce::ScaricoNonLette, pagineNonLette_);
    if (senzaNumeroGiri_) riga(Testo(Voce::ScaricoNumeroGiri));
    if (!blocchiPersi_.empty()) {
        std::string giri;
        for (const int primo : blocchiPersi_) {
            giri += (giri.empty() ? " " : ", ") + TestoNumero(primo) + "-" +
                    TestoNumero(std::min(primo + kGiriBlocco - 1, int{NumeroGiri}));
        }
        riga(Testo(Voce::ScaricoGiri) + giri);
    }
    if (!testo.empty()) testo = Testo(Voce::ScaricoManca) + "\r\n\r\n" + testo;
    if (giriOltre_) riga(Testo(Voce::TabellaGiriPiena));
    return testo;
}

void Scarico::ScaricaGiri() {
    constexpr int kPausa = 100;
    NumeroSessione = 0;
    // The block number follows the lap number, so that a block that was missed leaves its laps
    // empty and does not shift the ones behind it.
    blocchiPersi_.clear();
    for (int i = 1; i <= NumeroGiri; i += kGiriBlocco) {
        bool arrivato = false;
        if (vista_.Visibile() && LinkPronto()) {
            arrivato = Insisti([i] {
                BloccoDati1 =
                    LeggiBloccoGiri((i - 1) / kGiriBlocco * static_cast<int>(kByteBlocco));
            });
            if (arrivato) DecodificaGiri(i);
            if (arrivato && diario_ != nullptr) diario_->Giri(4 * (i - 1), BloccoDati1);
            platform().Sleep(kPausa);
        }
        if (!arrivato) blocchiPersi_.push_back(i);
        platform().DoEvents();
    }
}

void Scarico::DecodificaGiri(int i) {
    // Laps past the table are left out; those that the instrument counts are told of.
    if (!DecodificaBloccoGiri(BloccoDati1, i, NumeroSessione)) giriOltre_ = true;
}

bool Scarico::LeggiConRiprova(std::string& blocco, std::int32_t indirizzo) {
    blocco = LeggiBloccoDati(indirizzo);
    while (ErroreComunicazione) {
        ++falliti_;
        ChiudiPorta();
        LinkPronto();
        if (falliti_ > kFallitiMassimi) vista_.Scarica();
        if (!vista_.Visibile()) return false;
        ++ripetuti_;
        MostraAndamento();
        blocco = LeggiBloccoDati(indirizzo);
    }
    return true;
}

bool Scarico::LeggiPagina(std::int32_t indirizzo, const std::function<void()>& nellaPausa) {
    constexpr int kPausa = 10;
    if (!LeggiConRiprova(BloccoDati1, indirizzo)) return false;
    platform().Sleep(kPausa);
    const auto secondo = indirizzo + static_cast<std::int32_t>(kByteBlocco);
    if (!LeggiConRiprova(BloccoDati2, secondo)) return false;
    platform().Pause(kPausa, nellaPausa);
    return true;
}

void Scarico::Riprendi() {
    diario_->Memoria(BytesDati, NumeroGiri);
    if (senzaDimensione_ || senzaNumeroGiri_ || !vista_.Visibile()) return;
    const ScaricoSuDisco* prima = diario_->Interrotto();
    if (prima == nullptr) return;
    if (!LinkPronto() || !StessaMemoria()) {
        diario_->Ricomincia();
        if (vista_.Visibile()) vista_.Avviso(Testo(Voce::ScaricoDaCapo));
        return;
    }
    const std::string testo = Testo(Voce::ScaricoInterrotto) + "\r\n\r\n" + FraseArrivato(*prima) +
                              "\r\n\r\n" + Testo(Voce::ScaricoProseguire);
    const Answer risposta =
        platform().MsgBox(testo, Buttons::YesNoCancel, Icon::Question, platform().ExeName());
    if (risposta == Answer::Yes) return diario_->Prosegui();
    diario_->Ricomincia();
    rinunciato_ = risposta == Answer::Cancel;
    if (rinunciato_) vista_.Scarica();
}

bool Scarico::StessaMemoria() {
    constexpr std::size_t kPrime = 2;
    constexpr int kProve = 3;
    const auto pagine = diario_->Indirizzi();
    for (std::size_t n = 0; n < pagine.size(); ++n) {
        if (n >= kPrime && n + 1 < pagine.size()) continue;
        // One that the line has spoiled says nothing.
        int prova = 0;
        do {
            if (!LeggiPagina(pagine[n], [] {})) return false;
        } while (!VerificaPagina(BloccoDati1, BloccoDati2) && ++prova < kProve);
        if (BloccoDati1 + BloccoDati2 != diario_->Pagina(pagine[n])) return false;
    }
    return true;
}

bool Scarico::GiaScaricata(std::int32_t indirizzo) {
    if (diario_ == nullptr) return false;
    const std::string_view pagina = diario_->Pagina(indirizzo);
    if (pagina.empty()) return false;
    BloccoDati1 = pagina.substr(0, kByteBlocco);
    BloccoDati2 = pagina.substr(kByteBlocco);
    return true;
}

bool Scarico::Serba() {
    // More than the memory holds: a size that was garbled on the line.
    if (BlocchiLog.size() + 2 > kBlocchiMassimi) return false;
    BlocchiLog.push_back(BloccoDati1);
    BlocchiLog.push_back(BloccoDati2);
    NumBlocchi += 2;
    logInMemoria().DaSalvare = true;
    return true;
}

bool Scarico::PaginaArrivata(std::int32_t indirizzo) {
    // What a person is asked meanwhile is no time of the line.
    passo_.Pagina(platform().GetTickCount() - collegamento().Sospeso);
    if (ByteIn(BloccoDati1, 1) == 255) {
        // The log ends at the second page that was never written; the two need not be
        // neighbours.
        if (vistaPaginaVuota_) return false;
        vistaPaginaVuota_ = true;
    } else if (VerificaPagina(BloccoDati1, BloccoDati2)) {
        if (!Serba()) return false;
        if (diario_ == nullptr) return true;
        diario_->Scrivi(indirizzo, BloccoDati1, BloccoDati2);
    } else {
        // The page behind the end holds anything.
        pagineScartate_ += indirizzo < BytesDati ? 1 : 0;
    }
    return true;
}

void Scarico::ScaricaLog() {
    vista_.Stato(Testo(Voce::ScaricamentoInCorso));
    NumBlocchi = 0;
    BlocchiLog.clear();
    logInMemoria().DaSalvare = false;
    logInMemoria().Parziale = true;  // until the end is reached
    falliti_ = 0;
    letti_ = 0;
    pagineScartate_ = 0;
    pagineNonLette_ = 0;
    vistaPaginaVuota_ = false;
    std::int32_t secondo = 0;  // second address of the page before
    for (std::int32_t i = 0; secondo < BytesDati; i += 2) {
        const std::int32_t primo = i * static_cast<std::int32_t>(kByteBlocco);
        secondo = primo + static_cast<std::int32_t>(kByteBlocco);
        // Closing the window makes the loop run out without reading.
        if (!vista_.Visibile()) break;
        bool avanti = true;
        if (GiaScaricata(primo)) {
            avanti = Serba();
            if (avanti) MostraPagina(primo);
        } else if (!LinkPronto()) {
            pagineNonLette_ += primo < BytesDati ? 1 : 0;
            passo_.Interrompi();
            MostraPagina(primo);
        } else {
            // The line rests while the page is kept and shown.
            const bool letta = LeggiPagina(primo, [&] {
                avanti = PaginaArrivata(primo);
                if (avanti) MostraPagina(primo);
            });
            avanti = avanti && letta;  // not read: the window has gone
        }
        if (!avanti) break;
    }
    Concludi();
}

void Scarico::MostraPagina(std::int32_t indirizzo) {
    letti_ = std::min(indirizzo + 2 * static_cast<std::int32_t>(kByteBlocco), BytesDati);
    vista_.Percento(std::min(
        100, static_cast<int>(ConvertiInt32(static_cast<double>(indirizzo) / BytesDati * 100.0))));
    MostraAndamento();
    platform().DoEvents();
}

void Scarico::Concludi() {
    finita_ = letti_ >= BytesDati;
    logInMemoria().Parziale = !finita_ || pagineNonLette_ != 0;
    if (diario_ != nullptr) diario_->Chiudi(!logInMemoria().Parziale);
    MostraAndamento();
    vista_.AbilitaOK(true);
    platform().MousePointer(Pointer::Normal);
    const bool qualcosa = NumBlocchi != 0;
    vista_.Stato(Testo(qualcosa ? Voce::ScaricamentoCompletato : Voce::NessunDatoScaricato));
    // Kept: the menu entry alone; the tool button stays off.
    principale().AbilitaMenu(Comando::SaveData, qualcosa);
    if (qualcosa && vista_.Visibile()) vista_.Percento(100);
}

void Scarico::MostraAndamento() {
    AndamentoScarico andamento;
    andamento.Letti = letti_;
    andamento.Totale = BytesDati;
    if (letti_ < BytesDati) andamento.Resta = passo_.Secondi(BytesDati - letti_);
    andamento.Scartate = pagineScartate_;
    andamento.Ripetuti = ripetuti_;
    vista_.Andamento(andamento);
    if (avvisato_ || diario_ == nullptr || diario_->Guasto().empty()) return;
    avvisato_ = true;
    vista_.Avviso(Testo(Voce::ScaricoSenzaDisco) + " " + diario_->Guasto());
}

}  // namespace lapvane
