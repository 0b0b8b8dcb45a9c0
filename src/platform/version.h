#pragma once

namespace orva {

/// Version of the program, as the status line shows it.
inline constexpr int kVersionMajor = 1;
inline constexpr int kVersionMinor = 0;
inline constexpr int kVersionRevision = 0;

}  // namespace orva
