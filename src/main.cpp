#include "Program.h"

int main(int argc, char* argv[]) {
    return lapvane::Program(argc, argv).Run();
}
