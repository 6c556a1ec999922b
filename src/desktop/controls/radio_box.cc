#include "desktop/controls/radio_box.h"

#include <QVBoxLayout>
#include <utility>

namespace carnetel::desktop {
namespace {

// Tab stops at the chosen radio of a box from the first time on; the toolkit sees to it only once
// the box has had the focus.
void MakeTabStop(const QButtonGroup* group, const QAbstractButton* chosen) {
  for (QAbstractButton* radio : group->buttons()) {
    if (radio != chosen) radio->setFocusPolicy(Qt::ClickFocus);
  }
}

}  // namespace

QGroupBox* MakeRadioBox(const QString& title) {
  auto* box = new QGroupBox(title);
  new QVBoxLayout(box);
  return box;
}

QRadioButton* AddRadio(QWidget* box, QButtonGroup* group, int id, const QString& text) {
  auto* radio = new QRadioButton(text);
  radio->setObjectName(QString::number(id));
  group->addButton(radio, id);
  box->layout()->addWidget(radio);
  return radio;
}

void ChooseRadio(QButtonGroup* group, int id, std::function<void(int)> chosen) {
  if (QAbstractButton* radio = group->button(id)) {
    radio->setChecked(true);
    MakeTabStop(group, radio);
  }
  QObject::connect(group, &QButtonGroup::idToggled, group,
                   [chosen = std::move(chosen)](int toggled, bool on) {
                     if (on) chosen(toggled);
                   });
}

}  // namespace carnetel::desktop
