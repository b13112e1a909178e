// Which row of which section of a table.
// Both count from 0.
#pragma once

#include <compare>
#include <cstddef>

struct IndexPath {
    std::size_t section = 0;
    std::size_t row = 0;
    friend auto operator<=>(const IndexPath&, const IndexPath&) = default;
};
