// The real chooser, off screen, over a home folder in memory, with somebody who answers its
// dialogs.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "desktop/window/chooser_window.h"
#include "selection/criteria_file.h"
#include "tests/desktop/window/dialog_user.h"

namespace carnetel::desktop {

class ChooserWindowTest : public DialogWindowTest {
 protected:
  static constexpr int kSingle = 1;
  static constexpr int kMany = 2;
  static constexpr int kViafax = 9;

  ~ChooserWindowTest() override { chooser.reset(); }

  // Four cards, of which three have a fax: ALPHA, GAMMA and ZETA.
  void BuildFour() {
    Build({CardWith({{kSte1, "ALPHA"},
                     {kFax, "0140000001"},
                     {kPrenom, "Jean"},
                     {kNom, "DURAND"},
                     {kShortPostalCode, "75001"},
                     {kRef1, "client"},
                     {kNotes, "note"}}),
           CardWith({{kSte1, "BETA"}, {kTel1, "0240000002"}}),
           CardWith({{kSte1, "GAMMA"}, {kFax, "0340000003"}, {kVille, "Lyon"}}),
           CardWith({{kSte1, "ZETA"}, {kFax, "0440000004"}, {kVille, "Nice"}})});
  }
  [[nodiscard]] std::string ExchangeFile() const { return home + "FAX12345.DAT"; }
  // Session, opening and window, shown and active, as the program does it.
  void StartChooser(int launch_type, int capacity = 32767, int number = 1) {
    StartupRequest request;
    request.launch_type = launch_type;
    request.caller_argument = number;
    request.exchange_file_path = ExchangeFile();
    chooser.reset();
    ended = 0;
    session = std::make_unique<Session>(SessionServices{disk, clock, progress, *boxes, profile},
                                        request, home);
    session->Start();
    bool fell_back = false;
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
    const auto kind = static_cast<ChooserKind>(session->role().parameter & 0xFFFF);
    chooser = std::make_unique<ChooserWindow>(*session, busy, kind, capacity);
    QObject::connect(chooser.get(), &ChooserWindow::ended, [this] { ++ended; });
    chooser->SetBeeper([this] { ++beeps; });
    chooser->Start();
    chooser->show();
    chooser->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(chooser.get()));
    Settle();
  }
  QMainWindow& TestedWindow() override { return *chooser; }

  // Presses twice on a row, as fast as it counts as one double click.
  void DoubleClickRow(int row) {
    ClickRow(row);
    const QPoint place = List()->RowRect(row).center();
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    // The toolkit's own double click leaves the button down.
    QTest::mouseRelease(List()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    Settle();
  }
  // The first column of pixels in a row, from `from` on, that is not background.
  [[nodiscard]] int FirstInk(int row, int from) {
    const QImage image = List()->viewport()->grab().toImage();
    const qreal ratio = image.devicePixelRatio();
    const auto pixel = [&](int x, int y) {
      return image.pixel(qRound(x * ratio), qRound(y * ratio));
    };
    const QRect box = List()->RowRect(row);
    const QRgb background = pixel(box.right() - 1, box.center().y());
    for (int x = from; x < box.right(); ++x) {
      for (int y = box.top(); y < box.bottom(); ++y) {
        if (pixel(x, y) != background) return x;
      }
    }
    return -1;
  }
  [[nodiscard]] Numbers Marked() const {
    Numbers rows;
    for (int row = 0; row < chooser->logic().list().row_count(); ++row) {
      if (chooser->logic().list().IsMarked(row)) rows.push_back(row);
    }
    return rows;
  }
  // The numbers in the records of the caller's file.
  [[nodiscard]] Texts Extracted() const {
    constexpr size_t kRecord = 149;
    const std::vector<std::byte> bytes = files.Contents(ExchangeFile());
    Texts numbers;
    for (size_t at = 0; at + kRecord <= bytes.size(); at += kRecord) {
      numbers.push_back(CopyFieldText(ByteView(bytes).subspan(at, 30), 30));
    }
    return numbers;
  }

  std::unique_ptr<ChooserWindow> chooser;
  int beeps = 0;
};

}  // namespace carnetel::desktop
