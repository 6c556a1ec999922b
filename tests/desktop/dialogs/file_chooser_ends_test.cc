// How the file dialog ends, its help, the walk through its controls, and the dialog as a part of
// choosing a directory.
#include <QAccessible>
#include <QTimer>
#include <functional>

#include "shell/directory_chooser.h"
#include "tests/desktop/dialogs/file_chooser_fixture.h"
#include "tests/shell/fake_dialogs.h"

namespace carnetel::desktop {
namespace {

using FileChooserEnds = FileChooserTest;

// ---- the ends and the help ----

TEST_F(FileChooserEnds, CancelEscapeAndTheCrossEndWithoutAChoice) {
  const std::function<void()> ways[] = {[this] { Press(2); }, [] { Key(Qt::Key_Escape); },
                                        [this] { dialog_->close(); }};
  for (const ChooserTemplate form : kForms) {
    for (const auto& way : ways) {
      Open(form);
      Type("X");
      way();
      EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
    }
  }
}

TEST_F(FileChooserEnds, EscapeWorksFromEveryControl) {
  MakeFile("A.DAN");
  StartSession(3);
  for (const int id : {1152, 1120, 1121, 1136, 1137, 196, 225, 1, 2, 1038}) {
    Open(ChooserTemplate::kOpen);
    Control(id).setFocus();
    Key(Qt::Key_Escape);
    EXPECT_EQ(Ends(), Numbers{QDialog::Rejected}) << id;
  }
}

TEST_F(FileChooserEnds, TheHelpIsThatOfTheForm) {
  const int topics[] = {40, 72, 49, 50};
  for (size_t i = 0; i < 4; ++i) {
    Open(kForms[i]);
    Press(1038);
    Key(Qt::Key_F1);
    Key(Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return help_->count() == 3; }));
    EXPECT_EQ(HelpTopics(), (Numbers{topics[i], topics[i], topics[i]}));
    EXPECT_EQ(Ends(), Numbers());
  }
}

TEST_F(FileChooserEnds, TheHelpKeyWorksFromEveryControl) {
  MakeFile("A.DAN");
  StartSession(3);
  for (const int id : {1152, 1120, 1121, 1136, 1137, 196, 225, 1, 2, 1038}) {
    Open(ChooserTemplate::kOpen);
    Control(id).setFocus();
    Key(Qt::Key_F1);
    EXPECT_EQ(HelpTopics(), Numbers{50}) << id;
  }
}

TEST_F(FileChooserEnds, EnterOnAButtonPressesIt) {
  Open(ChooserTemplate::kCreate);
  Type("X");
  Control(1038).setFocus();
  Key(Qt::Key_Return);
  EXPECT_EQ(HelpTopics(), Numbers{49});
  EXPECT_EQ(Ends(), Numbers());
  Control(2).setFocus();
  Key(Qt::Key_Return);
  EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
}

// ---- the walk through the dialog ----

class FileChooserWalk : public FileChooserTest {
 protected:
  void OpenWithLongNames(int32_t seat) {
    const std::string part = "Un nom de dossier beaucoup trop long pour une liste";
    MakeFolder(part);
    MakeFolder(part + "/" + part);
    MakeFile(part + "/" + part + "/Les clients de la région Provence-Alpes-Côte d'Azur, 1994.DAN");
    StartSession(seat);
    Open(ChooserTemplate::kOpen);
    picker_->EnterFolder(part + "/" + part);
    Type(".");
    Key(Qt::Key_Return);
  }
  static QRect TextPlace(QWidget& widget) {
    QStyleOptionButton option;
    option.initFrom(&widget);
    return widget.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &widget);
  }
  // The line with the path leaves out its middle instead.
  static bool MayBeShortened(const QWidget& widget) {
    return widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
  }
  void ExpectNothingClipped() {
    for (const QLabel* label : dialog_->findChildren<QLabel*>()) {
      EXPECT_GE(label->height(), label->fontMetrics().height()) << label->text().toStdString();
      if (MayBeShortened(*label)) continue;
      EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
    }
    for (QPushButton* button : dialog_->findChildren<QPushButton*>()) {
      const int wanted = button->fontMetrics().horizontalAdvance(button->text().remove('&'));
      EXPECT_GE(TextPlace(*button).width(), wanted) << button->text().toStdString();
    }
    for (const QWidget* widget :
         dialog_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      const std::string name = widget->objectName().toStdString();
      EXPECT_TRUE(dialog_->rect().contains(widget->geometry())) << name;
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << name;
      if (MayBeShortened(*widget)) continue;
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << name;
    }
  }
  Numbers Walk() {
    Numbers stops;
    const int start = Focus();
    do {
      const QWidget* focus = QApplication::focusWidget();
      const QAccessibleInterface* spoken =
          QAccessible::queryAccessibleInterface(const_cast<QWidget*>(focus));
      EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << Focus();
      stops.push_back(Focus());
      Key(Qt::Key_Tab);
    } while (Focus() != start && stops.size() < 30);
    return stops;
  }
};

TEST_F(FileChooserWalk, TabGoesThroughEveryControl) {
  StartSession(3);
  Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Walk(), (Numbers{1152, 1120, 1121, 1136, 1137, 196, 225, 1, 2, 1038}));
  Open(ChooserTemplate::kCreate);
  EXPECT_EQ(Walk(), (Numbers{1152, 1121, 1136, 1137, 196, 225, 1, 2, 1038}));
  Open(ChooserTemplate::kOther);
  EXPECT_EQ(Walk(), (Numbers{1152, 1120, 1121, 1136, 1137, 1, 2, 1038}));
}

TEST_F(FileChooserWalk, NothingIsClipped) {
  OpenWithLongNames(3);
  ExpectNothingClipped();
  EXPECT_LE(dialog_->width(), 800);
  EXPECT_LE(dialog_->height(), 600);
}

TEST_F(FileChooserWalk, NothingIsClippedWithoutSeats) {
  OpenWithLongNames(0);
  ExpectNothingClipped();
}

TEST_F(FileChooserWalk, NothingIsClippedWithLettersTwiceAsLarge) {
  UseLargeLetters();
  OpenWithLongNames(3);
  ExpectNothingClipped();
}

TEST_F(FileChooserWalk, ItCanBeMadeLarger) {
  Open(ChooserTemplate::kOpen);
  const QSize list = Files().size();
  dialog_->resize(dialog_->size() + QSize(200, 100));
  QApplication::processEvents();
  EXPECT_GT(Files().width(), list.width());
  EXPECT_EQ(Files().height(), list.height() + 100);
}

// ---- as part of the whole ----

class DialogOfTest : public FakeDialogs {
 public:
  std::function<void(FileChooserDialog&)> user;

  bool RunFilePicker(FilePicker& picker) override {
    FileChooserDialog dialog(picker, nullptr);
    QTimer::singleShot(0, [this, &dialog] { user(dialog); });
    return dialog.exec() == QDialog::Accepted;
  }
};

TEST_F(FileChooserEnds, CreatesOpensAndDestroysByKeysAlone) {
  const auto choose = [this](ChooserTemplate form, const QString& typed) {
    DialogOfTest host;
    host.user = [&typed](FileChooserDialog& dialog) {
      auto* name = dialog.findChild<QWidget*>(QStringLiteral("1152"));
      QTest::keyClicks(name, typed);
      QTest::keyClick(name, Qt::Key_Return);
    };
    return ChooseDirectory(*session_, host, form, ChooserMode::kDirectories, true).confirmed;
  };
  EXPECT_TRUE(choose(ChooserTemplate::kCreate, "Amis"));
  EXPECT_EQ(session_->CurrentMainFile(), folder_.path() + "Amis.DAN");
  EXPECT_FALSE(choose(ChooserTemplate::kCreate, "amis"));
  EXPECT_EQ(TakeErrors(), Names{"Le fichier existe déjà"});
  EXPECT_TRUE(choose(ChooserTemplate::kCreate, "Bureau"));
  EXPECT_TRUE(choose(ChooserTemplate::kOpen, "amis"));
  EXPECT_EQ(session_->CurrentMainFile(), folder_.path() + "Amis.DAN");
  EXPECT_TRUE(choose(ChooserTemplate::kDestroy, "Bureau"));
  ASSERT_EQ(script_.shown.size(), 1u);
  EXPECT_EQ(script_.shown[0].text, "Le fichier  " + folder_.path() + "Bureau.DAN va être détruit ");
  EXPECT_FALSE(files_.Exists(folder_.path() + "Bureau.DAN"));
  session_->CloseDirectory();
  for (const char* stem : {"Amis", "Bureau"}) {
    std::filesystem::remove(DirectoryGuard::LockFilePath(folder_.path() + stem + ".ADR"));
  }
}

}  // namespace
}  // namespace carnetel::desktop
