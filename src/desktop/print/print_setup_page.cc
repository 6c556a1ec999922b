#include "desktop/print/print_setup_page.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace carnetel::desktop {
namespace {

// Characters of the path that are seen without scrolling.
constexpr int kPathCharacters = 28;

}  // namespace

PrintSetupPage::PrintSetupPage(PrintForm& form, QWidget* parent)
    : QWidget(parent), form_(form), to_file_(nullptr), path_(nullptr) {
  setObjectName(QStringLiteral("801"));
  const PageSetup& setup = form_.setup();
  auto* choices = new QHBoxLayout;
  choices->addWidget(MakeChoices("Présentation", {{"list", "&Liste"}, {"cards", "&Fiche"}},
                                 static_cast<int>(setup.presentation), [this](int chosen) {
                                   form_.setup().presentation = static_cast<Presentation>(chosen);
                                 }));
  choices->addWidget(MakeChoices(
      "Fiches à imprimer",
      {{"file", "Fichier ou &groupe"}, {"selection", "Sélec&tion"}, {"current", "Fiche cou&rante"}},
      static_cast<int>(setup.scope),
      [this](int chosen) { form_.setup().scope = static_cast<PrintScope>(chosen); }));
  auto* column = new QVBoxLayout(this);
  column->addLayout(choices);
  column->addSpacing(column->spacing());
  column->addLayout(MakeMeasures());
  column->addSpacing(column->spacing());
  column->addStretch();
  column->addLayout(MakeDestination());
}

QWidget* PrintSetupPage::MakeChoices(const char* title, std::initializer_list<Choice> choices,
                                     int chosen, std::function<void(int)> choose) {
  auto* box = new QGroupBox(QString::fromUtf8(title), this);
  auto* column = new QVBoxLayout(box);
  auto* group = new QButtonGroup(box);
  for (const Choice& choice : choices) {
    auto* button = new QRadioButton(QString::fromUtf8(choice.caption), box);
    button->setObjectName(QString::fromLatin1(choice.name));
    const auto place = static_cast<int>(group->buttons().size());
    group->addButton(button, place);
    button->setChecked(place == chosen);
    column->addWidget(button);
  }
  column->addStretch();
  connect(group, &QButtonGroup::idToggled, this,
          [this, choose = std::move(choose)](int place, bool checked) {
            if (!checked) return;
            choose(place);
            Q_EMIT changed();
          });
  return box;
}

UnitSpin* PrintSetupPage::MakeMargin(const char* name) {
  const MeasureUnit unit = form_.unit();
  return new UnitSpin(QString::fromLatin1(name),
                      {0, MaxMargin(unit), [unit](int value) { return MarginText(unit, value); },
                       [unit](std::string_view typed) { return ReadMargin(unit, typed); }},
                      this);
}

QLayout* PrintSetupPage::MakeMeasures() {
  PageSetup& setup = form_.setup();
  auto* grid = new QGridLayout;
  auto* lines =
      new UnitSpin(QStringLiteral("lines"), {1, kMaxLines, LineCountText, ReadLineCount}, this);
  AddSpin(*grid, "Lig&nes", lines, setup.lines,
          [&setup](int value) { setup.lines = static_cast<int8_t>(value); });
  AddSpin(*grid, "Marge ha&ute", MakeMargin("top_margin"), setup.top_margin,
          [&setup](int value) { setup.top_margin = static_cast<int16_t>(value); });
  AddSpin(*grid, "Marge g&auche", MakeMargin("left_margin"), setup.left_margin,
          [&setup](int value) { setup.left_margin = static_cast<int16_t>(value); });
  grid->setColumnStretch(2, 1);
  return grid;
}

void PrintSetupPage::AddSpin(QGridLayout& grid, const char* label, UnitSpin* spin, int value,
                             std::function<void(int)> take) {
  const int row = grid.count() / 2;
  auto* text = new QLabel(QString::fromUtf8(label), this);
  text->setBuddy(spin);
  // The line within the spin is a stop of its own for screen readers.
  const QString name = QString::fromUtf8(label).remove(u'&');
  spin->setAccessibleName(name);
  spin->findChild<QLineEdit*>()->setAccessibleName(name);
  grid.addWidget(text, row, 0, Qt::AlignRight | Qt::AlignVCenter);
  grid.addWidget(spin, row, 1);
  spin->setValue(value);
  connect(spin, &QSpinBox::valueChanged, this, [this, take = std::move(take)](int changed_to) {
    take(changed_to);
    Q_EMIT changed();
  });
}

QLayout* PrintSetupPage::MakeDestination() {
  to_file_ = new QCheckBox(QStringLiteral("Imprimer dans Fic&hier :"), this);
  to_file_->setObjectName(QStringLiteral("to_file"));
  to_file_->setChecked(form_.prints_to_file());
  path_ = new FilteredEdit(0, {FilterClass::kNativePath, CaseRule::kNone},
                           static_cast<int>(kMaxPrintPath), this);
  path_->setObjectName(QStringLiteral("path"));
  path_->setAccessibleName(QStringLiteral("Fichier"));
  path_->setText(QString::fromStdString(form_.setup().file));
  path_->setEnabled(form_.prints_to_file());
  path_->setMinimumWidth(fontMetrics().averageCharWidth() * kPathCharacters);
  connect(to_file_, &QCheckBox::toggled, this, [this](bool on) {
    form_.setup().destination = on ? PrintDestination::kFile : PrintDestination::kPrinter;
    path_->setEnabled(on);
    if (on) path_->setFocus();
  });
  connect(path_, &QLineEdit::textChanged, this,
          [this](const QString& text) { form_.setup().file = text.toStdString(); });
  auto* line = new QHBoxLayout;
  line->addWidget(to_file_);
  line->addWidget(path_, 1);
  return line;
}

void PrintSetupPage::TakeTypedTexts() {
  for (UnitSpin* spin : findChildren<UnitSpin*>()) spin->interpretText();
}

}  // namespace carnetel::desktop
