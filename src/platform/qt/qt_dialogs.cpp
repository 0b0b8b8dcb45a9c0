#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

#include "platform/qt/text.h"

namespace orva {
namespace {

constexpr const char* kProgramTitle = "ORVA Import";

QMessageBox::Icon iconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kCritical:
      return QMessageBox::Critical;
    case MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

QString titleOr(const std::string& title) { return title.empty() ? QString(kProgramTitle) : qt::toQt(title); }

/// "*.xls" as a pattern for both letter cases on systems that tell them apart.
QString inEitherCase(const QString& pattern) {
  if (pattern == "*.*") return "*";
  const QString upper = pattern.toUpper();
  return upper == pattern ? pattern : pattern + ' ' + upper;
}

}  // namespace

QStringList qt::fileFilters(std::string_view filter) {
  const QStringList parts = toQt(filter).split('|');
  QStringList filters;
  for (qsizetype index = 0; index + 1 < parts.size(); index += 2) {
    const QString description = parts[index].section('(', 0, 0).trimmed();
    filters << description + " (" + inEitherCase(parts[index + 1]) + ')';
  }
  return filters;
}

Answer QtDialogs::show(const Message& message) {
  QMessageBox box(iconOf(message.icon), titleOr(message.title), {}, QMessageBox::NoButton,
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.setText(qt::toQt(message.text));
  if (message.buttons == MessageButtons::kOk) {
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return Answer::kOk;
  }
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  box.setDefaultButton(QMessageBox::Yes);
  return box.exec() == QMessageBox::Yes ? Answer::kYes : Answer::kNo;
}

std::optional<std::string> QtDialogs::openFile(const FileQuestion& question) {
  QFileDialog dialog(QApplication::activeWindow(), titleOr(question.title));
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters(qt::fileFilters(question.filter));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return qt::fromQt(dialog.selectedFiles().first());
}

}  // namespace orva
