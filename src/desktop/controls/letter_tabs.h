// The row of letter tabs over the card list: "A à Z" and one for each letter, ids 655 to 681, each
// a widget of its own with the id as object name. For the keyboard they are one stop with arrow
// keys between them. A tab is selected by click, by arrow or by being given the focus, if the
// `may_leave` question allows it; the selected one joins the frame below.
#pragma once

#include <QList>
#include <QWidget>
#include <functional>

namespace carnetel::desktop {

class LetterTab;

class LetterTabs : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kFirstId = 655;
  static constexpr int kLastId = 681;

  explicit LetterTabs(QWidget* parent = nullptr);

  // Asked before the user's choice of another tab; false keeps the present one.
  void SetMayLeave(std::function<bool()> may_leave) { may_leave_ = std::move(may_leave); }

  // Shows tab `id` as selected, without a question; tells it by tabSelected if `fire`.
  void Select(int id, bool fire);
  [[nodiscard]] int SelectedId() const { return selected_; }

  // A joined frame continues the row by its own upper edge: no line from the last tab to the right.
  void SetJoinedFrame(bool joined);

  [[nodiscard]] LetterTab* Tab(int id) const;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void tabSelected(int id);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  friend class LetterTab;

  // The user's choice, with the question; the focus goes to the tab.
  void Choose(int id);
  // The same when the events at hand are through: a question must not open inside them.
  void ChooseLater(int id);
  void Place();
  [[nodiscard]] int TabWidth(int id) const;

  std::function<bool()> may_leave_;
  QList<LetterTab*> tabs_;
  int selected_ = kFirstId;
  bool joined_ = false;
};

// One tab of the row; made and driven by LetterTabs.
class LetterTab : public QWidget {
  Q_OBJECT

 public:
  LetterTab(int id, LetterTabs* row);

  [[nodiscard]] int id() const { return id_; }
  [[nodiscard]] bool IsSelected() const;
  [[nodiscard]] const QString& Caption() const { return caption_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void PaintShape(QPainter& painter) const;

  int id_;
  LetterTabs* row_;
  QString caption_;
};

}  // namespace carnetel::desktop
