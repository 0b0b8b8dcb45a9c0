#include "platform/odbc/answers.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orva::odbc {
namespace {

constexpr std::size_t kMostAnswers = 3000;

/// Whose answers are different each time.
constexpr std::string_view kNeverTheSame[] = {"GETDATE", "CURRENT_TIMESTAMP", "NEWID", "RAND"};

}  // namespace

std::string questionOf(const BoundText& text) {
  std::string question = text.sql;
  for (const Argument& argument : text.arguments) {
    question += '\0';
    question += static_cast<char>(argument.wire.type);
    question += argument.cell.value.toText();
  }
  return question;
}

bool Answers::serves(const Known& known) const {
  if (Clock::now() - known.at > kMostAge) return false;
  return std::ranges::none_of(changedAt_, [&](const auto& change) {
    return change.second > known.changes && std::ranges::find(known.names, change.first) != known.names.end();
  });
}

const Answer* Answers::find(const std::string& question) {
  const auto found = known_.find(question);
  if (found == known_.end()) return nullptr;
  if (serves(found->second)) return &found->second.answer;
  known_.erase(found);
  return nullptr;
}

void Answers::remember(const std::string& question, std::vector<std::string> names, Answer answer) {
  const auto isFleeting = [](const std::string& name) {
    return std::ranges::find(kNeverTheSame, name) != std::end(kNeverTheSame);
  };
  if (names.empty() || std::ranges::any_of(names, isFleeting)) return;
  if (known_.size() >= kMostAnswers) known_.clear();
  known_.insert_or_assign(question, Known{std::move(answer), std::move(names), Clock::now(), changes_});
}

void Answers::changed(const std::vector<std::string>& names) {
  ++changes_;
  for (const std::string& name : names) changedAt_[name] = changes_;
}

void Answers::forgetAll() {
  known_.clear();
  changedAt_.clear();
}

}  // namespace orva::odbc
