#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

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

  /// From here on boxes are answered but kept back.
  void hold() { holding_ = true; }
  std::size_t heldCount() const { return held_.size(); }
  /// Prints the first `count` of the boxes kept back, drops the others, and goes on printing.
  void resume(std::size_t count);
  /// How questions are answered; No until a rule is set.
  void setAnswerRule(AnswerRule rule) { rule_ = std::move(rule); }
  void setFile(std::string path) { file_ = std::move(path); }
  /// Boxes so far with the critical icon.
  int criticalCount() const { return criticalCount_; }

 private:
  void print(const std::string& line);

  std::ostream& output_;
  bool holding_ = false;
  std::vector<std::string> held_;
  AnswerRule rule_;
  std::optional<std::string> file_;
  int criticalCount_ = 0;
};

}  // namespace orva
