// Imports and exports from the menu of the window to the files and back, through the real dialogs.
#include <QDialog>
#include <QTimer>
#include <functional>

#include "tests/desktop/dialogs/named_controls.h"
#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {
namespace {

using Texts = std::vector<std::string>;

constexpr int kImport = kCommandImport;
constexpr int kExport = kCommandExport;

class Transfers : public WindowTest {
 protected:
  using User = std::function<void(QDialog&)>;

  // What the user does in the dialog of that number once it is open.
  void InDialog(int number, User user, int turns = 100) {
    QTimer::singleShot(0, window.get(), [this, number, user = std::move(user), turns] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog != nullptr && dialog->objectName() == QString::number(number)) {
        ++dialogs;
        Activate(*dialog);
        user(*dialog);
      } else if (turns > 0) {
        InDialog(number, user, turns - 1);
      } else {
        ADD_FAILURE() << "the dialog does not open: " << number;
      }
    });
  }
  // What a desktop does when a dialog opens, or the one above it has closed.
  static void Activate(QDialog& dialog) {
    dialog.activateWindow();
    // Active is also a window whose parent is.
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &dialog; }));
  }
  void Transfer(int command) {
    Choose(command);
    Reactivate();
  }
  // Fills in the foreign path and presses the button of the transfer.
  void Act(QDialog& dialog, const QString& side, const std::string& path) {
    carnetel::desktop::TypeInto(dialog, side, QString::fromStdString(path));
    PressNamed(dialog, QStringLiteral("action"));
    if (dialog.isVisible()) Activate(dialog);
  }
  std::string Contents(const std::string& path) {
    const std::vector<std::byte> bytes = files.Contents(path);
    return std::string(AsChars(bytes));
  }

  int dialogs = 0;
};

TEST_F(Transfers, CardsComeInFromATextGoOutMarkedAndComeBackAlone) {
  const std::string in = home + "clients.csv";
  const std::string out = home + "choix.txt";
  files.SetContents(in, AsBytes("M.;Jean;DUPONT;MARTEL;;1 rue Haute;;69001;LYON\r\n"
                                "Mme;Anne;DURAND;BRIOT;;;;75001;PARIS\r\n"));
  BuildCompanies(1);
  Start();

  InDialog(110, [&](QDialog& import) {
    InDialog(112, [](QDialog& mode) { desktop::Press(mode, 1); });
    Act(import, "source", in);
    EXPECT_TRUE(import.isVisible());
    desktop::Press(import, 2);
  });
  Transfer(kImport);
  EXPECT_EQ(dialogs, 2);
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BRIOT", "MARTEL"}));

  ClickRow(1);
  Key(Qt::Key_Space);
  ClickRow(2);
  Key(Qt::Key_Space);
  InDialog(127, [&](QDialog& export_dialog) {
    InDialog(113, [](QDialog& ranks) {
      EXPECT_EQ(ranks.windowTitle(), "Structure du fichier de destination");
      Pick(ranks, "card_separator", 3);
      carnetel::desktop::TypeInto(ranks, "field_separator", "22h 2Ch");
      // Apart from the field that has the same rank at first, and makes a column of its own.
      carnetel::desktop::TypeInto(ranks, "rank_10", "22");
      for (int reference = 0; reference < 6; ++reference) {
        Pick(ranks, "reference", reference);
        carnetel::desktop::TypeInto(ranks, "rank_12", "");
      }
      desktop::Press(ranks, 1);
    });
    PressNamed(export_dialog, "parameters");
    Activate(export_dialog);
    Act(export_dialog, "destination", out);
    desktop::Press(export_dialog, 2);
  });
  Transfer(kExport);
  const std::string text = Contents(out);
  EXPECT_EQ(
      text.substr(0, text.find('\n')),
      R"("Mme","Anne","DURAND","BRIOT","","","","75001","PARIS","","","","","","","","","","","","",)"
      R"("DURAND","")");
  EXPECT_EQ(std::ranges::count(text, '\n'), 2);
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BRIOT", "MARTEL"}));

  InDialog(110, [&](QDialog& import) {
    InDialog(112, [](QDialog& mode) {
      EXPECT_EQ(mode.windowTitle(), "Mode d'importation de fiches");
      PressNamed(mode, "replace");
      desktop::Press(mode, 1);
    });
    Act(import, "source", out);
    desktop::Press(import, 2);
  });
  Transfer(kImport);
  EXPECT_EQ(Rows(), (Texts{"BRIOT", "MARTEL"}));
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(dialogs, 6);
  const std::vector<SavedCard> saved = Saved();
  ASSERT_EQ(saved.size(), 2u);
  EXPECT_EQ(saved[0].Field(kPrenom), "Anne");
  EXPECT_EQ(saved[0].Field(kNom), "DURAND");
  EXPECT_EQ(saved[0].Field(kPostalCode), "75001");
  EXPECT_EQ(saved[1].Field(kVille), "LYON");
  EXPECT_EQ(saved[1].Field(kAdr1), "1 rue Haute");
}

// The failure closes the form by itself, and the directory is as it was.
TEST_F(Transfers, AnEmptyFileEndsTheImport) {
  const std::string in = home + "vide.csv";
  files.SetContents(in, {});
  BuildCompanies(2);
  Start();
  InDialog(110, [&](QDialog& import) {
    InDialog(112, [](QDialog&) { PressKey(Qt::Key_Return); });
    Act(import, "source", in);
    EXPECT_FALSE(import.isVisible());
  });
  Transfer(kImport);
  EXPECT_EQ(dialogs, 2);
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BETA"}));
}

TEST_F(Transfers, AbandonInTheQuestionTransfersNothing) {
  const std::string in = home + "clients.csv";
  files.SetContents(in, AsBytes("M.;Jean;DUPONT;MARTEL\r\n"));
  BuildCompanies(1);
  Start();
  InDialog(110, [&](QDialog& import) {
    InDialog(112, [](QDialog&) { PressKey(Qt::Key_Escape); });
    Act(import, "source", in);
    EXPECT_TRUE(import.isVisible());
    EXPECT_EQ(FocusName(), "source");
    PressKey(Qt::Key_Escape);
  });
  Transfer(kImport);
  EXPECT_EQ(dialogs, 2);
  EXPECT_EQ(Rows(), Texts{"ALPHA"});
}

}  // namespace
}  // namespace carnetel::desktop
