#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tools/support/BarePlatform.h"

namespace lapvane {

/// A machine for the fuzz targets: one without files, that counts its boxes.
class FuzzPlatform : public BarePlatform {
 public:
    FuzzPlatform() : BarePlatform("/nonexistent") {}
    Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                  const std::string& title) override {
        ++Boxes;
        return BarePlatform::MsgBox(text, buttons, icon, title);
    }

    int Boxes = 0;
};

/// A folder in memory that goes with the process.
class FuzzFolder {
 public:
    FuzzFolder() {
        std::string name =
            (std::filesystem::exists("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                 : std::filesystem::temp_directory_path()) /
            "lapvane-fuzz-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        Path = name;
    }
    ~FuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path, ignored);
    }
    void Write(const char* name, std::string_view text) const {
        std::FILE* file = std::fopen((Path / name).c_str(), "wb");
        if (file == nullptr) std::abort();
        if (std::fwrite(text.data(), 1, text.size(), file) != text.size()) std::abort();
        std::fclose(file);
    }

    std::filesystem::path Path;
};

}  // namespace lapvane
