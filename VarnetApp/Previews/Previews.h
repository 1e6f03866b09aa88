#pragma once

#include <QString>

#include <filesystem>

namespace varnet::Previews {

/// Writes a PNG of every screen into a folder, dark and light, at 1 and 2 device pixels a logical one, from
/// prepared data and without a display. @return the program's exit status
/// @param language code of the texts' language; empty: English
/// @param only writes the pictures whose names begin with this; empty: all
int render(const std::filesystem::path& folder, const QString& language, const QString& only = {});

/// The same for the account's window and the form for feedback alone.
int renderCloud(const std::filesystem::path& folder, const QString& language);

/// The same for the storage page alone, and besides a map of a small tree of real files, which are written
/// beside the system's temporary files and measured.
int renderStorage(const std::filesystem::path& folder, const QString& language);

/// Writes the collection's pictures into a folder: the page in the smallest window, the earned badges, and
/// the card that a week is shared as. @return the program's exit status
int renderCollection(const std::filesystem::path& folder, const QString& language);

/// Writes the pictures that are shared, and the sheet that shares a report. @return the program's exit status
int renderReports(const std::filesystem::path& folder, const QString& language);

/// Writes the main screens into a folder, one picture for each language: "overview-cs.png".
/// @param language writes this one alone; empty: all that the program speaks
/// @param only as for `render`
int renderLocalization(const std::filesystem::path& folder, const QString& language,
                       const QString& only = {});

/// Writes pictures that show the program to people, of what its screens show and say. @return the program's
/// exit status
int renderMarketing(const std::filesystem::path& folder, const QString& language);

} // namespace varnet::Previews
