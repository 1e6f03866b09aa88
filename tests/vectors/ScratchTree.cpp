#include "tests/vectors/ScratchTree.h"

#include "tests/vectors/RecordJson.h"

#include <fstream>
#include <stdexcept>
#include <utility>

namespace varnet::vectors {
namespace {

namespace fs = std::filesystem;

std::string contentsOf(const Json& entry) {
    if (!entry.contains("hex")) return readText(entry, "text");
    const std::string hex = readText(entry, "hex");
    std::string bytes;
    for (std::size_t digit = 0; digit + 1 < hex.size(); digit += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(digit, 2), nullptr, 16));
    }
    return bytes;
}

} // namespace

ScratchTree::ScratchTree(std::string placeholder) : placeholder_(std::move(placeholder)) {
    fs::create_directory(root_);
}

void ScratchTree::apply(const Json& entries) {
    for (const Json& entry : entries) {
        const fs::path path = root_ / readText(entry, "path");
        const std::string type = readText(entry, "type");
        const bool isFolder = fs::is_directory(fs::symlink_status(path));
        if (type == "remove" || (type == "dir") != isFolder) fs::remove_all(path);
        if (type == "dir") {
            fs::create_directories(path);
        } else if (type == "file") {
            fs::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << contentsOf(entry);
        } else if (type != "remove") {
            throw std::runtime_error("unknown entry type: " + type);
        }
    }
}

Json ScratchTree::located(const Json& json) const {
    if (json.is_string()) {
        std::string text = json.get<std::string>();
        for (std::size_t at = text.find(placeholder_); at != std::string::npos;
             at = text.find(placeholder_, at)) {
            text.replace(at, placeholder_.size(), path());
            at += path().size();
        }
        return text;
    }
    Json result = json;
    if (json.is_structured()) {
        for (auto& element : result)
            element = located(element);
    }
    return result;
}

} // namespace varnet::vectors
