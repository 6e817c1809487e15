#pragma once

#include <cstddef>
#include <filesystem>

namespace lapvane {

/// The folder that the program takes for its own: `installata`, where it lies, if files can be made
/// there and no file "for-all-users" says that it belongs to nobody, not even to the administrator
/// who could write there; else `personale`, the person's own, which is made and filled from the
/// installed one. If that can't be had either, the installed one.
///
/// The rule by which the person's folder is filled and, at each start, brought up to date. For
/// every file that comes with the program, the folder remembers (in ".lapvane.installed") what was
/// put there:
/// - it was never put there, and there is none: it is put there;
/// - the one that is there is still what was put there: it gives way to the one of a new version;
/// - it was changed, or there was one of that name before: it is the person's and stays;
/// - it was taken away: it stays away, but for the two without which the program does not start,
///   LANGUAGES.DAT and RecentFiles.ini;
/// - it does not come with the program any more: it stays.
/// The first line of LANGUAGES.DAT, the language that was chosen, is always the person's.
std::filesystem::path CartellaDelProgramma(const std::filesystem::path& installata,
                                           const std::filesystem::path& personale);

/// Takes out of a person's folder what the program has put there or remembers there: files that are
/// still as they came, lists of recent files and choices. What the person made or changed stays,
/// with the folders in which it lies. Returns how many files stay.
std::size_t SgomberaCartella(const std::filesystem::path& personale);
/// The same for who only reads: nothing is made nor filled. A person's folder that the program has
/// not filled yet is none.
std::filesystem::path CartellaDaLeggere(const std::filesystem::path& installata,
                                        const std::filesystem::path& personale);

}  // namespace lapvane
