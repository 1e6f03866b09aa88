#pragma once

#include <filesystem>

/// Where this program keeps its files.
namespace varnet::AppData {

/// The data root: "Varnet" under the user's data folder. It need not exist yet.
std::filesystem::path root();

/// The user's home folder; empty when there is none.
std::filesystem::path home();

} // namespace varnet::AppData
