#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "platform/dialogs.h"

namespace orva {

/// Message boxes of an unattended run: each is printed as "[title] text", a question with
/// the answer that was taken behind it.
class ConsoleDialogs : public Dialogs {
 public:
  using AnswerRule = std::function<Answer(const Message&)>;

  /// `output` must outlive the dialogs.
  explicit ConsoleDialogs(std::ostream& output) : output_(output) {}

  Answer show(const Message& message) override;
  /// The path given with `setFile`; a run without one cancels.
  std::optional<std::string> openFile(const FileQuestion& question) override;

  /// How questions are answered; No until a rule is set.
  void setAnswerRule(AnswerRule rule) { rule_ = std::move(rule); }
  void setFile(std::string path) { file_ = std::move(path); }
  /// Boxes shown so far with the critical icon.
  int criticalCount() const { return criticalCount_; }

 private:
  std::ostream& output_;
  AnswerRule rule_;
  std::optional<std::string> file_;
  int criticalCount_ = 0;
};

}  // namespace orva
