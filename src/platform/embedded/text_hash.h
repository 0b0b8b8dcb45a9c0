#pragma once

#include <cstddef>
#include <string_view>

namespace orva::embedded {

/// A fast hash of long texts, statements above all, for tables that are searched by a view.
struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const;
};

}  // namespace orva::embedded
