// The help in a window of its own, and the desk that keeps the one such window of the program. The
// window is modeless and reads the document that is compiled in: it needs no network and leads
// nowhere outside. While a modal dialog is open only that dialog and its children take input, so
// the help of a dialog is its child, and goes when it does.
#pragma once

#include <QDialog>
#include <QPointer>
#include <vector>

#include "desktop/help/help_document.h"

class QLayout;
class QPushButton;
class QTextBrowser;
class QUrl;

namespace carnetel::desktop {

class HelpWindow : public QDialog {
  Q_OBJECT

 public:
  // What topic() says of the table of contents.
  static constexpr int kContents = 0;

  // Shows `topic` first. Closes with `parent`, which may be null.
  HelpWindow(int topic, QWidget* parent);

  // The general page for a topic without one.
  void ShowTopic(int topic);
  void ShowContents();
  // The page shown before, where the reader left it.
  void GoBack();

  [[nodiscard]] int topic() const { return shown_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Visit {
    int page;
    int scrolled;
  };

  QPushButton* MakeButton(const QString& name, const QString& text);
  QLayout* BuildButtons();
  void FollowLink(const QUrl& link);
  [[nodiscard]] int PageOf(int topic) const;
  void GoTo(int page);
  void Display(int page);

  HelpDocument document_;
  QTextBrowser* browser_;
  QPushButton* back_ = nullptr;
  int shown_;
  std::vector<Visit> visits_;  // before the page shown
};

// The one help window of the program: shows a topic over whatever window is active.
class HelpDesk {
 public:
  HelpDesk() = default;
  HelpDesk(const HelpDesk&) = delete;
  HelpDesk& operator=(const HelpDesk&) = delete;
  ~HelpDesk();

  // Shows `topic`, 48 when the document has no such page. While a modal dialog is active the window
  // is its child, made anew where it was another window's.
  void ShowTopic(int topic);
  void Close();
  // Null while none is shown.
  [[nodiscard]] HelpWindow* window() const;

 private:
  [[nodiscard]] QWidget* Owner() const;

  QPointer<HelpWindow> window_;
};

}  // namespace carnetel::desktop
