// One application object for the whole test program. It runs without a screen, so that no pointer
// and no window manager of the machine meddles; CARNETEL_TEST_PLATFORM=xcb puts it on one, for
// looking at the gallery.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <memory>

namespace carnetel::desktop {
namespace {

class ApplicationEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    const QByteArray platform = qgetenv("CARNETEL_TEST_PLATFORM");
    qputenv("QT_QPA_PLATFORM", platform.isEmpty() ? QByteArray("offscreen") : platform);
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
