// Everything that is read from the instrument, over a port that answers each frame with what the
// input says: nothing, too little, too late, any bytes, a vanished port, an error of the control.
// No exchange lasts longer than its time-out, what failed leaves its target alone, only whole pages
// are kept of a download.
#include <algorithm>
#include <cstdlib>

#include "device/Codec.h"
#include "device/Diagnostica.h"
#include "device/RecordStrumento.h"
#include "device/SerialComm.h"
#include "fuzz/FuzzPlatform.h"
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
    Source(const unsigned char* data, std::size_t size) : p_(data), end_(data + size) {}
    bool Empty() const { return p_ == end_; }
    unsigned Byte() { return Empty() ? 0u : *p_++; }
    std::string Bytes(std::size_t count) {
        const std::size_t n = std::min<std::size_t>(count, static_cast<std::size_t>(end_ - p_));
        std::string bytes(p_, p_ + n);
        p_ += n;
        bytes.resize(count);
        return bytes;
    }

 private:
    const unsigned char* p_;
    const unsigned char* end_;
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
        const int command = ByteIn(frame, 2);
        const unsigned how = From->Byte();
        std::string reply;
        switch (command) {
            case 1:
            case 18:
            case 20:
            case 22:
            case 24:
            case 28:
                reply = Conferma(command);
                break;
            default:
                reply = From->Bytes(how % 16 == 9 ? From->Byte() : Length(command));
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
    static std::size_t Length(int command) {
        switch (command) {
            case 2:
                return 13;
            case 9:
                return 19;
            case 19:
                return 30;
            case 21:
                return 31;
            case 23:
                return 21;
            case 25:
                return 99;
            case 29:
                return 16;
            case 37:
                return 36;
            default:
                return 130;
        }
    }
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
        if (field < 0 || field >= kCampiLive || text.empty()) std::abort();
    }
    void Allarme(int n, bool) override {
        if (n < 0 || n >= kAllarmiLive) std::abort();
    }
    void ValoreAnalogico(int input, const std::string& text) override {
        if (input < 0 || input >= kIngressiAnalogici || text.empty()) std::abort();
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
    void Percento(int percent) override {
        if (percent < 0 || percent > 100) std::abort();
    }
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
    if (FaseComunicazione != 0) std::abort();
    if (static_cast<std::size_t>(NumBlocchi) != BlocchiLog.size() || NumBlocchi % 2 != 0) {
        std::abort();
    }
    for (std::size_t b = 0; b < BlocchiLog.size(); b += 2) {
        if (!VerificaPagina(BlocchiLog[b], BlocchiLog[b + 1])) std::abort();
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
    switch (what % 12) {
        case 0:
            VerificaComunicazione();
            if (ErroreComunicazione) return false;
            break;
        case 1:
            InviaDatiSetup1();
            break;
        case 2:
            InviaDatiSetup2();
            break;
        case 3:
            InviaDatiSensori();
            break;
        case 4:
            InviaDatiAllarmi();
            break;
        case 5:
            InviaCurvaSensore(static_cast<std::int16_t>(what / 12 % 9));
            break;
        case 6:
            LeggiDatiSetup1();
            break;
        case 7:
            LeggiDatiSetup2();
            break;
        case 8:
            LeggiDatiSensori();
            break;
        case 9:
            LeggiDatiAllarmi();
            break;
        case 10:
            LeggiCurvaSensore(static_cast<std::int16_t>(what / 12 % 9));
            break;
        default:
            LeggiValoriLive(live);
            LeggiValoriAnalogici((what & 0x40u) != 0 ? &live : nullptr);
    }
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

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static FuzzPlatform machine;
    static FuzzPort port(machine);
    static BareMainWindow window(&port);
    static LiveView live;
    if (Testi.empty()) {
        Testi.assign(700, "text");
        MetaTesti = 350;
        CaricaTabelleNomi();
    }
    Source from(data, size);
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
        if (!Exchange(machine, what, live)) std::abort();
    }
    return 0;
}
