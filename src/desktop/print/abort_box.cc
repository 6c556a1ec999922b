#include "desktop/print/abort_box.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/dialog_template.h"
#include "desktop/controls/measure.h"
#include "desktop/dialogs/path_label.h"

namespace carnetel::desktop {
namespace {

constexpr int kMargin = 15;

}  // namespace

AbortBox::AbortBox(const QString& document, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      page_(new QLabel(this)) {
  setObjectName(QStringLiteral("BOITEABORT"));
  setWindowTitle(QString::fromUtf8(kPrintAbortTitle.data(), kPrintAbortTitle.size()));
  setWindowModality(Qt::ApplicationModal);
  auto* name = new PathLabel(this);
  name->SetPath(document);
  page_->setObjectName(QStringLiteral("page"));
  auto* abandon = new QPushButton(QStringLiteral("Abandonner"), this);
  abandon->setObjectName(QStringLiteral("abandon"));
  connect(abandon, &QPushButton::clicked, this, &AbortBox::abandoned);
  auto* column = new QVBoxLayout(this);
  const int margin = Measure(kMargin, fontMetrics());
  column->setContentsMargins(margin, margin, margin, margin);
  column->addWidget(name);
  column->addWidget(page_);
  column->addWidget(abandon, 0, Qt::AlignHCenter);
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowPage(1);
}

void AbortBox::ShowPage(int page) {
  page_->setText(QStringLiteral("Page %1").arg(page));
}

void AbortBox::reject() {
  Q_EMIT abandoned();
}

void AbortBox::closeEvent(QCloseEvent* event) {
  Q_EMIT abandoned();
  event->ignore();
}

}  // namespace carnetel::desktop
