// The help, cut into its pages. All of it is one HTML document that is compiled in (aide.html): a
// page goes from one h1 to the next, and the number of the anchor in its h1 is the help topic that
// stands for it. Pages are shown one at a time, so that a heading is always at the top and stays
// there when the window is resized.
#pragma once

#include <QMap>
#include <QString>

namespace carnetel::desktop {

class HelpDocument {
 public:
  // What is shown where nothing closer is written: the page about Carnetel as a whole.
  static constexpr int kGeneralTopic = 48;

  HelpDocument();

  [[nodiscard]] bool HasTopic(int topic) const { return pages_.contains(topic); }
  // Whole HTML documents; an unknown topic gives the general page.
  [[nodiscard]] QString Page(int topic) const;
  [[nodiscard]] const QString& Contents() const { return contents_; }

 private:
  QMap<int, QString> pages_;
  QString contents_;
};

}  // namespace carnetel::desktop
