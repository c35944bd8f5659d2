#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace Platform {

/// The value that this share of @p values, which must not be empty, are below.
template <typename T>
T quantileOf(std::vector<T> values, double share)
{
    const auto place = values.begin() + std::ptrdiff_t(share * double(values.size()));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

template <typename T>
T medianOf(std::vector<T> values)
{
    return quantileOf(std::move(values), 0.5);
}

} // namespace Platform
