#pragma once

/// A standard stream that the caller closed must not become the number of another file, which what is written to the
/// stream would then go into, and what is read come from. What stands in for it can't be used, so its loss is noticed.
/// Comes before anything that opens a file.
void occupyStandardStreams();
