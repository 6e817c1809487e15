// Everything that is read from the instrument, over a port that answers each frame with what the
// input says: nothing, too little, too late, any bytes, a vanished port, an error of the control.
// No exchange lasts longer than its time-out, what failed leaves its target alone, only whole pages
// are kept of a download.
#include <algorithm>
#include <functional>

#include "device/Codec.h"
#include "device/Diagnostica.h"
#include "device/RecordStrumento.h"
#include "device/SerialComm.h"
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzPlatform.h"
#include "instrument/Protocollo.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "logs/Scarico.h"
#include "project/DatiProgetto.h"
#include "sensors/Curve.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "tools/support/BareViews.h"
#include "tools/support/FreshState.h"

namespace {

using namespace lapvane;

/// Takes the input apart; zeros behind its end.
class Source {
 public:
    explicit Source(std::string_view bytes) : rest_(bytes) {}
    bool Empty() const { return rest_.empty(); }
    unsigned Byte() { return static_cast<unsigned char>(Bytes(1).front()); }
    std::string Bytes(std::size_t count) {
        std::string bytes(rest_.substr(0, count));
        rest_.remove_prefix(bytes.size());
        bytes.resize(count);
        return bytes;
    }

 private:
    std::string_view rest_;
};

class FuzzPort : public SerialControl {
 public:
    explicit FuzzPort(FuzzPlatform& machine) : machine_(machine) {}
    int CommPort() const override { return number_; }
    void CommPort(int number) override { number_ = number; }
    void Settings(const std::string&) override {}
    void Handshaking(int) override {}
    void InBufferSize(int) override {}
    void OutBufferSize(int) override {}
    void DTREnable(bool) override {}
    void RTSEnable(bool) override {}
    bool PortOpen() const override { return open_; }
    void PortOpen(bool open) override {
        if (open && number_ != 1) throw ErroreControllo("no such port");
        open_ = open;
        waiting_.clear();
        due_.clear();
    }
    std::size_t InBufferCount() override { return Arrived().size(); }
    void ClearInBuffer() override { Arrived().clear(); }
    std::size_t OutBufferCount() override { return stuck_ ? 1 : 0; }
    void ClearOutBuffer() override { stuck_ = false; }
    void InputLen(std::size_t characters) override { most_ = characters; }
    std::string Input() override {
        if (broken_) {
            broken_ = false;
            throw ErroreControllo("read");
        }
        std::string& arrived = Arrived();
        const std::size_t n = most_ == 0 ? arrived.size() : std::min(most_, arrived.size());
        const std::string taken = arrived.substr(0, n);
        arrived.erase(0, n);
        return taken;
    }
    void Output(const std::string& frame) override {
        const strumento::Comando* command = strumento::CercaComando(ByteIn(frame, 2));
        const unsigned how = From->Byte();
        std::string reply = Conferma(command->Codice);
        if (command->Risposta != reply.size()) {
            reply = From->Bytes(how % 16 == 9 ? From->Byte() : command->Risposta);
        }
        int delay = 3;
        switch (how % 16) {
            case 1:
                return;
            case 2:
                reply.resize(reply.size() / 2);
                break;
            case 3:
                delay = static_cast<int>(From->Byte()) * 50;
                break;
            case 4:
                reply += "??";
                break;
            case 5:
                open_ = false;
                break;
            case 6:
                broken_ = true;
                break;
            case 7:
                throw ErroreControllo("write");
            case 8:
                stuck_ = true;
                break;
            default:
                break;
        }
        due_ = reply;
        dueAt_ = machine_.Clock + delay;
    }
    void WaitForInput(int ms) override { machine_.Clock += ms; }

    Source* From = nullptr;

 private:
    std::string& Arrived() {
        if (open_ && !due_.empty() && machine_.Clock >= dueAt_) {
            waiting_ += due_;
            due_.clear();
        }
        return waiting_;
    }

    FuzzPlatform& machine_;
    int number_ = 1;
    bool open_ = false;
    bool stuck_ = false;
    bool broken_ = false;
    std::size_t most_ = 0;
    std::string waiting_, due_;
    std::int64_t dueAt_ = 0;
};

class LiveView : public VistaDiagnostica {
 public:
    void ValoreCampo(int field, const std::string& text) override {
        Must(field >= 0 && field < kCampiLive && !text.empty());
    }
    void Allarme(int n, bool) override { Must(n >= 0 && n < kAllarmiLive); }
    void ValoreAnalogico(int input, const std::string& text) override {
        Must(input >= 0 && input < kIngressiAnalogici && !text.empty());
    }
    void Letto(GruppoLive, bool) override {}
    bool Visibile() const override { return true; }
};

/// A download window that is closed when the input has run out.
class DownloadView : public VistaScarico {
 public:
    explicit DownloadView(const Source& from) : from_(from) {}
    bool Visibile() const override { return open_ && !from_.Empty(); }
    void Stato(const std::string&) override {}
    void Percento(int percent) override { Must(percent >= 0 && percent <= 100); }
    void AbilitaOK(bool) override {}
    void Scarica() override { open_ = false; }

 private:
    const Source& from_;
    bool open_ = true;
};

void Download(Source& from) {
    AzzeraBufferLog();
    DownloadView view(from);
    Scarico(view).Esegui();
    Must(FaseComunicazione == 0);
    Must(static_cast<std::size_t>(NumBlocchi) == BlocchiLog.size() && NumBlocchi % 2 == 0);
    for (std::size_t b = 0; b < BlocchiLog.size(); b += 2) {
        Must(VerificaPagina(BlocchiLog[b], BlocchiLog[b + 1]));
    }
    ComponiLog();
}

/// One exchange; false when a promise about time or the error flag is broken.
bool Exchange(FuzzPlatform& machine, unsigned what, LiveView& live) {
    const std::int64_t start = machine.Clock;
    const RecordProgetto before = DatiProgetto;
    const auto x = CurvaX;
    const auto y = CurvaY;
    ErroreComunicazione = false;
    const auto channel = static_cast<std::int16_t>(what / 12 % 9);
    const std::function<void()> exchanges[] = {
        VerificaComunicazione,
        InviaDatiSetup1,
        InviaDatiSetup2,
        InviaDatiSensori,
        InviaDatiAllarmi,
        [channel] { InviaCurvaSensore(channel); },
        LeggiDatiSetup1,
        LeggiDatiSetup2,
        LeggiDatiSensori,
        LeggiDatiAllarmi,
        [channel] { LeggiCurvaSensore(channel); },
        [&] {
            LeggiValoriLive(live);
            LeggiValoriAnalogici((what & 0x40u) != 0 ? &live : nullptr);
        }};
    exchanges[what % 12]();
    if (what % 12 == 0 && ErroreComunicazione) return false;
    if (ErroreComunicazione) {
        for (const auto& field : kCampiProgetto) {
            const bool same = std::visit(
                [&](auto member) { return before.*member == DatiProgetto.*member; }, field.Campo);
            if (!same) return false;
        }
        if (x != CurvaX || y != CurvaY) return false;
    }
    // 3 s to drain, 5 s for the reply, half a second of the flash; the live view twice that.
    return machine.Clock - start <= (what % 12 == 11 ? 16200 : 10600);
}

}  // namespace

void Fuzz(std::string_view input) {
    static FuzzPlatform machine;
    static FuzzPort port(machine);
    static BareMainWindow window(&port);
    static LiveView live;
    if (Testi.empty()) {
        Testi.assign(700, "text");
        MetaTesti = 350;
        CaricaTabelleNomi();
    }
    Source from(input);
    port.From = &from;
    port.PortOpen(false);
    FaseComunicazione = 0;
    AzzeraSerialComm();
    ValoriInizialiProgetto();
    CurvaX.fill(0.0);
    CurvaY.fill(0.0);
    while (!from.Empty()) {
        const unsigned what = from.Byte();
        FaseComunicazione = (what & 0x80u) != 0 ? std::int16_t{18} : std::int16_t{0};
        if (!LinkPronto()) continue;
        if (what % 16 == 15) {
            Download(from);
            continue;
        }
        Must(Exchange(machine, what, live));
    }
}
