#include "VarnetApp/Components/HeadlineBreak.h"

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

/// One way to set a headline.
struct Setting {
    QString text;
    double widest = 0;
    int sentences = 0; ///< breaks that stand at the end of one
};

/// Every way to set the words in so many lines, tried one after the other; the best is kept.
class Breaker {
public:
    Breaker(const QString& words, double width, const std::function<double(const QString&)>& measure)
        : words_(words), width_(width), measure_(measure) {}

    std::optional<Setting> best(int lines) {
        best_.reset();
        place(0, lines, {});
        return best_;
    }

private:
    void place(qsizetype from, int lines, const Setting& sofar) {
        if (lines == 1) {
            consider(with(sofar, words_.mid(from)));
            return;
        }
        for (qsizetype space = words_.indexOf(' ', from); space >= 0;
             space = words_.indexOf(' ', space + 1)) {
            Setting next = with(sofar, words_.mid(from, space - from));
            if (next.widest > width_) break;
            if (endsSentence(words_, space)) ++next.sentences;
            place(space + 1, lines - 1, next);
        }
    }

    Setting with(const Setting& sofar, const QString& line) const {
        return {sofar.text.isEmpty() ? line : sofar.text + '\n' + line,
                std::max(sofar.widest, measure_(line)), sofar.sentences};
    }

    void consider(const Setting& setting) {
        if (setting.widest > width_) return;
        // Of several sentences the last one is the punchline, which comes last here.
        const bool better =
            !best_ || setting.sentences > best_->sentences ||
            (setting.sentences == best_->sentences &&
             (setting.widest < best_->widest || (setting.sentences > 0 && setting.text.count('\n') == 1)));
        if (better) best_ = setting;
    }

    const QString& words_;
    const double width_;
    const std::function<double(const QString&)>& measure_;
    std::optional<Setting> best_;
};

} // namespace

std::optional<QString> brokenHeadline(const QString& headline, double width,
                                      const std::function<double(const QString&)>& measure, int most) {
    const QString words = headline.simplified();
    Breaker breaker(words, width, measure);
    for (int lines = 1; lines <= most; ++lines)
        if (const auto setting = breaker.best(lines)) return setting->text;
    return std::nullopt;
}

} // namespace varnet
