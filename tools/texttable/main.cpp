#include <iostream>

#include "tools/texttable/texttable.h"

// texttable IN.tsv OUT.DAT: makes the language file of the program out of the table of texts.
int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: texttable IN.tsv OUT.DAT\n";
        return 1;
    }
    return lapvane::texttable::MakeLanguageFile(argv[1], argv[2], std::cerr);
}
