#pragma once

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "wizard/query.h"

namespace orva {

/// Values of a query's placeholders, given where the query is run.
class NamedValues : public QueryArguments {
 public:
  NamedValues(std::initializer_list<std::pair<std::string_view, Value>> values) : values_(values) {}

  std::string textArgument(std::string_view name) const override { return nullToText(find(name)); }
  std::optional<Date> dateArgument(std::string_view name) const override { return find(name).toDate(); }

 private:
  const Value& find(std::string_view name) const {
    static const Value kNone;
    const auto found = std::find_if(values_.begin(), values_.end(), [name](const auto& v) { return v.first == name; });
    return found == values_.end() ? kNone : found->second;
  }

  std::vector<std::pair<std::string_view, Value>> values_;
};

}  // namespace orva
