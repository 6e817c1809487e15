#include "device/ProgrammaStrumento.h"

#include <array>
#include <functional>
#include <initializer_list>

#include "device/RecordStrumento.h"
#include "device/SerialComm.h"
#include "device/TabelleRecord.h"
#include "platform/Platform.h"
#include "project/DatiProgetto.h"
#include "sensors/CSensore.h"
#include "sensors/CanaliSensore.h"
#include "sensors/Curve.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

namespace {

constexpr int kPausaSetup = 50;  // ms between the two records of the setup

/// What is said of one direction, by text.
struct Verso {
    Voce Domanda;
    Voce Titolo;
    Voce Interrotta;
    std::int16_t Fase;
    bool SenzaLink = true;  ///< Kept: without a link a step is left out, and nothing is said
};
constexpr Verso kProgramma = {Voce::StrumentoSovrascritto, Voce::ProgrammazioneStrumento,
                              Voce::ProgrammazioneInterrotta, 18};
constexpr Verso kLettura = {Voce::DatiSostituiti, Voce::LetturaStrumento, Voce::LetturaInterrotta,
                            19};
constexpr Verso kCopia = {Voce::Nessuna, Voce::LetturaStrumento, Voce::LetturaInterrotta, 19,
                          false};

/// False, and told, when a channel is on without a sensor or without a sampling rate.
bool ControllaSensori() {
    for (const std::size_t n : kOrdineControllo) {
        if (n == kCanaleLambda) continue;  // Kept: lambda is not checked.
        const CanaleSensore& canale = kCanaliSensore[n];
        if (!(DatiProgetto.*canale.Abil)) continue;
        // Kept: the turbo channel is checked by the fuel pressure's name, not by its own.
        const bool altrui = n == kCanalePT;
        const CanaleSensore& nominato = altrui ? kCanaliSensore[kCanalePB] : canale;
        const bool senzaNome = (DatiProgetto.*nominato.Nome).empty();
        if (!senzaNome && !(DatiProgetto.*canale.TCamp).empty()) continue;
        const Voce manca = !senzaNome ? Voce::MancaFrequenza
                           : altrui   ? Voce::MancaNomeBenzina
                                      : Voce::MancaNome;
        platform().MsgBox(Testo(canale.TestoManca) + "\r\n" + Testo(manca), Buttons::Ok,
                          Icon::Warning, Testo(Voce::TitoloSensori));
        return false;
    }
    return true;
}

/// A run through the instrument, step by step, in one direction.
class Corsa {
 public:
    Corsa(VistaStrumento& vista, const Verso& verso) : vista_(vista), verso_(verso) {}

    /// False: cancelled.
    bool Chiedi() const {
        return platform().MsgBox(Testo(verso_.Domanda) + "\r\n" + Testo(Voce::Continuare),
                                 Buttons::OkCancel, Icon::Question,
                                 platform().ExeName()) == Answer::Ok;
    }

    /// Opens the window.
    void Inizia() {
        // Before the first events run, so that the poll does not start an exchange in them.
        FaseComunicazione = verso_.Fase;
        vista_.Mostra(Testo(verso_.Titolo));
        vista_.Puntatore(Pointer::Busy);
        platform().DoEvents();
    }

    /// One step: what it says, and its exchanges. False: the run is over, and ended.
    bool Passo(const std::string& testo, std::initializer_list<std::function<void()>> scambi) {
        principale().TestoPannello(Pannello::Progresso, testo);
        vista_.Aggiungi(testo + " ...");
        platform().DoEvents();
        bool fallito = false;
        bool primo = true;
        for (const auto& scambio : scambi) {
            if (!primo) platform().Sleep(kPausaSetup);
            primo = false;
            // An exchange that nobody waits for any more is not begun.
            if (collegamento().Abbandonato) break;
            if (LinkPronto()) {
                scambio();
                fallito = fallito || ErroreComunicazione;
            } else if (!verso_.SenzaLink) {
                fallito = true;
                break;
            }
        }
        // A second record that went well does not make good for the first.
        ErroreComunicazione = ErroreComunicazione || fallito;
        const bool chiusa = !vista_.Visibile();
        if (chiusa || ErroreComunicazione) {
            Interrompi(chiusa);
            return false;
        }
        vista_.Aggiungi("   " + Testo(Voce::Riuscito) + "\r\n");
        return true;
    }

    void Libera() {
        vista_.Puntatore(Pointer::Normal);
        principale().TestoPannello(Pannello::Progresso, "");
        FaseComunicazione = 0;
    }

    void Riuscita() {
        Libera();
        vista_.Chiusura(Testo(verso_.Titolo) + " " + Testo(Voce::Riuscito));
    }

 private:
    void Interrompi(bool chiusa) {
        // An exchange that was cut off by the person is no failure of the link.
        const bool errore = ErroreComunicazione && !collegamento().Abbandonato;
        collegamento().Abbandonato = false;
        Libera();
        if (chiusa) {
            platform().MsgBox(Testo(verso_.Interrotta), Buttons::Ok, Icon::Information,
                              platform().ExeName());
        }
        if (errore) {
            platform().MsgBox(Testo(Voce::ErroreDiComunicazione), Buttons::Ok, Icon::Information,
                              platform().ExeName());
        }
        vista_.Scarica();
        principale().SenzaSorveglianza([] {
            ChiudiPorta();
            LinkPronto();
        });
    }

    VistaStrumento& vista_;
    const Verso& verso_;
};

void PreparaCurva(const CanaleSensore& canale) {
    if (DatiProgetto.*canale.Abil) {
        // Kept: a name that the library lacks leaves the curve of the channel before.
        CaricaCurvaSensore(DatiProgetto.*canale.Nome);
    } else {
        AzzeraCurvaSensore();
    }
}

/// Reads a curve and names the channel's sensor by it. A curve that did not come leaves the name.
void LeggiCurva(std::int16_t numero) {
    const CanaleSensore& canale = kCanaliSensore[static_cast<std::size_t>(numero)];
    LeggiCurvaSensore(numero);
    if (ErroreComunicazione) return;
    for (std::size_t i = 0; i < CSensore::kPunti; ++i) CurvaY[i] /= canale.Sensore->Fattore;
    DatiProgetto.*canale.Nome = CercaNomeSensore(canale.Sensore->Tipo);
}

}  // namespace

void mnuProgramDevice_Click(VistaStrumento& vista) {
    Corsa corsa(vista, kProgramma);
    if (!corsa.Chiedi()) return;
    constexpr std::array<const TabellaRecord*, 4> kRecord = {&kRecordSetup1, &kRecordSetup2,
                                                             &kRecordSensori, &kRecordAllarmi};
    if (ConfermaInvio(kRecord)) return;
    corsa.Inizia();
    if (!corsa.Passo(Testo(Voce::ProgrammazioneImpostazioni), {InviaDatiSetup1, InviaDatiSetup2}))
        return;
    // Kept: a check that fails leaves the window open and `FaseComunicazione` as it is.
    if (!ControllaSensori()) return;
    if (!corsa.Passo(Testo(Voce::VoceImpostazioni) + " " + Testo(Voce::VoceSensori),
                     {InviaDatiSensori}))
        return;
    for (std::int16_t n = 0; n < static_cast<std::int16_t>(kCanaliSensore.size()); ++n) {
        const CanaleSensore& canale = kCanaliSensore[static_cast<std::size_t>(n)];
        PreparaCurva(canale);
        if (!corsa.Passo(Testo(canale.TestoInvio), {[n] { InviaCurvaSensore(n); }})) return;
    }
    if (!corsa.Passo(Testo(Voce::PassoAllarmi), {InviaDatiAllarmi})) return;
    corsa.Riuscita();
}

void mnuReadDevice_Click(VistaStrumento& vista) {
    Corsa corsa(vista, kLettura);
    if (!corsa.Chiedi()) return;
    corsa.Inizia();
    if (!corsa.Passo(Testo(Voce::LetturaImpostazioni), {LeggiDatiSetup1, LeggiDatiSetup2})) return;
    if (!corsa.Passo(Testo(Voce::LetturaIngressiSensori), {LeggiDatiSensori})) return;
    for (std::int16_t n = 0; n < static_cast<std::int16_t>(kCanaliSensore.size()); ++n) {
        const CanaleSensore& canale = kCanaliSensore[static_cast<std::size_t>(n)];
        if (!corsa.Passo(Testo(canale.TestoLettura), {[n] { LeggiCurva(n); }})) return;
    }
    if (!corsa.Passo(Testo(Voce::PassoAllarmi), {LeggiDatiAllarmi})) return;
    ProgettoModificato = true;
    corsa.Riuscita();
}

namespace {

std::optional<CopiaStrumento> Copia(VistaStrumento& vista) {
    CopiaStrumento copia;
    Corsa corsa(vista, kCopia);
    const auto record = [&copia](std::size_t n) {
        return [&copia, n] { copia.Record[n] = ChiediRecord(*kRecordCopiati[n]); };
    };
    corsa.Inizia();
    if (!corsa.Passo(Testo(Voce::LetturaImpostazioni), {record(0), record(1)})) return {};
    if (!corsa.Passo(Testo(Voce::LetturaIngressiSensori), {record(2)})) return {};
    for (std::size_t n = 0; n < kCanaliSensore.size(); ++n) {
        const auto curva = [&copia, n] {
            if (const auto letta = ChiediCurva(static_cast<std::int16_t>(n))) {
                copia.Curve[n] = *letta;
            }
        };
        if (!corsa.Passo(Testo(kCanaliSensore[n].TestoLettura), {curva})) return {};
    }
    if (!corsa.Passo(Testo(Voce::PassoAllarmi), {record(3)})) return {};
    corsa.Libera();
    vista.Scarica();
    return copia;
}

}  // namespace

std::optional<CopiaStrumento> LeggiCopia(VistaStrumento& vista) {
    const bool errorePrima = ErroreComunicazione;
    auto copia = Copia(vista);
    ErroreComunicazione = errorePrima;
    return copia;
}

}  // namespace lapvane
