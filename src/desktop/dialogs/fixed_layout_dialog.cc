#include "desktop/dialogs/fixed_layout_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 111;
constexpr int kPlaceDigits = 3;
constexpr int kSizeDigits = 2;
// Free space between the two inputs at the top, in characters.
constexpr int kGap = 3;

QString NameOf(FixedInput input) {
  switch (input.kind) {
    case FixedInputKind::kFirstCard:
      return QStringLiteral("first_card");
    case FixedInputKind::kRecordSize:
      return QStringLiteral("record_size");
    case FixedInputKind::kPosition:
      return QStringLiteral("position_%1").arg(input.line);
    case FixedInputKind::kSize:
      break;
  }
  return QStringLiteral("size_%1").arg(input.line);
}

}  // namespace

FixedLayoutDialog::FixedLayoutDialog(FixedLayoutForm& form, QWidget* parent)
    : StructureDialog(kDialog, form.direction(), parent), form_(form) {
  const std::string_view title = form.title();
  setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
  auto* column = new QVBoxLayout(this);
  column->addLayout(MakeHead());
  column->addSpacing(column->spacing());
  const QStringList headings = {QStringLiteral("Position"), QStringLiteral("Taille")};
  column->addLayout(MakeLines(kFixedLayoutLines, headings, [this](int line) {
    const QString label = line == kReferenceLine ? QStringLiteral("la référence") : LineLabel(line);
    return QList<QWidget*>{
        MakeInput(QStringLiteral("Position de ") + label, {FixedInputKind::kPosition, line}),
        MakeInput(QStringLiteral("Taille de ") + label, {FixedInputKind::kSize, line})};
  }));
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowInputs();
  Named(NameOf({FixedInputKind::kFirstCard}))->setFocus();
}

QLayout* FixedLayoutDialog::MakeHead() {
  auto* line = new QHBoxLayout;
  AddToHead(*line, "&Début", FixedInputKind::kFirstCard);
  line->addSpacing(fontMetrics().averageCharWidth() * kGap);
  AddToHead(*line, "Taille &fiche", FixedInputKind::kRecordSize);
  line->addStretch();
  return line;
}

void FixedLayoutDialog::AddToHead(QHBoxLayout& line, const char* label, FixedInputKind kind) {
  auto* text = new QLabel(QString::fromUtf8(label), this);
  QWidget* input = MakeInput(text->text().remove(u'&'), {kind});
  text->setBuddy(input);
  line.addWidget(text);
  line.addWidget(input);
}

QWidget* FixedLayoutDialog::MakeInput(const QString& label, FixedInput input) {
  const int digits = input.kind == FixedInputKind::kSize ? kSizeDigits : kPlaceDigits;
  return MakeNumber(NameOf(input), label, digits,
                    {[this, input] { return form_.text(input); },
                     [this, input](const std::string& text) { form_.Type(input, text); },
                     [this, input] { form_.Leave(input); }});
}

void FixedLayoutDialog::ShowInputs() {
  StructureDialog::ShowInputs();
  confirm_button()->setEnabled(form_.confirm_enabled());
}

void FixedLayoutDialog::Confirm() {
  if (form_.Confirm()) {
    accept();
    return;
  }
  // A reference at fault is the one that is shown now.
  ShowInputs();
  if (form_.focus()) Named(NameOf(*form_.focus()))->setFocus();
}

}  // namespace carnetel::desktop
