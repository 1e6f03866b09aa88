#include "VarnetCore/Hall/FlameWeek.h"

#include "VarnetCore/Hall/CappedSum.h"

#include <algorithm>

namespace varnet {

namespace {

template <typename Number>
Number sum(const std::vector<FlameDay>& days, Number FlameDay::* figure) noexcept {
    Number total = 0;
    for (const FlameDay& day : days)
        total = cappedSum(total, day.*figure);
    return total;
}

} // namespace

FlameWeek FlameWeek::containing(const FlameArchive& archive, Date date) {
    const DateInterval interval = archive.calendar().week(date);
    FlameWeek week{interval.start, interval.end, {}, 0};
    for (const FlameDay& day : archive.days)
        if (interval.contains(day.date)) week.days.push_back(day);
    week.badges = static_cast<int>(std::ranges::count_if(
        archive.unlocked, [&](const auto& entry) { return interval.contains(entry.second); }));
    return week;
}

std::int64_t FlameWeek::stops() const noexcept {
    return sum(days, &FlameDay::stops);
}

std::int64_t FlameWeek::ghosts() const noexcept {
    return sum(days, &FlameDay::ghosts);
}

std::int64_t FlameWeek::folders() const noexcept {
    return sum(days, &FlameDay::folders);
}

std::uint64_t FlameWeek::trashBytes() const noexcept {
    return sum(days, &FlameDay::trashBytes);
}

std::optional<double> FlameWeek::peakCPU() const noexcept {
    std::optional<double> peak;
    for (const FlameDay& day : days)
        if (day.peakCPU && (!peak || *day.peakCPU > *peak)) peak = day.peakCPU;
    return peak;
}

const FlameRecord* FlameWeek::topApp() const noexcept {
    const FlameRecord* top = nullptr;
    for (const FlameDay& day : days)
        if (day.topApp && (!top || day.topApp->value > top->value)) top = &*day.topApp;
    return top;
}

} // namespace varnet
