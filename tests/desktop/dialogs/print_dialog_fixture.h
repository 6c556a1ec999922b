// "Impression de l'carnetel" over a directory in memory, for one test, which works on it by mouse
// and by keys. The printers are the test's.
#pragma once

#include <memory>

#include "base/code_page.h"
#include "desktop/dialogs/print_dialog.h"
#include "tests/desktop/dialogs/named_controls.h"
#include "tests/shell/window_fixture.h"

namespace carnetel::desktop {

using ShownBoxes = std::vector<QueuedMessages::Entry>;

class PrintDialogTest : public WindowFixture {
 protected:
  ~PrintDialogTest() override { dialog.reset(); }

  // NOM 001 and so on, each with a town that has accents.
  void StartWithCards(int count) {
    std::vector<CardRecord> cards;
    for (int i = 1; i <= count; ++i) {
      const std::string company = QString::asprintf("NOM %03d", i).toStdString();
      const OemText street = OemFromUtf8Lossy("Allée des Érables");
      cards.push_back(CardWith({{kSte1, company},
                                {kAdr1, street.bytes()},
                                {kPostalCode, "69001"},
                                {kFax, "04 00 00 00 00"}}));
    }
    Build(cards);
    ASSERT_TRUE(Start());
    SetProfile("Type", "0");
  }
  // The printers of `port`, and the form and dialog on them.
  void Open(PrinterPort& port, MeasureUnit unit = MeasureUnit::kCentimetres) {
    dialog.reset();
    const PrintServices services = {messages, profile, std::string(session->ProfileSection()), port,
                                    [this](PrinterChoiceForm& choice) { return choose(choice); }};
    form = std::make_unique<PrintForm>(*session->directory(), services,
                                       PrintPlace{PrinterIni(), "Carnetel", current_entry, unit});
    dialog = std::make_unique<PrintDialog>(
        *form,
        [this](const std::string& printer) {
          pages_asked.push_back(printer);
          return layout;
        },
        nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    help = std::make_unique<QSignalSpy>(dialog.get(), &FixedDialog::helpWanted);
    Show(*dialog);
  }
  void Open(MeasureUnit unit = MeasureUnit::kCentimetres) { Open(dialogs.printers, unit); }

  [[nodiscard]] std::string PrinterIni() const { return home + "CARNETEL.INI"; }
  void StorePrinter(const InstalledPrinter& printer) {
    StoredPrinter(files, PrinterIni()).Write(printer);
  }
  QTabWidget* Tabs() { return dialog->findChild<QTabWidget*>(); }
  int Page() { return Tabs()->currentWidget()->objectName().toInt(); }
  UnitSpin* Spin(const QString& name) { return Named<UnitSpin>(*dialog, name); }
  QPushButton* Button(const QString& name) { return Named<QPushButton>(*dialog, name); }
  QString Label(const QString& name) { return Named<QLabel>(*dialog, name)->text(); }
  // Goes to a spin, selects what it holds and types.
  void TypeSpin(const QString& name, const QString& text) {
    Spin(name)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_A, Qt::ControlModifier);
    Type(text);
  }
  void PressChoice(const QString& name) {
    auto* button = Named<QAbstractButton>(*dialog, name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
  }
  // Alt with the letter of a button that has a name.
  void PressMnemonicOf(Qt::Key letter, const QString& name) {
    QSignalSpy pressed(Button(name), &QPushButton::clicked);
    PressKey(letter, Qt::AltModifier);
    ASSERT_TRUE(pressed.count() == 1 || pressed.wait()) << name.toStdString();
  }
  void ShowLayoutPage() {
    PressKey(Qt::Key_D, Qt::AltModifier);
    ASSERT_EQ(Page(), 802);
  }
  const PreviewPages& Preview() {
    QCoreApplication::processEvents();
    return dialog->findChild<PrintPreview*>()->pages();
  }
  // The lines of a previewed page, from the first that has a text.
  QStringList PreviewLines(size_t page) {
    QStringList lines;
    for (const PreviewPages::Line& line : Preview().pages().at(page)) {
      const std::string text = Utf8FromAnsi(AnsiText(line.ansi));
      if (!lines.isEmpty() || !text.empty()) lines += QString::fromStdString(text);
    }
    return lines;
  }
  std::string Contents(const std::string& path) {
    const std::vector<std::byte> bytes = memory.Contents(path);
    return std::string(AsChars(bytes));
  }

  std::function<bool(PrinterChoiceForm&)> choose = [](PrinterChoiceForm&) { return false; };
  uint32_t current_entry = 0;
  QPageLayout layout{QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(28, 28, 28, 28)};
  std::vector<std::string> pages_asked;
  std::unique_ptr<PrintForm> form;
  std::unique_ptr<PrintDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
  std::unique_ptr<QSignalSpy> help;
};

}  // namespace carnetel::desktop
