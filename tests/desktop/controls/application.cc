// One application object for the whole test program, on no screen unless the caller names one.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <memory>

#include "desktop/controls/faces.h"

namespace carnetel::desktop {
namespace {

class ApplicationEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(QStringLiteral("Fusion"));
    application_ = std::make_unique<QApplication>(argument_count_, arguments_);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  }
  void TearDown() override { application_.reset(); }

 private:
  int argument_count_ = 1;
  char name_[24] = "desktop_controls_test";
  char* arguments_[2] = {name_, nullptr};
  std::unique_ptr<QApplication> application_;
};

const auto* const kEnvironment = testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

}  // namespace
}  // namespace carnetel::desktop
