#include "app/windows/wizard_pages.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QTableView>
#include <QVBoxLayout>

#include "platform/qt/bind.h"
#include "platform/qt/look.h"
#include "platform/qt/text.h"

namespace orva {
namespace {

constexpr const char* kFaultColour = "#9b1c1c";

bool isNumeric(const Catalogue& catalogue, std::string_view heading) {
  const FieldRow* field = findField(catalogue, heading);
  return field != nullptr && (field->type == "Currency" || field->type == "NUMBER");
}

void enlarge(QLabel* label, double factor, QFont::Weight weight = QFont::Normal) {
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setWeight(weight);
  label->setFont(font);
}

/// The first line of a section is its title.
bool isSectionTitle(std::size_t line) {
  return kGuidelineLines[line].section != 0 && kGuidelineLines[line].section != kGuidelineLines[line - 1].section;
}

QLabel* guidelineLabel(std::size_t line) {
  auto* label = new QLabel;
  enlarge(label, 1.1);
  if (kGuidelineLines[line].section == 0) enlarge(label, 1.15, QFont::Bold);
  if (isSectionTitle(line)) {
    enlarge(label, 1.0, QFont::Bold);
    label->setContentsMargins(0, 14, 0, 4);
  }
  return label;
}

}  // namespace

QWidget* WizardPages::guidelines() const {
  auto* text = new QWidget;
  auto* lines = new QVBoxLayout(text);
  lines->setContentsMargins(24, 18, 24, 18);
  lines->setSpacing(10);
  text->setBackgroundRole(QPalette::Base);
  text->setAutoFillBackground(true);
  auto* heading = new QLabel(qt::toQt(screen.fmHome.caption()));
  enlarge(heading, 1.6, QFont::Bold);
  lines->addWidget(heading);
  for (std::size_t line = 0; line < screen.lblRules.size(); ++line) {
    QLabel* label = guidelineLabel(line);
    lines->addWidget(label);
    bind(refresh, screen.lblRules[line], label);
  }
  lines->addStretch(1);
  auto* scroll = new QScrollArea;
  scroll->setWidget(text);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  return scroll;
}

QWidget* WizardPages::results() const {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  auto* grid = new QTableView;
  auto* message = new QLabel;
  message->setWordWrap(true);
  message->setMinimumHeight(message->fontMetrics().height() * 2);
  message->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  QPalette palette = message->palette();
  palette.setColor(QPalette::WindowText, QColor(kFaultColour));
  message->setPalette(palette);
  auto* counted = new QVBoxLayout;
  counted->setSpacing(8);
  // The count of warnings follows in the status line below.
  counted->addStretch(1);
  counted->addWidget(legend());
  counted->addWidget(totals());
  auto* below = new QHBoxLayout;
  below->setSpacing(24);
  below->addLayout(counted);
  below->addWidget(unknownMasters(), 1);
  column->addWidget(grid, 1);
  column->addWidget(message);
  auto* controlTotals = new QLabel;
  controlTotals->setWordWrap(true);
  column->addWidget(controlTotals);
  column->addLayout(below);
  bind(refresh, screen.grid1, grid,
       {.pointed = [&form = screen](int row, int cell) { form.grid1_MouseMove(row, cell); },
        .cellToolTip = [&form = screen](int row, int cell) { return form.findingTextAt(row, cell); },
        .isNumeric = [&form = screen](std::string_view heading) { return isNumeric(form.catalogue(), heading); }});
  bind(refresh, screen.lblErrormsg, message);
  bind(refresh, screen.lblControlTotals, controlTotals);
  page->setFocusProxy(grid);
  return page;
}

QWidget* WizardPages::legend() const {
  struct Row {
    Label* colour = nullptr;
    Label* meaning = nullptr;
  };
  const Row rows[] = {{.colour = &screen.lblPink, .meaning = &screen.lblMsgPink},
                      {.colour = &screen.lblYellow, .meaning = &screen.lblMsgYellow},
                      {.colour = &screen.lblBlueColor, .meaning = &screen.lblBlueMsg}};
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  for (const Row& row : rows) {
    auto* line = new QHBoxLayout;
    auto* swatch = new QLabel;
    swatch->setFixedSize(26, 16);
    swatch->setFrameShape(QFrame::Box);
    auto* meaning = new QLabel;
    line->addWidget(swatch, 0, Qt::AlignVCenter);
    line->addWidget(meaning, 1);
    column->addLayout(line);
    bind(refresh, *row.colour, swatch);
    bind(refresh, *row.meaning, meaning);
  }
  return panel;
}

/// Masters that posting would make; the user sees here that a name is misspelt.
QWidget* WizardPages::unknownMasters() const {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(3);
  auto* label = new QLabel;
  auto* list = new QListWidget;
  // Nothing is cut: long names scroll, and a long list is laid out piece by piece.
  list->setTextElideMode(Qt::ElideNone);
  list->setLayoutMode(QListView::Batched);
  list->setMaximumHeight(list->fontMetrics().height() * 6);
  list->setMinimumHeight(list->fontMetrics().height() * 4);
  label->setBuddy(list);
  column->addWidget(label);
  column->addWidget(list, 1);
  bind(refresh, screen.lblUnknown, label);
  bind(refresh, screen.lstUnknown, list, {});
  return panel;
}

QWidget* WizardPages::totals() const {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  for (Label* total : {&screen.lblTotalRec, &screen.lblTotalErr}) {
    auto* label = new QLabel;
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    column->addWidget(label);
    bind(refresh, *total, label);
  }
  return panel;
}

QWidget* WizardPages::finish() const {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  auto* message = new QLabel;
  message->setWordWrap(true);
  enlarge(message, 1.15, QFont::Bold);
  auto* grid = new QTableView;
  column->addWidget(message);
  column->addWidget(grid, 1);
  // Keeps the message at the top when the grid is hidden.
  column->addItem(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding));
  bind(refresh, screen.txtMsg, message);
  bind(refresh, screen.flxSave, grid,
       {.isNumeric = [&form = screen](std::string_view heading) { return isNumeric(form.catalogue(), heading); }});
  page->setFocusProxy(grid);
  return page;
}

}  // namespace orva
