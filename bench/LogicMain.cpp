#include "BenchMain.h"

int main(int argc, char* argv[]) {
    return lapvane::bench::RunBenches("logic", argc, argv);
}
