#include "VarnetApp/WholeDiskViews/WholeDiskTexts.h"

#include "VarnetCore/Disk/DiskUsageScan.h"

namespace varnet {

namespace {

constexpr const char* finding = "Finding the biggest files…";

} // namespace

QString WholeDiskTexts::itemsChecked(std::uint64_t count, const Figures& figures) {
    return figures.count(count) + " items checked";
}

QString WholeDiskTexts::showMore(std::size_t remaining, const Figures& figures) {
    return remaining == 0 ? QString() : "Show more (" + figures.count(remaining) + " remaining)";
}

QString WholeDiskTexts::unreadable(std::int64_t count, const Figures& figures) {
    if (count <= 0) return {};
    return count == 1 ? QString("1 item couldn’t be read.")
                      : figures.count(static_cast<std::uint64_t>(count)) + " items couldn’t be read.";
}

WholeDiskTexts::Notice WholeDiskTexts::notice(const State& state, bool empty, const Figures& figures) {
    if (!state.started) {
        return {.icon = "storage",
                .title = "See what fills your disk.",
                .text = "Scan once, then walk through every folder by its size. Nothing is moved or changed.",
                .canScan = true};
    }
    if (!empty) return {};
    if (state.failure) {
        return {.icon = "warning",
                .title = QString::fromStdString(*state.failure),
                .text = {},
                .isError = true,
                .canScan = true};
    }
    const bool told = state.scan && !state.scan->entries.empty();
    if (state.searching && told)
        return {.icon = "search", .title = "No matching items.", .text = "Try a different name."};
    if (state.scanning) {
        return {
            .icon = {}, .title = finding, .text = itemsChecked(state.itemsChecked, figures), .isBusy = true};
    }
    if (!state.scan) return {}; // the answer is on its way
    return {.icon = "folder",
            .title = "Nothing to see here.",
            .text = "This folder may be empty or require access. Try rescanning."};
}

WholeDiskTexts::Status WholeDiskTexts::status(const State& state, bool empty) {
    if (state.scanning) return {empty ? QString() : QString(finding)};
    if (state.failure) return {empty ? QString() : QString::fromStdString(*state.failure), true};
    if (state.scan && state.scan->stopped) return {"Scan stopped · Showing what we measured"};
    return {};
}

} // namespace varnet
