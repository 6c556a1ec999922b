#include "desktop/dialogs/print_dialog.h"

#include <QHBoxLayout>
#include <QShowEvent>
#include <QVBoxLayout>

#include "desktop/controls/wait_cursor.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 130;
constexpr int kSetupTopic = 54;
constexpr int kLayoutTopic = 55;

}  // namespace

PrintDialog::PrintDialog(PrintForm& form, PageOf page_of, QWidget* parent)
    : FixedDialog(kDialog, kSetupTopic, parent),
      form_(form),
      page_of_(std::move(page_of)),
      printer_(new PathLabel(this)),
      pages_(new QTabWidget(this)),
      setup_(new PrintSetupPage(form, this)),
      layout_page_(new PrintLayoutPage(form.layout(), this)),
      preview_(new PrintPreview(this)) {
  printer_->setObjectName(QStringLiteral("printer"));
  pages_->setObjectName(QStringLiteral("pages"));
  pages_->setAccessibleName(QStringLiteral("Impression"));
  pages_->addTab(setup_, QStringLiteral("Para&mètres"));
  pages_->addTab(layout_page_, QStringLiteral("&Définir liste"));
  auto* left = new QVBoxLayout;
  left->addWidget(printer_);
  left->addWidget(pages_, 1);
  left->addLayout(MakeButtons());
  auto* sides = new QHBoxLayout(this);
  sides->addLayout(left);
  sides->addSpacing(sides->spacing());
  sides->addWidget(preview_);
  sides->setSizeConstraint(QLayout::SetFixedSize);
  connect(pages_, &QTabWidget::currentChanged, this, &PrintDialog::PageTurned);
  connect(setup_, &PrintSetupPage::changed, this, &PrintDialog::RefreshSoon);
  connect(layout_page_, &PrintLayoutPage::saved, this, &PrintDialog::RefreshSoon);
  ShowPrinter();
  PageTurned();
}

QLayout* PrintDialog::MakeButtons() {
  QPushButton* configure = MakeButton(0, QStringLiteral("&Configurer..."));
  configure->setObjectName(QStringLiteral("configure"));
  print_ = MakeButton(0, QStringLiteral("&Imprimer"));
  print_->setObjectName(QStringLiteral("print"));
  QPushButton* close = MakeButton(kCommandEscape, QStringLiteral("F&ermer"));
  connect(configure, &QPushButton::clicked, this, &PrintDialog::Configure);
  connect(print_, &QPushButton::clicked, this, &PrintDialog::Print);
  connect(close, &QPushButton::clicked, this, &PrintDialog::reject);
  auto* line = new QHBoxLayout;
  line->addWidget(configure);
  line->addStretch();
  line->addWidget(print_);
  line->addWidget(close);
  line->addWidget(MakeHelpButton());
  return line;
}

void PrintDialog::ShowPrinter() {
  printer_->SetPath(QString::fromStdString(form_.PrinterText()));
}

// Enter means the button of the page that is shown: typing a width must not start a print.
void PrintDialog::PageTurned() {
  const bool is_setup = pages_->currentWidget() == setup_;
  SetHelpTopic(is_setup ? kSetupTopic : kLayoutTopic);
  (is_setup ? print_ : layout_page_->save_button())->setDefault(true);
}

void PrintDialog::Configure() {
  (void)form_.Configure();
  ShowPrinter();
  // The page of the printer may be another even when the printer is not.
  RefreshSoon();
}

void PrintDialog::Print() {
  setup_->TakeTypedTexts();
  const WaitCursor wait;
  (void)form_.Print();
  RefreshSoon();
}

void PrintDialog::showEvent(QShowEvent* event) {
  FixedDialog::showEvent(event);
  if (!event->spontaneous()) Refresh();
}

void PrintDialog::RefreshSoon() {
  if (refresh_asked_) return;
  refresh_asked_ = true;
  QMetaObject::invokeMethod(this, &PrintDialog::Refresh, Qt::QueuedConnection);
}

// A dialog that has ended may have lost its directory, and one that is off has a run that reads it.
void PrintDialog::Refresh() {
  refresh_asked_ = false;
  if (isVisible() && isEnabled()) preview_->Refresh(form_, page_of_(form_.PrinterName()));
}

}  // namespace carnetel::desktop
