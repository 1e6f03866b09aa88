#include "VarnetApp/MainViews/HeadlineBreak.h"

#include <algorithm>

namespace varnet {

namespace {

/// Whether a sentence ends right before this place, quotes and brackets after its mark included.
bool endsSentence(const QString& text, qsizetype place) {
    qsizetype last = place - 1;
    while (last > 0 && QStringLiteral("”’\"')").contains(text[last]))
        --last;
    return last >= 0 && QStringLiteral(".!?…").contains(text[last]);
}

} // namespace

std::optional<QString> brokenHeadline(const QString& headline, double width,
                                      const std::function<double(const QString&)>& measure) {
    QString words = headline.simplified();
    if (measure(words) <= width) return words;

    std::optional<QString> sentences;
    std::optional<QString> even;
    double evenWidth = width;
    for (qsizetype space = words.indexOf(' '); space >= 0; space = words.indexOf(' ', space + 1)) {
        const QString first = words.left(space);
        const QString second = words.mid(space + 1);
        const double longer = std::max(measure(first), measure(second));
        if (longer > width) continue;
        const QString broken = first + '\n' + second;
        // Of several sentences the last one is the punchline.
        if (endsSentence(words, space)) sentences = broken;
        if (longer < evenWidth || !even) {
            even = broken;
            evenWidth = longer;
        }
    }
    return sentences ? sentences : even;
}

} // namespace varnet
