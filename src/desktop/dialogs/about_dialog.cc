#include "desktop/dialogs/about_dialog.h"

#include <QGridLayout>
#include <QLabel>

#include "desktop/controls/faces.h"
#include "desktop/controls/measure.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kIconSize = 48;
constexpr const char* kVersion = "Version " CARNETEL_VERSION;
constexpr const char* kPurpose =
    "Carnets d'adresses pour téléphoner, télécopier et écrire.\n"
    "Logiciel libre, distribué sous la licence MIT.";

QLabel* PlainLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  return label;
}

}  // namespace

AboutDialog::AboutDialog(QWidget* parent) : FixedDialog(131, 0, parent) {
  auto* icon = new QLabel;
  const int size = Measure(kIconSize, fontMetrics());
  icon->setPixmap(ApplicationIcon().pixmap(size, size));
  QLabel* name = PlainLabel(QStringLiteral("Carnetel"));
  QFont bold = name->font();
  bold.setBold(true);
  name->setFont(bold);
  auto* grid = new QGridLayout(this);
  grid->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
  grid->addWidget(name, 0, 1);
  grid->addWidget(PlainLabel(QString::fromUtf8(kVersion)), 1, 1);
  grid->addWidget(PlainLabel(QString::fromUtf8(kPurpose)), 2, 1);
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("OK"));
  grid->setRowMinimumHeight(3, grid->verticalSpacing());
  grid->addWidget(confirm, 4, 0, 1, 2, Qt::AlignHCenter);
  grid->setSizeConstraint(QLayout::SetFixedSize);
  connect(confirm, &QPushButton::clicked, this, &QDialog::accept);
}

}  // namespace carnetel::desktop
