#pragma once

#include <QStringList>
#include <QWidget>
#include <string_view>

#include "platform/dialogs.h"

namespace orva {

/// Message boxes and the file-open dialog of the desktop, before the window that is active.
class QtDialogs : public Dialogs {
 public:
  Answer show(const Message& message) override;
  std::optional<std::string> openFile(const FileQuestion& question) override;
};

namespace qt {

/// "Excel(*.xls)|*.xls|All Files(*.*)|*.*" as the toolkit's list of filters. Patterns match
/// in either letter case; "*.*" takes every file.
QStringList fileFilters(std::string_view filter);

}  // namespace qt
}  // namespace orva
