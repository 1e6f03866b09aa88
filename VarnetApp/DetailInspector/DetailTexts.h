#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/Attribution.h"
#include "VarnetCore/Monitoring/Service.h"

#include <QString>

#include <cstddef>
#include <vector>

/// The words of the inspector.
namespace varnet::DetailTexts {

QString subtitle(const ApplicationGroup& group);
QString subtitle(const Service& service, Date now);
/// Who started it, as far as that is known.
QString origin(const Attribution* attribution);
/// Empty while the agent lives.
QString agentLeft(const Attribution* attribution, Date now);
QString ports(const std::vector<int>& ports);
QString worktree(const Project& project);
QString processes(std::size_t count);
QString executable(const ProcessSample& process);
QString workingDirectory(const ProcessSample& process);
QString address(int port);

constexpr const char* cpuHelp = "How much of your Mac’s CPU this item uses, averaged over 30 seconds.";
constexpr const char* memoryHelp =
    "Memory for this item, counted before packing. Quitting or stopping it may "
    "free a different amount.";
constexpr const char* cpuNote =
    "100% = one fully used CPU core. Can exceed 100% across multiple cores. Both columns use the same "
    "30-second average; Activity Monitor may use a different sampling interval.";

} // namespace varnet::DetailTexts
