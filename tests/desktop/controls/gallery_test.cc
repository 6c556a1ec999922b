// Small windows with all controls, saved as pictures for eyes: gallery*.png beside the test
// program. What is checked is that they were painted at the size of their layout.
#include <gtest/gtest.h>

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QVBoxLayout>

#include "desktop/controls/bubble_button.h"
#include "desktop/controls/button_row.h"
#include "desktop/controls/card_list_view.h"
#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/filtered_notes_edit.h"
#include "desktop/controls/letter_tabs.h"
#include "desktop/controls/nice_frame.h"
#include "desktop/controls/panel_colours.h"
#include "desktop/controls/picker_combo.h"
#include "desktop/controls/progress_window.h"
#include "desktop/controls/reference_combo.h"
#include "desktop/controls/window_messages.h"

namespace carnetel::desktop {
namespace {

class GalleryRows : public RowSource {
 public:
  int RowCount() override { return 200; }
  QString Label(int row) override {
    const QStringList names = {"ALPHA CONSEIL",
                               "BETA",
                               "Boulangerie Émile",
                               "DUPONT ET FILS",
                               "Électricité générale du Midi",
                               "GARAGE DU LAC",
                               "MARTIN"};
    return names[row % names.size()];
  }
  bool IsMarked(int row) override { return row % 3 == 1; }
  bool IsFlagged(int row) override { return row % 4 < 2; }
  bool ShowsFlagColumn() override { return true; }
};

class Gallery : public QWidget {
 public:
  explicit Gallery(PanelLook look) {
    auto* column = new QVBoxLayout(this);
    column->setSpacing(6);
    column->addLayout(Toolbar());
    auto* joined = new QVBoxLayout;
    joined->setSpacing(0);
    tabs_ = new LetterTabs;
    joined->addWidget(tabs_);
    joined->addWidget(Body());
    column->addLayout(joined);
    column->setSizeConstraint(QLayout::SetFixedSize);
    tabs_->Select(658, false);
    colours_.SetLook(look);
    for (FilteredEdit* edit : findChildren<FilteredEdit*>()) {
      if (edit->objectName() != "edit") edit->SetFlat(look == PanelLook::kRest);
    }
  }

  CardListView* list_ = nullptr;
  LetterTabs* tabs_ = nullptr;

 private:
  QLayout* Toolbar() {
    auto* line = new QHBoxLayout;
    line->setSpacing(2);
    const std::pair<int, Face> faces[] = {
        {1010, Face::kOpen},   {1011, Face::kImport}, {1000, Face::kPrint}, {1001, Face::kSearch},
        {1002, Face::kGroups}, {1003, Face::kSelect}, {1013, Face::kHelp},  {1012, Face::kQuit}};
    QList<BubbleButton*> buttons;
    for (const auto& [id, face] : faces) {
      buttons += new BubbleButton(id, face, ButtonSize::kToolbar, QStringLiteral("Bouton"));
      line->addWidget(buttons.last());
    }
    buttons[4]->SetActive(false);
    new ButtonRow(buttons, this);
    line->addStretch();
    line->addWidget(new QLabel(QStringLiteral("Groupe affiché")));
    auto* picker = new PickerCombo(184);
    picker->SetRows({QStringLiteral("Tout le Fichier "), QStringLiteral("Lyon")}, 0);
    picker->setMinimumContentsLength(24);
    line->addWidget(picker);
    return line;
  }

  QWidget* Body() {
    auto* frame = new NiceFrame(2000, NiceFrame::Kind::kJoined);
    auto* line = new QHBoxLayout(frame);
    line->addWidget(list_ = new CardListView(195, rows_));
    list_->SetCurrentRow(4);
    line->addLayout(FormColumn());
    auto* panels = new QVBoxLayout;
    panels->addWidget(AddressPanel());
    panels->addWidget(NumberPanel());
    panels->addStretch();
    line->addLayout(panels);
    return frame;
  }

  QLayout* FormColumn() {
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    const std::pair<int, Face> faces[] = {{1008, Face::kNewCard}, {1006, Face::kSaveChange},
                                          {1007, Face::kSaveNew}, {1009, Face::kMark},
                                          {1004, Face::kDelete},  {1005, Face::kDeleteMarked}};
    for (const auto& [id, face] : faces) {
      auto* button = new BubbleButton(id, face, ButtonSize::kFormColumn, QStringLiteral("Bouton"));
      button->SetActive(id != 1006);
      column->addWidget(button);
    }
    column->addStretch();
    return column;
  }

  QLabel* Label(const QString& text, PanelRole role) {
    auto* label = new QLabel(text);
    colours_.Add(label, role);
    return label;
  }

  FilteredEdit* Edit(int id, const QString& text, PanelRole role) {
    auto* edit = new FilteredEdit(id, {}, 32);
    edit->setText(text);
    colours_.Add(edit, role);
    return edit;
  }

  QWidget* AddressPanel() {
    auto* panel = new NiceFrame(2003, NiceFrame::Kind::kPanel);
    colours_.Add(panel, PanelRole::kPanel);
    auto* grid = new QGridLayout(panel);
    grid->addWidget(Label(QStringLiteral("Société"), PanelRole::kText), 0, 0, Qt::AlignRight);
    grid->addWidget(Edit(150, QStringLiteral("Électricité générale du Midi"), PanelRole::kText), 0,
                    1);
    grid->addWidget(Label(QStringLiteral("Adresse"), PanelRole::kText), 1, 0, Qt::AlignRight);
    grid->addWidget(Edit(152, QStringLiteral("12, rue de la République"), PanelRole::kText), 1, 1);
    return panel;
  }

  QWidget* NumberPanel() {
    auto* panel = new NiceFrame(2004, NiceFrame::Kind::kPanel);
    colours_.Add(panel, PanelRole::kPanel);
    auto* grid = new QGridLayout(panel);
    const std::pair<const char*, Face> numbers[] = {{"Tél. 1", Face::kVoice},
                                                    {"Tél. 2", Face::kIsdn},
                                                    {"Fax", Face::kFax},
                                                    {"Modem", Face::kFiles},
                                                    {"Minitel", Face::kTerminal}};
    int row = 0;
    for (const auto& [label, face] : numbers) {
      grid->addWidget(Label(QString::fromUtf8(label), PanelRole::kReference), row, 0,
                      Qt::AlignRight);
      grid->addWidget(
          Edit(158 + row, QStringLiteral("04 67 00 00 0%1").arg(row), PanelRole::kReference), row,
          1);
      auto* button = new BubbleButton(1014 + row, face, ButtonSize::kSibling, QString());
      button->SetActive(row != 3);
      grid->addWidget(button, row++, 2);
    }
    grid->addWidget(Label(QStringLiteral("Références"), PanelRole::kReference), row, 0,
                    Qt::AlignRight);
    auto* references = new ReferenceCombo(164, 32);
    references->SetTexts({QStringLiteral("Client depuis 1994"), QString()});
    colours_.Add(references, PanelRole::kReference);
    grid->addWidget(references, row, 1);
    grid->addWidget(new BubbleButton(1018, Face::kNotes, ButtonSize::kFormColumn, QString()), row++,
                    2);
    grid->addWidget(Label(QStringLiteral("Notes"), PanelRole::kReference), row, 0, Qt::AlignRight);
    auto* notes = new FilteredNotesEdit(174, 64);
    notes->SetText(QStringLiteral("Absent le mercredi\nRappeler Mme Durand"));
    notes->setFixedHeight(50);
    colours_.Add(notes, PanelRole::kReference);
    grid->addWidget(notes, row, 1);
    return panel;
  }

  GalleryRows rows_;
  PanelColours colours_;
};

void Save(QWidget& widget, const QString& name) {
  widget.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
  const QPixmap picture = widget.grab();
  EXPECT_EQ(picture.deviceIndependentSize().toSize(), widget.sizeHint());
  const int percent = qRound(widget.devicePixelRatioF() * 100);
  EXPECT_TRUE(picture.save(QStringLiteral("gallery_%1_%2.png").arg(name).arg(percent)));
}

TEST(Gallery, AtRest) {
  Gallery gallery(PanelLook::kRest);
  Save(gallery, QStringLiteral("rest"));
}

TEST(Gallery, InEditLook) {
  Gallery gallery(PanelLook::kEdit);
  gallery.show();
  gallery.activateWindow();
  gallery.tabs_->Tab(658)->setFocus();
  Save(gallery, QStringLiteral("edit"));
}

TEST(Gallery, RestAndEditLookHaveOneSize) {
  const Gallery rest(PanelLook::kRest);
  const Gallery edit(PanelLook::kEdit);
  EXPECT_EQ(rest.sizeHint(), edit.sizeHint());
}

TEST(Gallery, OnADarkDesktop) {
  const QPalette former = QApplication::palette();
  QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 120, 120));
  QApplication::setPalette(dark);
  {
    Gallery gallery(PanelLook::kRest);
    Save(gallery, QStringLiteral("dark"));
  }
  QApplication::setPalette(former);
}

TEST(Gallery, ProgressAndMessage) {
  ProgressCounter counter(ProgressForm::kTransfer, 100);
  for (int i = 0; i < 53; ++i) counter.Step({});
  ProgressWindow progress(counter, nullptr);
  progress.ShowValue(QStringLiteral("53"));
  Save(progress, QStringLiteral("progress"));
  QMessageBox box;
  WindowMessages::Prepare(box, MessageStyle::kYesNoDefaultNo, 80, FormatText(178));
  Save(box, QStringLiteral("message"));
}

}  // namespace
}  // namespace carnetel::desktop
