#include "desktop/dialogs/file_chooser.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <QVBoxLayout>
#include <algorithm>

#include "base/path.h"
#include "desktop/controls/measure.h"
#include "desktop/controls/nice_frame.h"

namespace carnetel::desktop {
namespace {

constexpr int kOk = 1;
constexpr int kCancel = 2;
constexpr int kHelp = 1038;
constexpr int kName = 1152;
constexpr int kFiles = 1120;
constexpr int kFolders = 1121;
constexpr int kTypes = 1136;
constexpr int kPlaces = 1137;
constexpr int kDescriptionLabel = 224;
constexpr int kDescription = 196;
constexpr int kOwnerFrame = 2002;
constexpr int kPrivateBox = 225;
constexpr int kOwnerLine = 226;

// At first, beside an ordinary font; the lists never get smaller than these many characters and
// rows.
constexpr int kFirstWidth = 640;
constexpr int kFirstListHeight = 220;
constexpr int kListCharacters = 20;
constexpr int kListRows = 5;
constexpr int kPlaceCharacters = 14;
constexpr int kFrameMargin = 4;

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QStringList Rows(const std::vector<std::string>& names) {
  QStringList rows;
  for (const std::string& name : names) rows += Utf8(name);
  return rows;
}

QLabel* LabelFor(QWidget* buddy, const QString& text) {
  auto* label = new QLabel(text);
  label->setBuddy(buddy);
  QString name = text;
  buddy->setAccessibleName(name.remove('&').remove(QStringLiteral(" :")));
  return label;
}

QListWidget* MakeList(int id, QWidget* parent) {
  auto* list = new QListWidget(parent);
  list->setObjectName(QString::number(id));
  const QFontMetrics metrics = list->fontMetrics();
  list->setMinimumWidth(metrics.averageCharWidth() * kListCharacters);
  list->setMinimumHeight(metrics.height() * kListRows);
  return list;
}

std::vector<MountedVolume> MountedVolumes() {
  std::vector<MountedVolume> volumes;
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    volumes.push_back({volume.rootPath().toStdString(), volume.device().toStdString()});
  }
  return volumes;
}

}  // namespace

FileChooserDialog::FileChooserDialog(FilePicker& picker, QWidget* parent)
    : QDialog(parent),
      picker_(picker),
      name_(new FilteredEdit(kName, EntryRule{FilterClass::kNativePath}, 0, this)),
      files_(MakeList(kFiles, this)),
      folders_(MakeList(kFolders, this)),
      folder_line_(new PathLabel),
      types_(new PickerCombo(kTypes, this)),
      places_(new PickerCombo(kPlaces, this)) {
  setObjectName(QString::number(static_cast<int>(picker.form())));
  setWindowTitle(Utf8(picker.title()));
  auto* grid = new QGridLayout(this);
  BuildLists(*grid);
  BuildCombos(*grid);
  if (picker.has_directory_zone()) grid->addWidget(BuildZone(), grid->rowCount(), 0, 1, 2);
  if (picker.has_private_box()) grid->addWidget(BuildOwner(), grid->rowCount(), 0, 1, 2);
  grid->addWidget(BuildButtons(), 0, 2, grid->rowCount(), 1);
  grid->setColumnStretch(0, 3);
  grid->setColumnStretch(1, 2);
  Connect();
  ShowPicker();
  SetFirstSize();
  name_->setFocus();
}

void FileChooserDialog::BuildLists(QGridLayout& grid) {
  auto* head = new QGridLayout;
  head->addWidget(LabelFor(name_, QStringLiteral("&Nom de fichier :")), 0, 0, Qt::AlignRight);
  head->addWidget(name_, 0, 1);
  head->addWidget(new QLabel(QStringLiteral("Dossier :")), 1, 0, Qt::AlignRight);
  head->addWidget(folder_line_, 1, 1);
  // As wide as the dialog, which can be made narrower than a path.
  folder_line_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  grid.addLayout(head, 0, 0, 1, 2);
  grid.addWidget(LabelFor(files_, QStringLiteral("&Fichiers :")), 1, 0);
  grid.addWidget(LabelFor(folders_, QStringLiteral("&Dossiers :")), 1, 1);
  grid.addWidget(files_, 2, 0);
  grid.addWidget(folders_, 2, 1);
  grid.setRowStretch(2, 1);
  files_->setEnabled(picker_.list_enabled());
  files_->setSelectionMode(picker_.multi_selection() ? QAbstractItemView::ExtendedSelection
                                                     : QAbstractItemView::SingleSelection);
  files_->installEventFilter(this);
}

void FileChooserDialog::BuildCombos(QGridLayout& grid) {
  const auto add = [&grid](PickerCombo* combo, const QString& label, int column) {
    auto* row = new QHBoxLayout;
    row->addWidget(LabelFor(combo, label));
    row->addWidget(combo, 1);
    grid.addLayout(row, 3, column);
  };
  add(types_, QStringLiteral("&Type :"), 0);
  add(places_, QStringLiteral("&Lecteurs :"), 1);
  QStringList types;
  for (const FileFilter& filter : picker_.filters()) types += Utf8(filter.text);
  types_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  types_->SetRows(types, static_cast<int>(picker_.filter()));
  place_names_ = picker_.Places(MountedVolumes());
  // Paths have any length.
  places_->setMinimumContentsLength(kPlaceCharacters);
  places_->SetRows(Rows(place_names_), 0);
}

QWidget* FileChooserDialog::BuildZone() {
  auto* zone = new QWidget;
  auto* row = new QHBoxLayout(zone);
  row->setContentsMargins(0, 0, 0, 0);
  description_ = new FilteredEdit(kDescription);
  description_->setReadOnly(true);
  QLabel* label = LabelFor(description_, QStringLiteral("Descriptif :"));
  label->setObjectName(QString::number(kDescriptionLabel));
  row->addWidget(label);
  row->addWidget(description_, 1);
  return zone;
}

QWidget* FileChooserDialog::BuildOwner() {
  auto* frame = new NiceFrame(kOwnerFrame, NiceFrame::Kind::kSunken);
  auto* row = new QHBoxLayout(frame);
  row->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
  private_box_ = new QCheckBox(QStringLiteral("&Carnetel Privé"));
  private_box_->setObjectName(QString::number(kPrivateBox));
  owner_ = new QLabel;
  owner_->setObjectName(QString::number(kOwnerLine));
  owner_->setTextFormat(Qt::PlainText);
  row->addWidget(private_box_);
  row->addStretch();
  row->addWidget(owner_);
  return frame;
}

QWidget* FileChooserDialog::BuildButtons() {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [layout](int id, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(QString::number(id));
    layout->addWidget(button);
    return button;
  };
  QPushButton* ok = add(kOk, QStringLiteral("OK"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &FileChooserDialog::accept);
  connect(add(kCancel, QStringLiteral("Annuler")), &QPushButton::clicked, this, &QDialog::reject);
  connect(add(kHelp, QStringLiteral("&Aide")), &QPushButton::clicked, this,
          &FileChooserDialog::AskForHelp);
  layout->addStretch();
  return column;
}

void FileChooserDialog::Connect() {
  connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) {
    picker_.SetName(text.toStdString());
    const QSignalBlocker quiet(files_);
    files_->clearSelection();
    ShowZone();
  });
  connect(files_, &QListWidget::itemSelectionChanged, this, &FileChooserDialog::TakeSelection);
  connect(files_, &QListWidget::itemDoubleClicked, this, &FileChooserDialog::accept);
  connect(folders_, &QListWidget::itemDoubleClicked, this, &FileChooserDialog::EnterCurrentFolder);
  connect(types_, &QComboBox::activated, this, [this](int row) {
    picker_.SetFilter(static_cast<size_t>(row));
    ShowFiles();
  });
  connect(places_, &QComboBox::activated, this,
          [this](int row) { EnterFolder(place_names_[static_cast<size_t>(row)]); });
  if (private_box_ == nullptr) return;
  connect(private_box_, &QCheckBox::clicked, this, [this](bool checked) {
    picker_.SetPrivate(checked);
    ShowZone();
  });
}

// As large as the lists are easily read, and never larger than the screen.
void FileChooserDialog::SetFirstSize() {
  const QFontMetrics metrics = fontMetrics();
  const int spare_height = Measure(kFirstListHeight, metrics) - files_->minimumHeight();
  const QSize wanted(Measure(kFirstWidth, metrics),
                     layout()->totalMinimumSize().height() + spare_height);
  resize(wanted.boundedTo(screen()->availableSize()).expandedTo(layout()->totalMinimumSize()));
}

void FileChooserDialog::ShowFolder() {
  const PathPieces left = PathSplit(folder_line_->text().toStdString());
  folder_line_->SetPath(Utf8(picker_.folder()));
  folder_names_ = picker_.Folders();
  folders_->clear();
  folders_->addItems(Rows(folder_names_));
  const auto came_from = std::ranges::find(folder_names_, left.name + left.extension);
  const bool found = came_from != folder_names_.end();
  folders_->setCurrentRow(found ? static_cast<int>(came_from - folder_names_.begin()) : 0);
  ShowFiles();
}

void FileChooserDialog::ShowPicker() {
  places_->setCurrentIndex(static_cast<int>(picker_.PlaceOf(place_names_)));
  if (folder_line_->text() == Utf8(picker_.folder())) {
    ShowFiles();
  } else {
    ShowFolder();
  }
}

void FileChooserDialog::ShowFiles() {
  file_names_ = picker_.Files();
  {
    const QSignalBlocker quiet(files_);
    files_->clear();
    files_->addItems(Rows(file_names_));
  }
  name_->setText(Utf8(picker_.name()));
  ShowZone();
}

void FileChooserDialog::ShowZone() {
  if (description_ != nullptr) {
    description_->setText(Utf8(picker_.description()));
    description_->setCursorPosition(0);
  }
  if (private_box_ == nullptr) return;
  private_box_->setChecked(picker_.private_checked());
  owner_->setText(Utf8(picker_.owner_line()));
}

void FileChooserDialog::EnterFolder(const std::string& name) {
  picker_.EnterFolder(name);
  ShowPicker();
}

void FileChooserDialog::EnterCurrentFolder() {
  const int row = folders_->currentRow();
  if (row >= 0) EnterFolder(folder_names_[static_cast<size_t>(row)]);
}

void FileChooserDialog::TakeSelection() {
  std::vector<std::string> names;
  for (int row = 0; row < files_->count(); ++row) {
    if (files_->item(row)->isSelected()) names.push_back(file_names_[static_cast<size_t>(row)]);
  }
  picker_.SelectFiles(names);
  name_->setText(Utf8(picker_.name()));
  ShowZone();
}

void FileChooserDialog::accept() {
  if (picker_.Accept() == PickerAnswer::kAccepted) {
    QDialog::accept();
    return;
  }
  ShowPicker();
  name_->setFocus();
  name_->selectAll();
}

void FileChooserDialog::AskForHelp() {
  Q_EMIT helpWanted(picker_.help_topic());
}

void FileChooserDialog::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && folders_->hasFocus()) {
    EnterCurrentFolder();
  } else if (event->key() == Qt::Key_F1) {
    AskForHelp();
  } else {
    QDialog::keyPressEvent(event);
  }
}

// Who comes to the list of files by keyboard finds its first name selected, so that an arrow goes
// on to the second one and Enter takes what is marked.
bool FileChooserDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == files_ && event->type() == QEvent::FocusIn) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool by_keyboard = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                             reason == Qt::ShortcutFocusReason;
    const bool untouched = picker_.name().empty() && files_->selectedItems().isEmpty();
    if (by_keyboard && untouched && files_->count() > 0) files_->setCurrentRow(0);
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace carnetel::desktop
