#include "desktop/dialogs/enrichment_progress.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "desktop/dialogs/path_label.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kTemplate = 118;
constexpr int kPumpMilliseconds = 40;

}  // namespace

EnrichmentProgress::EnrichmentProgress(BusyState& busy, const std::string& directory,
                                       QWidget* parent)
    : FixedDialog(kTemplate, 0, parent), busy_(busy), company_(new QLabel) {
  SetMainWindowFrame();
  auto* path = new PathLabel;
  path->setObjectName(QStringLiteral("directory"));
  path->SetPath(QString::fromStdString(directory));
  company_->setObjectName(QStringLiteral("company"));
  company_->setAccessibleName(QStringLiteral("Société"));
  company_->setTextFormat(Qt::PlainText);
  // A company of wide letters is cut rather than the box grown under the user's hand.
  company_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  company_->setFixedHeight(company_->fontMetrics().height());
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Abandonner"));
  connect(abandon, &QPushButton::clicked, this, &EnrichmentProgress::reject);
  auto* column = new QVBoxLayout(this);
  column->addWidget(path);
  column->addWidget(company_);
  column->addWidget(abandon, 0, Qt::AlignRight);
  column->setSizeConstraint(QLayout::SetFixedSize);
}

bool EnrichmentProgress::ShowCompany(const std::string& company) {
  company_->setText(QString::fromStdString(company));
  if (!since_pump_.isValid() || since_pump_.hasExpired(kPumpMilliseconds)) {
    QCoreApplication::processEvents();
    since_pump_.restart();
  }
  return stop_;
}

void EnrichmentProgress::closeEvent(QCloseEvent* event) {
  stop_ = true;
  event->ignore();
}

// Enter stops wherever the focus is: there is no other button that it could press.
void EnrichmentProgress::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    accept();
    return;
  }
  FixedDialog::keyPressEvent(event);
}

}  // namespace carnetel::desktop
