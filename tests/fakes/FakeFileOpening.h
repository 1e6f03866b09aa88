#pragma once

#include "VarnetApp/Platform/FileOpening.h"

#include <string>
#include <vector>

namespace varnet {

/// Remembers what it was asked to show.
class FakeFileOpening final : public platform::FileOpening {
public:
    bool openUrl(const std::string& url) override {
        opened.push_back(url);
        return true;
    }
    bool revealFiles(const std::vector<std::string>& paths) override {
        revealed.insert(revealed.end(), paths.begin(), paths.end());
        return true;
    }
    bool openApplication(const std::vector<std::string>& names) override {
        if (installed) opened.push_back(names.front());
        return installed;
    }

    bool installed = true; ///< every application that is asked for
    std::vector<std::string> opened;
    std::vector<std::string> revealed;
};

} // namespace varnet
