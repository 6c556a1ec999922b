// How the main window is put together.
#include <QHBoxLayout>
#include <QMenuBar>
#include <QVBoxLayout>

#include "base/string_table.h"
#include "desktop/controls/button_row.h"
#include "desktop/controls/focus_reason.h"
#include "desktop/controls/nice_frame.h"
#include "desktop/window/main_window.h"
#include "desktop/window/window_parts.h"

namespace carnetel::desktop {
namespace {

constexpr int kFrameBody = 2000;
constexpr int kListCharacters = 30;
constexpr int kListLines = 20;

}  // namespace

void MainWindow::BuildMenus() {
  menus_ = new CommandMenus(
      menuBar(), MainMenu(), [this](int command) { return IsGrey(command, logic_.menu_state()); },
      this);
  connect(menus_, &CommandMenus::chosen, this, &MainWindow::Run);
  connect(menus_, &CommandMenus::pointedAt, this,
          [this](int command) { logic_.ShowStatusOf(command); });
  connect(menus_, &CommandMenus::opening, this, [this](int text) { logic_.ShowStatusText(text); });
  connect(menus_, &CommandMenus::closed, this, [this] { logic_.ShowStatusOf(FocusedControl()); });
  connect(menus_, &CommandMenus::helpWanted, this,
          [this](int command) { dialogs_.ShowHelp(HelpTopicOfCommand(command)); });
}

BubbleButton* MainWindow::MakeButton(const ButtonInfo& info, ButtonSize size) {
  BubbleButton* button = MakeFaceButton(info, size);
  buttons_[info.id] = button;
  const int id = info.id;
  connect(button, &BubbleButton::clicked, this, [this, id] { Run(id); });
  return button;
}

QWidget* MainWindow::BuildToolbar() {
  QList<BubbleButton*> row;
  for (const ButtonInfo& info : ToolbarButtons()) row += MakeButton(info, ButtonSize::kToolbar);
  return MakeToolbar(row, {kButtonPrint, kButtonSearch, kButtonHelp});
}

QWidget* MainWindow::BuildTop() {
  const PickerPair pickers =
      MakePickers(QStringLiteral("Groupe affiché"), QStringLiteral("Sélection active"));
  groups_ = pickers.groups;
  sets_ = pickers.sets;
  return MakeTop(BuildToolbar(), pickers.box);
}

QWidget* MainWindow::BuildListColumn() {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(6);
  list_ = new CardListView(kControlList, *this);
  list_->setAccessibleName(QStringLiteral("Fiches"));
  list_->setMinimumWidth(list_->fontMetrics().averageCharWidth() * kListCharacters + 40);
  list_->setMinimumHeight(list_->fontMetrics().lineSpacing() * kListLines);
  layout->addWidget(list_, 1);
  const CountLine counts = MakeCountLine();
  position_ = counts.position;
  marked_ = counts.marked;
  layout->addWidget(counts.box);
  return column;
}

QWidget* MainWindow::BuildFormColumn() {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(3);
  QList<BubbleButton*> row;
  for (const ButtonInfo& info : FormColumnButtons()) {
    if (info.id == kButtonMark || info.id == kButtonDeleteCard) layout->addSpacing(18);
    row.append(MakeButton(info, ButtonSize::kFormColumn));
    layout->addWidget(row.last());
  }
  layout->addStretch();
  new ButtonRow(row, this);
  return column;
}

void MainWindow::PlaceZoneButtons() {
  for (const ButtonInfo& info : ZoneButtons()) {
    panel_->PlaceButton(info.id, MakeButton(info, ButtonSize::kFormColumn));
  }
  QList<BubbleButton*> siblings;
  for (const ButtonInfo& info : SiblingButtons()) {
    siblings.append(MakeButton(info, ButtonSize::kSibling));
    panel_->PlaceButton(info.id, siblings.last());
    panel_->ShowButton(info.id, false);
  }
  new ButtonRow(siblings, this);
}

// List, tabs, pickers, toolbar, form column, fields: the order of the keyboard.
void MainWindow::SetTabOrders() {
  QWidget* from = list_;
  const auto link = [&from](QWidget* to) {
    setTabOrder(from, to);
    from = to;
  };
  for (int tab = LetterTabs::kFirstId; tab <= LetterTabs::kLastId; ++tab) link(tabs_->Tab(tab));
  link(groups_);
  link(sets_);
  for (const ButtonInfo& info : ToolbarButtons()) link(buttons_[info.id]);
  for (const ButtonInfo& info : FormColumnButtons()) link(buttons_[info.id]);
  panel_->SetTabOrderAfter(from);
}

QWidget* MainWindow::BuildBody() {
  auto* body = new NiceFrame(kFrameBody, NiceFrame::Kind::kJoined);
  auto* row = new QHBoxLayout(body);
  row->setContentsMargins(9, 9, 9, 9);
  row->setSpacing(9);
  panel_ = new CardPanel(CardPanel::Kind::kMain);
  row->addWidget(BuildListColumn());
  row->addWidget(BuildFormColumn());
  row->addWidget(panel_, 1);
  PlaceZoneButtons();
  return body;
}

}  // namespace carnetel::desktop
