// The readers of a session and of a circuit's two files: any bytes give a session that can be drawn
// and is the same after another writing and reading, points and sectors that fit their arrays.
#include <cstdlib>

#include "reports/Circuiti.h"
#include "reports/DivisioneSettori.h"
#include "reports/FileSessione.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace lapvane;
    const std::string text(reinterpret_cast<const char*>(data), size);

    RecordSessione session;
    std::string vehicle;
    CanaliSessione channels;
    LeggiSessione(text, session, vehicle, channels);
    for (const CanaleSessione& channel : channels) {
        if (channel.Filtro < 1 || channel.Spessore < 1 || channel.Spessore > 6) std::abort();
    }
    const std::string written = ScriviSessione(session, channels);
    RecordSessione again;
    CanaliSessione channelsAgain;
    LeggiSessione(written, again, vehicle, channelsAgain);
    if (ScriviSessione(again, channelsAgain) != written) std::abort();

    const auto points = LeggiTracciato(text);
    if (points.size() > kPuntiMassimi) std::abort();
    DivisioneSettori division;
    division.Prendi(LeggiTestoSettori(text, 21).Settori);
    if (division.NumSettori > kSettoriMassimi || division.SettoriCircuito.back() != 0) std::abort();
    const int number = static_cast<int>(points.size());
    for (const double length : {0.0, 1.0, static_cast<double>(division.Somma())}) {
        for (const TrattoSettore& part :
             TrattiDeiSettori(division.SettoriCircuito, number, length)) {
            if (part.Inizio < 0 || part.Inizio >= number || part.Fine < 0 || part.Fine >= number) {
                std::abort();
            }
        }
    }
    for (int i = 0; i < kSettoriMassimi; ++i) {
        division.Cambia(i, 3, 1000);
        if (division.SettoriCircuito.back() != 0) std::abort();
    }
    return 0;
}
