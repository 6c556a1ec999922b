// "Impression de l'carnetel" as its user meets it: the first page, the buttons and the preview.
#include "desktop/dialogs/print_dialog.h"

#include <QRadioButton>

#include "tests/desktop/dialogs/print_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

class PrintSetup : public PrintDialogTest {
 protected:
  void SetUp() override { StartWithCards(3); }
  bool IsOn(const QString& name) { return Named<QAbstractButton>(*dialog, name)->isChecked(); }
};

// ---- what it shows ----

TEST_F(PrintSetup, HasItsTextsAndOpensOnTheFirstPage) {
  Open();
  EXPECT_EQ(dialog->objectName(), "130");
  EXPECT_EQ(dialog->windowTitle(), "Impression de l'carnetel");
  EXPECT_EQ(Page(), 801);
  EXPECT_EQ(Tabs()->tabText(0), "Para&mètres");
  EXPECT_EQ(Tabs()->tabText(1), "&Définir liste");
  EXPECT_EQ(Button("configure")->text(), "&Configurer...");
  EXPECT_EQ(Button("print")->text(), "&Imprimer");
  EXPECT_EQ(Button("2")->text(), "F&ermer");
  EXPECT_EQ(Button("500")->text(), "?");
  EXPECT_EQ(Named<QAbstractButton>(*dialog, "to_file")->text(), "Imprimer dans Fic&hier :");
  ExpectNames(*dialog);
}

TEST_F(PrintSetup, ShowsTheDefaults) {
  SetProfile("Type", "");
  Open();
  EXPECT_EQ(Label("printer"), "@@@");
  EXPECT_TRUE(IsOn("list"));
  EXPECT_TRUE(IsOn("selection"));
  EXPECT_EQ(Spin("lines")->text(), "64 lg");
  EXPECT_EQ(Spin("top_margin")->text(), "2,00 cm");
  EXPECT_EQ(Spin("left_margin")->text(), "2,00 cm");
  EXPECT_FALSE(IsOn("to_file"));
  EXPECT_EQ(TextOf(*dialog, "path"), "carn.prn");
  EXPECT_FALSE(Named(*dialog, "path")->isEnabled());
}

TEST_F(PrintSetup, ShowsWhatWasKept) {
  StorePrinter({"Laser", "HP", "usb://HP"});
  SetProfile("Lines", "40");
  SetProfile("TopMargin", "105");
  SetProfile("LeftMargin", "0");
  SetProfile("Mode", "1");
  SetProfile("Type", "2");
  SetProfile("PrintType", "1");
  SetProfile("FileToPrint", "liste é.txt");
  Open();
  EXPECT_EQ(Label("printer"), "Laser sur usb://HP");
  EXPECT_TRUE(IsOn("cards"));
  EXPECT_TRUE(IsOn("current"));
  EXPECT_EQ(Spin("lines")->text(), "40 lg");
  EXPECT_EQ(Spin("top_margin")->text(), "1,05 cm");
  EXPECT_EQ(Spin("left_margin")->text(), "0,00 cm");
  EXPECT_TRUE(IsOn("to_file"));
  EXPECT_TRUE(Named(*dialog, "path")->isEnabled());
  EXPECT_EQ(TextOf(*dialog, "path"), "liste é.txt");
}

TEST_F(PrintSetup, InchesHaveTextsAndMaximumOfTheirOwn) {
  Open(MeasureUnit::kInches);
  EXPECT_EQ(Spin("top_margin")->text(), "0,80 pces");
  TypeSpin("top_margin", "3,96");
  PressKey(Qt::Key_Tab);
  EXPECT_EQ(Spin("top_margin")->text(), "3,96 pces");
  Spin("top_margin")->setFocus();
  PressKey(Qt::Key_Up);
  EXPECT_EQ(form->setup().top_margin, 396);
  TypeSpin("top_margin", "3,97");
  PressKey(Qt::Key_Tab);
  EXPECT_EQ(form->setup().top_margin, 0);
}

// ---- spins ----

TEST_F(PrintSetup, TheArrowsOfLinesStayBetween1And127) {
  SetProfile("Lines", "2");
  Open();
  Spin("lines")->setFocus();
  PressKey(Qt::Key_Down);
  PressKey(Qt::Key_Down);
  EXPECT_EQ(form->setup().lines, 1);
  EXPECT_EQ(Spin("lines")->text(), "1 lg");
  TypeSpin("lines", "126");
  PressKey(Qt::Key_Up);
  PressKey(Qt::Key_Up);
  EXPECT_EQ(form->setup().lines, 127);
  PressKey(Qt::Key_PageDown);
  EXPECT_EQ(form->setup().lines, 117);
}

TEST_F(PrintSetup, ABadLineCountGives0AndTheArrowLeavesIt) {
  Open();
  for (const char* typed : {"128", "-1", "abc", ""}) {
    TypeSpin("lines", "7");
    TypeSpin("lines", QString::fromLatin1(typed));
    if (*typed == 0) PressKey(Qt::Key_Delete);
    PressKey(Qt::Key_Tab);
    EXPECT_EQ(form->setup().lines, 0) << typed;
    EXPECT_EQ(Spin("lines")->text(), "0 lg") << typed;
  }
  Spin("lines")->setFocus();
  PressKey(Qt::Key_Up);
  EXPECT_EQ(form->setup().lines, 1);
}

TEST_F(PrintSetup, ATypedMarginIsReadWhenItIsLeft) {
  Open();
  const QList<std::pair<const char*, int>> texts = {{"1,5", 150}, {"1,05", 150},    {"1,15", 115},
                                                    {"3", 300},   {"9,99 cm", 999}, {"10", 0},
                                                    {"9,991", 0}, {"x", 0}};
  for (const auto& [typed, margin] : texts) {
    TypeSpin("left_margin", QString::fromLatin1(typed));
    PressKey(Qt::Key_Tab);
    EXPECT_EQ(form->setup().left_margin, margin) << typed;
    EXPECT_EQ(Spin("left_margin")->text().toStdString(),
              MarginText(MeasureUnit::kCentimetres, margin))
        << typed;
  }
}

TEST_F(PrintSetup, AMarginThatTheArrowsCameToStaysWhenItIsLeft) {
  SetProfile("TopMargin", "104");
  Open();
  Spin("top_margin")->setFocus(Qt::TabFocusReason);
  PressKey(Qt::Key_Up);
  EXPECT_EQ(Spin("top_margin")->text(), "1,05 cm");
  PressKey(Qt::Key_Tab);
  PressKey(Qt::Key_Backtab);
  EXPECT_EQ(form->setup().top_margin, 105);
  PressMnemonicOf(Qt::Key_I, "print");
  EXPECT_EQ(Spin("top_margin")->text(), "1,05 cm");
  // Typed by the user, the very same text is another value.
  TypeSpin("top_margin", "1,05 cm");
  PressKey(Qt::Key_Tab);
  EXPECT_EQ(form->setup().top_margin, 150);
}

TEST_F(PrintSetup, AnArrowStepsFromWhatWasTyped) {
  Open();
  TypeSpin("top_margin", "1,5");
  PressKey(Qt::Key_Up);
  EXPECT_EQ(form->setup().top_margin, 151);
  EXPECT_EQ(Spin("top_margin")->text(), "1,51 cm");
}

TEST_F(PrintSetup, TheWheelChangesNothing) {
  Open();
  for (const char* name : {"lines", "top_margin", "left_margin"}) TurnWheel(Spin(name));
  ShowLayoutPage();
  ExpectWheelChangesNothing(*dialog);
  EXPECT_EQ(form->setup().lines, 64);
  EXPECT_EQ(form->setup().top_margin, 200);
  EXPECT_EQ(form->setup().left_margin, 200);
}

// ---- destination ----

TEST_F(PrintSetup, TheTickEnablesThePathAndGoesThere) {
  Open();
  PressChoice("to_file");
  EXPECT_TRUE(form->prints_to_file());
  EXPECT_TRUE(Named(*dialog, "path")->isEnabled());
  EXPECT_EQ(FocusName(), "path");
  PressKey(Qt::Key_H, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !form->prints_to_file(); }));
  EXPECT_FALSE(Named(*dialog, "path")->isEnabled());
}

TEST_F(PrintSetup, PrintsIntoTheFileAndStays) {
  Open();
  PressChoice("to_file");
  TypeInto(*dialog, "path", "été.txt");
  PressNamed(*dialog, "print");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(messages.TakeShown(), ShownBoxes());
  const std::string text = Contents(home + "été.txt");
  EXPECT_EQ(std::ranges::count(text, '\n'), 3 + 1 + 3);
  // Allée and Érables in the code page of the cards.
  EXPECT_NE(text.find("All\x82"
                      "e des \x90rables"),
            std::string::npos);
  EXPECT_EQ(Profile("PrintType"), "1");
  EXPECT_EQ(Profile("FileToPrint"), "été.txt");
  PressNamed(*dialog, "2");
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(PrintSetup, WhatIsTypedWhenThePrintBeginsCounts) {
  Open();
  PressChoice("to_file");
  TypeSpin("lines", "30");
  TypeSpin("top_margin", "1,2");
  // The letter leaves the focus where it is.
  PressMnemonicOf(Qt::Key_I, "print");
  EXPECT_EQ(Profile("Lines"), "30");
  EXPECT_EQ(Profile("TopMargin"), "120");
  EXPECT_EQ(std::ranges::count(Contents(home + "carn.prn"), '\n'), 2 + 1 + 3);
}

TEST_F(PrintSetup, AFileThatIsRefusedSaysSoAndTheFormStays) {
  Open();
  PressChoice("to_file");
  TypeInto(*dialog, "path", "CARNETEL.DAN");
  PressKey(Qt::Key_Return);
  EXPECT_EQ(messages.TakeShown(),
            (ShownBoxes{{MessageStyle::kError, 79, "Périphérique inaccessible !"}}));
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(PrintSetup, PrintsOnThePrinterAndStays) {
  StorePrinter({"Laser", "HP", "usb://HP"});
  Open();
  PressChoice("cards");
  PressChoice("current");
  PressNamed(*dialog, "print");
  ASSERT_EQ(dialogs.printers.jobs.size(), 1u);
  EXPECT_EQ(dialogs.printers.jobs[0].printer, "Laser");
  EXPECT_TRUE(dialogs.printers.jobs[0].document.ends_with("CARNETEL.DAN"));
  EXPECT_EQ(dialogs.printers.ends, 1);
  EXPECT_EQ(Profile("Mode"), "1");
  EXPECT_EQ(Profile("Type"), "2");
  EXPECT_TRUE(dialog->isVisible());
  dialogs.printers.start = PrinterStart::kNoDevice;
  PressNamed(*dialog, "print");
  EXPECT_EQ(messages.TakeShown(),
            (ShownBoxes{{MessageStyle::kError, 79, "Périphérique inaccessible !"}}));
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(PrintSetup, ClosingKeepsNothing) {
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_E}) {
    Open();
    TypeSpin("lines", "30");
    QSignalSpy ended(dialog.get(), &QDialog::finished);
    PressKey(key, key == Qt::Key_E ? Qt::AltModifier : Qt::NoModifier);
    ASSERT_TRUE(ended.count() == 1 || ended.wait());
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Profile("Lines"), "(missing)");
  }
}

// ---- printer ----

TEST_F(PrintSetup, ConfigurerChoosesAPrinterAndShowsIt) {
  dialogs.printers.installed = {{"Accueil", "HP", "CUPS"}, {"Bureau", "Epson", "usb://E"}};
  Open();
  choose = [](PrinterChoiceForm& choice) {
    choice.Select(1);
    return true;
  };
  PressNamed(*dialog, "configure");
  EXPECT_EQ(Label("printer"), "Bureau sur usb://E");
  (void)Preview();
  EXPECT_EQ(pages_asked, (std::vector<std::string>{"", "Bureau"}));
  // Only the page of the printer may have changed: the preview follows all the same.
  choose = [](PrinterChoiceForm&) { return false; };
  PressNamed(*dialog, "configure");
  EXPECT_EQ(Label("printer"), "Bureau sur usb://E");
  (void)Preview();
  EXPECT_EQ(pages_asked.size(), 3u);
}

// ---- keys and help ----

TEST_F(PrintSetup, TabComesByEverything) {
  Open();
  Spin("lines")->setFocus();
  EXPECT_EQ(TabNames(), (QStringList{"lines", "top_margin", "left_margin", "to_file", "configure",
                                     "print", "2", "500", "qt_tabwidget_tabbar", "list", "file"}));
}

TEST_F(PrintSetup, LettersWithAltGoToTheControls) {
  Open();
  const QList<std::pair<Qt::Key, const char*>> letters = {{Qt::Key_L, "list"},
                                                          {Qt::Key_F, "cards"},
                                                          {Qt::Key_G, "file"},
                                                          {Qt::Key_T, "selection"},
                                                          {Qt::Key_R, "current"}};
  for (const auto& [letter, name] : letters) {
    PressKey(letter, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return IsOn(name); })) << name;
  }
  const QList<std::pair<Qt::Key, const char*>> fields = {
      {Qt::Key_N, "lines"}, {Qt::Key_U, "top_margin"}, {Qt::Key_A, "left_margin"}};
  for (const auto& [letter, name] : fields) {
    PressKey(letter, Qt::AltModifier);
    EXPECT_EQ(FocusName(), name);
  }
  PressKey(Qt::Key_D, Qt::AltModifier);
  EXPECT_EQ(Page(), 802);
  PressKey(Qt::Key_M, Qt::AltModifier);
  EXPECT_EQ(Page(), 801);
}

TEST_F(PrintSetup, TheHelpIsThatOfThePage) {
  Open();
  PressKey(Qt::Key_F1);
  PressNamed(*dialog, "500");
  ShowLayoutPage();
  PressKey(Qt::Key_F1);
  PressNamed(*dialog, "500");
  QList<int> topics;
  for (const QList<QVariant>& wanted : *help) topics += wanted.value(0).toInt();
  EXPECT_EQ(topics, (QList<int>{54, 54, 55, 55}));
}

}  // namespace
}  // namespace carnetel::desktop
