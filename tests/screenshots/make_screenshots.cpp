// Takes the pictures of docs/images: the real windows over a real program folder, driven
// through the same handlers as a user's clicks. With ORVA_SMALLEST set, the windows have their smallest size.
// Arguments: program folder, company code, workbook with mistakes, good workbook, folder for the pictures.

#include <QApplication>
#include <QTableView>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <vector>

#include "app/windows/bulk_update_window.h"
#include "app/windows/entry_window.h"
#include "app/windows/import_window.h"
#include "app/windows/master_window.h"
#include "app/wiring.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_dialogs.h"
#include "platform/qt/look.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/text.h"
#include "platform/workbook.h"
#include "updates/frmUpdateLEOD.h"
#include "updates/frmUpdateRateAndMethod.h"

namespace orva {
namespace {

bool isNear(QRgb a, QRgb b) {
  const int distance = std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
  return distance < 24;
}

/// The picture in at most 256 colours, which takes a quarter of the space. The most frequent colours come
/// first, and one that is near to them stands back for one that is rare but different.
QImage withPalette(const QImage& picture) {
  std::map<QRgb, int> counts;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
  }
  std::vector<std::pair<int, QRgb>> colours;
  for (const auto& [colour, count] : counts) colours.emplace_back(-count, colour);
  std::sort(colours.begin(), colours.end());
  constexpr std::size_t kExact = 24;
  QList<QRgb> palette;
  for (std::size_t index = 0; index < colours.size() && palette.size() < 256; ++index) {
    const QRgb colour = colours[index].second;
    const auto near = [colour](QRgb other) { return isNear(colour, other); };
    if (index < kExact || std::none_of(palette.begin(), palette.end(), near)) palette.append(colour);
  }
  return picture.convertToFormat(QImage::Format_Indexed8, palette, Qt::ThresholdDither);
}

class Photographer {
 public:
  explicit Photographer(QString folder) : folder_(std::move(folder)) {}

  void open(QWidget& window) {
    if (qEnvironmentVariableIsSet("ORVA_SMALLEST")) window.resize(1, 1);
    window.show();
  }

  void take(QWidget& window, const QString& name) {
    // Two rounds: the first shows what changed, the second paints what the first laid out.
    for (int round = 0; round < 2; ++round) QCoreApplication::processEvents();
    const QImage picture = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    if (!withPalette(picture).save(folder_ + '/' + name + ".png", "PNG", 0)) {
      throw std::runtime_error("cannot write " + name.toStdString());
    }
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

/// The windows of one run, with nobody before them: every question is answered Yes.
struct Stage {
  const Job& job;
  Photographer photographer{job.pictures};
  FakeDialogs dialogs = {};
  FakeShell shell = {};
  QtEventLoop eventLoop = {};
  Wiring wiring = {};
  Services services = wiring.with(dialogs, shell, eventLoop);
  CompanyContext company = {};
};

std::vector<OutputCell> cells(const std::vector<std::string>& texts) {
  std::vector<OutputCell> row;
  for (const std::string& text : texts) row.push_back({CellKind::kText, text});
  return row;
}

void openCompany(Stage& stage) {
  bool opened = false;
  stage.company.programFolder = stage.job.programFolder;
  scrEntry entry(stage.services, stage.company,
                 {.showTransactionImport = [&] { opened = true; }, .showMasterImport = {}, .endProgram = [] {}});
  EntryWindow window(entry);
  stage.photographer.open(window);
  entry.Load();
  entry.lstCompanies.setText(stage.job.company);
  entry.lstCompanies_Click();
  stage.photographer.take(window, "start");
  entry.cmdOpen_Click();
  if (!opened) throw std::runtime_error("company " + stage.job.company + " did not open");
}

void selectFirstError(const ImportWizard& screen, const QWidget& window) {
  const std::vector<CellMark> marks = screen.marks();
  if (marks.empty()) throw std::runtime_error("the workbook has no mistake");
  QCoreApplication::processEvents();
  auto* grid = window.findChild<QTableView*>("grid1");
  grid->setCurrentIndex(grid->model()->index(marks.front().row - 1, marks.front().column));
}

void photographImport(Stage& stage) {
  frmImport screen(stage.services, stage.company, stage.wiring.importKinds(),
                   {.onClose = {}, .onUpdateLeod = [] {}, .onUpdateRateMethod = [] {}});
  screen.Load();
  ImportWindow window(screen);
  stage.photographer.open(window);
  stage.photographer.take(window, "guidelines");
  screen.cmdSkip_Click();
  screen.txtExcel.setText(stage.job.badWorkbook);
  stage.photographer.take(window, "selection");
  screen.cmdSelectAll_Click();
  stage.photographer.take(window, "selection-missing-columns");
  screen.cmdSelectAll_Click();
  screen.cmdNext_Click(WizardPage::kSelection);
  selectFirstError(screen, window);
  stage.photographer.take(window, "results");

  screen.cmdBack_Click(WizardPage::kResults);
  screen.txtExcel.setText(stage.job.goodWorkbook);
  screen.cmdNext_Click(WizardPage::kSelection);
  screen.cmdNext_Click(WizardPage::kResults);
  stage.photographer.take(window, "finish");
  screen.cmdContinue_Click(WizardPage::kFinish);
  stage.photographer.take(window, "finished");
  if (screen.rowsPosted() == 0) throw std::runtime_error("nothing was posted");
}

void untick(ImportWizard& screen, const std::vector<std::string_view>& names) {
  for (std::size_t line = 0; line < screen.catalogue().size(); ++line) {
    const std::string& name = screen.catalogue()[line].excelName;
    const bool isNamed = std::find(names.begin(), names.end(), name) != names.end();
    if (isNamed) screen.lstFields_ItemCheck(static_cast<int>(line), false);
  }
}

void photographMasters(Stage& stage) {
  const std::string workbook = stage.job.programFolder + "/vendors.xls";
  const auto heading = cells({"VendorCode", "VendorName", "City", "PAN"});
  const auto good = cells({"0101", "Deccan Hydraulics", "Pune", "AAACD1234E"});
  stage.services.workbooks.write(workbook, "Master",
                                 {heading, good, cells({"0102", "", "Nashik", ""}),
                                  cells({"0103", "Konkan Power Tools", "Ratnagiri", "AAXCK12345"}),
                                  cells({"0101", "Meridian Office Systems", "Mumbai", ""})});
  frmMasterImport screen(stage.services, stage.company);
  screen.Load();
  MasterWindow window(screen);
  stage.photographer.open(window);
  screen.cmdSkip_Click();
  screen.optMaster_Click(MasterKindId::kMiscellaneous);
  stage.photographer.take(window, "master-miscellaneous");
  screen.optMaster_Click(MasterKindId::kVendor);
  screen.txtExcel.setText(workbook);
  stage.photographer.take(window, "master-import");
  screen.cmdNext_Click(WizardPage::kSelection);
  stage.photographer.take(window, "master-missing-columns");
  untick(screen, {"add1", "add2", "add3", "Pin", "vattin", "csttin"});
  screen.cmdNext_Click(WizardPage::kSelection);
  selectFirstError(screen, window);
  stage.photographer.take(window, "master-results");
  stage.services.workbooks.write(workbook, "Master", {heading, good});
  screen.cmdContinue_Click(WizardPage::kResults);
  screen.cmdNext_Click(WizardPage::kResults);
  stage.photographer.take(window, "master-finish");
  screen.cmdContinue_Click(WizardPage::kFinish);
  stage.photographer.take(window, "master-finished");
}

template <class Screen>
void photographUpdate(Stage& stage, const QString& name) {
  Screen screen(stage.services, stage.company);
  BulkUpdateWindow window(screen, nullptr);
  screen.txtExcel.setText(stage.job.programFolder + "/" + name.toStdString() + ".xls");
  stage.photographer.open(window);
  stage.photographer.take(window, name);
}

void run(const Job& job) {
  Stage stage{.job = job};
  openCompany(stage);
  photographImport(stage);
  photographMasters(stage);
  photographUpdate<frmUpdateLEOD>(stage, "lease-end-update");
  photographUpdate<frmUpdateRateAndMethod>(stage, "rate-and-method-update");
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
