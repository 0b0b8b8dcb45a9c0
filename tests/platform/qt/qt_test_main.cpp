#include <gtest/gtest.h>

#include <QApplication>

#include "platform/qt/look.h"

// The application lives in main: widgets need it from the first fixture on, and it must be gone before the
// toolkit's own statics are.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  orva::qt::applyLook(application);
  return RUN_ALL_TESTS();
}
