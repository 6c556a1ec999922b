#include "desktop/dialogs/printer_choice_dialog.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 133;
constexpr int kHelpTopic = 54;
constexpr int kShownRows = 8;
constexpr int kShownCharacters = 72;

}  // namespace

PrinterChoiceDialog::PrinterChoiceDialog(PrinterChoiceForm& form, QWidget* parent)
    : FixedDialog(kDialog, kHelpTopic, parent), form_(form), list_(new QListWidget(this)) {
  setWindowTitle(QStringLiteral("Installation de l'imprimante"));
  FillList();
  auto* column = new QVBoxLayout(this);
  column->addWidget(list_);
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  list_->setFocus();
}

void PrinterChoiceDialog::FillList() {
  const QFontMetrics metrics = fontMetrics();
  list_->setObjectName(QStringLiteral("printers"));
  list_->setAccessibleName(QStringLiteral("Imprimantes"));
  list_->setTextElideMode(Qt::ElideMiddle);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setMinimumSize(metrics.averageCharWidth() * kShownCharacters,
                        metrics.lineSpacing() * kShownRows + 2 * list_->frameWidth());
  for (const std::string& row : form_.Rows()) list_->addItem(QString::fromStdString(row));
  list_->setCurrentRow(form_.selected());
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) { form_.Select(row); });
  connect(list_, &QListWidget::itemDoubleClicked, this, &PrinterChoiceDialog::accept);
}

QLayout* PrinterChoiceDialog::MakeButtons() {
  QPushButton* properties = MakeButton(0, QStringLiteral("&Paramètres..."));
  properties->setObjectName(QStringLiteral("properties"));
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("&Fermer"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("&Abandon"));
  connect(properties, &QPushButton::clicked, this, [this] { form_.ShowProperties(); });
  connect(confirm, &QPushButton::clicked, this, &PrinterChoiceDialog::accept);
  connect(abandon, &QPushButton::clicked, this, &PrinterChoiceDialog::reject);
  auto* line = new QHBoxLayout;
  line->addWidget(properties);
  line->addStretch();
  line->addWidget(confirm);
  line->addWidget(abandon);
  line->addWidget(MakeHelpButton());
  return line;
}

}  // namespace carnetel::desktop
