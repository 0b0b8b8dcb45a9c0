#include "wizard/progress.h"

#include <string>

namespace orva {

void RunProgress::begin(std::string_view message, int maximum) {
  parts_.message.setCaption(message);
  parts_.bar.setMaximum(maximum);
  parts_.bar.setValue(0);
  parts_.bar.setVisible(true);
  parts_.eventLoop.yield();
}

void RunProgress::cell(std::string_view prefix, int row, std::string_view heading) {
  if (!parts_.eventLoop.repaintDue()) return;
  std::string text(prefix);
  text += std::to_string(row);
  text += "   Col. Name  :   ";
  text += heading;
  parts_.current.setCaption(text);
}

void RunProgress::rowDone(int row) {
  if (parts_.eventLoop.repaintDue()) parts_.bar.setValue(row);
  parts_.eventLoop.yield();
}

void RunProgress::finish(std::string_view message) {
  parts_.message.setCaption(message);
  parts_.bar.setValue(0);
  parts_.bar.setVisible(false);
  parts_.eventLoop.yield();
}

}  // namespace orva
