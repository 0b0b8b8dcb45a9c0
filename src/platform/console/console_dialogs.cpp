#include "platform/console/console_dialogs.h"

#include <algorithm>

namespace orva {

Answer ConsoleDialogs::show(const Message& message) {
  if (message.icon == MessageIcon::kCritical) ++criticalCount_;
  const bool asks = message.buttons != MessageButtons::kOk;
  const bool yes = asks && rule_ && rule_(message) == Answer::kYes;
  print('[' + message.title + "] " + message.text + (yes ? " [Yes]" : asks ? " [No]" : ""));
  if (!asks) return Answer::kOk;
  return yes ? Answer::kYes : Answer::kNo;
}

void ConsoleDialogs::print(const std::string& line) {
  if (holding_) {
    held_.push_back(line);
  } else {
    output_ << line << std::endl;
  }
}

void ConsoleDialogs::resume(std::size_t count) {
  holding_ = false;
  held_.resize(std::min(count, held_.size()));
  for (const std::string& line : std::exchange(held_, {})) print(line);
}

std::optional<std::string> ConsoleDialogs::openFile(const FileQuestion&) { return file_; }

}  // namespace orva
