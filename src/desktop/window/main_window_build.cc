// How the main window is put together.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QVBoxLayout>

#include "base/string_table.h"
#include "desktop/controls/button_row.h"
#include "desktop/controls/focus_reason.h"
#include "desktop/controls/nice_frame.h"
#include "desktop/window/main_window.h"

namespace carnetel::desktop {
namespace {

constexpr int kFrameBody = 2000;
constexpr int kListCharacters = 30;
constexpr int kListLines = 20;
constexpr int kPickerCharacters = 28;

Face FaceOf(std::string_view name) {
  static const QMap<QByteArray, Face> faces = {
      {"open", Face::kOpen},        {"import", Face::kImport},
      {"print", Face::kPrint},      {"search", Face::kSearch},
      {"groups", Face::kGroups},    {"select", Face::kSelect},
      {"help", Face::kHelp},        {"quit", Face::kQuit},
      {"new-card", Face::kNewCard}, {"save", Face::kSaveChange},
      {"save-new", Face::kSaveNew}, {"mark", Face::kMark},
      {"delete", Face::kDelete},    {"delete-marked", Face::kDeleteMarked},
      {"notes", Face::kNotes},      {"references", Face::kReferences},
      {"voice", Face::kVoice},      {"isdn", Face::kIsdn},
      {"fax", Face::kFax},          {"files", Face::kFiles},
      {"minitel", Face::kTerminal}};
  return faces.value(QByteArray(name.data(), static_cast<qsizetype>(name.size())), Face::kHelp);
}

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

void MainWindow::BuildMenus() {
  for (const MenuPopup& popup : MainMenu()) BuildMenu(popup);
}

void MainWindow::BuildMenu(const MenuPopup& popup) {
  QMenu* menu = menuBar()->addMenu(Utf8(popup.title));
  if (file_menu_ == nullptr) file_menu_ = menu;
  for (const MenuItem& item : popup.items) {
    if (item.command == 0) {
      menu->addSeparator();
      continue;
    }
    // The shortcut is text only: which keys do it is told by where the focus is.
    const QString shortcut = item.shortcut.empty() ? QString() : '\t' + Utf8(item.shortcut);
    QAction* action = menu->addAction(Utf8(item.text) + shortcut);
    action->setObjectName(QString::number(item.command));
    action->setMenuRole(QAction::NoRole);
    actions_[item.command] = action;
    const int command = item.command;
    connect(action, &QAction::triggered, this, [this, command] { Run(command); });
    connect(action, &QAction::hovered, this, [this, command] { logic_.ShowStatusOf(command); });
  }
  menu_help_.Watch(menu);
  const int status = popup.status_text;
  connect(menu, &QMenu::aboutToShow, this, [this, status] {
    const MenuState state = logic_.menu_state();
    for (auto action = actions_.cbegin(); action != actions_.cend(); ++action) {
      action.value()->setEnabled(!IsGrey(action.key(), state));
    }
    logic_.ShowStatusText(status);
  });
  connect(menu, &QMenu::aboutToHide, this, [this] { logic_.ShowStatusOf(FocusedControl()); });
}

BubbleButton* MainWindow::MakeButton(const ButtonInfo& info, ButtonSize size) {
  auto* button = new BubbleButton(info.id, FaceOf(info.face), size, Utf8(info.caption));
  button->setAccessibleName(Utf8(info.caption));
  buttons_[info.id] = button;
  const int id = info.id;
  connect(button, &BubbleButton::clicked, this, [this, id] { Run(id); });
  return button;
}

QWidget* MainWindow::BuildToolbar() {
  auto* bar = new QWidget;
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(3);
  QList<BubbleButton*> row;
  for (const ButtonInfo& info : ToolbarButtons()) {
    const bool starts_group =
        info.id == kButtonPrint || info.id == kButtonSearch || info.id == kButtonHelp;
    if (starts_group) layout->addSpacing(9);
    row.append(MakeButton(info, ButtonSize::kToolbar));
    layout->addWidget(row.last());
  }
  new ButtonRow(row, this);
  return bar;
}

QWidget* MainWindow::BuildPickers() {
  auto* pickers = new QWidget;
  auto* grid = new QGridLayout(pickers);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(3);
  const auto add = [&](int row, int id, const QString& text) {
    auto* picker = new PickerCombo(id);
    picker->setAccessibleName(text);
    picker->setMinimumWidth(picker->fontMetrics().averageCharWidth() * kPickerCharacters);
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(picker);
    grid->addWidget(label, row, 0);
    grid->addWidget(picker, row, 1);
    return picker;
  };
  groups_ = add(0, kControlGroups, QStringLiteral("Groupe affiché"));
  sets_ = add(1, kControlSets, QStringLiteral("Sélection active"));
  return pickers;
}

QWidget* MainWindow::BuildTop() {
  auto* top = new QWidget;
  auto* row = new QHBoxLayout(top);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(BuildToolbar());
  row->addStretch();
  row->addWidget(BuildPickers());
  return top;
}

QLabel* MainWindow::BuildValue(int id, const QString& name) {
  auto* value = new QLabel;
  value->setObjectName(QString::number(id));
  value->setAccessibleName(name);
  value->setTextFormat(Qt::PlainText);
  value->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("32767 / 32767")) +
                         12);
  return value;
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
  auto* counts = new QHBoxLayout;
  position_ = BuildValue(kControlPosition, QStringLiteral("Fiche"));
  marked_ = BuildValue(kControlMarked, QStringLiteral("Fiches sélectionnées"));
  marked_->setMinimumWidth(marked_->fontMetrics().horizontalAdvance(QStringLiteral("32767")) + 12);
  counts->addWidget(new QLabel(QStringLiteral("Fiche")));
  counts->addWidget(position_, 1);
  counts->addWidget(new QLabel(QStringLiteral("Sél.")));
  counts->addWidget(marked_);
  layout->addLayout(counts);
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
