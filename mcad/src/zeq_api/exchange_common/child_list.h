// How classes fill their lists of held children. Internal.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "mv_cvx/logger.h"

namespace zeq::detail {

/// Appends a child; null is refused with that warning.
template <class T>
void appendChild(std::vector<std::shared_ptr<T>>& list, std::shared_ptr<T> child, const char* warning) {
    if (child)
        list.push_back(std::move(child));
    else
        ZEQ_LOG(Warning) << warning;
}

/// Appends each of the children, which may be the list itself.
template <class T>
void appendEach(std::vector<std::shared_ptr<T>>& list, const std::vector<std::shared_ptr<T>>& children,
                const char* warning) {
    const std::size_t count = children.size();
    list.reserve(list.size() + count);
    for (std::size_t i = 0; i < count; ++i) appendChild(list, children[i], warning);
}

/// Makes the children, which may be the list itself, the only ones.
template <class T>
void setChildren(std::vector<std::shared_ptr<T>>& list, const std::vector<std::shared_ptr<T>>& children,
                 const char* warning) {
    std::vector<std::shared_ptr<T>> set;
    appendEach(set, children, warning);
    list.swap(set);
}

} // namespace zeq::detail
