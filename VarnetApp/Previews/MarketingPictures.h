#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <vector>

namespace varnet {

class AppLocalization;

/// One picture that shows the program to people: a real screen below words that the program itself says.
struct MarketingPicture {
    QString name;     ///< of the file, without its suffix
    QString screen;   ///< name of the picture of the window in it
    QString headline; ///< English; may hold a line break
    QString line;     ///< English; below the headline
    FlameExpression expression;
};

inline constexpr QSize marketingSize{1600, 1000};
/// Device pixels of a logical one in the window shown: large enough to be read in passing.
inline constexpr double marketingScale = 1.2;

std::vector<MarketingPicture> marketingPictures();

/// @param window the screen, 1040 by 720 logical pixels at `marketingScale`; null: the picture is null, too
QImage paintMarketing(const MarketingPicture& picture, const QImage& window,
                      const AppLocalization& localization);

} // namespace varnet
