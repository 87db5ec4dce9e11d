#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// What a link is, as follows from the pair of nodes that it joins.
enum eLinkKind : std::int32_t {
    kindDraw = 0,          ///< takes resources out of a queue for a Combi that starts
    kindRelease = 1,       ///< gives resources out of a node that holds them
    kindFlow = 2,          ///< leads out of a Fork or Dynafork
    kindTypeMismatch = 3,  ///< both ends are typed and the types differ; the last end asked for was not attached
    kindRefused = 7,       ///< the pair is not allowed; returned, and stored by nobody
    kindIncomplete = 8,    ///< an end is missing
};

/// The words of the kinds of link that a model file can hold.
struct cLinkKindWord {
    eLinkKind kind;
    std::string_view word;
};
inline constexpr std::array linkKindWords{
    cLinkKindWord{kindDraw, "DRAWLINK"},
    cLinkKindWord{kindRelease, "RELEASELINK"},
    cLinkKindWord{kindFlow, "FLOWLINK"},
};
