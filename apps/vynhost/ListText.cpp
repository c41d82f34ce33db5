#include "vynhost/ListText.h"

#include <algorithm>

namespace vynhost {

std::string ListTexts(std::vector<std::string> const& texts) {
    constexpr std::size_t kMostListed = 20;
    std::size_t const listed = std::min(texts.size(), kMostListed);
    std::string list;
    for (std::size_t i = 0; i < listed; ++i)
        list += (i == 0 ? "" : ", ") + texts[i];
    if (listed < texts.size())
        list += " and " + std::to_string(texts.size() - listed) + " more";
    return list;
}

} // namespace vynhost
