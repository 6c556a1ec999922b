#include "desktop/dialogs/name_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "base/string_table.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 115;
constexpr int kHelpTopic = 57;
constexpr int kName = 196;
constexpr int kTransferTitle = 102;
constexpr int kLongest = 23;
// The longest name in the widest letters, and the frame of the field.
constexpr int kShownCharacters = kLongest + 1;

}  // namespace

NameDialog::NameDialog(SetsDialog dialog, const std::string& offered, QWidget* parent)
    : FixedDialog(kDialog, kHelpTopic, parent), name_(new FilteredEdit(kName, {}, kLongest, this)) {
  const bool for_transfer = dialog != SetsDialog::kCriteria;
  if (for_transfer) {
    const std::string_view title = LoadText(kTransferTitle);
    setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
  }
  name_->setText(QString::fromStdString(offered));
  name_->setMinimumWidth(fontMetrics().horizontalAdvance(QString(kShownCharacters, u'W')));
  auto* label = new QLabel(QStringLiteral("&Nom"), this);
  label->setBuddy(name_);
  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(name_);
  auto* column = new QVBoxLayout(this);
  column->addLayout(line);
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons(for_transfer));
  column->setSizeConstraint(QLayout::SetFixedSize);
  name_->setFocus();
  name_->selectAll();
}

// Parameters of a transfer cannot be confirmed without a name; criteria can, which counts as
// leaving.
QLayout* NameDialog::MakeButtons(bool needs_name) {
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("Valider"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Abandonner"));
  auto* line = new QHBoxLayout;
  line->addStretch();
  line->addWidget(confirm);
  line->addWidget(abandon);
  connect(confirm, &QPushButton::clicked, this, &NameDialog::accept);
  connect(abandon, &QPushButton::clicked, this, &NameDialog::reject);
  if (!needs_name) return line;
  const auto enable = [confirm](const QString& text) { confirm->setEnabled(!text.isEmpty()); };
  enable(name_->text());
  connect(name_, &QLineEdit::textChanged, confirm, enable);
  return line;
}

}  // namespace carnetel::desktop
