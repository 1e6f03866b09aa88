#include "VarnetApp/MainViews/HeadlineLayout.h"

#include "VarnetApp/Components/HeadlineBreak.h"
#include "VarnetApp/Components/Theme.h"

#include <QFontMetricsF>

namespace varnet {

void HeadlineLayout::setWords(const QString& words) {
    if (words == words_) return;
    words_ = words;
    emit changed();
    layOut();
}

void HeadlineLayout::setWidth(double width) {
    if (width == width_) return;
    width_ = width;
    emit changed();
    layOut();
}

void HeadlineLayout::setCompact(bool compact) {
    if (compact == compact_) return;
    compact_ = compact;
    emit changed();
    layOut();
}

void HeadlineLayout::layOut() {
    const auto inFont = [this](const QFont& font) {
        return brokenHeadline(words_, width_, [metrics = QFontMetricsF(font)](const QString& piece) {
            return metrics.horizontalAdvance(piece);
        });
    };
    std::optional<QString> text;
    if (!compact_) text = inFont(Theme::shared().display());
    const bool isTitle = !text;
    // What is too long even so wraps where it must.
    if (isTitle) text = inFont(Theme::shared().title()).value_or(words_);
    if (*text == text_ && isTitle == isTitle_) return;
    text_ = *text;
    isTitle_ = isTitle;
    emit laidOut();
}

} // namespace varnet
