#include "platform/qt/look.h"

#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace orva::qt {
namespace {

constexpr const char* kStyleSheet = R"(
QPushButton { background: #ffffff; border: 1px solid #b4bec9; border-radius: 4px; padding: 5px 14px; min-height: 18px; }
QPushButton:hover { background: #eef4fa; border-color: #2b6199; }
QPushButton:pressed { background: #d9e6f2; }
QPushButton:focus { border: 2px solid #2b6199; padding: 4px 13px; }
QPushButton:disabled { background: #eceff2; color: #8b95a1; border-color: #d3d9e0; }
QPushButton[primary="true"] { background: #2b6199; color: #ffffff; border-color: #2b6199; }
QPushButton[primary="true"]:hover { background: #23527f; }
QPushButton[primary="true"]:focus { border: 2px solid #12314f; }
QPushButton[primary="true"]:disabled { background: #cfd8e1; color: #6f7b87; border-color: #cfd8e1; }
QGroupBox { border: 1px solid #d3d9e0; border-radius: 5px; margin-top: 9px; padding-top: 6px; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 9px; padding: 0 4px; color: #2b6199; }
QLineEdit { border: 1px solid #b4bec9; border-radius: 4px; padding: 4px 6px; background: #ffffff; }
QLineEdit:focus { border: 2px solid #2b6199; padding: 3px 5px; }
QListWidget, QTreeView, QTableView { border: 1px solid #b4bec9; background: #ffffff; }
QListWidget:focus, QTreeView:focus, QTableView:focus { border: 1px solid #2b6199; }
QListWidget::item { padding: 5px 8px; }
QListWidget#lstUnknown::item { padding: 1px 6px; }
QTreeView::item { min-height: 21px; }
QTableView { gridline-color: #dfe4ea; }
QHeaderView::section { background: #e8edf2; border: none; border-right: 1px solid #d3d9e0;
                       border-bottom: 1px solid #b4bec9; padding: 5px 7px; }
QTableCornerButton::section { background: #e8edf2; border: none; }
QProgressBar { border: 1px solid #b4bec9; border-radius: 4px; background: #ffffff; text-align: center;
               min-height: 16px; max-height: 16px; }
QProgressBar::chunk { background: #8fb6db; border-radius: 3px; }
QToolTip { background: #fffdf3; color: #1f2933; border: 1px solid #b4bec9; padding: 3px; }
)";

struct PaletteRow {
  QPalette::ColorRole role = QPalette::Window;
  const char* colour = nullptr;
};

constexpr PaletteRow kPalette[] = {
    {.role = QPalette::Window, .colour = "#f5f7f9"},
    {.role = QPalette::WindowText, .colour = "#1f2933"},
    {.role = QPalette::Base, .colour = "#ffffff"},
    {.role = QPalette::AlternateBase, .colour = "#f5f7f9"},
    {.role = QPalette::Text, .colour = "#1f2933"},
    {.role = QPalette::Button, .colour = "#f5f7f9"},
    {.role = QPalette::ButtonText, .colour = "#1f2933"},
    {.role = QPalette::Highlight, .colour = "#2b6199"},
    {.role = QPalette::HighlightedText, .colour = "#ffffff"},
    {.role = QPalette::PlaceholderText, .colour = "#6f7b87"},
};

}  // namespace

void applyLook(QApplication& application) {
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QPalette palette;
  for (const PaletteRow& row : kPalette) palette.setColor(row.role, QColor(row.colour));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor("#8b95a1"));
  }
  QApplication::setPalette(palette);
  application.setStyleSheet(kStyleSheet);
}

void makePrimary(QPushButton* button, bool primary) {
  button->setProperty("primary", primary);
  // The style reads the property only when it is asked to look again.
  button->style()->unpolish(button);
  button->style()->polish(button);
}

}  // namespace orva::qt
