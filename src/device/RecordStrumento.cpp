#include "device/RecordStrumento.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "device/TabelleRecord.h"
#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "sensors/Curve.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"

namespace lapvane {

namespace {

constexpr int kScriviCurva = 24;
constexpr int kLeggiCurva = 25;
constexpr std::size_t kRispostaCurva = 99;
constexpr std::size_t kPunti = 20;
constexpr std::size_t kByteAsse = 2 * kPunti;
constexpr std::size_t kAsseX = 17;  // in the reply, from 1
constexpr std::size_t kAsseY = kAsseX + kByteAsse + 2;

/// What a record goes out of or into; settled when its transfer begins.
struct Lato {
    Editor* Form = nullptr;  // null: `DatiProgetto`
    ControlliEditor* Controlli = nullptr;

    bool Altro() const { return Form != nullptr && Controlli == nullptr; }
};

Lato ScegliLato(const TabellaRecord& tabella) {
    Lato lato{FormAttiva};
    if (FormAttiva != nullptr && FormAttiva->Nome() == tabella.NomeEditor) {
        lato.Controlli = FormAttiva->Controlli();
    }
    return lato;
}

/// A field's name and its text, as a message shows them.
std::string Campo(Voce didascalia, const std::string& testo) {
    constexpr std::size_t kMostrati = 40;
    return Testo(didascalia) + ": \"" + testo.substr(0, kMostrati) + "\"";
}

void SegnalaNonCodificabile(const NonCodificabile& valore) {
    ErroreComunicazione = true;
    platform().MousePointer(Pointer::Normal);
    platform().MsgBox(
        Testo(Voce::ValoreNonInviabile) + "\r\n" + Campo(valore.Didascalia, valore.Testo),
        Buttons::Ok, Icon::Warning, platform().ExeName());
}

/// Writing half of the transfer pattern.
void Spedisci(const std::string& frame, int comando) {
    if (!ScriviFrameLento(frame, Conferma(comando))) {
        SegnalaErroreComunicazione();
        return;
    }
    LampeggiaTX();
    ErroreComunicazione = false;
}

/// What is sent of a record that the open form does not show; empty: nothing.
/// Kept: the setup's frames go out without their fields. The instrument does not acknowledge them.
std::string FrameAltraForm(const TabellaRecord& tabella) {
    std::string testata = {'H', static_cast<char>(tabella.Scrivi)};
    switch (tabella.ConAltraForm) {
        case AltraForm::Niente:
            break;
        case AltraForm::Testata:
            return testata;
        case AltraForm::Coda: {
            const CampoRecord& ultimo = tabella.Campi.back();
            const std::size_t campi = ultimo.Byte - 1 + static_cast<std::size_t>(ultimo.Larghezza);
            return Frame(tabella.Scrivi, std::string(tabella.Lunghezza - 2 - campi, '\0'));
        }
    }
    return {};
}

void Invia(const TabellaRecord& tabella) {
    const Lato lato = ScegliLato(tabella);
    std::string frame;
    try {
        frame = lato.Altro() ? FrameAltraForm(tabella) : ComponiRecord(tabella, lato.Controlli);
    } catch (const NonCodificabile& valore) {
        SegnalaNonCodificabile(valore);
        return;
    }
    if (frame.empty()) {
        SegnalaErroreComunicazione();
        return;
    }
    Spedisci(frame, tabella.Scrivi);
}

void Leggi(const TabellaRecord& tabella) {
    const Lato lato = ScegliLato(tabella);
    const std::string risposta = ChiediRecord(tabella);
    if (risposta.empty()) return;
    // Events have run: an editor that closed meanwhile is gone, and the project is not its heir.
    if (lato.Altro() || (lato.Form != nullptr && lato.Form != FormAttiva)) return;
    RiempiRecord(tabella, risposta, lato.Controlli);
}

std::string Asse(const std::array<double, 21>& curva, Voce didascalia) {
    std::string byte;
    for (std::size_t i = 0; i < kPunti; ++i) {
        // By way of the decimal text: a product such as 1001.4999999999999 is 1001.5 there.
        std::string testo;
        try {
            testo = TestoNumero(curva[i]);
            byte += CodificaWord(testo);
        } catch (const ErroreRuntime&) {
            throw NonCodificabile{testo, didascalia};
        }
    }
    return byte;
}

std::string ComponiCurva(std::int16_t canale) {
    std::string dati = CodificaByte(canale);
    // The instrument's table format: points, four words, bytes in an axis, bytes in a value.
    for (const int parola :
         {static_cast<int>(kPunti), 1, 0, 0, 0, static_cast<int>(kByteAsse), 2}) {
        dati += CodificaWord(parola);
    }
    const auto posto = static_cast<std::size_t>(canale);
    const Voce didascalia =
        posto < kTestiTipiSensore.size() ? kTestiTipiSensore[posto] : Voce::TipoDiSensore;
    dati += Asse(CurvaX, didascalia) + CodificaWord(0) + Asse(CurvaY, didascalia);
    return Frame(kScriviCurva, dati);
}

}  // namespace

std::optional<std::string_view> ConfermaInvio(std::span<const TabellaRecord* const> record) {
    std::vector<ValoreFuori> fuori;
    for (const TabellaRecord* tabella : record) {
        const Lato lato = ScegliLato(*tabella);
        if (lato.Altro()) continue;
        for (ValoreFuori& valore : ValoriFuori(*tabella, lato.Controlli)) {
            if (!valore.Arrivato) {
                const CampoRecord& campo = *valore.Campo;
                platform().MsgBox(Testo(Voce::ValoreNonInviabile) + "\r\n" +
                                      Campo(campo.Didascalia, valore.Scritto) + "\r\n" +
                                      Testo(Voce::NumeroNellIntervallo) + " " + Ammessi(campo),
                                  Buttons::Ok, Icon::Warning, platform().ExeName());
                return campo.Controllo;
            }
            fuori.push_back(std::move(valore));
        }
    }
    if (fuori.empty()) return std::nullopt;
    std::string elenco;
    for (const ValoreFuori& valore : fuori) {
        elenco += Testo(valore.Campo->Didascalia) + ": " + valore.Scritto + " (" +
                  Ammessi(*valore.Campo) + "), " + Testo(Voce::StrumentoRiceve) + " " +
                  *valore.Arrivato + "\r\n";
    }
    if (platform().MsgBox(
            Testo(Voce::ValoriFuoriCampo) + "\r\n" + elenco + Testo(Voce::InviareLoStesso),
            Buttons::OkCancel, Icon::Warning, platform().ExeName()) == Answer::Ok) {
        return std::nullopt;
    }
    return fuori.front().Campo->Controllo;
}

void InviaDatiSetup1() {
    Invia(kRecordSetup1);
}
void InviaDatiSetup2() {
    Invia(kRecordSetup2);
}
void LeggiDatiSetup1() {
    Leggi(kRecordSetup1);
}
void LeggiDatiSetup2() {
    Leggi(kRecordSetup2);
}
void InviaDatiSensori() {
    Invia(kRecordSensori);
}
void LeggiDatiSensori() {
    Leggi(kRecordSensori);
}
void InviaDatiAllarmi() {
    Invia(kRecordAllarmi);
}
void LeggiDatiAllarmi() {
    Leggi(kRecordAllarmi);
}

void InviaCurvaSensore(std::int16_t canale) {
    std::string frame;
    try {
        frame = ComponiCurva(canale);
    } catch (const NonCodificabile& valore) {
        SegnalaNonCodificabile(valore);
        return;
    }
    Spedisci(frame, kScriviCurva);
}

void LeggiCurvaSensore(std::int16_t canale) {
    const auto curva = ChiediCurva(canale);
    if (!curva) return;
    std::copy(curva->X.begin(), curva->X.end(), CurvaX.begin());
    std::copy(curva->Y.begin(), curva->Y.end(), CurvaY.begin());
}

std::string ChiediRecord(const TabellaRecord& tabella) {
    std::string risposta = ChiediStrumento(Frame(tabella.Leggi), tabella.Risposta);
    if (!risposta.empty()) LampeggiaRX();
    return risposta;
}

std::optional<CurvaStrumento> ChiediCurva(std::int16_t canale) {
    const std::string risposta =
        ChiediStrumento(Frame(kLeggiCurva, CodificaByte(canale)), kRispostaCurva);
    if (risposta.empty()) return std::nullopt;
    LampeggiaRX();
    CurvaStrumento curva;
    for (std::size_t i = 0; i < kPunti; ++i) {
        curva.X[i] = static_cast<std::int16_t>(Int16In(risposta, kAsseX + 2 * i));
        curva.Y[i] = static_cast<std::int16_t>(Int16In(risposta, kAsseY + 2 * i));
    }
    return curva;
}

}  // namespace lapvane
