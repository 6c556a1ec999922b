// What the small dialogs around a directory have in common: number and title of their template, a
// size that is their layout's, buttons with the numbers of their commands, and the page of the help
// that F1 and the button "?" ask for. Escape and the window's cross are command 2.
#pragma once

#include <QDialog>
#include <QPushButton>

namespace carnetel::desktop {

class FixedDialog : public QDialog {
  Q_OBJECT

 public:
  // `number` becomes the object name; `help_topic` is 0 for a dialog without a page.
  FixedDialog(int number, int help_topic, QWidget* parent);

  // To the middle of the screen, for one that opens over no other window.
  void CentreOnScreen();

 Q_SIGNALS:
  void helpWanted(int topic);

 protected:
  // For a dialog that is a role's only window: it can be put aside like any main window.
  void SetMainWindowFrame();
  // Button 1 is the one that Enter presses.
  QPushButton* MakeButton(int id, const QString& caption);
  QPushButton* MakeHelpButton();
  // Of the part of the dialog that the user is at.
  void SetHelpTopic(int topic) { help_topic_ = topic; }

  void keyPressEvent(QKeyEvent* event) override;

 private:
  int help_topic_;
};

}  // namespace carnetel::desktop
