// The dialog of a FilePicker: name line, lists of files and folders, types and places, and, where
// directories are chosen, the description of the selected one; with seats also its owner and the
// private box. It decides nothing: every key and click goes to the picker, and what the picker says
// is shown. Unlike other dialogs it can be resized, as names and paths may be long.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>

#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/picker_combo.h"
#include "desktop/dialogs/path_label.h"
#include "shell/file_picker.h"

class QGridLayout;

namespace carnetel::desktop {

class FileChooserDialog : public QDialog {
  Q_OBJECT

 public:
  // `picker` must outlive the dialog.
  FileChooserDialog(FilePicker& picker, QWidget* parent);

  // OK: closes the dialog when the picker accepts.
  void accept() override;

 Q_SIGNALS:
  void helpWanted(int topic);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildLists(QGridLayout& grid);
  void BuildCombos(QGridLayout& grid);
  QWidget* BuildZone();
  QWidget* BuildOwner();
  QWidget* BuildButtons();
  void Connect();
  void SetFirstSize();

  // Everything that may have changed with folder, pattern or name.
  void ShowPicker();
  // The folder that was left becomes the current row, where it is listed now.
  void ShowFolder();
  void ShowFiles();
  void ShowZone();
  void EnterFolder(const std::string& name);
  void EnterCurrentFolder();
  void TakeSelection();
  void AskForHelp();

  FilePicker& picker_;
  FilteredEdit* name_;
  QListWidget* files_;
  QListWidget* folders_;
  PathLabel* folder_line_;
  PickerCombo* types_;
  PickerCombo* places_;
  FilteredEdit* description_ = nullptr;  // null without a zone
  QCheckBox* private_box_ = nullptr;     // null without seats
  QLabel* owner_ = nullptr;              // likewise
  // What the rows stand for: a row shows a look-alike of a name that is no Unicode text.
  std::vector<std::string> file_names_;
  std::vector<std::string> folder_names_;
  std::vector<std::string> place_names_;
};

}  // namespace carnetel::desktop
