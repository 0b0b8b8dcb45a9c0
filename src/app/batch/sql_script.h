#pragma once

#include <functional>
#include <string_view>

namespace orva {

/// Calls `run` for each statement of a script, in order. Statements end at a ";" outside
/// quotes ('...', "...", [...]); the last one needs none. Lines that start with "--" are
/// remarks. Stops when `run` returns false; returns whether all went through.
bool forEachStatement(std::string_view script, const std::function<bool(std::string_view statement)>& run);

/// A statement that gives rows, by its first word.
bool givesRows(std::string_view statement);

}  // namespace orva
