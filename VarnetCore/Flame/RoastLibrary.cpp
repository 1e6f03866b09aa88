#include "VarnetCore/Flame/RoastLibrary.h"

#include "VarnetCore/Flame/Lines/Lines.h"
#include "VarnetCore/Flame/RoastTopic.h"

#include <algorithm>

namespace varnet {

namespace {

RoastLibrary::Bank entries(std::string_view text) {
    RoastLibrary::Bank lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end > 0) lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace

const std::map<std::string, RoastLibrary::Bank, std::less<>>& RoastLibrary::banks() {
    static const std::map<std::string, Bank, std::less<>> all{
        {"calm", entries(Lines::calm)},
        {"busy", entries(Lines::busy)},
        {"app", entries(Lines::app)},
        {"thermal", entries(Lines::thermal)},
        {"takeoff", entries(Lines::takeoff)},
        {"vacuum", entries(Lines::vacuum)},
        {"forgotten", entries(Lines::forgotten)},
        {"duplicate", entries(Lines::duplicate)},
        {"unknown", entries(Lines::unknown)},
    };
    return all;
}

const std::map<std::string, RoastLibrary::Bank, std::less<>>& RoastLibrary::topics() {
    static const std::map<std::string, Bank, std::less<>> all = [] {
        std::map<std::string, Bank, std::less<>> lines;
        for (const RoastTopic& topic : roastTopics)
            lines.emplace(topic.name, banks().find(topic.bank)->second);
        return lines;
    }();
    return all;
}

std::string_view RoastLibrary::bankFor(std::string_view topic) noexcept {
    return roastTopic(topic).bank;
}

} // namespace varnet
