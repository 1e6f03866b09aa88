#pragma once

#include "VarnetApp/ShareCards/ShareCardSnapshot.h"

#include <QImage>
#include <QPainter>
#include <QSize>

namespace varnet {

class AppLocalization;

/// The machine's report as a picture to post.
namespace ShareCard {

inline constexpr QSize size{1200, 675};
inline constexpr const char* suggestedName = "my-mac-report.png";

/// Paints in units of the finished picture's pixels.
void paint(QPainter& painter, const ShareCardSnapshot& card, const AppLocalization& localization);
/// The finished picture; null when there is no memory for it.
QImage image(const ShareCardSnapshot& card, const AppLocalization& localization);
/// What it shows, for those who do not see it.
QString description(const ShareCardSnapshot& card, const AppLocalization& localization);

} // namespace ShareCard
} // namespace varnet
