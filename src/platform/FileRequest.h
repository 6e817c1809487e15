#pragma once

#include <filesystem>
#include <string>

namespace lapvane {

/// What an open or save dialog is asked for.
struct FileRequest {
    std::string Title;              ///< Windows-1252
    std::filesystem::path Folder;   ///< empty: the current folder
    std::string Filter;             ///< "Project File (*.pro)|*.pro"
    std::filesystem::path Name;     ///< suggested name, may be empty
    std::string RequiredExtension;  ///< save only: a name without it gets it; empty: left alone
};

}  // namespace lapvane
