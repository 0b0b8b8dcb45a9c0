#include "platform/qt/qt_shell.h"

#include <QDesktopServices>
#include <QUrl>

#include "platform/local/path_lookup.h"
#include "platform/qt/text.h"

namespace orva {

bool QtShell::open(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(qt::toQt(pathText(findPath(path)))));
}

}  // namespace orva
