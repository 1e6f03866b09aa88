#include "tests/vectors/Operations.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace varnet::vectors;

struct Tally {
    std::size_t passed = 0;
    std::size_t failed = 0;
    bool unreadable = false; ///< some file could not be taken
};

/// A folder stands for the vector files directly in it.
std::vector<fs::path> filesOf(const fs::path& path) {
    if (!fs::is_directory(path)) return {path};
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
        if (entry.path().extension() == ".json") files.push_back(entry.path());
    }
    if (files.empty()) throw std::runtime_error("no .json files in it");
    std::sort(files.begin(), files.end());
    return files;
}

Json readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot be opened");
    Json vectors = Json::parse(file);
    if (!vectors.is_array()) throw std::runtime_error("not a list of vectors");
    for (const Json& vector : vectors) {
        const bool hasForm = vector.is_object() && vector.contains("name") && vector["name"].is_string() &&
                             vector.contains("op") && vector["op"].is_string();
        if (!hasForm) throw std::runtime_error("an element is no vector with a name and an op");
    }
    return vectors;
}

std::optional<Difference> run(const Json& vector) {
    const std::string op = vector["op"];
    const Check* check = findCheck(op);
    if (!check) return Difference{"", "an operation that is known", "unknown operation " + op};
    try {
        return (*check)(withoutPool(vector));
    } catch (const std::exception& error) {
        return Difference{"", "a vector that can be run", error.what()};
    }
}

void runFile(const fs::path& path, Tally& tally) {
    for (const Json& vector : readFile(path)) {
        const auto difference = run(vector);
        ++(difference ? tally.failed : tally.passed);
        if (!difference) continue;
        std::cout << path.filename().string() << ": " << vector["op"].get<std::string>() << ": "
                  << vector["name"].get<std::string>() << '\n';
        if (!difference->path.empty()) std::cout << "  at       " << difference->path << '\n';
        std::cout << "  expected " << difference->expected << "\n  got      " << difference->got << '\n';
    }
}

} // namespace

/// varnet_vectors [FILE-OR-FOLDER...]: exits 0 when every vector of every file has passed.
int main(int count, char** values) {
    std::vector<fs::path> arguments(values + 1, values + count);
    if (arguments.empty()) arguments.emplace_back(VARNET_GOLDEN_FOLDER);
    Tally tally;
    for (const fs::path& argument : arguments) {
        fs::path current = argument;
        try {
            for (const fs::path& file : filesOf(argument)) {
                current = file;
                runFile(file, tally);
            }
        } catch (const std::exception& error) {
            std::cerr << "varnet_vectors: " << current.string() << ": " << error.what() << '\n';
            tally.unreadable = true;
        }
    }
    std::cout << tally.passed << " passed, " << tally.failed << " failed\n";
    return tally.failed > 0 || tally.unreadable ? 1 : 0;
}
