// The readers of a session and of a circuit's two files: any bytes give a session that can be drawn
// and is the same after another writing and reading, points and sectors that fit their arrays.

#include "fuzz/Fuzz.h"
#include "reports/Circuiti.h"
#include "reports/DivisioneSettori.h"
#include "reports/FileSessione.h"

void Fuzz(std::string_view text) {
    using namespace lapvane;
    RecordSessione session;
    std::string vehicle;
    CanaliSessione channels;
    LeggiSessione(text, session, vehicle, channels);
    for (const CanaleSessione& channel : channels) {
        Must(channel.Filtro >= 1 && channel.Spessore >= 1 && channel.Spessore <= 6);
    }
    const std::string written = ScriviSessione(session, channels);
    RecordSessione again;
    CanaliSessione channelsAgain;
    LeggiSessione(written, again, vehicle, channelsAgain);
    Must(ScriviSessione(again, channelsAgain) == written);

    const auto points = LeggiTracciato(text);
    Must(points.size() <= kPuntiMassimi);
    DivisioneSettori division;
    division.Prendi(LeggiTestoSettori(text, 21).Settori);
    Must(division.NumSettori <= kSettoriMassimi && division.SettoriCircuito.back() == 0);
    const int number = static_cast<int>(points.size());
    for (const double length : {0.0, 1.0, static_cast<double>(division.Somma())}) {
        for (const TrattoSettore& part :
             TrattiDeiSettori(division.SettoriCircuito, number, length)) {
            Must(part.Inizio >= 0 && part.Inizio < number && part.Fine >= 0 && part.Fine < number);
        }
    }
    for (int i = 0; i < kSettoriMassimi; ++i) {
        division.Cambia(i, 3, 1000);
        Must(division.SettoriCircuito.back() == 0);
    }
}
