#include "desktop/window/window_parts.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLayout>
#include <QMap>
#include <QScreen>
#include <algorithm>

#include "desktop/controls/button_row.h"

namespace carnetel::desktop {
namespace {

constexpr int kPickerCharacters = 28;
constexpr int kValuePadding = 12;

Face FaceOf(std::string_view name) {
  static const QMap<QByteArray, Face> faces = {{"open", Face::kOpen},
                                               {"import", Face::kImport},
                                               {"print", Face::kPrint},
                                               {"search", Face::kSearch},
                                               {"groups", Face::kGroups},
                                               {"select", Face::kSelect},
                                               {"help", Face::kHelp},
                                               {"quit", Face::kQuit},
                                               {"new-card", Face::kNewCard},
                                               {"save", Face::kSaveChange},
                                               {"save-new", Face::kSaveNew},
                                               {"mark", Face::kMark},
                                               {"delete", Face::kDelete},
                                               {"delete-marked", Face::kDeleteMarked},
                                               {"notes", Face::kNotes},
                                               {"references", Face::kReferences},
                                               {"voice", Face::kVoice},
                                               {"isdn", Face::kIsdn},
                                               {"fax", Face::kFax},
                                               {"files", Face::kFiles},
                                               {"minitel", Face::kTerminal},
                                               {"view-card", Face::kViewCard},
                                               {"clear-marks", Face::kClearMarks},
                                               {"extract-card", Face::kExtractCard},
                                               {"extract-marked", Face::kExtractMarked},
                                               {"extract-group", Face::kExtractGroup}};
  return faces.value(QByteArray(name.data(), static_cast<qsizetype>(name.size())), Face::kHelp);
}

PickerCombo* AddPicker(QGridLayout* grid, int row, int id, const QString& text) {
  auto* picker = new PickerCombo(id);
  picker->setAccessibleName(text);
  picker->setMinimumWidth(picker->fontMetrics().averageCharWidth() * kPickerCharacters);
  auto* label = new QLabel(text);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setBuddy(picker);
  grid->addWidget(label, row, 0);
  grid->addWidget(picker, row, 1);
  return picker;
}

}  // namespace

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QStringList ToList(const std::vector<std::string>& texts) {
  QStringList list;
  for (const std::string& text : texts) list.append(Utf8(text));
  return list;
}

BubbleButton* MakeFaceButton(const ButtonInfo& info, ButtonSize size) {
  auto* button = new BubbleButton(info.id, FaceOf(info.face), size, Utf8(info.caption));
  button->setAccessibleName(Utf8(info.caption));
  return button;
}

QWidget* MakeToolbar(const QList<BubbleButton*>& buttons, std::initializer_list<int> group_starts) {
  auto* bar = new QWidget;
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(3);
  for (BubbleButton* button : buttons) {
    if (std::ranges::count(group_starts, button->objectName().toInt()) != 0) layout->addSpacing(9);
    layout->addWidget(button);
  }
  new ButtonRow(buttons, bar);
  return bar;
}

PickerPair MakePickers(const QString& groups_label, const QString& sets_label) {
  auto* box = new QWidget;
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(3);
  PickerCombo* groups = AddPicker(grid, 0, kControlGroups, groups_label);
  PickerCombo* sets = AddPicker(grid, 1, kControlSets, sets_label);
  return {box, groups, sets};
}

QWidget* MakeTop(QWidget* toolbar, QWidget* pickers) {
  auto* top = new QWidget;
  auto* row = new QHBoxLayout(top);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(toolbar);
  row->addStretch();
  row->addWidget(pickers);
  return top;
}

QLabel* MakeValue(int id, const QString& name, const QString& usual) {
  auto* value = new QLabel;
  value->setObjectName(QString::number(id));
  value->setAccessibleName(name);
  value->setTextFormat(Qt::PlainText);
  value->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  value->setMinimumWidth(value->fontMetrics().horizontalAdvance(usual) + kValuePadding);
  return value;
}

CountLine MakeCountLine() {
  auto* box = new QWidget;
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  QLabel* position = MakeValue(kControlPosition, QStringLiteral("Fiche"), "32767 / 32767");
  QLabel* marked = MakeValue(kControlMarked, QStringLiteral("Fiches sélectionnées"), "32767");
  line->addWidget(new QLabel(QStringLiteral("Fiche")));
  line->addWidget(position, 1);
  line->addWidget(new QLabel(QStringLiteral("Sél.")));
  line->addWidget(marked);
  return {box, position, marked};
}

QLabel* MakeStatusLine() {
  auto* status = new QLabel;
  status->setObjectName(QString::number(kControlStatus));
  status->setAccessibleName(QStringLiteral("État"));
  status->setTextFormat(Qt::PlainText);
  return status;
}

int FocusedControlOf(const QMainWindow& window) {
  const QWidget* focus = window.focusWidget();
  while (focus != nullptr && focus != &window) {
    bool is_number = false;
    const int id = focus->objectName().toInt(&is_number);
    if (is_number) return id;
    focus = focus->parentWidget();
  }
  return kControlList;
}

void FixAndCentre(QMainWindow& window) {
  window.layout()->setSizeConstraint(QLayout::SetFixedSize);
  window.setWindowFlag(Qt::WindowMaximizeButtonHint, false);
  window.layout()->activate();
  const QRect place = window.screen()->availableGeometry();
  window.move(place.center() - QRect(QPoint(), window.sizeHint()).center());
}

}  // namespace carnetel::desktop
