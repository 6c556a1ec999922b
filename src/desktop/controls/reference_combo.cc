#include "desktop/controls/reference_combo.h"

#include <QSignalBlocker>
#include <QWheelEvent>

namespace carnetel::desktop {

ReferenceCombo::ReferenceCombo(int id, int limit, QWidget* parent)
    : ReferenceCombo(id, new FilteredEdit(id, {}, limit), parent) {}

ReferenceCombo::ReferenceCombo(int id, FilteredEdit* edit, QWidget* parent)
    : QComboBox(parent), edit_(edit) {
  setObjectName(QString::number(id));
  edit_->setObjectName(QStringLiteral("edit"));
  setEditable(true);
  setLineEdit(edit_);
  setCompleter(nullptr);
  setInsertPolicy(QComboBox::NoInsert);
  // Without it, Enter on a text that another row has would pick that row.
  setDuplicatesEnabled(true);
  setAcceptDrops(false);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(edit_, &QLineEdit::textEdited, this, [this](const QString& text) {
    if (currentIndex() >= 0) setItemText(currentIndex(), text);
  });
}

void ReferenceCombo::SetTexts(const QStringList& texts) {
  const QSignalBlocker quiet(this);
  const QSignalBlocker quiet_edit(edit_);
  clear();
  addItems(texts);
  setCurrentIndex(texts.isEmpty() ? -1 : 0);
  setEditText(texts.value(0));
  edit_->setCursorPosition(0);
}

QStringList ReferenceCombo::Texts() const {
  QStringList texts;
  for (int row = 0; row < count(); ++row) texts += itemText(row);
  return texts;
}

void ReferenceCombo::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace carnetel::desktop
