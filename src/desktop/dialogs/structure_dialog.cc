#include "desktop/dialogs/structure_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

#include "desktop/controls/focus_reason.h"
#include "shell/command_table.h"
#include "transfer/structure_lines.h"

namespace carnetel::desktop {
namespace {

constexpr int kImportTopic = 58;
constexpr int kExportTopic = 59;
// Free space beside the text of an input, in characters.
constexpr int kAir = 2;
// Free space between the two columns of lines, in characters.
constexpr int kColumnGap = 3;

}  // namespace

QString LineLabel(int line) {
  // The field that a person has to spare stands in no other form.
  if (line == kSparePerson) return QStringLiteral("Vide");
  const std::string_view label = StructureLabel(line);
  return QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size()));
}

StructureDialog::StructureDialog(int number, TransferDirection direction, QWidget* parent)
    : FixedDialog(number, direction == TransferDirection::kImport ? kImportTopic : kExportTopic,
                  parent) {}

// The input with the focus is left when it goes, which is nothing to its rules any more.
StructureDialog::~StructureDialog() {
  for (const QWidget* input : findChildren<QWidget*>()) input->disconnect(this);
}

FilteredEdit* StructureDialog::MakeEdit(const QString& name, const QString& label, int characters,
                                        const EntryRule& rule, Input input) {
  auto* edit = new FilteredEdit(0, rule, characters, this);
  edit->setObjectName(name);
  edit->setAccessibleName(label);
  edits_.push_back({edit, input.text});
  connect(edit, &QLineEdit::textEdited, this, [this, type = input.type](const QString& text) {
    type(text.toStdString());
    ShowInputs();
  });
  if (input.leave) {
    connect(edit, &FilteredEdit::focusLeft, this,
            [this, leave = input.leave](Qt::FocusReason reason) {
              if (!IsUserFocusChange(reason)) return;
              leave();
              ShowInputs();
            });
  }
  return edit;
}

FilteredEdit* StructureDialog::MakeNumber(const QString& name, const QString& label, int digits,
                                          Input input) {
  FilteredEdit* edit =
      MakeEdit(name, label, digits, {FilterClass::kDigits, CaseRule::kNone}, std::move(input));
  edit->setAlignment(Qt::AlignRight);
  // A stored number may have a digit more than can be typed.
  edit->setFixedWidth(edit->fontMetrics().averageCharWidth() * (digits + 1 + kAir) + kAir);
  return edit;
}

PickerCombo* StructureDialog::MakeList(const QString& name, const QString& label,
                                       const QStringList& rows, std::function<int()> position,
                                       std::function<void(int)> choose) {
  auto* list = new PickerCombo(0, this);
  list->setObjectName(name);
  list->setAccessibleName(label);
  list->SetRows(rows, position());
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  lists_.push_back({list, std::move(position)});
  connect(list, &QComboBox::activated, this, [this, choose = std::move(choose)](int row) {
    choose(row);
    ShowInputs();
  });
  return list;
}

void StructureDialog::ShowInputs() {
  for (const ShownEdit& shown : edits_) {
    const QString text = QString::fromStdString(shown.text());
    if (shown.edit->text() != text) shown.edit->setText(text);
  }
  for (const ShownList& shown : lists_) shown.list->setCurrentIndex(shown.position());
}

PickerCombo* StructureDialog::MakeReferences() {
  QStringList rows;
  for (int i = 0; i < kStructureReferences; ++i) rows += LineLabel(kReferenceLine + i);
  return MakeList(
      QStringLiteral("reference"), QStringLiteral("Référence"), rows,
      [this] { return reference(); }, [this](int chosen) { SelectReference(chosen); });
}

QWidget* StructureDialog::MakeLabel(int line, QWidget* input) {
  auto* label = new QLabel(LineLabel(line), this);
  label->setBuddy(input);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

// Widgets are made in the order of the keyboard: down the first column, then down the second.
QGridLayout* StructureDialog::MakeLines(std::span<const int> lines, const QStringList& headings,
                                        const std::function<QList<QWidget*>(int line)>& make) {
  auto* grid = new QGridLayout;
  const auto half = static_cast<int>(lines.size() + 1) / 2;
  int second_column = 0;
  for (int at = 0; at < static_cast<int>(lines.size()); ++at) {
    const int line = lines[static_cast<size_t>(at)];
    const int row = at % half + 1;
    int column = at < half ? 0 : second_column;
    // The list of the references comes before its inputs.
    QWidget* label = line == kReferenceLine ? MakeReferences() : nullptr;
    const QList<QWidget*> inputs = make(line);
    if (label == nullptr) label = MakeLabel(line, inputs.front());
    grid->addWidget(label, row, column++,
                    line == kReferenceLine ? Qt::AlignRight : Qt::Alignment());
    for (QWidget* input : inputs) {
      const qsizetype heading = inputs.indexOf(input);
      if (row == 1 && heading < headings.size()) {
        grid->addWidget(new QLabel(headings[heading], this), 0, column, Qt::AlignHCenter);
      }
      // Below its heading where there is one.
      const bool headed = heading < headings.size();
      grid->addWidget(input, row, column++, headed ? Qt::AlignHCenter : Qt::Alignment());
    }
    if (at == 0) {
      second_column = column + 1;
      grid->setColumnMinimumWidth(column, fontMetrics().averageCharWidth() * kColumnGap);
    }
  }
  return grid;
}

QLayout* StructureDialog::MakeButtons(QPushButton* first) {
  auto* line = new QHBoxLayout;
  if (first != nullptr) line->addWidget(first);
  confirm_ = MakeButton(kCommandConfirm, QStringLiteral("Valider"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Abandonner"));
  line->addStretch();
  line->addWidget(confirm_);
  line->addWidget(abandon);
  line->addWidget(MakeHelpButton());
  connect(confirm_, &QPushButton::clicked, this, &StructureDialog::Confirm);
  connect(abandon, &QPushButton::clicked, this, &StructureDialog::reject);
  return line;
}

}  // namespace carnetel::desktop
