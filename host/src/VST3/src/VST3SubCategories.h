#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterCategory.h"

#include <string_view>

namespace vynaudiofilterhost::vst3 {

/// What the sub-categories of a class say about its filter.
struct SubCategoryVerdict {
    AudioFilterCategory category;
    bool instrument;

    friend bool operator==(SubCategoryVerdict const&, SubCategoryVerdict const&) = default;
};

/// Reads the sub-categories that a class states, such as "Fx|Delay|Stereo". A class that says both "Fx" and
/// "Instrument" is an effect. With `internalFilter` the text doesn't count: internal, and no instrument.
/// [any-thread]
SubCategoryVerdict CategoryFromSubCategories(std::string_view subCategories, bool internalFilter);

} // namespace vynaudiofilterhost::vst3
