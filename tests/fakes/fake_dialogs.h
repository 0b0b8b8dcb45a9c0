#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/dialogs.h"

namespace orva {

/// Records every box and answers from a script: the next scripted answer, else the rule,
/// else Yes.
class FakeDialogs : public Dialogs {
 public:
  Answer show(const Message& message) override {
    messages.push_back(message);
    if (onShow) onShow(message);
    if (message.buttons == MessageButtons::kOk) return Answer::kOk;
    if (answers.empty()) return defaultAnswer;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::optional<std::string> openFile(const FileQuestion& question) override {
    fileQuestions.push_back(question);
    return file;
  }

  /// Texts of the boxes in order.
  std::vector<std::string> texts() const {
    std::vector<std::string> result;
    for (const Message& message : messages) result.push_back(message.text);
    return result;
  }
  /// Text of the last box; empty when none was shown.
  std::string lastText() const { return messages.empty() ? std::string() : messages.back().text; }

  std::vector<Message> messages;
  std::vector<FileQuestion> fileQuestions;
  /// Answers to the coming questions (boxes with one button take none).
  std::deque<Answer> answers;
  Answer defaultAnswer = Answer::kYes;
  /// What the user chooses in the file dialog; nothing cancels it.
  std::optional<std::string> file;
  /// Called for each box before it is answered.
  std::function<void(const Message&)> onShow;
};

}  // namespace orva
