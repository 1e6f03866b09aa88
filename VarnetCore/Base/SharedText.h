#pragma once

#include <concepts>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace varnet {

/// An immutable text whose copies share one allocation: names and paths that many passes carry unchanged.
/// Empty by default. Safe to read from any thread.
class SharedText {
public:
    SharedText() noexcept = default;
    SharedText(std::string text)
        : text_(text.empty() ? nullptr : std::make_shared<const std::string>(std::move(text))) {}
    SharedText(std::string_view text) : SharedText(std::string(text)) {}
    SharedText(const char* text) : SharedText(std::string(text)) {}

    const std::string& str() const noexcept {
        static const std::string nothing;
        return text_ ? *text_ : nothing;
    }
    operator std::string_view() const noexcept { return str(); }
    bool empty() const noexcept { return !text_; }

    friend bool operator==(const SharedText& a, const SharedText& b) noexcept {
        return a.text_ == b.text_ || a.str() == b.str();
    }
    template <typename Text>
        requires(std::convertible_to<const Text&, std::string_view> && !std::same_as<Text, SharedText>)
    friend bool operator==(const SharedText& a, const Text& b) noexcept {
        return a.str() == std::string_view(b);
    }

private:
    std::shared_ptr<const std::string> text_;
};

/// An immutable list of texts whose copies share one allocation. Empty by default.
class SharedTexts {
public:
    SharedTexts() noexcept = default;
    SharedTexts(std::vector<std::string> texts)
        : texts_(texts.empty() ? nullptr
                               : std::make_shared<const std::vector<std::string>>(std::move(texts))) {}
    SharedTexts(std::initializer_list<std::string> texts) : SharedTexts(std::vector<std::string>(texts)) {}

    const std::vector<std::string>& list() const noexcept {
        static const std::vector<std::string> nothing;
        return texts_ ? *texts_ : nothing;
    }
    operator std::span<const std::string>() const noexcept { return list(); }
    bool empty() const noexcept { return !texts_; }

    friend bool operator==(const SharedTexts& a, const SharedTexts& b) noexcept {
        return a.texts_ == b.texts_ || a.list() == b.list();
    }

private:
    std::shared_ptr<const std::vector<std::string>> texts_;
};

} // namespace varnet
