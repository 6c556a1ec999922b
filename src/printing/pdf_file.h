// Prints into a PDF document: Courier, so that columns hold, on A4, or on Letter where lengths are
// measured in inches, in the largest size in which the lines and pages of the run fit. The document
// is made in memory and handed out as bytes; nothing in it tells when or where it was made.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "printing/measure_unit.h"
#include "printing/paged_target.h"

namespace carnetel {

struct PdfSetup {
  MeasureUnit unit = MeasureUnit::kCentimetres;
  size_t columns = 0;  // of the longest line
  int lines = 0;       // a page
  std::string title;   // UTF-8
};

// Where the document gets its memory, that of malloc() and free() by default.
struct PdfMemory {
  void* (*allocate)(unsigned size) = nullptr;
  void (*release)(void* block) = nullptr;
};

class PdfTarget : public PagedTarget {
 public:
  // Points that printers leave white on each side of a page.
  static constexpr double kMargin = 18;

  explicit PdfTarget(const PdfSetup& setup, PdfMemory memory = {});
  ~PdfTarget() override;
  PdfTarget(const PdfTarget&) = delete;
  PdfTarget& operator=(const PdfTarget&) = delete;

  // Once the memory has given out.
  [[nodiscard]] bool Ended() const override;

  // The whole document, which has one page at least; nothing when the memory gave out. Nothing can
  // be printed afterwards.
  [[nodiscard]] std::optional<std::vector<std::byte>> Finish();

 protected:
  void DrawLine(int number, std::string_view ansi) override;
  void TurnPage() override;

 private:
  class Document;

  PdfTarget(const PdfSetup& setup, PdfMemory memory, const PageFit& fit);

  std::unique_ptr<Document> document_;
};

}  // namespace carnetel
