#include "platform/embedded/answers.h"

#include <utility>

namespace orva::embedded {
namespace {

constexpr std::size_t kMostAnswers = 4096;

}  // namespace

std::shared_ptr<const Answer> Answers::find(std::string_view text, std::size_t criterionAt, bool firstOnly) {
  const auto found = answers_.find(text);
  if (found == answers_.end()) return nullptr;
  const Answer& answer = *found->second;
  if (answer.criterionAt != criterionAt || (answer.firstOnly && !firstOnly) || !answer.isGood()) return nullptr;
  answer.prepared->noteAnswerUsed();
  return found->second;
}

void Answers::keep(std::string_view text, Answer answer) {
  auto kept = std::make_shared<const Answer>(std::move(answer));
  if (const auto found = answers_.find(text); found != answers_.end()) {
    found->second = std::move(kept);
    return;
  }
  if (answers_.size() >= kMostAnswers) answers_.clear();
  answers_.emplace(text, std::move(kept));
}

}  // namespace orva::embedded
