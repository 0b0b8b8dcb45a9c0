#include <QHBoxLayout>
#include <QPushButton>

#include "app/windows/wizard_pages.h"
#include "platform/qt/bind.h"
#include "platform/qt/look.h"

namespace orva {
namespace {

QHBoxLayout* buttonRow(QWidget* panel) {
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  return row;
}

}  // namespace

QWidget* WizardPages::guidelineButtons() const {
  struct Row {
    Button* button = nullptr;
    void (ImportWizard::*handler)() = nullptr;
  };
  const Row rows[] = {{.button = &screen.cmdHBack, .handler = &ImportWizard::cmdHBack_Click},
                      {.button = &screen.cmdHNext, .handler = &ImportWizard::cmdHNext_Click},
                      {.button = &screen.cmdSkip, .handler = &ImportWizard::cmdSkip_Click},
                      {.button = &screen.cmdHClose, .handler = &ImportWizard::cmdHClose_Click}};
  auto* panel = new QWidget;
  auto* row = buttonRow(panel);
  row->addStretch(1);
  for (const Row& item : rows) {
    auto* button = new QPushButton;
    row->addWidget(button);
    if (item.button == &screen.cmdHNext) {
      qt::makePrimary(button);
      panel->setFocusProxy(button);
    }
    bind(refresh, *item.button, button, [&form = screen, handler = item.handler] { (form.*handler)(); });
  }
  return panel;
}

/// Home and Back at the left, what the page offers and where it leads at the right.
QWidget* WizardPages::buttons(WizardPage page) const {
  struct Row {
    Button* button = nullptr;
    void (*handler)(ImportWizard&, WizardPage) = nullptr;
  };
  const std::size_t at = indexOf(page);
  const Row rows[] = {
      {.button = &screen.cmdHome[at], .handler = [](ImportWizard& form, WizardPage) { form.cmdHome_Click(); }},
      {.button = &screen.cmdBack[at], .handler = [](ImportWizard& form, WizardPage here) { form.cmdBack_Click(here); }},
      {.button = &screen.CmdSelErrors, .handler = [](ImportWizard& form, WizardPage) { form.CmdSelErrors_Click(); }},
      {.button = &screen.CmdExp, .handler = [](ImportWizard& form, WizardPage) { form.CmdExp_Click(); }},
      {.button = &screen.cmdContinue[at],
       .handler = [](ImportWizard& form, WizardPage here) { form.cmdContinue_Click(here); }},
      {.button = &screen.cmdNext[at], .handler = [](ImportWizard& form, WizardPage here) { form.cmdNext_Click(here); }},
      {.button = &screen.cmdClose[at], .handler = [](ImportWizard& form, WizardPage) { form.cmdClose_Click(); }}};
  const Button* carriesOn = page == WizardPage::kFinish ? &screen.cmdContinue[at] : &screen.cmdNext[at];
  auto* panel = new QWidget;
  auto* row = buttonRow(panel);
  for (const Row& item : rows) {
    const bool isOfResults = item.button == &screen.CmdSelErrors || item.button == &screen.CmdExp;
    if (isOfResults && page != WizardPage::kResults) continue;
    auto* button = new QPushButton;
    row->addWidget(button);
    bind(refresh, *item.button, button, [&form = screen, page, handler = item.handler] { handler(form, page); });
    if (item.button == &screen.cmdBack[at]) row->addStretch(1);
    if (item.button == carriesOn) qt::makePrimary(button);
  }
  return panel;
}

}  // namespace orva
