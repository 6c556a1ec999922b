// The first pages of a run, kept to be looked at: line by line with the place of each on its page.
// The run ends when they are full, so that a preview costs no more than what it shows.
#pragma once

#include <string>
#include <vector>

#include "printing/paged_target.h"

namespace carnetel {

class PreviewPages : public PagedTarget {
 public:
  static constexpr size_t kMostPages = 5;

  struct Line {
    int number;
    std::string ansi;
  };
  using Page = std::vector<Line>;

  explicit PreviewPages(int lines_per_page) : PagedTarget(lines_per_page) {}

  [[nodiscard]] bool Ended() const override { return full_; }
  // At least one; an empty one for a run without cards.
  [[nodiscard]] const std::vector<Page>& pages() const { return pages_; }
  // Nothing at all was printed.
  [[nodiscard]] bool IsEmpty() const { return pages_.size() == 1 && pages_.front().empty(); }
  // The run has more pages than were kept.
  [[nodiscard]] bool HasMore() const { return full_; }

 protected:
  void DrawLine(int number, std::string_view ansi) override {
    pages_.back().push_back({number, std::string(ansi)});
  }
  void TurnPage() override {
    full_ = pages_.size() == kMostPages;
    if (!full_) pages_.emplace_back();
  }

 private:
  std::vector<Page> pages_{1};
  bool full_ = false;
};

}  // namespace carnetel
