// The simulated instrument: any bytes on the line give replies of their commands' lengths and no
// others; any text is a fault, a tank or an option, or is refused with a reason.
#include <stdexcept>

#include "fuzz/Fuzz.h"
#include "instrument/Circuito.h"
#include "instrument/Guasti.h"
#include "instrument/Options.h"
#include "instrument/Strumento.h"
#include "reports/Circuiti.h"

void Fuzz(std::string_view input) {
    using namespace lapvane;
    using namespace lapvane::strumento;
    if (input.empty()) return;
    const std::string text(input.substr(1));
    try {
        switch (static_cast<unsigned char>(input[0]) % 4) {
            case 0: {
                Strumento instrument;
                std::int64_t now = 0;
                for (std::size_t i = 0; i < text.size();) {
                    const std::size_t part = 1 + static_cast<unsigned char>(text[i]) % 120;
                    for (const Risposta& reply : instrument.Ricevi(text.substr(i, part), now)) {
                        Must(reply.Tipo != nullptr);
                        Must(reply.Byte.empty() || reply.Byte.size() == reply.Tipo->Risposta);
                    }
                    i += part;
                    now += static_cast<std::int64_t>(part) * 3;
                }
                break;
            }
            case 1: {
                Strumento instrument;
                instrument.Difetti.Aggiungi(LeggiGuasto(text));
                for (const int command : {1, 2, 9, 37}) {
                    instrument.Ricevi(
                        std::string{'H', static_cast<char>(command)} + (command == 37  ? "6D"
                                                                        : command == 9 ? "51"
                                                                        : command == 2 ? "4A"
                                                                                       : "49"),
                        1);
                }
                break;
            }
            case 2: {
                std::vector<std::string> arguments;
                std::size_t start = 0;
                for (std::size_t end = text.find(' '); start <= text.size();
                     start = end + 1, end = text.find(' ', start)) {
                    end = std::min(end, text.size());
                    arguments.push_back(text.substr(start, end - start));
                }
                ParseOptions(arguments);
                break;
            }
            default: {
                std::vector<Punto> outline;
                for (const PuntoTracciato& point : LeggiTracciato(text)) {
                    outline.push_back({static_cast<double>(point.X), static_cast<double>(point.Y)});
                }
                const Circuito track(outline, 2000.0);
                Must((track.Curvatura(100.0) >= 0.0));
                Must(track.CurvaStretta() >= 0.0 && track.CurvaStretta() <= 2000.0);
            }
        }
    } catch (const std::invalid_argument&) {
    } catch (const ErroreCircuito&) {
    }
}
