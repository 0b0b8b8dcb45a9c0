#pragma once

#include <array>
#include <cstddef>
#include <utility>

#include "platform/controls.h"
#include "wizard/guidelines.h"
#include "wizard/wizard_page.h"

namespace orva {

/// The controls that every import wizard has, by page. The window binds widgets to them and a
/// batch command sets and reads them; only `ImportWizard` gives them meaning.
struct WizardControls {
  template <class ControlType>
  using OfPage = std::array<ControlType, kWizardPages>;

  // Every page. A button that a page has not is invisible.
  OfPage<Button> cmdBack = ofPage<Button>("cmdBack", "&Back");
  OfPage<Button> cmdNext = ofPage<Button>("cmdNext", "&Next");
  /// Of the results page "Continue..", of the finish page "Finish".
  OfPage<Button> cmdContinue = ofPage<Button>("cmdContinue", "Continue..");
  OfPage<Button> cmdHome = ofPage<Button>("cmdHome", "&Home");
  OfPage<Button> cmdClose = ofPage<Button>("cmdClose", "&Close");
  /// Version, kind of database.
  Label lblVersion{"lblVersion"};
  /// Second panel of the status line: the company's name.
  Label lblCompany{"lblCompany"};

  // Guidelines.
  Frame fmHome{"fmHome", "ORVA EXCEL IMPORT"};
  std::array<Label, kGuidelineLines.size()> lblRules =
      guidelineLabels(std::make_index_sequence<kGuidelineLines.size()>());
  Button cmdHBack{"cmdHBack", "Back"};
  Button cmdHNext{"cmdHNext", "Next"};
  Button cmdSkip{"cmdSkip", "Skip"};
  Button cmdHClose{"cmdHClose", "Close"};

  // Selection.
  Frame fmSelection{"fmSelection"};
  ListView lstFields{"lstFields"};
  Button cmdSelectAll{"cmdSelectAll", "Select &All"};
  Label lblBlue{"lblBlue", "Mandatory but not present in Excel"};
  Label lblRed{"lblRed", "Want to import but not in Excel"};
  Label lblExcel{"lblExcel", "Select the excel file"};
  TextBox txtExcel{"txtExcel"};
  Button cmdExcel{"cmdExcel", "..."};
  Button cmdRefresh{"cmdRefresh", "Refresh"};
  Button cmdExport{"cmdExport", "Export Fields"};

  // Results.
  Frame fmResults{"fmResults"};
  FlexGrid grid1{"grid1"};
  /// The labels without text carry the colour of the cells, the others say what it means.
  Label lblPink{"lblPink"};
  Label lblMsgPink{"lblMsgPink", "Value will not be accepted in ORVA and is an error"};
  Label lblYellow{"lblYellow"};
  Label lblMsgYellow{"lblMsgYellow", "Not an error but a warning. Value if blank will be given default value."};
  Label lblBlueColor{"lblBlueColor"};
  Label lblBlueMsg{"lblBlueMsg"};
  Label lblTotalRec{"lblTotalRec"};
  Label lblTotalErr{"lblTotalErr"};
  Label lblStatus{"lblStatus"};
  Label lblCurrentStatus{"lblCurrentStatus"};
  Label lblMsg2{"lblMsg2"};
  /// What the workbook adds up to.
  Label lblControlTotals{"lblControlTotals"};
  /// Message of the cell under the mouse.
  Label lblErrormsg{"lblErrormsg"};
  /// Masters that posting would make; both are hidden while there are none.
  Label lblUnknown{"lblUnknown", "Not in the masters of ORVA yet, made on posting"};
  ListBox lstUnknown{"lstUnknown"};
  ProgressBar ProgressBar1{"ProgressBar1"};
  Button CmdExp{"CmdExp", "Open Error File"};
  Button CmdSelErrors{"CmdSelErrors", "&Show only Errors"};

  // Finish.
  Frame fmFinish{"fmFinish"};
  FlexGrid flxSave{"flxSave"};
  TextBox txtMsg{"txtMsg"};

  Frame& pageFrame(WizardPage page);

 private:
  template <class ControlType>
  static OfPage<ControlType> ofPage(const char* name, const char* caption) {
    return {{ControlType(name, caption), ControlType(name, caption), ControlType(name, caption),
             ControlType(name, caption)}};
  }
  template <std::size_t... Line>
  static std::array<Label, sizeof...(Line)> guidelineLabels(std::index_sequence<Line...>) {
    return {{Label("lblRules", std::string(kGuidelineLines[Line].text))...}};
  }
};

}  // namespace orva
