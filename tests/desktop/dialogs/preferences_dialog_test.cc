// The preferences as their user meets them: every radio, box and button, with mouse and keyboard.
#include "desktop/dialogs/preferences_dialog.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QGroupBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <stdexcept>

namespace carnetel::desktop {
namespace {

using Numbers = std::vector<int>;

constexpr int kRadiosAndBox[] = {150,  172,  174,  164,  2015, 2027, 2020,
                                 2021, 2022, 2023, 2024, 2025, 2026, 223};
constexpr int kButtons[] = {1, 2, 500};

class PreferencesDialogTest : public testing::Test {
 protected:
  void Open(const Settings& settings = {}, bool has_caller = false) {
    form_ = std::make_unique<PreferencesForm>(settings, has_caller);
    dialog_ = std::make_unique<PreferencesDialog>(*form_, nullptr);
    help_ = std::make_unique<QSignalSpy>(dialog_.get(), &PreferencesDialog::helpWanted);
    finished_ = std::make_unique<QSignalSpy>(dialog_.get(), &QDialog::finished);
    dialog_->show();
    dialog_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }
  void OpenWithNameIndex() {
    Settings settings;
    settings.key_field = kNom;
    Open(settings);
  }
  QAbstractButton& Control(int id) {
    auto* control = dialog_->findChild<QAbstractButton*>(QString::number(id));
    if (control == nullptr) throw std::runtime_error("no control " + std::to_string(id));
    return *control;
  }
  void Click(int id) { QTest::mouseClick(&Control(id), Qt::LeftButton, {}, ClickPoint(id)); }
  void Key(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, keys);
  }
  static int Focus() {
    const QWidget* focus = QApplication::focusWidget();
    return focus == nullptr ? 0 : focus->objectName().toInt();
  }
  Numbers Checked() { return Having(&QAbstractButton::isChecked); }
  Numbers Enabled() { return Having(&QAbstractButton::isEnabled); }
  Numbers TabRound() {
    Numbers stops;
    const int start = Focus();
    do {
      stops.push_back(Focus());
      Key(Qt::Key_Tab);
    } while (Focus() != start && stops.size() < 30);
    return stops;
  }
  // How the dialog ended; nothing while it is open.
  Numbers Ends() {
    Numbers ends;
    for (const auto& arguments : *finished_) ends.push_back(arguments.at(0).toInt());
    return ends;
  }

  std::unique_ptr<PreferencesForm> form_;
  std::unique_ptr<PreferencesDialog> dialog_;
  std::unique_ptr<QSignalSpy> help_;
  std::unique_ptr<QSignalSpy> finished_;

 private:
  // On the round face of a radio or the square of the box.
  QPoint ClickPoint(int id) { return {8, Control(id).height() / 2}; }
  Numbers Having(bool (QAbstractButton::*trait)() const) {
    Numbers having;
    for (const int id : kRadiosAndBox) {
      if ((Control(id).*trait)()) having.push_back(id);
    }
    return having;
  }
};

// ---- what it shows ----

TEST_F(PreferencesDialogTest, HasItsTitleAndTexts) {
  Open();
  EXPECT_EQ(dialog_->objectName(), "134");
  EXPECT_EQ(dialog_->windowTitle(), "Préférences");
  const std::pair<int, const char*> texts[] = {{150, "&Société "},
                                               {172, "&Nom "},
                                               {174, "Notes"},
                                               {164, "Références"},
                                               {2015, "Champ Index"},
                                               {2027, "Premier champ de la fiche"},
                                               {2020, "Qualité-Prénom-Nom"},
                                               {2021, "Prénom-Nom"},
                                               {2022, "Qualité-Nom-Prénom"},
                                               {2023, "Nom-Prénom"},
                                               {2024, "Société"},
                                               {2025, "Société-Nom"},
                                               {2026, "Nom-Société"},
                                               {223, "Afficher &Infos-Bulles "},
                                               {1, "Ok"},
                                               {2, "Abandon"},
                                               {500, "?"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(Control(id).text(), QString::fromUtf8(text)) << id;
  QStringList titles;
  for (const QGroupBox* box : dialog_->findChildren<QGroupBox*>()) titles += box->title();
  titles.sort();
  EXPECT_EQ(titles, (QStringList{"Affichage de la liste", "Afficher en priorité",
                                 "Commencer la saisie par", "Indexer sur"}));
}

TEST_F(PreferencesDialogTest, ShowsTheDefaults) {
  Open();
  EXPECT_EQ(Checked(), (Numbers{150, 164, 2015, 2021, 2024, 223}));
  EXPECT_EQ(Enabled(), (Numbers{150, 172, 174, 164, 2015, 2027, 2024, 2025, 2026, 223}));
}

TEST_F(PreferencesDialogTest, ShowsEverySetting) {
  Settings settings;
  settings.key_field = kNom;
  settings.shows_references = false;
  settings.starts_at_first = true;
  settings.style_aff_list = 3;
  settings.style_aff_ste = 2;
  settings.balloons = false;
  Open(settings);
  EXPECT_EQ(Checked(), (Numbers{172, 174, 2027, 2023, 2026}));
  EXPECT_EQ(Enabled(), (Numbers{150, 172, 174, 164, 2015, 2027, 2020, 2021, 2022, 2023, 223}));
}

TEST_F(PreferencesDialogTest, EveryStyleHasItsRadio) {
  for (int style = 0; style < 4; ++style) {
    Settings settings;
    settings.style_aff_list = style;
    settings.style_aff_ste = style < 3 ? style : 0;
    Open(settings);
    EXPECT_TRUE(Control(2020 + settings.style_aff_list).isChecked()) << style;
    EXPECT_TRUE(Control(2024 + settings.style_aff_ste).isChecked()) << style;
    EXPECT_EQ(Checked().size(), 6u) << style;
  }
}

// 2020 + 7 is the number of another radio.
TEST_F(PreferencesDialogTest, AStyleThatDoesNotExistChecksNoRadioAndStays) {
  Settings settings;
  settings.style_aff_list = 7;
  settings.style_aff_ste = -4;
  Open(settings);
  EXPECT_EQ(Checked(), (Numbers{150, 164, 2015, 223}));
  Key(Qt::Key_Return);
  EXPECT_EQ(form_->style_aff_list(), 7);
  EXPECT_EQ(form_->style_aff_ste(), -4);
  Open(settings);
  Click(2025);
  EXPECT_EQ(form_->style_aff_ste(), 1);
  EXPECT_EQ(Checked(), (Numbers{150, 164, 2015, 2025, 223}));
}

TEST_F(PreferencesDialogTest, TooltipsAreOffAndGreyedWithACaller) {
  Open({}, true);
  EXPECT_FALSE(Control(223).isEnabled());
  EXPECT_FALSE(Control(223).isChecked());
  Click(223);
  EXPECT_FALSE(Control(223).isChecked());
  EXPECT_TRUE(form_->TakenOver({}).balloons);
}

// ---- choices with the mouse ----

TEST_F(PreferencesDialogTest, TheIndexSwapsTheStyles) {
  Open();
  Click(172);
  EXPECT_EQ(form_->key_field(), kNom);
  EXPECT_EQ(Enabled(), (Numbers{150, 172, 174, 164, 2015, 2027, 2020, 2021, 2022, 2023, 223}));
  Click(2025);
  EXPECT_EQ(form_->style_aff_ste(), 0);
  // What is greyed still shows its choice.
  EXPECT_EQ(Checked(), (Numbers{172, 164, 2015, 2021, 2024, 223}));
  Click(150);
  EXPECT_EQ(form_->key_field(), kSte1);
  EXPECT_EQ(Enabled(), (Numbers{150, 172, 174, 164, 2015, 2027, 2024, 2025, 2026, 223}));
  EXPECT_EQ(Checked(), (Numbers{150, 164, 2015, 2021, 2024, 223}));
}

TEST_F(PreferencesDialogTest, EveryStyleOfTheCompanyIndexCanBeChosen) {
  Open();
  for (const int style : {1, 2, 0}) {
    Click(2024 + style);
    EXPECT_EQ(form_->style_aff_ste(), style);
    EXPECT_EQ(Checked(), (Numbers{150, 164, 2015, 2021, 2024 + style, 223}));
  }
  EXPECT_EQ(form_->style_aff_list(), 1);
}

TEST_F(PreferencesDialogTest, EveryStyleOfTheNameIndexCanBeChosen) {
  OpenWithNameIndex();
  for (const int style : {0, 2, 3, 1}) {
    Click(2020 + style);
    EXPECT_EQ(form_->style_aff_list(), style);
    EXPECT_EQ(Checked(), (Numbers{172, 164, 2015, 2020 + style, 2024, 223}));
  }
  EXPECT_EQ(form_->style_aff_ste(), 0);
}

TEST_F(PreferencesDialogTest, ZoneStartAndTooltipsCanBeChosen) {
  Open();
  Click(174);
  EXPECT_FALSE(form_->shows_references());
  Click(2027);
  EXPECT_TRUE(form_->starts_at_first());
  Click(223);
  EXPECT_FALSE(form_->balloons());
  EXPECT_EQ(Checked(), (Numbers{150, 174, 2027, 2021, 2024}));
  Click(164);
  EXPECT_TRUE(form_->shows_references());
  Click(2015);
  EXPECT_FALSE(form_->starts_at_first());
  Click(223);
  EXPECT_TRUE(form_->balloons());
}

// ---- keyboard ----

TEST_F(PreferencesDialogTest, TabGoesFromBoxToBox) {
  Open();
  EXPECT_EQ(Focus(), 150);
  EXPECT_EQ(TabRound(), (Numbers{150, 2024, 164, 2015, 223, 1, 2, 500}));
  OpenWithNameIndex();
  EXPECT_EQ(Focus(), 172);
  EXPECT_EQ(TabRound(), (Numbers{172, 2021, 164, 2015, 223, 1, 2, 500}));
  Open({}, true);
  EXPECT_EQ(TabRound(), (Numbers{150, 2024, 164, 2015, 1, 2, 500}));
}

TEST_F(PreferencesDialogTest, ArrowsChooseWithinABox) {
  Open();
  Key(Qt::Key_Down);
  EXPECT_EQ(form_->key_field(), kNom);
  EXPECT_EQ(Focus(), 172);
  Key(Qt::Key_Tab);
  for (const int style : {2, 3}) {
    Key(Qt::Key_Down);
    EXPECT_EQ(form_->style_aff_list(), style);
  }
  for (const int style : {2, 1, 0}) {
    Key(Qt::Key_Up);
    EXPECT_EQ(form_->style_aff_list(), style);
  }
  EXPECT_EQ(Focus(), 2020);
  // The other box of styles begins below: an arrow does not lead out of its own.
  EXPECT_EQ(form_->style_aff_ste(), 0);
  Key(Qt::Key_Tab);
  Key(Qt::Key_Up);
  EXPECT_FALSE(form_->shows_references());
  Key(Qt::Key_Tab);
  Key(Qt::Key_Down);
  EXPECT_TRUE(form_->starts_at_first());
  Key(Qt::Key_Tab);
  Key(Qt::Key_Space);
  EXPECT_FALSE(form_->balloons());
}

TEST_F(PreferencesDialogTest, AnArrowPastTheLastCompanyStyleDoesNotReachThePersonStyles) {
  Settings settings;
  settings.style_aff_ste = 2;
  Open(settings);
  Control(2026).setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Down);
  EXPECT_EQ(form_->style_aff_list(), 1);
  EXPECT_TRUE(form_->company_styles_enabled());
  EXPECT_EQ(Checked(), (Numbers{150, 164, 2015, 2021, 2024 + form_->style_aff_ste(), 223}));
}

TEST_F(PreferencesDialogTest, LettersWithAltChoose) {
  Open();
  Key(Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return form_->key_field() == kNom; }));
  Key(Qt::Key_S, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return form_->key_field() == kSte1; }));
  Key(Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !form_->balloons(); }));
}

TEST_F(PreferencesDialogTest, EveryStopHasAName) {
  Open();
  for (const int id : kRadiosAndBox) {
    const auto* spoken = QAccessible::queryAccessibleInterface(&Control(id));
    EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << id;
  }
  EXPECT_EQ(Control(500).accessibleName(), "Aide");
}

// ---- its end ----

TEST_F(PreferencesDialogTest, OkAndEnterConfirm) {
  Open();
  Click(1);
  EXPECT_EQ(Ends(), Numbers{QDialog::Accepted});
  EXPECT_FALSE(dialog_->isVisible());
  Open();
  Key(Qt::Key_Return);
  EXPECT_EQ(Ends(), Numbers{QDialog::Accepted});
  Open();
  Control(223).setFocus();
  Key(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(Ends(), Numbers{QDialog::Accepted});
  EXPECT_TRUE(form_->balloons());
}

TEST_F(PreferencesDialogTest, AbandonEscapeAndTheCrossDoNot) {
  Open();
  Click(2);
  EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
  Open();
  Key(Qt::Key_Escape);
  EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
  Open();
  dialog_->close();
  EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
}

TEST_F(PreferencesDialogTest, EnterOnAButtonPressesThatButton) {
  Open();
  EXPECT_TRUE(dynamic_cast<QPushButton&>(Control(1)).isDefault());
  Control(2).setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Return);
  EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
  Open();
  Control(500).setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Return);
  EXPECT_EQ(help_->size(), 1);
  EXPECT_EQ(Ends(), Numbers());
}

TEST_F(PreferencesDialogTest, HelpComesByButtonAndKeyAndTheDialogStays) {
  Open();
  Click(500);
  EXPECT_EQ(help_->size(), 1);
  for (const int id : {150, 2024, 223, 1, 500}) {
    Control(id).setFocus(Qt::TabFocusReason);
    Key(Qt::Key_F1);
  }
  EXPECT_EQ(help_->size(), 6);
  EXPECT_EQ(Ends(), Numbers());
  EXPECT_TRUE(dialog_->isVisible());
}

// ---- its look ----

// The picture of the dialog is saved beside the test program, for looking at.
class PreferencesLook : public PreferencesDialogTest {
 protected:
  void ExpectNothingClipped(const QString& picture) {
    for (const int id : kRadiosAndBox) ExpectFits(Control(id), Control(id).sizeHint());
    for (const int id : kButtons) ExpectFits(Control(id), Control(id).sizeHint());
    for (const QGroupBox* box : dialog_->findChildren<QGroupBox*>()) {
      ExpectFits(*box, box->minimumSizeHint());
    }
    EXPECT_EQ(dialog_->minimumSize(), dialog_->maximumSize());
    EXPECT_EQ(dialog_->size().boundedTo(QSize(1000, 700)), dialog_->size());
    EXPECT_TRUE(dialog_->grab().save(QStringLiteral("preferences_%1.png").arg(picture)));
  }

 private:
  void ExpectFits(const QWidget& widget, const QSize& needed) {
    EXPECT_GE(widget.width(), needed.width()) << widget.objectName().toStdString();
    EXPECT_GE(widget.height(), needed.height()) << widget.objectName().toStdString();
    const QRect place(widget.mapTo(dialog_.get(), QPoint()), widget.size());
    EXPECT_TRUE(dialog_->rect().contains(place)) << widget.objectName().toStdString();
  }
};

TEST_F(PreferencesLook, AtTheUsualSize) {
  Open();
  ExpectNothingClipped(QStringLiteral("usual"));
}

TEST_F(PreferencesLook, WithLettersTwiceAsLarge) {
  const QFont usual = QApplication::font();
  QApplication::setFont(QFont(usual.family(), usual.pointSize() * 2));
  OpenWithNameIndex();
  ExpectNothingClipped(QStringLiteral("large"));
  QApplication::setFont(usual);
}

TEST_F(PreferencesLook, WithACaller) {
  Open({}, true);
  ExpectNothingClipped(QStringLiteral("caller"));
}

}  // namespace
}  // namespace carnetel::desktop
