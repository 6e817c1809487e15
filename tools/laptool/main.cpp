// lapvane-tool: laps of a log, and the log of a download, on the command line; it also clears the
// folder of a person from whom the program goes. Exit codes: 0 done, 1 it can't be done (the reason
// on the standard error), 2 the command line is wrong.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "platform/CartellaProgramma.h"
#include "platform/Testo1252.h"
#include "tools/laptool/CommandLine.h"
#include "tools/laptool/Laptool.h"
#include "tools/support/BarePlatform.h"

namespace {

using namespace lapvane;
using namespace lapvane::laptool;

void Forms(CLI::App& command, Form& as) {
    auto* csv = command.add_flag_callback(
        "--csv", [&as] { as = Form::Csv; }, "commas and points, for scripts");
    auto* json = command.add_flag_callback(
        "--json", [&as] { as = Form::Json; }, "JSON, for scripts");
    csv->excludes(json);
}

int Run(int argc, char* argv[]) {
    PlainOutput();
    CLI::App app{"Laps of a log recorded by the instrument"};
    app.name("lapvane-tool");
    app.allow_windows_style_options(false);  // "/" begins a path
    app.set_version_flag("--version", LAPVANE_VERSION);
    app.require_subcommand(1);

    LapsRequest laps;
    CLI::App* table = app.add_subcommand("laps", "the laps, their sectors and the ideal lap");
    table->add_option("FILE", laps.File, "data file (.csv), with its .tim and .txt beside it")
        ->required();
    table
        ->add_option("--parts", laps.Parts, "so many equal parts in place of the circuit's sectors")
        ->check(CLI::Range(1, 20));
    Forms(*table, laps.As);

    CompareRequest compare;
    CLI::App* against =
        app.add_subcommand("compare", "time gained or lost against a lap, along its way");
    against->add_option("FILE", compare.File, "data file (.csv), with its .tim and .txt beside it")
        ->required();
    against
        ->add_option("REFERENCE", compare.Reference,
                     "lap to compare with, by its number in the lap table")
        ->required();
    against->add_option("LAP", compare.Laps, "laps to compare")->required();
    against->add_option("--channels", compare.Channels, "channels by name, parted by commas")
        ->delimiter(',');
    Forms(*against, compare.As);

    ConvertRequest convert;
    CLI::App* conversion =
        app.add_subcommand("convert", "the data file of a download that was kept on the disk");
    conversion->add_option("RAW", convert.Raw, "download (.download or .downloaded), as it came")
        ->required();
    conversion
        ->add_option("FILE", convert.File, "data file to make (.csv), its .tim and .txt beside it")
        ->required();
    conversion->add_flag("--force", convert.Force, "write over files that are there");

    CLI::App* clear = app.add_subcommand(
        "clear",
        "takes out of your own folder what an installed program put there; what you made stays");

    try {
        std::vector<std::string> words = Words(argc, argv);
        std::ranges::reverse(words);  // the library takes them from the back
        app.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    // The circuits are those that the program with windows shows to this person.
    const BarePlatform machine(CartellaDaLeggere(Folder(argv[0]), Own()));
    std::string text;
    try {
        if (*clear) {
            const std::size_t left = SgomberaCartella(Own());
            if (left != 0) std::printf("%zu files of yours stay\n", left);
            return 0;
        }
        if (*conversion) {
            if (const std::string lacks = Convert(convert); !lacks.empty()) {
                std::fprintf(stderr, "lapvane-tool: %s\n", lacks.c_str());
            }
            return 0;
        }
        text = *table ? Laps(laps) : Compare(compare);
    } catch (const Refusal& refusal) {
        std::fprintf(stderr, "lapvane-tool: %s\n", refusal.Why.c_str());
        return 1;
    } catch (const ErroreRuntime& error) {
        std::fprintf(stderr, "lapvane-tool: %s: %s\n",
                     Utf8Da1252(TestoDaPercorso(error.File())).c_str(), error.what());
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lapvane-tool: %s\n", error.what());
        return 1;
    }
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (written && std::fflush(stdout) == 0) return 0;
    std::fprintf(stderr, "lapvane-tool: the output could not be written\n");
    return 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    return Run(argc, argv);
}
