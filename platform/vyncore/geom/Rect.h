#pragma once

namespace vyncore::geom {

/// A rectangle by its edges, as windows count: right and bottom lie just outside. Edges may stand in any order.
template <class T>
struct RectT {
    T left{};
    T top{};
    T right{};
    T bottom{};

    /// [any-thread]
    constexpr T Width() const { return right - left; }

    /// [any-thread]
    constexpr T Height() const { return bottom - top; }

    friend constexpr bool operator==(RectT const&, RectT const&) = default;
};

} // namespace vyncore::geom
