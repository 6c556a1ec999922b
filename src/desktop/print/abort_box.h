// "Impression en cours ...": the box over a run on a printer, with the page that is being printed
// and the one button that stops it. It stays until the run is over, whatever the user does.
#pragma once

#include <QDialog>
#include <QLabel>

namespace carnetel::desktop {

class AbortBox : public QDialog {
  Q_OBJECT

 public:
  AbortBox(const QString& document, QWidget* parent);

  void ShowPage(int page);
  // Escape and the window's cross mean the button.
  void reject() override;

 Q_SIGNALS:
  void abandoned();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QLabel* page_;
};

}  // namespace carnetel::desktop
