#include <filesystem>
#include <iostream>

#include "tools/texttable/texttable.h"

// texttable IN.tsv OUT.DAT: makes the language file of the program out of the table of texts.
// texttable IN.tsv FOLDER: makes the sources with the names of texts and those that are built in.
int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: texttable IN.tsv OUT.DAT|FOLDER\n";
        return 1;
    }
    return std::filesystem::is_directory(argv[2])
               ? lapvane::texttable::MakeSources(argv[1], argv[2], std::cerr)
               : lapvane::texttable::MakeLanguageFile(argv[1], argv[2], std::cerr);
}
