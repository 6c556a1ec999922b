#include "desktop/window/consultation.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include "base/dialog_template.h"
#include "desktop/window/window_parts.h"

namespace carnetel::desktop {
namespace {

constexpr int kNext = 216;
constexpr int kPrevious = 217;

QPushButton* MakeButton(int id, const QString& text, QWidget* parent) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(QString::number(id));
  return button;
}

}  // namespace

Consultation::Consultation(int number, QWidget* parent) : QDialog(parent) {
  setObjectName(QString::number(number));
  setWindowTitle(Utf8(DialogTitle(number)));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* layout = new QVBoxLayout(this);
  panel_ = new CardPanel(CardPanel::Kind::kConsultation, this);
  layout->addWidget(panel_);
  buttons_ = new QHBoxLayout;
  auto* next = MakeButton(kNext, QStringLiteral("&Suiv"), this);
  auto* previous = MakeButton(kPrevious, QStringLiteral("&Préc"), this);
  auto* quit = MakeButton(kCommandEscape, QStringLiteral("&Quitter"), this);
  auto* help = MakeButton(kCommandHelpKey, QStringLiteral("?"), this);
  help->setAccessibleName(QStringLiteral("Aide"));
  buttons_->addWidget(next);
  buttons_->addWidget(previous);
  buttons_->addStretch();
  buttons_->addWidget(quit);
  buttons_->addWidget(help);
  layout->addLayout(buttons_);
  next->setDefault(true);
  next->setFocus();
  connect(next, &QPushButton::clicked, this, [this] { Q_EMIT stepped(1); });
  connect(previous, &QPushButton::clicked, this, [this] { Q_EMIT stepped(-1); });
  connect(quit, &QPushButton::clicked, this, &QDialog::close);
  connect(help, &QPushButton::clicked, this, &Consultation::helpWanted);
}

QPushButton* Consultation::AddButton(int id, const QString& text) {
  constexpr int kBehindSteps = 2;
  QPushButton* button = MakeButton(id, text, this);
  buttons_->insertWidget(kBehindSteps, button);
  return button;
}

// Tab goes between the two steps only; Enter repeats the one that last had the focus.
bool Consultation::focusNextPrevChild(bool /*next*/) {
  auto* forward = findChild<QPushButton*>(QString::number(kNext));
  auto* back = findChild<QPushButton*>(QString::number(kPrevious));
  QPushButton* to = forward->hasFocus() ? back : forward;
  to->setFocus(Qt::TabFocusReason);
  to->setDefault(true);
  return true;
}

void Consultation::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
    return;
  }
  if (event->key() == Qt::Key_F1) {
    Q_EMIT helpWanted();
    return;
  }
  QDialog::keyPressEvent(event);
}

}  // namespace carnetel::desktop
