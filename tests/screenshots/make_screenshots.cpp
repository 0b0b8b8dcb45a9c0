// Takes the pictures of docs/images: the real windows over a real program folder, driven
// through the same handlers as a user's clicks.
// Arguments: program folder, company code, workbook with mistakes, good workbook, folder for the pictures.

#include <QApplication>
#include <QElapsedTimer>
#include <QTableView>
#include <iostream>

#include "app/windows/entry_window.h"
#include "app/windows/import_window.h"
#include "app/wiring.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_dialogs.h"
#include "platform/qt/look.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/text.h"

namespace orva {
namespace {

class Photographer {
 public:
  explicit Photographer(QString folder) : folder_(std::move(folder)) {}

  void take(QWidget& window, const QString& name) {
    // Two rounds: the first shows what changed, the second paints what the first laid out.
    for (int round = 0; round < 2; ++round) QCoreApplication::processEvents();
    if (!window.grab().save(folder_ + '/' + name + ".png"))
      throw std::runtime_error("cannot write " + name.toStdString());
  }

 private:
  QString folder_;
};

struct Job {
  std::string programFolder;
  std::string company;
  std::string badWorkbook;
  std::string goodWorkbook;
  QString pictures;
};

void photographWizard(frmImport& screen, const Job& job, QSize size, Photographer& photographer) {
  ImportWindow window(screen);
  if (size.isValid()) window.resize(size);
  window.show();
  screen.Load();
  photographer.take(window, "guidelines");
  screen.cmdSkip_Click();
  photographer.take(window, "selection");

  screen.txtExcel.setText(job.badWorkbook);
  screen.cmdSelectAll_Click();
  photographer.take(window, "selection-missing-columns");
  screen.cmdSelectAll_Click();
  screen.cmdNext_Click(WizardPage::kSelection);
  if (screen.page() == WizardPage::kSelection) return photographer.take(window, "header-not-found");
  const std::vector<CellMark> marks = screen.marks();
  if (!marks.empty()) {
    QCoreApplication::processEvents();
    auto* grid = window.findChild<QTableView*>("grid1");
    grid->setCurrentIndex(grid->model()->index(marks.front().row - 1, marks.front().column));
  }
  photographer.take(window, "results-with-errors");
  screen.CmdSelErrors_Click();
  photographer.take(window, "only-errors");

  screen.cmdBack_Click(WizardPage::kResults);
  screen.txtExcel.setText(job.goodWorkbook);
  screen.cmdNext_Click(WizardPage::kSelection);
  photographer.take(window, "results");
  screen.cmdNext_Click(WizardPage::kResults);
  screen.cmdContinue_Click(WizardPage::kFinish);
  photographer.take(window, "finish");
}

void run(const Job& job) {
  Photographer photographer(job.pictures);
  FakeDialogs dialogs;
  FakeShell shell;
  QtEventLoop eventLoop;
  Wiring wiring;
  const Services services = wiring.with(dialogs, shell, eventLoop);
  CompanyContext company;
  company.programFolder = job.programFolder;
  bool opened = false;
  scrEntry entry(services, company,
                 {.showTransactionImport = [&] { opened = true; }, .showMasterImport = {}, .endProgram = [] {}});
  entry.optMaster.setEnabled(false);
  EntryWindow entryWindow(entry);
  entryWindow.show();
  photographer.take(entryWindow, "start-empty");
  entry.Load();
  photographer.take(entryWindow, "start");
  entry.cmdNew_Click();
  photographer.take(entryWindow, "start-new-company");
  entry.cmdOpen_Click();
  entry.lstCompanies.setText(job.company);
  entry.lstCompanies_Click();
  entry.cmdOpen_Click();
  if (!opened) throw std::runtime_error("company " + job.company + " did not open");
  frmImport screen(services, company, wiring.importKinds());
  QSize size;
  if (qEnvironmentVariableIsSet("ORVA_SMALLEST")) size = QSize(1, 1);
  photographWizard(screen, job, size, photographer);
}

}  // namespace
}  // namespace orva

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 6) {
    std::cerr << "usage: " << argv[0] << " PROGRAM_FOLDER COMPANY BAD_WORKBOOK GOOD_WORKBOOK PICTURES" << std::endl;
    return 2;
  }
  orva::qt::applyLook(application);
  try {
    orva::run({argv[1], argv[2], argv[3], argv[4], argv[5]});
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 2;
  }
  return 0;
}
