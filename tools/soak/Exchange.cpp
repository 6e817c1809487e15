#include "Exchange.h"

#include <array>
#include <stdexcept>

#include "device/Codec.h"
#include "device/Diagnostica.h"
#include "device/RecordStrumento.h"
#include "device/SerialComm.h"
#include "device/TabelleRecord.h"
#include "logs/Scarico.h"
#include "project/DatiProgetto.h"
#include "sensors/Curve.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"

namespace lapvane::soak {

using namespace strumento;

namespace {

constexpr int kDrain = 3000;
constexpr int kReply = 5000;
constexpr int kConfirm = 10000;
constexpr int kShortConfirm = 2000;
constexpr int kFlash = 500;
constexpr std::size_t kHead = 2;  // "R" and the command, which the program does not look at

/// A live view that counts its fields.
class CountingView : public VistaDiagnostica {
 public:
    void ValoreCampo(int, const std::string& text) override { Fields += text.empty() ? 0 : 1; }
    void Allarme(int, bool) override { ++Lamps; }
    void ValoreAnalogico(int, const std::string& text) override { Inputs += text.empty() ? 0 : 1; }
    void Letto(GruppoLive, bool) override {}
    bool Visibile() const override { return true; }
    int Fields = 0, Lamps = 0, Inputs = 0;
};

struct RecordKind {
    const TabellaRecord* Table;
    Record In;
    void (*Send)();
    void (*Get)();
};

const RecordKind& RecordOf(int command) {
    static const std::array<RecordKind, 4> kRecords = {
        {{&kRecordSetup1, Record::Setup1, InviaDatiSetup1, LeggiDatiSetup1},
         {&kRecordSetup2, Record::Setup2, InviaDatiSetup2, LeggiDatiSetup2},
         {&kRecordSensori, Record::Sensori, InviaDatiSensori, LeggiDatiSensori},
         {&kRecordAllarmi, Record::Allarmi, InviaDatiAllarmi, LeggiDatiAllarmi}}};
    for (const RecordKind& record : kRecords) {
        if (record.Table->Scrivi == command || record.Table->Leggi == command) return record;
    }
    throw std::logic_error("no record has this command");
}

bool Same(const RecordProgetto& a, const RecordProgetto& b) {
    for (const auto& field : kCampiProgetto) {
        const bool same =
            std::visit([&](auto member) { return a.*member == b.*member; }, field.Campo);
        if (!same) return false;
    }
    return true;
}

/// A project whose numbers fit into the frames, so that each frame differs from the one before.
void NewProject(Chance& chance) {
    for (const auto& field : kCampiProgetto) {
        std::visit(
            [&](auto member) {
                using Type = std::remove_cvref_t<decltype(DatiProgetto.*member)>;
                if constexpr (std::is_same_v<Type, bool>) {
                    DatiProgetto.*member = chance.Below(2) != 0;
                } else if constexpr (!std::is_same_v<Type, std::string>) {
                    DatiProgetto.*member = static_cast<Type>(chance.Below(120));
                }
            },
            field.Campo);
    }
}

void NewCurve(Chance& chance) {
    for (std::size_t i = 0; i < 20; ++i) {
        CurvaX[i] = chance.Below(1024);
        CurvaY[i] = chance.From(-30000, 30000);
    }
}

/// One exchange on its way: what it must have told by its end.
class Ride {
 public:
    Ride(const Kind& kind, Machine& machine, Chance& chance)
        : kind_(kind), machine_(machine), chance_(chance) {}

    Result Go() {
        machine_.Boxes.clear();
        ErroreComunicazione = false;
        switch (kind_.What) {
            case Carries::Handshake:
                Handshake();
                break;
            case Carries::Identity:
                Linked([&] { Identity(); });
                break;
            case Carries::Write:
                Linked([&] { Write(); });
                break;
            case Carries::WriteCurve:
                Linked([&] { WriteCurve(); });
                break;
            case Carries::Read:
                Linked([&] { Read(); });
                break;
            case Carries::ReadCurve:
                Linked([&] { ReadCurve(); });
                break;
            case Carries::Live:
                Linked([&] { Live(); });
                break;
            case Carries::Analogue:
                Linked([&] { Analogue(); });
                break;
            case Carries::Block:
                Linked([&] { Block(); });
                break;
        }
        return result_;
    }

 private:
    /// Every transfer is guarded by this call; where no link is, nothing happens and that is told.
    template <class Exchange>
    void Linked(Exchange exchange) {
        if (!LinkPronto()) {
            result_.Became = Outcome::Refused;
            return;
        }
        start_ = machine_.GetTickCount();
        exchange();
        result_.Lasted = machine_.GetTickCount() - start_;
    }

    void Handshake() {
        ChiudiPorta();
        FaseComunicazione = kind_.TimeOut == kConfirm ? std::int16_t{18} : std::int16_t{0};
        start_ = machine_.GetTickCount();
        const bool found = LinkPronto();
        FaseComunicazione = 0;
        result_.Lasted = machine_.GetTickCount() - start_;
        if (found != machine_.Port.PortOpen()) throw Wrong{"the port is not as it was told"};
        if (found && machine_.Port.LastTaken() != Conferma(1)) {
            throw Wrong{"a wrong acknowledgement was taken for right"};
        }
        if (!found) result_.Became = Outcome::Refused;
    }

    void Identity() {
        VerificaComunicazione();
        // The poll shows a failure in the status bar, not in a box.
        if (!machine_.Boxes.empty() || ErroreComunicazione) throw Wrong{"the poll told a failure"};
        Settle(StrumentoPresente);
    }

    void Write() {
        const RecordKind& record = RecordOf(kind_.Command);
        NewProject(chance_);
        const std::string frame = ComponiRecord(*record.Table, nullptr);
        record.Send();
        Acknowledged(machine_.TheLine.Stored(record.In) == frame.substr(2, frame.size() - 4));
    }

    void WriteCurve() {
        NewCurve(chance_);
        const int channel = chance_.Below(kCanaliCurva);
        InviaCurvaSensore(static_cast<std::int16_t>(channel));
        const std::string stored = machine_.TheLine.StoredCurve(channel);
        bool same = stored.size() >= 96;
        for (std::size_t i = 0; same && i < 20; ++i) {
            same = Int16In(stored, 15 + 2 * i) == CurvaX[i] &&
                   Int16In(stored, 57 + 2 * i) == CurvaY[i];
        }
        Acknowledged(same);
    }

    void Read() {
        const RecordKind& record = RecordOf(kind_.Command);
        machine_.TheLine.Remember(record.In, chance_.Bytes(record.Table->Lunghezza - 4));
        NewProject(chance_);
        const RecordProgetto before = DatiProgetto;
        record.Get();
        const RecordProgetto after = DatiProgetto;
        if (ErroreComunicazione && !Same(before, after))
            throw Wrong{"a failed read changed a value"};
        if (!ErroreComunicazione) {
            // What was taken, and nothing else, is in the fields.
            DatiProgetto = before;
            RiempiRecord(*record.Table, machine_.Port.Taken(), nullptr);
            if (!Same(DatiProgetto, after)) throw Wrong{"the fields are not those of the reply"};
        }
        Told();
        Settle(!ErroreComunicazione);
    }

    void ReadCurve() {
        const int channel = chance_.Below(kCanaliCurva);
        machine_.TheLine.RememberCurve(channel, TestaCurva() + chance_.Bytes(82));
        NewCurve(chance_);
        const auto x = CurvaX;
        const auto y = CurvaY;
        LeggiCurvaSensore(static_cast<std::int16_t>(channel));
        if (ErroreComunicazione && (x != CurvaX || y != CurvaY)) {
            throw Wrong{"a failed read changed the curve"};
        }
        Told();
        Settle(!ErroreComunicazione);
    }

    void Live() {
        CountingView view;
        LeggiValoriLive(view);
        Told();
        const bool all = view.Fields == 16 && view.Lamps == 8;
        if (all == ErroreComunicazione) throw Wrong{"the live view shows half a frame"};
        Settle(!ErroreComunicazione);
    }

    void Analogue() {
        ValoriAnalogici.fill(-1);
        LeggiValoriAnalogici();
        Told();
        const bool changed =
            ValoriAnalogici != std::array<std::int16_t, 8>{-1, -1, -1, -1, -1, -1, -1, -1};
        if (changed == ErroreComunicazione) throw Wrong{"the inputs are not as they were told"};
        Settle(!ErroreComunicazione);
    }

    void Block() {
        const std::string block = kind_.Command == 14 ? LeggiBloccoDati(128 * chance_.Below(40))
                                                      : LeggiBloccoGiri(128 * chance_.Below(4));
        Told();
        if (block.empty() != ErroreComunicazione) throw Wrong{"a failed block is not empty"};
        if (!block.empty() && block != machine_.Port.Taken().substr(kHead)) {
            throw Wrong{"the block is not that of the reply"};
        }
        Settle(!ErroreComunicazione);
    }

    /// A failure is told by one box with text 242, a success by none.
    void Told() const {
        const bool told = machine_.Boxes.size() == 1 &&
                          machine_.Boxes.front() == Testo(Voce::StrumentoNonRisponde);
        if (ErroreComunicazione ? !told : !machine_.Boxes.empty()) {
            throw Wrong{"the outcome and what was told differ"};
        }
    }

    void Acknowledged(bool stored) {
        Told();
        if (ErroreComunicazione) {
            result_.Became = Outcome::Refused;
            return;
        }
        if (machine_.Port.LastTaken() != Conferma(kind_.Command)) {
            throw Wrong{"a wrong acknowledgement was taken for right"};
        }
        if (!stored) throw Wrong{"acknowledged, and the instrument holds something else"};
    }

    /// A data reply: it must have been there in full; whether it was the right one the program
    /// cannot know.
    void Settle(bool accepted) {
        if (!accepted) {
            result_.Became = Outcome::Refused;
            return;
        }
        const std::string& taken = machine_.Port.Taken();
        if (taken.size() != static_cast<std::size_t>(kind_.Reply)) {
            throw Wrong{"a reply of another length was taken"};
        }
        const std::string clean = machine_.TheLine.Clean();
        if (taken.substr(kHead) != clean.substr(kHead)) result_.Became = Outcome::Undetected;
    }

    const Kind& kind_;
    Machine& machine_;
    Chance& chance_;
    std::int64_t start_ = 0;
    Result result_;
};

bool Acknowledges(const Kind& kind) {
    return kind.What == Carries::Handshake || kind.What == Carries::Write ||
           kind.What == Carries::WriteCurve;
}

}  // namespace

const std::vector<Kind>& Kinds() {
    constexpr int kWrite = kConfirm + kFlash;
    constexpr int kRead = kDrain + kReply;
    static const std::vector<Kind> kKinds = {
        {"handshake of the poll", 1, Carries::Handshake, 5, kShortConfirm, kShortConfirm},
        {"handshake in a transfer", 1, Carries::Handshake, 5, kConfirm, kConfirm},
        {"identity", 2, Carries::Identity, 13, kReply, kRead},
        {"send setup 1", 18, Carries::Write, 5, kConfirm, kWrite},
        {"send setup 2", 28, Carries::Write, 5, kConfirm, kWrite},
        {"send sensors", 22, Carries::Write, 5, kConfirm, kWrite},
        {"send curve", 24, Carries::WriteCurve, 5, kConfirm, kWrite},
        {"send alarms", 20, Carries::Write, 5, kConfirm, kWrite},
        {"read setup 1", 19, Carries::Read, 30, kReply, kRead + kFlash},
        {"read setup 2", 29, Carries::Read, 16, kReply, kRead + kFlash},
        {"read sensors", 23, Carries::Read, 21, kReply, kRead + kFlash},
        {"read curve", 25, Carries::ReadCurve, 99, kReply, kRead + kFlash},
        {"read alarms", 21, Carries::Read, 31, kReply, kRead + kFlash},
        {"live frame", 37, Carries::Live, 36, kReply, kRead},
        {"analogue frame", 9, Carries::Analogue, 19, kReply, kRead},
        {"log block", 14, Carries::Block, 130, kReply, kRead},
        {"lap block", 38, Carries::Block, 130, kReply, kRead},
    };
    return kKinds;
}

Misbehaviour Choose(const Kind& kind, Chance& chance, int slack) {
    const bool acknowledges = Acknowledges(kind);
    // An acknowledgement is compared whole; of a data reply only the length counts.
    const Must damaged = acknowledges ? Must::BeRefused : Must::NotBeKnown;
    const Must whole = acknowledges ? Must::BeRefused : Must::BeRight;
    const auto fault = [&kind](const char* name, Must then, TipoGuasto type, int value = 0) {
        Misbehaviour chosen;
        chosen.Name = name;
        chosen.Fault = Guasto{.Tipo = type, .Valore = value, .Comando = kind.Command};
        chosen.Then = then;
        return chosen;
    };
    switch (chance.Below(12)) {
        case 0:
            return fault("late, in time", Must::BeRight, TipoGuasto::Ritarda,
                         chance.From(1, kind.TimeOut - slack));
        case 1: {
            Misbehaviour late = fault("too late", Must::BeRefused, TipoGuasto::Ritarda,
                                      chance.From(kind.TimeOut + slack, kind.TimeOut + 4000));
            late.Lingers = true;
            return late;
        }
        case 2:
            return fault("never", Must::BeRefused, TipoGuasto::Scarta);
        case 3:
            return fault("truncated", Must::BeRefused, TipoGuasto::Taglia,
                         chance.Below(kind.Reply));
        case 4: {
            const int byte = chance.From(1, kind.Reply);
            const bool head = byte <= static_cast<int>(kHead);
            return fault("flipped", head ? whole : damaged, TipoGuasto::Altera, byte);
        }
        case 5:
            // The acknowledgement's two digits; the last byte of a log page is its sum.
            return fault("wrong sum", damaged, TipoGuasto::Altera,
                         acknowledges ? chance.From(3, 4) : kind.Reply);
        case 6:
            return fault("noise before", damaged, TipoGuasto::Rumore, chance.From(1, 20));
        case 7:
            return fault("wrong order byte", whole, TipoGuasto::Ordine);
        case 8:
            return fault("twice", whole, TipoGuasto::Doppia);
        case 9:
            return fault("a tail", whole, TipoGuasto::Coda, chance.From(1, 40));
        case 10: {
            Misbehaviour dropped = fault("link dropped in it", Must::BeRefused, TipoGuasto::Scarta);
            dropped.PullAfter = chance.From(1, kind.TimeOut / 2);
            return dropped;
        }
        default: {
            Misbehaviour dropped;
            dropped.Name = "link dropped before it";
            dropped.PullBefore = true;
            dropped.Then = Must::BeRefused;
            return dropped;
        }
    }
}

Result Carry(const Kind& kind, Machine& machine, Chance& chance) {
    return Ride(kind, machine, chance).Go();
}

}  // namespace lapvane::soak
