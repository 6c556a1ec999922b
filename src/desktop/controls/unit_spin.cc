#include "desktop/controls/unit_spin.h"

#include <QLineEdit>
#include <QWheelEvent>
#include <algorithm>

namespace carnetel::desktop {
namespace {

constexpr int kLongestText = 12;

}  // namespace

UnitSpin::UnitSpin(const QString& name, Rule rule, QWidget* parent)
    : QSpinBox(parent), rule_(std::move(rule)) {
  setObjectName(name);
  setRange(0, rule_.most);
  setKeyboardTracking(false);
  setAccelerated(true);
  setAlignment(Qt::AlignRight);
  lineEdit()->setMaxLength(kLongestText);
  lineEdit()->setAcceptDrops(false);
}

void UnitSpin::stepBy(int steps) {
  interpretText();
  setValue(std::clamp(value() + steps, rule_.least, rule_.most));
  selectAll();
}

QString UnitSpin::textFromValue(int value) const {
  return QString::fromStdString(rule_.text(value));
}

int UnitSpin::valueFromText(const QString& text) const {
  return lineEdit()->isModified() ? rule_.read(text.toStdString()) : value();
}

QValidator::State UnitSpin::validate(QString& /*text*/, int& /*position*/) const {
  return QValidator::Acceptable;
}

QAbstractSpinBox::StepEnabled UnitSpin::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (value() > rule_.least) enabled |= StepDownEnabled;
  if (value() < rule_.most) enabled |= StepUpEnabled;
  return enabled;
}

// The wheel that scrolls past must not change what is printed.
void UnitSpin::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace carnetel::desktop
