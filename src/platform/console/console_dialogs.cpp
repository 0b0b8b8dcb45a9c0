#include "platform/console/console_dialogs.h"

namespace orva {

Answer ConsoleDialogs::show(const Message& message) {
  if (message.icon == MessageIcon::kCritical) ++criticalCount_;
  output_ << '[' << message.title << "] " << message.text;
  if (message.buttons == MessageButtons::kOk) {
    output_ << std::endl;
    return Answer::kOk;
  }
  const bool yes = rule_ && rule_(message) == Answer::kYes;
  output_ << (yes ? " [Yes]" : " [No]") << std::endl;
  return yes ? Answer::kYes : Answer::kNo;
}

std::optional<std::string> ConsoleDialogs::openFile(const FileQuestion&) { return file_; }

}  // namespace orva
