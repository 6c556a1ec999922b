// Where a card list gets its rows from, one at a time and only when they are to be painted.
#pragma once

#include <QString>

namespace carnetel::desktop {

class RowSource {
 public:
  virtual ~RowSource() = default;

  virtual int RowCount() = 0;
  // Text of a row; in a list of several columns, these are parted by tabs.
  virtual QString Label(int row) = 0;
  virtual bool IsMarked(int row) = 0;
  // Whether marks have a column.
  virtual bool ShowsMarkColumn() { return true; }
  // Whether the row's card belongs to the displayed group.
  virtual bool IsFlagged(int row) = 0;
  // Whether there is a column for that at all.
  virtual bool ShowsFlagColumn() = 0;
};

}  // namespace carnetel::desktop
