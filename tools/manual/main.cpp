#include <iostream>

#include "tools/manual/Manual.h"

// manual SOURCE PICTURES_IT PICTURES_EN OUT: makes the manual out of its chapters, of the program's
// texts and tables, and of the pictures of a tour in each language.
int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: manual SOURCE PICTURES_IT PICTURES_EN OUT\n";
        return 2;
    }
    try {
        return lapvane::manual::MakeManual({argv[1], argv[2], argv[3], argv[4]}, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << "manual: " << error.what() << '\n';
        return 1;
    }
}
