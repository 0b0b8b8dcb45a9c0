#include "startup/scrEntry.h"

#include <exception>
#include <utility>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/values/text.h"
#include "startup/company_context.h"
#include "startup/company_listing.h"
#include "startup/company_maintenance.h"
#include "startup/opening.h"
#include "startup/orva_ini.h"
#include "startup/shared_error_report.h"

namespace orva {

std::string commandLineCompany(std::string_view commandLine) {
  const std::size_t mark = toUpper(commandLine).find("/F");
  return mark == std::string::npos ? std::string() : std::string(trim(commandLine.substr(mark + 2)));
}

scrEntry::scrEntry(const Services& services, CompanyContext& context, EntryExits exits)
    : services_(services), context_(context), exits_(std::move(exits)) {
  fmPwd.setVisible(false);
  txtPassword.setVisible(false);
  showEntryMode(false);
}

// Start-up.

void scrEntry::Load() {
  context_.connection.reset();
  setUsable(false);
  lstCompanies.clear();
  cmbCocode.setText(commandLineCode());
  bool configured = false;
  if (!guarded([&] { configured = readConfiguration(); }) || !configured) return;
  fillList();
  context_.systemDatabase = context_.isSqlServer ? "ORVA" : joinPath(context_.dataFolder, "Orva.mdb");
  context_.databaseReference = context_.systemDatabase;
  lblDataBasePath.setCaption("Current DataBase Path : " + context_.dataFolder);
  setUsable(true);
  selectFirstCompany();
  optTransaction.setValue(true);
  optMaster.setValue(false);
}

void scrEntry::Activate() {
  const std::string code = commandLineCode();
  if (code.empty() || commandLineOpened_ || !cmdOpen.enabled()) return;
  commandLineOpened_ = true;
  lstCompanies.setText(code);
  lstCompanies_Click();
  if (lstCompanies.selected() < 0) cmbCocode.setText(code);
  open();
}

/// False when there is no `Orva.ini`, and so nothing to start from.
bool scrEntry::readConfiguration() {
  const std::string iniPath = joinPath(context_.programFolder, "Orva.ini");
  if (!services_.files.exists(iniPath)) {
    tell("Please check if the Import is in same folder as Orva\n Or if Orva is installed properly");
    return false;
  }
  readProviderClause();
  const OrvaIni ini = readOrvaIni(services_.files, iniPath);
  context_.isSqlServer = ini.isSqlServer;
  context_.dataFolder = ini.dataFolder;
  context_.server = ini.server;
  context_.authenticationKind = ini.authenticationKind;
  context_.userId = ini.userId;
  context_.password = ini.password;
  return true;
}

void scrEntry::readProviderClause() {
  const std::string path = joinPath(context_.programFolder, "SqlProviderConnection.ini");
  if (services_.files.exists(path)) {
    context_.providerClause = orva::readProviderClause(services_.files, path);
    return;
  }
  services_.dialogs.show(
      {.text = "File [SqlProviderConnection.ini] not found !", .title = "Orva", .icon = MessageIcon::kCritical});
}

void scrEntry::fillList() {
  guarded([&] { listCompanies(context_, services_, [&](const std::string& code) { lstCompanies.add(code); }); });
}

/// Without a configuration the screen is good for Exit only, and while companies are listed
/// (which yields to the message loop) nothing may start another run over the list.
void scrEntry::setUsable(bool usable) {
  lstCompanies.setEnabled(usable);
  cmdOpen.setEnabled(usable);
  // A server's catalogs are not made by copying a file.
  cmdNew.setEnabled(usable && !context_.isSqlServer);
  cmdDelete.setEnabled(usable && !context_.isSqlServer);
}

void scrEntry::selectFirstCompany() {
  if (lstCompanies.count() == 0) return;
  lstCompanies.select(0);
  lstCompanies_Click();
}

std::string scrEntry::commandLineCode() const {
  return std::string(trim(replaceAll(toUpper(context_.commandLineCompany), "ORVA", "")));
}

// The list and the code box.

void scrEntry::lstCompanies_Click() {
  if (!isEntering()) cmbCocode.setText(lstCompanies.text());
}

void scrEntry::lstCompanies_KeyPress(int key) {
  if (key != kEnterKey || isEntering()) return;
  lstCompanies_Click();
  open();
}

void scrEntry::cmbCocode_KeyPress(int key) {
  if (key != kEnterKey && key != kTabKey) return;
  if (isEntering()) {
    cmdNew.setFocus();
  } else {
    cmdOpen.setFocus();
  }
}

// The buttons.

void scrEntry::cmdOpen_Click() {
  if (!isEntering()) return open();
  showEntryMode(false);
  cmbCocode.setText(lstCompanies.text());
  lstCompanies.setFocus();
}

void scrEntry::open() {
  if (trim(cmbCocode.text()).empty()) return tell("Please Select the Company");
  if (openCompany(context_, services_, cmbCocode.text()) != OpenResult::kOpened) return;
  const auto& show = optTransaction.value() ? exits_.showTransactionImport : exits_.showMasterImport;
  if (show) guarded(show);
}

void scrEntry::cmdNew_Click() {
  if (!isEntering()) {
    showEntryMode(true);
    cmbCocode.setText("");
    cmbCocode.setFocus();
    return;
  }
  const std::string code(trim(cmbCocode.text()));
  if (isNewCodeAccepted(code)) createCompany(code);
}

bool scrEntry::isNewCodeAccepted(const std::string& code) {
  const NewCodeFault fault = checkNewCode(services_.files, context_.programFolder, code);
  if (!fault.text.empty()) tell(fault.text, fault.icon);
  return fault.text.empty();
}

void scrEntry::createCompany(const std::string& code) {
  showEntryMode(false);
  context_.connection.reset();
  if (guarded([&] { orva::createCompany(services_, context_.programFolder, code); })) {
    tell("Company created Successfully", MessageIcon::kInformation);
  }
  Load();
}

void scrEntry::cmdDelete_Click() {
  const std::string code = lstCompanies.text();
  if (code.empty()) return tell("Please select any company from the list for Delete", MessageIcon::kInformation);
  const std::string path = companyFile(context_.programFolder, trim(code));
  if (!services_.files.exists(path)) return tell("Company Does not Exist");
  if (!confirms("Do you want to delete " + code)) return;
  if (!confirms("Are you sure you want to delete " + code)) return;
  context_.connection.reset();
  guarded([&] { deleteCompanyFile(services_, path); });
  Load();
}

void scrEntry::cmdExit_Click() {
  if (exits_.endProgram) exits_.endProgram();
}

// Entry mode and messages.

bool scrEntry::isEntering() const { return cmdNew.caption() == "Sa&ve"; }

void scrEntry::showEntryMode(bool entering) {
  cmdNew.setCaption(entering ? "Sa&ve" : "&New");
  cmdOpen.setCaption(entering ? "&Cancel" : "&Open");
  cmdExit.setEnabled(!entering);
  cmdDelete.setEnabled(!entering);
  cmbCocode.setVisible(entering);
  lblcode.setVisible(entering);
}

void scrEntry::tell(std::string_view text, MessageIcon icon) {
  services_.dialogs.show({.text = std::string(text), .title = "ORVA", .icon = icon});
}

bool scrEntry::confirms(const std::string& question) {
  return services_.dialogs.show(
             {.text = question, .title = "ORVA", .icon = MessageIcon::kQuestion, .buttons = MessageButtons::kYesNo}) ==
         Answer::kYes;
}

bool scrEntry::guarded(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (const std::exception& error) {
    reportError(services_.dialogs, error);
    return false;
  }
}

}  // namespace orva
