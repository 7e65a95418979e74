#ifndef ORVEX_991_VERSION_H
#define ORVEX_991_VERSION_H

/// @file
/// The version of the library, for the preprocessor. The only place in which it is stated: builds and packages read
/// it from here. Versions are semantic ones, results included: a changed result byte is a breaking change.

/// Raised where callers must change.
#define ORVEX_991_VERSION_MAJOR 0
/// Raised with what is new; before 1.0 also where callers must change.
#define ORVEX_991_VERSION_MINOR 9
/// Raised with what is mended.
#define ORVEX_991_VERSION_PATCH 0

/// "major.minor.patch"
#define ORVEX_991_VERSION \
    ORVEX_991_JOINED_(ORVEX_991_VERSION_MAJOR, ORVEX_991_VERSION_MINOR, ORVEX_991_VERSION_PATCH)

/// @cond
// Two steps, so that the numbers are put in before they become text.
#define ORVEX_991_JOINED_(major, minor, patch) \
    ORVEX_991_TEXT_(major) "." ORVEX_991_TEXT_(minor) "." ORVEX_991_TEXT_(patch)
#define ORVEX_991_TEXT_(number) #number
/// @endcond

#endif  // ORVEX_991_VERSION_H
