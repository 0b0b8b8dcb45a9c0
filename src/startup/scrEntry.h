#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/services.h"

namespace orva {

struct CompanyContext;

/// Where the start screen leads; wired by the program.
struct EntryExits {
  std::function<void()> showTransactionImport;
  std::function<void()> showMasterImport;
  std::function<void()> endProgram;
};

/// The text after "/F" of a command line; empty when there is none.
std::string commandLineCompany(std::string_view commandLine);

/// The start screen: lists the companies of the data folder or server, makes and deletes
/// Access companies, and opens one for an import. Every failure ends in a message box; no
/// handler throws.
class scrEntry {
 public:
  static constexpr std::string_view kCaption = "Login";
  static constexpr int kEnterKey = 13;
  static constexpr int kTabKey = 9;

  /// `context.programFolder` and `context.commandLineCompany` are set by the caller.
  scrEntry(const Services& services, CompanyContext& context, EntryExits exits);

  /// Start-up: reads both configuration files and lists the companies.
  void Load();
  /// The screen became active: the first time, opens the company of the command line.
  void Activate();

  void lstCompanies_Click();
  void lstCompanies_KeyPress(int key);
  void cmbCocode_KeyPress(int key);
  /// "&Open", or "&Cancel" while a new code is entered.
  void cmdOpen_Click();
  /// "&New", or "Sa&ve" while a new code is entered.
  void cmdNew_Click();
  void cmdDelete_Click();
  void cmdExit_Click();

  Label Label1{"Label1", "Select Company"};
  ListBox lstCompanies{"lstCompanies"};
  Label lblcode{"lblcode", "Enter the company Code"};
  TextBox cmbCocode{"cmbCocode"};
  Frame fraType{"fraType"};
  OptionButton optTransaction{"optTransaction", "Transaction"};
  OptionButton optMaster{"optMaster", "Master"};
  Button cmdOpen{"cmdOpen", "&Open"};
  Button cmdNew{"cmdNew", "&New"};
  Button cmdDelete{"cmdDelete", "&Delete"};
  Button cmdExit{"cmdExit", "E&xit"};
  Label lblDataBasePath{"lblDataBasePath"};
  /// A password is asked nowhere: the frame stays hidden.
  Frame fmPwd{"fmPwd", "Password"};
  TextBox txtPassword{"txtPassword"};

 private:
  bool isEntering() const;
  void showEntryMode(bool entering);
  void setUsable(bool usable);
  bool readConfiguration();
  void readProviderClause();
  void fillList();
  void selectFirstCompany();
  std::string commandLineCode() const;
  void open();
  bool isNewCodeAccepted(const std::string& code);
  void createCompany(const std::string& code);
  void tell(std::string_view text, MessageIcon icon = MessageIcon::kNone);
  bool confirms(const std::string& question);
  /// The one trap: a failure inside `action` is shown.
  bool guarded(const std::function<void()>& action);

  const Services& services_;
  CompanyContext& context_;
  EntryExits exits_;
  bool commandLineOpened_ = false;
};

}  // namespace orva
