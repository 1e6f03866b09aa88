#pragma once

/// Self-checks from the command line. Each measures without any user interface, prints to standard output and
/// returns the program's exit status: 0 on success. None touches the user's own files.
namespace varnet::Diagnostics {

/// Measures until two metric readings are there, at most 7 seconds, and prints everything as one JSON object.
int run();

/// Measures in the rhythm of the program with an open window and prints what that costs as one JSON object.
/// @param seconds above 0
int benchmark(double seconds);

/// Starts a small local web server, finds it, measures beside it, stops it and sees it gone, with a storage
/// that works and with one that does not. Prints one JSON object; takes some 20 seconds.
int integration();

/// Measures once and prints a page for people: what a machine without a display gets to see.
int liveReading();

} // namespace varnet::Diagnostics
