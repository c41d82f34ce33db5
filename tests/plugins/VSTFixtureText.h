#pragma once

#include <cstddef>
#include <string_view>

namespace vynfixtures {

/// A text as an effect writes it into the host's buffer. An empty one writes nothing at all.
struct VSTFixtureText {
    char text[64] = "";
    int fill = 0; ///< above 0: so many 'x' in place of the text
    bool terminated = true;

    constexpr VSTFixtureText() = default;
    constexpr VSTFixtureText(std::string_view of) {
        for (std::size_t place = 0; place < of.size() && place + 1 < sizeof text; ++place)
            text[place] = of[place];
    }
    constexpr VSTFixtureText(char const* of) : VSTFixtureText(std::string_view(of)) {}

    /// `count` times 'x'.
    static constexpr VSTFixtureText Filled(int count, bool terminated) {
        VSTFixtureText filled;
        filled.fill = count;
        filled.terminated = terminated;
        return filled;
    }

    /// [any-thread]
    void WriteTo(char* buffer) const {
        std::string_view const of = text;
        int const count = fill > 0 ? fill : static_cast<int>(of.size());
        for (int place = 0; place < count; ++place)
            buffer[place] = fill > 0 ? 'x' : of[static_cast<std::size_t>(place)];
        if (terminated && count > 0)
            buffer[count] = '\0';
    }
};

} // namespace vynfixtures
