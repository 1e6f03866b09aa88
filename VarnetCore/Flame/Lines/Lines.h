#pragma once

/// What the flame says: one bank of a hundred lines for each kind of news, joined by newlines. A deck that is
/// under way holds places in these lists, so lines are never moved, and new ones only replace old ones.
namespace varnet::Lines {

extern const char* const calm;
extern const char* const busy;
extern const char* const app;
extern const char* const thermal;
extern const char* const takeoff;
extern const char* const vacuum;
extern const char* const forgotten;
extern const char* const duplicate;
extern const char* const unknown;

} // namespace varnet::Lines
