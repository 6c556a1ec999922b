// The list of cards. It holds no text: rows are asked for when they come into view, so that 32767
// of them cost nothing, and marks are the source's, the list only shows them. One row is current.
// What keys and clicks mean for marks is decided elsewhere; the list tells them by signals.
#pragma once

#include <QAbstractScrollArea>
#include <QHash>
#include <QList>
#include <QPixmap>

#include "desktop/controls/row_source.h"

namespace carnetel::desktop {

class CardListView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  // `id` becomes the object name. The source must outlive the list.
  CardListView(int id, RowSource& source, QWidget* parent = nullptr);

  // The rows are others now: their number and texts are asked for anew. Current and top row stay
  // where they are, or move to the last row.
  void Reload();
  // One row's text or marks have changed.
  void ReloadRow(int row);

  [[nodiscard]] int RowCount() const { return row_count_; }
  // -1 in an empty list.
  [[nodiscard]] int CurrentRow() const { return current_; }
  // Makes `row` current and scrolls to it; no signal.
  void SetCurrentRow(int row);
  [[nodiscard]] int TopRow() const;
  void SetTopRow(int row);
  // Number of rows that fit entirely.
  [[nodiscard]] int PageRows() const;
  [[nodiscard]] QRect RowRect(int row) const;
  // -1 below the last row.
  [[nodiscard]] int RowAt(const QPoint& position) const;

  // Left edges of the columns of a list of several, in pixels; the default is one column behind
  // the picture columns.
  void SetColumns(const QList<int>& left_edges);

  // Without keys and clicks, while a question is open.
  void SetFrozen(bool frozen) { frozen_ = frozen; }

  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  // By the user: keys and clicks. It comes before what the same key or click tells besides.
  void currentRowChanged(int row);
  // On pressing the button; a double click comes as rowClicked once, then rowDoubleClicked.
  void rowClicked(int row, Qt::KeyboardModifiers modifiers);
  void rowDoubleClicked(int row);
  // Space, or Down and Up with Ctrl or Shift: invert the mark of the current row, then go on by
  // `step`, 1 or -1, if there is such a row.
  void markAndStep(int step);
  // Shift with PageUp, PageDown, Home or End, or with a click: from the row that was current when
  // Shift went down to the new current row, both included.
  void spanMoved(int from, int to);
  // A digit or a letter, as '0' to '9' or 'A' to 'Z', whatever the keyboard's layout.
  void letterTyped(char letter);
  void focusEntered(Qt::FocusReason reason);
  // The list was painted; told once for several paints, outside of painting.
  void painted();

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Row {
    QString label;
    bool marked = false;
    bool flagged = false;
  };
  // The two pictures, each for rows at rest and for the selected one.
  struct Pictures {
    QPixmap mark[2];
    QPixmap flag[2];
  };

  [[nodiscard]] int RowHeight() const;
  [[nodiscard]] int PictureWidth() const;
  const Row& RowToPaint(int row);
  const Pictures& PicturesToPaint();
  void PaintRow(QPainter& painter, int row);
  void PaintLabel(QPainter& painter, const QRect& box, const QString& label, int text_left) const;
  void TellPainted();
  void UpdateScrollBar();
  void ScrollTo(int row);
  void MoveCurrent(int row);
  void TellAccessibility();
  [[nodiscard]] int TargetOf(int key) const;
  bool HandleNavigation(const QKeyEvent& event);

  RowSource& source_;
  int row_count_ = 0;
  int current_ = -1;
  int shift_anchor_ = -1;  // current row when Shift went down; -1 while it is up
  bool frozen_ = false;
  bool selection_hidden_ = false;  // after a click with Ctrl, so that the mark can be seen
  bool paint_told_ = false;
  QList<int> columns_;
  QHash<int, Row> rows_;  // those lately in view
  Pictures pictures_;
};

}  // namespace carnetel::desktop
