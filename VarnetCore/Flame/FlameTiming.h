#pragma once

/// How long the flame and its words wait before they change, in seconds.
namespace varnet::FlameTiming {

constexpr double maximumSampleGap = 15;  ///< a longer silence between samples forgets what was shown
constexpr double escalation = 20;        ///< before a rise in severity takes effect
constexpr double urgentEscalation = 5;   ///< before a rise to an urgent severity takes effect
constexpr double recovery = 60;          ///< before a fall in severity takes effect
constexpr double peerChange = 30;        ///< before a change between equals takes effect
constexpr double headlineMinimum = 90;   ///< least time a headline stays up
constexpr double headlineRotation = 180; ///< an unchanged subject gets a new line after this

/// From here on a severity is urgent.
constexpr int urgentSeverity = 4;

} // namespace varnet::FlameTiming
