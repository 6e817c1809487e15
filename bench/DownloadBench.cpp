// What a download costs a block on top of its prescribed pauses and what a cycle of the live view
// costs, over a real pseudo-terminal with an instrument that answers at once; and what the program
// costs while nobody answers.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <array>
#include <cstdio>

#include "BenchMain.h"
#include "device/Codec.h"
#include "device/SerialComm.h"
#include "device/dlgDiagnostica.h"
#include "logs/BufferLog.h"
#include "logs/DiarioScarico.h"
#include "logs/Scarico.h"
#include "logs/frmDownload.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/frmMain.h"
#include "tools/support/BareViews.h"
#include "widgets/style/Vesti.h"

namespace lapvane {
namespace {

constexpr int kBlocchi = 200;
constexpr int kPausaBlocco = 10;  // ms
constexpr std::size_t kRispostaBlocco = 130;

QString Porta() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/ports/COM1");
}

class Strumento {
 public:
    explicit Strumento(const QStringList& opzioni) {
        QFile::remove(Porta());
        processo_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        processo_.start(
            QCoreApplication::applicationDirPath() + QStringLiteral("/lapvane-instrument"),
            QStringList{QStringLiteral("--quiet"), QStringLiteral("--link"), Porta()} + opzioni);
        QElapsedTimer attesa;
        attesa.start();
        while (!QFile::exists(Porta()) && attesa.elapsed() < 5000) processo_.waitForFinished(20);
    }
    ~Strumento() {
        processo_.terminate();
        processo_.waitForFinished(3000);
    }

 private:
    QProcess processo_;
};

double Processore() {
    struct rusage uso {};
    ::getrusage(RUSAGE_SELF, &uso);
    return static_cast<double>(uso.ru_utime.tv_sec + uso.ru_stime.tv_sec) +
           static_cast<double>(uso.ru_utime.tv_usec + uso.ru_stime.tv_usec) / 1e6;
}

/// How often this process has gone to sleep.
double Risvegli() {
    struct rusage uso {};
    ::getrusage(RUSAGE_SELF, &uso);
    return static_cast<double>(uso.ru_nvcsw);
}

double Millisecondi(const QElapsedTimer& orologio) {
    return static_cast<double>(orologio.nsecsElapsed()) / 1e6;
}

/// The machine of the program. Counts the pauses that it is asked for since the last long one,
/// behind which a download begins with its blocks, and answers boxes.
class MacchinaContata : public QtPlatform {
 public:
    void Pause(int ms, const std::function<void()>& meanwhile) override {
        QtPlatform::Pause(ms, meanwhile);
        Pauses += ms;
        if (ms < 1000) return;
        Pauses = 0;
        DaPausa.start();
    }
    Answer MsgBox(const std::string& testo, Buttons, Icon, const std::string&) override {
        std::fprintf(stderr, "%s\n", testo.c_str());
        ++Boxes;
        return Answer::Ok;
    }
    QElapsedTimer DaPausa;
    int Pauses = 0;  ///< ms
    int Boxes = 0;
};

MacchinaContata& Macchina() {
    static MacchinaContata macchina;
    return macchina;
}

/// The least that a download can do: it writes the same frames, waits for as many characters and
/// pauses as long. Milliseconds a block beyond the pause; 0 if a reply did not come.
double ScambioNudo() {
    const int porta =
        ::open(QFile::encodeName(Porta()).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios linea{};
    if (porta < 0 || ::tcgetattr(porta, &linea) != 0) return 0.0;
    ::cfmakeraw(&linea);
    linea.c_cc[VMIN] = linea.c_cc[VTIME] = 0;
    ::tcsetattr(porta, TCSANOW, &linea);
    QElapsedTimer orologio;
    orologio.start();
    bool tutti = true;
    for (int i = 0; i < kBlocchi && tutti; ++i) {
        const std::string frame = Frame(14, CodificaLong(i * 128));
        tutti = ::write(porta, frame.data(), frame.size()) == std::ssize(frame);
        std::array<char, 256> risposta{};
        for (std::size_t letti = 0; tutti && letti < kRispostaBlocco;) {
            pollfd attesa{porta, POLLIN, 0};
            tutti = ::poll(&attesa, 1, 1000) == 1;
            const ssize_t nuovi = ::read(porta, risposta.data(), risposta.size());
            if (nuovi > 0) letti += static_cast<std::size_t>(nuovi);
        }
        platform().Sleep(kPausaBlocco);
    }
    const double ms = Millisecondi(orologio) / kBlocchi - kPausaBlocco;
    ::close(porta);
    return tutti ? ms : 0.0;
}

void SovraccaricoDelDownload(benchmark::State& stato) {
    const Strumento strumento({QStringLiteral("--full")});
    // The link asks the main window for its port.
    frmMain finestra(std::make_unique<QtSerialControl>());
    finestra.Carica();
    BareDownloadView vista;
    for (auto _ : stato) {
        const double prima = ScambioNudo();
        FaseComunicazione = 38;
        if (!LinkPronto()) {
            stato.SkipWithError("no instrument");
            break;
        }
        AzzeraBufferLog();
        Scarico scarico(vista);
        scarico.BytesDati = (kBlocchi - 1) * 128;
        QElapsedTimer orologio;
        orologio.start();
        scarico.ScaricaLog();
        const double sopra = Millisecondi(orologio) / kBlocchi - kPausaBlocco;
        FaseComunicazione = 0;
        if (NumBlocchi != kBlocchi) stato.SkipWithError("blocks were lost");
        ChiudiPorta();
        const double dopo = ScambioNudo();
        if (prima <= 0.0 || dopo <= 0.0) stato.SkipWithError("the bare exchange broke off");
        stato.SetIterationTime(sopra / 1e3);
        stato.counters["ours_ms"] = sopra;
        stato.counters["bare_ms"] = (prima + dopo) / 2;
        stato.counters["ratio"] = sopra / ((prima + dopo) / 2);
    }
    ChiudiPorta();
}
BENCHMARK(SovraccaricoDelDownload)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

/// A block of a download in its window, with what it writes to the disk and draws on the screen.
void DownloadInFinestra(benchmark::State& stato) {
    const Strumento strumento({QStringLiteral("--laps"), QStringLiteral("20")});
    frmMain finestra(std::make_unique<QtSerialControl>());
    finestra.Carica();
    finestra.show();
    for (auto _ : stato) {
        FaseComunicazione = 38;
        if (!LinkPronto()) {
            stato.SkipWithError("no instrument");
            break;
        }
        AzzeraBufferLog();
        MacchinaContata& macchina = Macchina();
        macchina.Boxes = 0;
        frmDownload download(&finestra);
        download.show();
        // The whole download is one event.
        while (FaseComunicazione != 0) QApplication::processEvents();
        const double ms = Millisecondi(macchina.DaPausa) - macchina.Pauses;
        if (macchina.Boxes != 0 || logInMemoria().Parziale) {
            stato.SkipWithError("not everything was read");
        }
        ScaricoConcluso();
        const double sopra = ms / NumBlocchi;
        stato.SetIterationTime(sopra / 1e3);
        stato.counters["blocks"] = NumBlocchi;
    }
    ChiudiPorta();
}
BENCHMARK(DownloadInFinestra)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(2);

/// A port that counts the requests.
class PortaContata : public QtSerialControl {
 public:
    void Output(const std::string& byte) override {
        ++Frame;
        QtSerialControl::Output(byte);
    }
    int Frame = 0;
};

/// The live view on the screen of a car that drives: processor time of the whole program.
void CicloDalVivo(benchmark::State& stato) {
    constexpr int kDurata = 3000;  // ms
    constexpr int kFramePerCiclo = 2;
    const Strumento strumento({});
    auto propria = std::make_unique<PortaContata>();
    const PortaContata& porta = *propria;
    frmMain finestra(std::move(propria));
    finestra.Carica();
    for (auto _ : stato) {
        if (!LinkPronto()) {
            stato.SkipWithError("no instrument");
            break;
        }
        dlgDiagnostica vivo;
        const int frame = porta.Frame;
        const double prima = Processore();
        QTimer::singleShot(kDurata, &vivo, &QDialog::close);
        vivo.exec();
        const double ms = (Processore() - prima) * 1e3;
        const double cicli = static_cast<double>(porta.Frame - frame) / kFramePerCiclo;
        FaseComunicazione = 0;
        // A cycle takes its two pauses of 50 ms and little else.
        if (cicli < kDurata / 200.0) stato.SkipWithError("the view did not run");
        stato.counters["cycles"] = cicli;
        stato.counters["processor_ms"] = ms / cicli;
    }
    ChiudiPorta();
}
BENCHMARK(CicloDalVivo)->Iterations(1)->Unit(benchmark::kMillisecond);

/// Share of a core and wake-ups a second over four seconds of the whole program: window, poll,
/// serial control.
void Riposo(benchmark::State& stato, const QStringList& opzioni, bool presente) {
    std::unique_ptr<Strumento> strumento;
    QFile::remove(Porta());
    if (presente) strumento = std::make_unique<Strumento>(opzioni);
    for (auto _ : stato) {
        frmMain finestra(std::make_unique<QtSerialControl>());
        finestra.Carica();
        finestra.show();
        finestra.AvviaSorveglianza();
        QElapsedTimer orologio;
        orologio.start();
        while (orologio.elapsed() < 1000) platform().DoEvents(50);
        const double prima = Processore();
        const double risveglio = Risvegli();
        orologio.restart();
        while (orologio.elapsed() < 4000) platform().DoEvents(1000);
        const double secondi = static_cast<double>(orologio.nsecsElapsed()) / 1e9;
        stato.counters["core_percent"] = 100 * (Processore() - prima) / secondi;
        stato.counters["wakeups"] = (Risvegli() - risveglio) / secondi;
        ChiudiPorta();
    }
}
BENCHMARK_CAPTURE(Riposo, nobody_connected, QStringList{}, false)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Riposo, silent_instrument,
                  (QStringList{QStringLiteral("--fault"), QStringLiteral("silent")}), true)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Riposo, connected, QStringList{}, true)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lapvane

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    lapvane::Vesti();
    lapvane::SetPlatform(&lapvane::Macchina());
    return lapvane::bench::RunBenches("download", argc, argv);
}
