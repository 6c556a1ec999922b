// The windows of the three enrichment modes over a directory in memory, with a test in place of
// their user.
#include <gmock/gmock.h>

#include <QTimer>
#include <optional>

#include "desktop/dialogs/enrichment_dialog.h"
#include "desktop/dialogs/enrichment_progress.h"
#include "desktop/dialogs/window_dialogs.h"
#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/named_controls.h"
#include "tests/shell/shell_testing.h"
#include "tests/support/same_bytes.h"
#include "tests/transfer/capture_testing.h"

namespace carnetel::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

constexpr char kCapture[] = "/capture.dat";
const Captured kGamma = {.company = "gamma \x82",
                         .address = "3 rue des Lilas",
                         .first_number = "01.40",
                         .is_fax = true,
                         .postal_code = "69000",
                         .town = "LYON",
                         .second_number = "02"};

class EnrichmentWindows : public OpenDirectoryTest {
 protected:
  EnrichmentWindows() { OpenAt(kSte1); }

  EnrichmentForm& Begin(EnrichmentMode mode, const std::vector<Captured>& records) {
    std::string bytes;
    for (const Captured& record : records) bytes += CaptureBytes(record);
    files_.SetContents(kCapture, AsBytes(bytes));
    form_.emplace(*directory_, messages_, mode, kCapture, "?");
    return *form_;
  }
  // Shows the form over these records.
  void Open(EnrichmentMode mode, const std::vector<Captured>& records) {
    review_.emplace(Begin(mode, records));
    dialog_ = std::make_unique<EnrichmentDialog>(*review_, nullptr);
    dialog_->SetBeeper([this] { ++beeps_; });
    help_ = std::make_unique<QSignalSpy>(dialog_.get(), &FixedDialog::helpWanted);
    Show(*dialog_);
  }
  [[nodiscard]] std::string Text(int control) const {
    return dialog_->panel().FieldText(control).toStdString();
  }
  void TypeInto(int control, const QString& text) {
    dialog_->panel().Control(control)->setFocus();
    PressKey(Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) PressKey(Qt::Key_Delete);
    Type(text);
  }
  [[nodiscard]] bool IsOn(const QString& button) const {
    return Named<QPushButton>(*dialog_, button)->isEnabled();
  }
  [[nodiscard]] CardRecord Card(uint32_t number) {
    CardRecord card;
    EXPECT_TRUE(directory_->main().ReadCard(number * kCardSize, card));
    return card;
  }

  SilentMessages messages_;
  std::optional<EnrichmentForm> form_;
  std::optional<EnrichmentReview> review_;
  std::unique_ptr<EnrichmentDialog> dialog_;
  std::unique_ptr<QSignalSpy> help_;
  int beeps_ = 0;
};

// ---- to look at ----

TEST_F(EnrichmentWindows, ReviewShowsTheFirstRecordReadOnly) {
  Open(EnrichmentMode::kReview, {kGamma});
  EXPECT_EQ(dialog_->objectName(), "116");
  EXPECT_EQ(dialog_->windowTitle(), "Enrichissement de l'carnetel");
  EXPECT_TRUE(dialog_->isWindow());
  EXPECT_TRUE(dialog_->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
  EXPECT_EQ(Text(150), "GAMMA É");
  EXPECT_EQ(Text(152), "3 rue des Lilas");
  EXPECT_EQ(Text(155), "69000");
  EXPECT_EQ(Text(156), "LYON");
  EXPECT_EQ(Text(158), "01:40");
  EXPECT_EQ(Text(160), "02");
  for (const FormField& row : kFormFields) {
    const auto* edit = qobject_cast<QLineEdit*>(dialog_->panel().Control(row.control));
    EXPECT_EQ(edit == nullptr, row.control == 174) << row.control;
    EXPECT_TRUE(edit == nullptr || edit->isReadOnly()) << row.control;
  }
  EXPECT_EQ(dialog_->panel().Control(164), nullptr);
  ExpectNames(*dialog_);
}

TEST_F(EnrichmentWindows, ReviewSavesPassesOverAndClosesAtTheEnd) {
  Open(EnrichmentMode::kReview, {{.company = "ALPHA"}, {.company = "BETA"}, {.company = "CESAR"}});
  EXPECT_EQ(FocusId(), 1);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Text(150), "BETA");
  PressNamed(*dialog_, "skip");
  EXPECT_EQ(Text(150), "CESAR");
  EXPECT_TRUE(dialog_->isVisible());
  Press(*dialog_, 1);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_THAT(Companies(), ElementsAre("ALPHA", "CESAR"));
  EXPECT_EQ(form_->added(), 2);
}

TEST_F(EnrichmentWindows, ReviewWalksItsButtonsOnly) {
  Open(EnrichmentMode::kReview, {kGamma});
  EXPECT_EQ(TabNames(), (QStringList{"1", "skip", "2", "500"}));
}

TEST_F(EnrichmentWindows, ReviewEndsByItsButtonByEscapeAndByTheCross) {
  for (int way = 0; way < 3; ++way) {
    SCOPED_TRACE(way);
    Open(EnrichmentMode::kReview, {{.company = "ALPHA"}, {.company = "BETA"}});
    if (way == 0) PressMnemonic(*dialog_, Qt::Key_T, 2);
    if (way == 1) PressKey(Qt::Key_Escape);
    if (way == 2) dialog_->close();
    EXPECT_FALSE(dialog_->isVisible());
  }
  EXPECT_THAT(Companies(), IsEmpty());
}

TEST_F(EnrichmentWindows, EachModeHasItsPageOfTheHelp) {
  Open(EnrichmentMode::kReview, {kGamma});
  PressKey(Qt::Key_F1);
  EXPECT_EQ(help_->takeFirst(), (QList<QVariant>{81}));
  Open(EnrichmentMode::kEdit, {kGamma});
  PressKey(Qt::Key_F1);
  EXPECT_EQ(help_->takeFirst(), (QList<QVariant>{80}));
  Press(*dialog_, 500);
  EXPECT_EQ(help_->takeFirst(), (QList<QVariant>{80}));
}

// ---- to complete ----

TEST_F(EnrichmentWindows, EditingHasEveryFieldWithReferencesAndNotes) {
  Open(EnrichmentMode::kEdit, {kGamma});
  EXPECT_EQ(dialog_->objectName(), "117");
  EXPECT_EQ(dialog_->windowTitle(), "Enrichissement de l'carnetel");
  EXPECT_EQ(Text(150), "GAMMA É");
  EXPECT_EQ(FocusId(), 150);
  EXPECT_EQ(TabNames(), (QStringList{"150", "151", "152", "153", "155",  "156", "157",
                                     "170", "171", "172", "158", "159",  "160", "161",
                                     "162", "164", "174", "1",   "skip", "2",   "500"}));
  ExpectNames(*dialog_);
}

TEST_F(EnrichmentWindows, EditingSavesWhatWasTyped) {
  Open(EnrichmentMode::kEdit, {kGamma, {.company = "DELTA"}});
  TypeInto(150, "Gamma & fils");
  TypeInto(158, "01x23");
  TypeInto(172, "Bérard");
  TypeInto(174, "à rappeler");
  auto* references = qobject_cast<ReferenceCombo*>(dialog_->panel().Control(164));
  references->setCurrentIndex(2);
  references->edit()->setFocus();
  Type("réf");
  // In the notes and in every other field Enter saves.
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Text(150), "DELTA");
  EXPECT_EQ(Text(174), "");
  EXPECT_EQ(dialog_->panel().References(), QStringList(6));
  EXPECT_EQ(FocusId(), 150);
  const CardRecord card = Card(1);
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "Gamma & fils");
  EXPECT_EQ(card.FieldText(kAdr1).bytes(), "3 rue des Lilas");
  EXPECT_EQ(card.FieldText(kTel1).bytes(), "0123");
  EXPECT_EQ(card.FieldText(kNom).bytes(), "B\x82rard");
  EXPECT_EQ(card.FieldText(kNotes).bytes(), "\x85 rappeler");
  EXPECT_EQ(card.FieldText(kRef1 + 2).bytes(),
            "r\x82"
            "f");
  EXPECT_EQ(card.FieldText(kShortPostalCode).bytes(), "69000");
}

TEST_F(EnrichmentWindows, EnterInTheNotesSaves) {
  Open(EnrichmentMode::kEdit, {kGamma, {.company = "DELTA"}});
  dialog_->panel().Control(174)->setFocus();
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Text(150), "DELTA");
  EXPECT_EQ(form_->added(), 1);
}

TEST_F(EnrichmentWindows, ACardWithoutCompanyAndSurnameIsRefused) {
  Open(EnrichmentMode::kEdit, {kGamma, {.company = "DELTA"}});
  TypeInto(150, "");
  Press(*dialog_, 1);
  ASSERT_EQ(messages_.shown().size(), 1u);
  EXPECT_EQ(messages_.shown()[0].text, "Fiche incomplète : le champ d'index est obligatoire ");
  EXPECT_EQ(FocusId(), 150);
  EXPECT_EQ(Text(156), "LYON");
  EXPECT_EQ(form_->added(), 0);
  TypeInto(172, "Durand");
  Press(*dialog_, 1);
  EXPECT_EQ(Text(150), "DELTA");
  EXPECT_EQ(form_->added(), 1);
}

TEST_F(EnrichmentWindows, AKeyFieldStartsAsInTheForm) {
  Open(EnrichmentMode::kEdit, {kGamma});
  TypeInto(150, "(A");
  EXPECT_EQ(beeps_, 1);
  TypeInto(172, "-");
  EXPECT_EQ(beeps_, 2);
  EXPECT_EQ(Text(172), "");
  TypeInto(171, "(");
  EXPECT_EQ(Text(171), "(");
  EXPECT_EQ(beeps_, 2);
}

TEST_F(EnrichmentWindows, AtTheEndOfEditingThePressedButtonGoesOffAndTheFormStays) {
  Open(EnrichmentMode::kEdit, {kGamma});
  PressNamed(*dialog_, "skip");
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_FALSE(IsOn("skip"));
  EXPECT_TRUE(IsOn("1"));
  EXPECT_EQ(FocusId(), 2);
  Press(*dialog_, 1);
  EXPECT_FALSE(IsOn("1"));
  EXPECT_EQ(form_->added(), 1);
  // Enter saves no second time.
  dialog_->panel().Control(150)->setFocus();
  PressKey(Qt::Key_Return);
  EXPECT_EQ(form_->added(), 1);
  EXPECT_TRUE(dialog_->isVisible());
  Press(*dialog_, 2);
  EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(EnrichmentWindows, PicturesOfBothForms) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open(EnrichmentMode::kReview, {kGamma});
    SavePicture(*dialog_, "enrichment_review", percent);
    Open(EnrichmentMode::kEdit, {kGamma});
    SavePicture(*dialog_, "enrichment_edit", percent);
  }
}

// ---- silently ----

class SilentEnrichment : public EnrichmentWindows {
 protected:
  // Runs over these records; `user` acts as soon as the box is up.
  void Run(const std::vector<Captured>& records, const std::function<void(QDialog&)>& user) {
    EnrichmentForm& form = Begin(EnrichmentMode::kSilent, records);
    WindowDialogs dialogs(nullptr, busy_);
    QTimer::singleShot(0, &dialogs_context_, [this, user] {
      for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<EnrichmentProgress*>(widget);
        if (box == nullptr) continue;
        ++boxes_;
        EXPECT_TRUE(box->isVisible());
        EXPECT_TRUE(busy_.IsBusy());
        user(*box);
      }
    });
    dialogs.RunEnrichment(form);
    EXPECT_EQ(boxes_, 1);
    EXPECT_FALSE(busy_.IsBusy());
  }

  BusyState busy_;
  QObject dialogs_context_;
  int boxes_ = 0;
};

TEST_F(SilentEnrichment, ShowsDirectoryAndCompanyAndAddsThemAll) {
  Run({{.company = "ALPHA"}, {.company = "BETA"}}, [](QDialog& box) {
    EXPECT_EQ(box.objectName(), "118");
    EXPECT_EQ(box.windowTitle(), "Enrichissement de l'carnetel en cours...");
    EXPECT_TRUE(box.isWindow());
    EXPECT_EQ(Named<QLabel>(box, "directory")->text(), "/d/X.DAN");
    EXPECT_EQ(Named<QLabel>(box, "company")->text(), "ALPHA");
    EXPECT_EQ(Named<QPushButton>(box, "2")->text(), "Abandonner");
    ExpectNames(box);
  });
  EXPECT_THAT(Companies(), ElementsAre("ALPHA", "BETA"));
}

TEST_F(SilentEnrichment, StopsByButtonKeyAndCross) {
  const std::function<void(QDialog&)> kWays[] = {
      [](QDialog& box) { Press(box, 2); },
      [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); },
      [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); },
      [](QDialog& box) { box.close(); },
  };
  for (const auto& way : kWays) {
    boxes_ = 0;
    form_.reset();
    // The card at hand is still added.
    Run({{.company = "ALPHA"}, {.company = "BETA"}, {.company = "CESAR"}}, way);
    EXPECT_EQ(form_->added(), 1);
  }
  EXPECT_THAT(Companies(), ElementsAre("ALPHA", "ALPHA", "ALPHA", "ALPHA"));
}

TEST_F(SilentEnrichment, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    EnrichmentProgress box(busy_, "/home/anne/Carnets/CLIENTS.DAN", nullptr);
    EXPECT_FALSE(box.ShowCompany("MAISON DES WAGONS WERNER WW."));
    SavePicture(box, "enrichment_silent", percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
