#include "platform/odbc/answers.h"

#include <utility>

namespace orva::odbc {
namespace {

constexpr std::size_t kMostAnswers = 3000;
/// Look-ups of one row ask whether there is a second one; nearly none reads further.
constexpr std::size_t kMostRows = 4;

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

void Answers::end() {
  if (--scopes_ == 0) forgetAll();
}

const Answer* Answers::find(const std::string& question) const {
  const auto found = known_.find(question);
  return found == known_.end() ? nullptr : &found->second;
}

void Answers::remember(const std::string& question, Answer answer) {
  if (scopes_ == 0) return;
  if (known_.size() >= kMostAnswers) forgetAll();
  if (answer.rows.size() > kMostRows) {
    answer.rows.resize(1);
    answer.isComplete = false;
  }
  known_.insert_or_assign(question, std::move(answer));
}

}  // namespace orva::odbc
