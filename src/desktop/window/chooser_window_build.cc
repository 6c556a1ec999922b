// How the chooser is put together.
#include <QApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScrollBar>
#include <QVBoxLayout>

#include "base/dialog_template.h"
#include "desktop/controls/measure.h"
#include "desktop/controls/wait_cursor.h"
#include "desktop/window/chooser_window.h"
#include "desktop/window/window_parts.h"

namespace carnetel::desktop {
namespace {

// The numbers of the two templates.
constexpr int kTemplateSingle = 119;
constexpr int kTemplateMany = 105;
// Characters of the three columns.
constexpr int kFirstCharacters = 22;
constexpr int kSecondCharacters = 21;
constexpr int kNumberCharacters = 15;
// Between the left edge and the text of the first column, where no marks are shown.
constexpr int kTextLeft = 5;
constexpr int kMarkWidth = 13;

int ColumnWidth(int characters, const QFontMetrics& metrics) {
  return characters * metrics.horizontalAdvance(u'M');
}

}  // namespace

ChooserWindow::ChooserWindow(Session& session, BusyState& busy, ChooserKind kind, int list_capacity)
    : session_(session),
      busy_(busy),
      dialogs_(this, busy),
      logic_(session, *this, dialogs_, kind, list_capacity) {
  const int number = kind == ChooserKind::kSingle ? kTemplateSingle : kTemplateMany;
  setObjectName(QString::number(number));
  setWindowTitle(Utf8(DialogTitle(number)));
  BuildMenus();
  auto* central = new QWidget;
  auto* layout = new QVBoxLayout(central);
  layout->setContentsMargins(9, 6, 9, 6);
  layout->setSpacing(6);
  layout->addWidget(BuildTop());
  layout->addWidget(BuildList(), 1);
  const CountLine counts = MakeCountLine();
  position_ = counts.position;
  marked_ = counts.marked;
  layout->addWidget(counts.box, 0, Qt::AlignLeft);
  status_ = MakeStatusLine();
  layout->addWidget(status_);
  setCentralWidget(central);
  tip_ = new BubbleTip(this);
  SetTabOrders();
  ConnectList();
  ConnectPickers();
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* to) { FocusMoved(to); });
  qApp->installEventFilter(this);
}

void ChooserWindow::BuildMenus() {
  menus_ = new CommandMenus(
      menuBar(), ChooserMenu(logic_.viafax_output()),
      [this](int command) { return IsChooserGrey(command, logic_.state()); }, this);
  connect(menus_, &CommandMenus::chosen, this, &ChooserWindow::Run);
  connect(menus_, &CommandMenus::pointedAt, this,
          [this](int command) { logic_.ShowStatusOf(command); });
  connect(menus_, &CommandMenus::opening, this, [this](int text) { logic_.ShowStatusText(text); });
  connect(menus_, &CommandMenus::closed, this,
          [this] { logic_.ShowStatusOf(FocusedControlOf(*this)); });
  connect(menus_, &CommandMenus::helpWanted, this, [this] { Run(kCommandHelpKey); });
}

QWidget* ChooserWindow::BuildTop() {
  QList<BubbleButton*> row;
  for (const ButtonInfo& info : ChooserButtons()) {
    BubbleButton* button = MakeFaceButton(info, ButtonSize::kToolbar);
    const int id = info.id;
    connect(button, &BubbleButton::clicked, this, [this, id] { Run(id); });
    buttons_[id] = button;
    row += button;
  }
  const PickerPair pickers = MakePickers(QStringLiteral("Groupe"), QStringLiteral("Sélection"));
  groups_ = pickers.groups;
  sets_ = pickers.sets;
  return MakeTop(MakeToolbar(row, {kButtonViewCard, kButtonExtractCard}), pickers.box);
}

QLabel* ChooserWindow::BuildTitle(int id, int width) {
  auto* title = new QLabel;
  title->setObjectName(QString::number(id));
  title->setTextFormat(Qt::PlainText);
  title->setFixedWidth(width);
  titles_[id] = title;
  return title;
}

// Each column begins where its title does.
QWidget* ChooserWindow::BuildList() {
  auto* box = new QWidget;
  auto* column = new QVBoxLayout(box);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(3);
  list_ = new CardListView(kControlList, *this);
  list_->setAccessibleName(QStringLiteral("Correspondants"));
  const QFontMetrics metrics = list_->fontMetrics();
  const int first = Measure(kMarkWidth, metrics) + ColumnWidth(kFirstCharacters, metrics);
  const int second = ColumnWidth(kSecondCharacters, metrics);
  const int number = ColumnWidth(kNumberCharacters, metrics);
  list_->SetColumns({Measure(kTextLeft, metrics), first, first + second});
  const int frames = 2 * list_->frameWidth() + list_->verticalScrollBar()->sizeHint().width();
  list_->setMinimumWidth(first + second + number + frames);
  list_->setMinimumHeight(list_->sizeHint().height());
  auto* titles = new QHBoxLayout;
  titles->setContentsMargins(list_->frameWidth(), 0, 0, 0);
  titles->setSpacing(0);
  titles->addWidget(BuildTitle(kTitleFirst, first));
  titles->addWidget(BuildTitle(kTitleSecond, second));
  titles->addWidget(BuildTitle(kTitleNumber, number));
  titles->addStretch();
  column->addLayout(titles);
  column->addWidget(list_, 1);
  return box;
}

void ChooserWindow::ConnectList() {
  connect(list_, &CardListView::currentRowChanged, this,
          [this](int row) { logic_.list().SetCurrentRow(row); });
  connect(list_, &CardListView::rowClicked, this, &ChooserWindow::RowClicked);
  // Posted: a box or the end of the window within the press would leave the button held down.
  connect(
      list_, &CardListView::rowDoubleClicked, this, [this] { Run(kCommandConfirm); },
      Qt::QueuedConnection);
  connect(list_, &CardListView::markAndStep, this,
          [this](int step) { logic_.ToggleAndMove(step); });
  connect(list_, &CardListView::spanMoved, this,
          [this](int from, int to) { logic_.ToggleSpan(from, to); });
  connect(list_, &CardListView::letterTyped, this,
          [this](char letter) { logic_.JumpToLetter(letter); });
  list_position_ = new ListPosition(*list_, logic_.list(), this);
}

void ChooserWindow::ConnectPickers() {
  connect(groups_, &QComboBox::activated, this, [this](int row) {
    const WaitCursor wait;
    logic_.PickGroup(row);
  });
  connect(sets_, &QComboBox::activated, this, [this](int row) {
    const WaitCursor wait;
    logic_.PickSet(row);
  });
}

// List, pickers, toolbar: the order of the keyboard.
void ChooserWindow::SetTabOrders() {
  setTabOrder(list_, groups_);
  setTabOrder(groups_, sets_);
  QWidget* from = sets_;
  for (const ButtonInfo& info : ChooserButtons()) {
    setTabOrder(from, buttons_[info.id]);
    from = buttons_[info.id];
  }
}

}  // namespace carnetel::desktop
