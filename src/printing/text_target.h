// Prints into a text file: each line with CR LF behind it, a form feed (0Ch) for a new page. The
// file is written from its start and never cut: when it was longer, its tail stays, by design.
#pragma once

#include <cstdint>
#include <string>

#include "platform/file_system.h"
#include "printing/print_target.h"

namespace carnetel {

class TextFileTarget : public PrintTarget {
 public:
  // `file` outlives the target.
  explicit TextFileTarget(File& file) : file_(file) {}

  [[nodiscard]] PrintText text() const override { return PrintText::kOem; }
  void PrintLine(std::string_view line) override;
  void NewPage() override;
  // Once a write has failed.
  [[nodiscard]] bool Ended() const override { return file_.write_failed(); }

  // Writes what has gathered; false when this or an earlier write failed.
  bool Flush();

 private:
  void Append(std::string_view bytes);

  File& file_;
  std::string block_;
  uint64_t position_ = 0;
};

}  // namespace carnetel
