#include "tests/desktop/window/dialog_user.h"

#include <QMainWindow>
#include <QTimer>
#include <span>

namespace carnetel::desktop {

DialogUser::DialogUser(const BusyState& busy) : busy_(busy) {
  LookLater();
}

DialogUser::~DialogUser() {
  EXPECT_TRUE(steps_.empty()) << "dialog " << steps_.front().number << " did not come";
}

// A timer of its own each time: a dialog may open while another is worked on.
void DialogUser::LookLater() {
  QTimer::singleShot(1, this, &DialogUser::Look);
}

void DialogUser::Look() {
  LookLater();
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog == nullptr || busy_.IsBusy() || at_work_.contains(dialog)) return;
  at_work_.append(dialog);
  WorkOn(*dialog);
  at_work_.removeOne(dialog);
}

void DialogUser::WorkOn(QDialog& dialog) {
  const int number = dialog.objectName().toInt();
  if (steps_.empty() || steps_.front().number != number) {
    ADD_FAILURE() << "dialog " << number
                  << " comes unexpected: " << dialog.windowTitle().toStdString();
  } else {
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &dialog; }));
    step.act(dialog);
    EXPECT_FALSE(dialog.isVisible()) << "dialog " << number << " stays";
  }
  if (dialog.isVisible()) dialog.reject();
  // As the desktop does when the window above has closed.
  const QWidget* below = dialog.parentWidget();
  if (below != nullptr && below->isVisible()) below->window()->activateWindow();
}

void DialogWindowTest::ExpectName(int number, const QString& name) {
  Expect(number, [this, name](QDialog&) {
    EXPECT_EQ(FocusId(), 1152);
    Type(name);
    Key(Qt::Key_Return);
  });
}

void DialogWindowTest::ClickText(QListWidget* list, const QString& text, bool twice) {
  const auto items = list->findItems(text, Qt::MatchExactly);
  ASSERT_EQ(items.size(), 1) << text.toStdString();
  const QPoint place = list->visualItemRect(items.front()).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  if (twice) QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void DialogWindowTest::MakeText(const std::string& path, const std::string& text) {
  files.SetContents(path, std::as_bytes(std::span(text)));
}

MainHeader DialogWindowTest::HeaderOf(const std::string& stem) {
  const std::optional<MainHeader> header = ReadMainHeader(files, stem + ".DAN");
  EXPECT_TRUE(header.has_value()) << stem;
  return header.value_or(MainHeader());
}

void DialogWindowTest::StartWithSeats() {
  StartupRequest request;
  request.workstation_number = 3;
  request.exchange_file_path = home + "ECHANGE.DAT";
  Start(request);
}

}  // namespace carnetel::desktop
