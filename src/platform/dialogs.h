#pragma once

#include <optional>
#include <string>

namespace orva {

enum class MessageIcon { kNone, kInformation, kQuestion, kCritical };
enum class MessageButtons { kOk, kYesNo };
enum class Answer { kOk, kYes, kNo };

struct Message {
  std::string text;
  std::string title;
  MessageIcon icon = MessageIcon::kNone;
  MessageButtons buttons = MessageButtons::kOk;
};

struct FileQuestion {
  std::string title;
  std::string defaultPattern;
  /// Pairs of description and pattern joined with "|".
  std::string filter;
};

/// Message boxes and the file-open dialog. Neither call throws; both return
/// when the user has answered.
class Dialogs {
 public:
  Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;
  virtual ~Dialogs() = default;

  /// `kOk` for a box with one button, else the answer (closing the box is No).
  virtual Answer show(const Message& message) = 0;
  /// The chosen path; nothing when the user cancelled.
  virtual std::optional<std::string> openFile(const FileQuestion& question) = 0;
};

}  // namespace orva
